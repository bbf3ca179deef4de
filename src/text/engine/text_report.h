#pragma once

#include "core/cancel_flag.h"
#include "core/text_lines.h"
#include "text/engine/diff_line.h"
#include "text/engine/line_ends.h"

#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>

#include <string_view>
#include <vector>

class QIODevice;

namespace velmora {

class OutputBuffer;
struct TextSessionOptions;

/// The texts of a report, as they are shown: translated and filled in.
struct TextReportLabels {
    QString title;        ///< "Velmora — diff report"
    QString heading;      ///< "Velmora diff report"
    QString left;         ///< "Left: %1"
    QString right;        ///< "Right: %1"
    QString generatedAt;  ///< "Generated at"
    QString leftColumn;   ///< "Left side"
    QString rightColumn;  ///< "Right side"
    QString summary;      ///< "Diff summary: %1 total (added %2, removed %3, modified %4)"
    QStringList lineEnds; ///< what differs in line ends, a sentence each; each stands below the summary
};

/// What a report is about.
struct ReportedTexts {
    const QList<AlignedRow> &rows;
    const std::vector<LineEndRow> &lineEnds;
    const TextLines &left;
    const TextLines &right;
    const TextSessionOptions &options;
};

/// Writes the result of a text comparison as one HTML page in UTF-8, row by row, so that a long one is never in memory
/// whole. False when it could not be written or `cancel` is set.
[[nodiscard]] bool writeTextReport(QIODevice &device, const ReportedTexts &texts, const TextReportLabels &labels,
                                   const QDateTime &time, const CancelFlag &cancel = {});

// What both reports of a text comparison have in common.

/// The class of a row in the style sheet.
[[nodiscard]] std::string_view reportRowClass(DiffLineKind kind);

/// Heading, both sides and the time, behind the style sheet.
void writeReportHeading(OutputBuffer &page, const TextReportLabels &labels, const QDateTime &time);

/// What stands below the table, to the end of the page.
void writeReportEnd(OutputBuffer &page, const TextReportLabels &labels);

} // namespace velmora
