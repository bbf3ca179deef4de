#pragma once

#include "text/engine/text_report.h"

#include <optional>

namespace velmora {

/// A colour as 0xRRGGBB.
using ReportColour = quint32;

/// The colours of a report with marks; at first those of the usual report.
struct ReportColours {
    ReportColour text = 0x000000;
    ReportColour muted = 0x888888;
    ReportColour background = 0xffffff;
    ReportColour gutter = 0xf5f5f5;
    ReportColour rule = 0xdddddd;
    ReportColour added = 0xdff0d8;
    ReportColour removed = 0xf2dede;
    ReportColour modified = 0xd9edf7;
    ReportColour mark = 0x9acfea; ///< behind changed characters
    ReportColour minorMark = 0xc4e3f3;
    ReportColour link = 0x0b61c4;
};

/// A report for reading: changes are marked within lines, differences lead to each other, and equal rows may be left
/// out.
struct MarkedReportForm {
    std::optional<qsizetype> context; ///< equal rows that stay on each side of a difference; all without
    ReportColours colours;
    QString previous; ///< "Previous difference"
    QString next;     ///< "Next difference"
    QString folded;   ///< "⋯ %1 equal lines"
};

/// Writes the comparison as one HTML page in UTF-8, part by part. False when it could not be written or `cancel` is
/// set.
[[nodiscard]] bool writeMarkedReport(QIODevice &device, const ReportedTexts &texts, const TextReportLabels &labels,
                                     const MarkedReportForm &form, const QDateTime &time,
                                     const CancelFlag &cancel = {});

} // namespace velmora
