#pragma once

#include "core/runner.h"
#include "folder/engine/folder_diff_item.h"
#include "session/session_record.h"

#include <QObject>

namespace velmora {

/// Writes HTML reports of folder comparisons on a worker, one after the other.
class FolderReportExport final : public QObject {
    Q_OBJECT
public:
    explicit FolderReportExport(QObject *parent = nullptr);

    /// Writes the items to the file `path` and ends with one of the signals. A report that is still being written is
    /// finished first.
    void write(const QList<FolderDiffItem> &items, const SessionPaths &folders, const QString &path);

Q_SIGNALS:
    void written(const QString &path);
    void failed(const QString &path, const QString &reason);

private:
    struct Order {
        QList<FolderDiffItem> items;
        SessionPaths folders;
        QString path;
    };

    void startNext();

    QList<Order> m_orders; ///< the first one is being written while the runner runs
    Runner m_runner;
};

} // namespace velmora
