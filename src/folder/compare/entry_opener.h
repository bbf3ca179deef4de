#pragma once

#include "core/passing_folder.h"
#include "core/runner.h"
#include "folder/engine/folder_jobs.h"
#include "session/session_host.h"

#include <QObject>
#include <QStringList>

#include <memory>

namespace velmora {

/// Opens entries of a comparison in other sessions, and knows which may have been changed there.
class EntryOpener final : public QObject {
    Q_OBJECT
public:
    explicit EntryOpener(const SessionHost &host, QObject *parent = nullptr);

    /// Opens files in the session that suits what is in them, on a worker, which also lays out what has no path. The
    /// latest call counts.
    void open(const SourcePair &sources, const FolderDiffItem &item) { start({}, sources, item); }
    /// The same in sessions of `kind`; folders as well.
    void openAs(const QString &kind, const SourcePair &sources, const FolderDiffItem &item);

    /// The names of those of `items` that were opened lately, whatever has been compared meanwhile.
    [[nodiscard]] QStringList openedOf(const QList<FolderDiffItem> &items) const;

Q_SIGNALS:
    /// `kind` is empty where nobody could tell.
    void wanted(const QString &kind, const QString &left, const QString &right);
    /// The entry of that name has no file at `path` any more.
    void gone(const QString &name, const QString &path);
    void unreadable(const QString &path);

private:
    struct Answer {
        QString kind;
        Sides<QString> paths;
        QString missing; ///< what is no longer there, or cannot be read
        bool isGone = false;
    };

    void start(const QString &kind, const SourcePair &sources, const FolderDiffItem &item);
    void remember(const FolderDiffItem &item);
    [[nodiscard]] QString folderForCopies();

    const SessionHost &m_host;
    QStringList m_opened; ///< paths, the latest last
    std::unique_ptr<PassingFolder> m_copies;
    Runner m_runner;
};

} // namespace velmora
