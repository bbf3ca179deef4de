#include "text/result/text_report_content.h"

#include "session/shown_path.h"
#include "session/translate.h"
#include "text/engine/text_report.h"
#include "text/result/verdict.h"

#include <QDateTime>

namespace velmora {

namespace {

TextReportLabels labelsFor(const TextReportContent &content)
{
    const DiffCounts counts = countRows(content.document->rows());
    TextReportLabels labels;
    labels.title = Velmora::tr("Velmora — diff report");
    labels.heading = Velmora::tr("Velmora diff report");
    labels.left = Velmora::tr("Left: %1").arg(shownPath(content.paths.left));
    labels.right = Velmora::tr("Right: %1").arg(shownPath(content.paths.right));
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

MarkedReportForm markedReportForm(std::optional<qsizetype> context)
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

ReportSaver::Writer textReportWriter(const TextReportContent &content)
{
    return [content, labels = labelsFor(content)](QIODevice &device, const CancelFlag &cancel) {
        const ReportedTexts texts{content.document->rows(), content.document->lineEndRows(), content.left,
                                  content.right, content.options};
        const QDateTime now = QDateTime::currentDateTime();
        return content.marked ? writeMarkedReport(device, texts, labels, *content.marked, now, cancel)
                              : writeTextReport(device, texts, labels, now, cancel);
    };
}

} // namespace velmora
