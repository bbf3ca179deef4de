#include "text/report_export.h"

#include "core/safe_file.h"
#include "core/visible_name.h"
#include "session/fault_text.h"
#include "session/translate.h"
#include "text/engine/text_report.h"
#include "text/verdict.h"
#include "text/view/row_colours.h"

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
    labels.left = Velmora::tr("Left: %1").arg(visibleName(QDir::toNativeSeparators(content.paths.left)));
    labels.right = Velmora::tr("Right: %1").arg(visibleName(QDir::toNativeSeparators(content.paths.right)));
    labels.generatedAt = Velmora::tr("Generated at");
    labels.leftColumn = Velmora::tr("Left side");
    labels.rightColumn = Velmora::tr("Right side");
    labels.summary = Velmora::tr("Diff summary: %1 total (added %2, removed %3, modified %4)")
                         .arg(counts.differences())
                         .arg(counts.added)
                         .arg(counts.removed)
                         .arg(counts.modified);
    labels.lineEnds = describeLineEnds(countLineEnds(content.document->lineEndRows()));
    return labels;
}

} // namespace

MarkedReportForm ReportExport::markedForm(std::optional<qsizetype> context)
{
    const auto shade = [](DiffColour role) { return ReportColour(diffColour(role).rgb() & 0xFFFFFF); };
    MarkedReportForm form;
    form.context = context;
    form.colours = {
        .text = shade(DiffColour::Text),
        .muted = shade(DiffColour::MutedText),
        .background = shade(DiffColour::Background),
        .gutter = shade(DiffColour::Gutter),
        .rule = shade(DiffColour::Rule),
        .added = shade(DiffColour::Added),
        .removed = shade(DiffColour::Removed),
        .modified = shade(DiffColour::Modified),
        .mark = shade(DiffColour::ModifiedStrong),
        .minorMark = ReportColour(
            markColour(true, diffColour(DiffColour::Modified), diffColour(DiffColour::ModifiedStrong)).rgb() &
            0xFFFFFF),
        .link = shade(DiffColour::Accent)};
    form.previous = Velmora::tr("Previous difference");
    form.next = Velmora::tr("Next difference");
    form.folded = Velmora::tr("⋯ %1 equal lines");
    return form;
}

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
                if (content.marked) {
                    return writeMarkedReport(device,
                                             {content.document->rows(), content.document->lineEndRows(), content.left,
                                              content.right, content.options},
                                             labels, *content.marked, QDateTime::currentDateTime(), cancel);
                }
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
