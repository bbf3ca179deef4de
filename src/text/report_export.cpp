#include "text/report_export.h"

#include "core/safe_file.h"
#include "session/fault_text.h"
#include "session/translate.h"
#include "text/engine/text_report.h"

#include <QDateTime>
#include <QDir>

namespace velmora {

namespace {

TextReportLabels labelsFor(const ReportExport::Content &content)
{
    const DiffCounts counts = countRows(content.document->rows());
    TextReportLabels labels;
    labels.title = Velmora::tr("Velmora — diff report");
    labels.heading = Velmora::tr("Velmora diff report");
    labels.left = Velmora::tr("Left: %1").arg(QDir::toNativeSeparators(content.paths.left));
    labels.right = Velmora::tr("Right: %1").arg(QDir::toNativeSeparators(content.paths.right));
    labels.generatedAt = Velmora::tr("Generated at");
    labels.leftColumn = Velmora::tr("Left side");
    labels.rightColumn = Velmora::tr("Right side");
    labels.summary = Velmora::tr("Diff summary: %1 total (added %2, removed %3, modified %4)")
                         .arg(counts.differences())
                         .arg(counts.added)
                         .arg(counts.removed)
                         .arg(counts.modified);
    return labels;
}

} // namespace

ReportExport::ReportExport(QObject *parent) : QObject(parent) {}

void ReportExport::write(const Content &content, const QString &path)
{
    m_orders.append({content, path});
    if (!m_runner.isRunning())
        startNext();
}

void ReportExport::startNext()
{
    if (m_orders.isEmpty())
        return;
    const Order &order = m_orders.first();
    m_runner.start(
        [order, labels = labelsFor(order.content)](const CancelFlag &cancel, Progress &) {
            const Content &content = order.content;
            return saveFile(order.path, [&](QIODevice &device) {
                return writeTextReport(device, content.document->rows(), content.left, content.right, content.options,
                                       labels, QDateTime::currentDateTime(), cancel);
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
