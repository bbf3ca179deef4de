#pragma once

#include "core/cancel_flag.h"
#include "core/output_buffer.h"
#include "core/text_lines.h"
#include "text/engine/diff_line.h"

#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>

class QIODevice;

namespace velmora {

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

/// Writes the result of a text comparison as one HTML page in UTF-8, row by row, so that a long one is never in memory
/// whole. Used by one thread; the device outlives the writer.
class TextReportWriter {
public:
    explicit TextReportWriter(QIODevice &device);

    /// First.
    void begin(const TextReportLabels &labels, const QDateTime &time);

    void addRow(const DiffLine &row);

    /// Last. False when any part of the page could not be written.
    [[nodiscard]] bool finish(const TextReportLabels &labels);

private:
    void addSide(qint32 line, const QString &text);

    OutputBuffer m_page;
};

/// The whole report for rows that the caller holds with their texts. False when it could not be written or `cancel` is
/// set.
[[nodiscard]] bool writeTextReport(QIODevice &device, const QList<DiffLine> &rows, const TextReportLabels &labels,
                                   const QDateTime &time, const CancelFlag &cancel = {});

/// The whole report for rows of `compareTexts`.
[[nodiscard]] bool writeTextReport(QIODevice &device, const QList<AlignedRow> &rows, const TextLines &left,
                                   const TextLines &right, const TextSessionOptions &options,
                                   const TextReportLabels &labels, const QDateTime &time,
                                   const CancelFlag &cancel = {});

} // namespace velmora
