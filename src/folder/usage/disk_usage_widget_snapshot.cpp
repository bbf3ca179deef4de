// How a disk usage session compares what it has found with a snapshot of the folder or an earlier measurement.

#include "core/path_names.h"
#include "folder/engine/usage_record.h"
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
    if (m_result->usage.cancelled) {
        status().showMessage(Velmora::tr("Scan the whole folder first"));
        return;
    }
    Dialogs::instance().openFile(this, Velmora::tr("Growth since a snapshot"), parentPath(m_scanned.folder),
                                 Velmora::tr("Folder snapshots and measurements (*.kvsnapshot *.json)"),
                                 [self = QPointer(this)](const QString &path) {
                                     if (self && !path.isEmpty())
                                         self->compareSnapshot(path);
                                 });
}

void DiskUsageWidget::compareSnapshot(const QString &path)
{
    if (!m_result || isReading())
        return;
    struct Grown {
        SharedUsage result;   ///< null where the record does not serve
        bool isOther = false; ///< it is a record, but not of what was scanned
    };
    run(
        [before = m_result, scanned = m_scanned, path](const CancelFlag &cancel, Progress &progress) {
            const UsageRecord record = loadUsageRecord(path, cancel, progress);
            const bool isAlike = record.maxDepth == scanned.maxDepth && record.withHidden == scanned.withHidden &&
                                 (record.listsFiles || !scanned.listsFiles);
            if (!record.ok() || !isAlike)
                return Grown{nullptr, record.ok()};
            auto result = std::make_shared<UsageResult>(*before);
            result->growth = usageGrowth(result->usage.tree, record.tree);
            return Grown{std::move(result)};
        },
        [this, path](const Grown &grown) {
            const QString shown = QDir::toNativeSeparators(path);
            if (!grown.result) {
                status().showFailure(
                    grown.isOther
                        ? Velmora::tr(
                              "Levels, files and hidden files have to be chosen as in this file (a snapshot has "
                              "all levels and files, none hidden): %1")
                              .arg(shown)
                        : Velmora::tr("Neither a snapshot nor a measurement of a folder: %1").arg(shown));
                return;
            }
            m_result = grown.result;
            m_view->setResult(grown.result);
            m_colouring->setCurrentIndex(int(UsageColouring::Growth));
            status().showMessage(Velmora::tr("Growth since %1").arg(shown));
        });
}

} // namespace velmora
