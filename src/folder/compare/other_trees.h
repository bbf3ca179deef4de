#pragma once

#include "core/cancel_flag.h"
#include "core/progress.h"
#include "core/runner.h"
#include "core/sides.h"
#include "session/session_record.h"
#include "vfs/place/other_opening.h"
#include "vfs/tree_source.h"

#include <QObject>
#include <QString>

#include <functional>

namespace velmora {

/// The states of repositories, folders of hosts and snapshots that stand on a side of a comparison of folders, read on
/// a worker.
class OtherTrees final : public QObject {
    Q_OBJECT
public:
    explicit OtherTrees(QObject *parent);

    /// Whether one of the two is a state.
    [[nodiscard]] static bool isAnyState(const SessionPaths &paths);
    /// Whether one of the two is no folder of the disk.
    [[nodiscard]] static bool isAny(const SessionPaths &paths);

    /// Finds what these among the paths are now, and calls `done` with a sentence where one is not to be had.
    void open(const SessionPaths &paths, std::function<void(const QString &error)> done);
    /// The folder of a path as it was opened last; of the disk where it is none of these.
    [[nodiscard]] TreeFolder folderAt(Side side, const QString &path) const;

    [[nodiscard]] bool isRunning() const { return m_runner.isRunning(); }
    void cancel() { m_runner.cancel(); }

Q_SIGNALS:
    void runningChanged();
    void logLine(const QString &line);

private:
    struct Opened {
        QString path;
        OtherOpening tree;
    };

    [[nodiscard]] static Sides<Opened> openBoth(const SessionPaths &paths, const Sides<Opened> &before,
                                                const CancelFlag &cancel, Progress &progress);
    [[nodiscard]] QString take(Sides<Opened> &&opened);

    Sides<Opened> m_opened;
    Runner m_runner;
};

} // namespace velmora
