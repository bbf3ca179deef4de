#include "folder/compare/folder_report_content.h"

#include "core/path_names.h"
#include "folder/engine/folder_report.h"
#include "session/translate.h"

#include <QDateTime>

namespace velmora {

namespace {

FolderReportLabels labelsFor(const SessionPaths &folders)
{
    FolderReportLabels labels;
    labels.title = Velmora::tr("Velmora — folder diff report");
    labels.heading = Velmora::tr("Velmora folder diff report");
    labels.left = Velmora::tr("Left: %1").arg(nativePath(folders.left));
    labels.right = Velmora::tr("Right: %1").arg(nativePath(folders.right));
    labels.generatedAt = Velmora::tr("Generated at");
    labels.columns = {Velmora::tr("Name"),       Velmora::tr("Status"),        Velmora::tr("Left size"),
                      Velmora::tr("Right size"), Velmora::tr("Left modified"), Velmora::tr("Right modified")};
    labels.statuses = {Velmora::tr("Same"), Velmora::tr("Left only"), Velmora::tr("Right only"),
                       Velmora::tr("Different")};
    labels.summary = Velmora::tr("Total: %1 items | Same: %2 | Different: %3 | Left only: %4 | Right only: %5");
    labels.unread = Velmora::tr("not read");
    labels.unreadTotal = Velmora::tr("Of the same files these were not read: %1");
    return labels;
}

} // namespace

ReportSaver::Writer folderReportWriter(const QList<FolderDiffItem> &items, const SessionPaths &folders)
{
    return [items, labels = labelsFor(folders)](QIODevice &device, const CancelFlag &cancel) {
        return writeFolderReport(device, items, labels, QDateTime::currentDateTime(), cancel);
    };
}

} // namespace velmora
