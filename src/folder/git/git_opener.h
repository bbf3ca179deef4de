#pragma once

#include "core/passing_folder.h"
#include "core/runner.h"
#include "session/session_host.h"
#include "vfs/git/git_comparison.h"

#include <QObject>

#include <memory>

namespace velmora {

/// Opens files of a Git comparison in the session that suits them. Contents that are not on the disk are laid out in a
/// private temporary place that goes with this object.
class GitOpener final : public QObject {
    Q_OBJECT
public:
    explicit GitOpener(SessionHost &host, QObject *parent = nullptr);

    /// On a worker; the latest call counts. An empty `kind` is found out by the contents.
    void open(const std::shared_ptr<const GitComparison> &comparison, const GitChange &change, const QString &kind);

Q_SIGNALS:
    void failed(const QString &message);

private:
    struct Answer {
        QString kind;
        Sides<QString> paths;
        GitFault fault;
    };

    SessionHost &m_host;
    PassingFolder m_copies;
    Runner m_runner;
};

} // namespace velmora
