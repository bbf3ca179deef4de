// How a disk usage session compares what it has found with a snapshot of the folder.

#include "core/path_names.h"
#include "folder/engine/folder_snapshot_file.h"
#include "folder/engine/snapshot_usage.h"
#include "folder/usage/disk_usage_widget.h"
#include "folder/usage/usage_view.h"
#include "session/dialogs.h"

#include <QComboBox>
#include <QDir>
#include <QPointer>

namespace velmora {

void DiskUsageWidget::onCompareSnapshot()
{
    if (!m_result || isReading())
        return;
    if (m_scanned.withHidden || m_scanned.maxDepth > 0 || m_result->usage.cancelled) {
        status().showMessage(
            Velmora::tr("A snapshot has all levels and no hidden files: scan the whole folder without these first"));
        return;
    }
    Dialogs::instance().openFile(this, Velmora::tr("Growth since a snapshot"), parentPath(m_scanned.folder),
                                 Velmora::tr("Folder snapshot (*.kvsnapshot)"),
                                 [self = QPointer(this)](const QString &path) {
                                     if (self && !path.isEmpty())
                                         self->compareSnapshot(path);
                                 });
}

void DiskUsageWidget::compareSnapshot(const QString &path)
{
    if (!m_result || isReading())
        return;
    run(
        [before = m_result, path](const CancelFlag &cancel, Progress &progress) -> SharedUsage {
            const FolderSnapshotReading reading = loadFolderSnapshot(path, cancel, progress);
            if (!reading.ok())
                return nullptr;
            auto result = std::make_shared<UsageResult>(*before);
            result->growth = usageGrowth(result->usage.tree, snapshotUsage(reading.snapshot));
            return result;
        },
        [this, path](const SharedUsage &result) {
            const QString shown = QDir::toNativeSeparators(path);
            if (!result) {
                status().showFailure(Velmora::tr("No snapshot of a folder: %1").arg(shown));
                return;
            }
            m_result = result;
            m_view->setResult(result);
            m_colouring->setCurrentIndex(int(UsageColouring::Growth));
            status().showMessage(Velmora::tr("Growth since %1").arg(shown));
        });
}

} // namespace velmora
