#include "folder/compare/folder_report_export.h"

#include "core/safe_file.h"
#include "folder/engine/folder_report.h"
#include "session/fault_text.h"
#include "session/translate.h"

#include <QDateTime>
#include <QDir>

namespace velmora {

namespace {

FolderReportLabels labelsFor(const SessionPaths &folders)
{
    FolderReportLabels labels;
    labels.title = Velmora::tr("Velmora — folder diff report");
    labels.heading = Velmora::tr("Velmora folder diff report");
    labels.left = Velmora::tr("Left: %1").arg(QDir::toNativeSeparators(folders.left));
    labels.right = Velmora::tr("Right: %1").arg(QDir::toNativeSeparators(folders.right));
    labels.generatedAt = Velmora::tr("Generated at");
    labels.columns = {Velmora::tr("Name"),       Velmora::tr("Status"),        Velmora::tr("Left size"),
                      Velmora::tr("Right size"), Velmora::tr("Left modified"), Velmora::tr("Right modified")};
    labels.statuses = {Velmora::tr("Same"), Velmora::tr("Left only"), Velmora::tr("Right only"),
                       Velmora::tr("Different")};
    labels.summary = Velmora::tr("Total: %1 items | Same: %2 | Different: %3 | Left only: %4 | Right only: %5");
    return labels;
}

} // namespace

FolderReportExport::FolderReportExport(QObject *parent) : QObject(parent) {}

void FolderReportExport::write(const QList<FolderDiffItem> &items, const SessionPaths &folders, const QString &path)
{
    m_orders.append({items, folders, path});
    if (!m_runner.isRunning())
        startNext();
}

void FolderReportExport::startNext()
{
    if (m_orders.isEmpty())
        return;
    const Order &order = m_orders.first();
    m_runner.start(
        [order, labels = labelsFor(order.folders)](const CancelFlag &cancel, Progress &) {
            return saveFile(order.path, [&](QIODevice &device) {
                return writeFolderReport(device, order.items, labels, QDateTime::currentDateTime(), cancel);
            });
        },
        [this](RunOutcome<SaveResult> &&outcome) {
            const QString path = m_orders.takeFirst().path;
            startNext();
            if (outcome.value && outcome.value->ok())
                Q_EMIT written(path);
            else
                Q_EMIT failed(path, outcome.value ? outcome.value->error
                                                  : faultText(outcome.fault, Velmora::tr("Not enough memory")));
        });
}

} // namespace velmora
