#pragma once

#include "core/cancel_flag.h"
#include "filetypes/table/engine/table_alignment.h"

#include <QDateTime>
#include <QString>

class QIODevice;

namespace velmora {

/// The texts of a report, as they are shown: translated and filled in.
struct TableReportLabels {
    QString title;
    QString left;        ///< "Left: %1"
    QString right;       ///< "Right: %1"
    QString generatedAt; ///< "Generated at"
    QString leftRow;     ///< above the record numbers of the left table
    QString rightRow;
    QString summary; ///< the counts
    QString rules;   ///< by which columns were compared; empty for none
};

/// Writes the rows that differ as one HTML page in UTF-8, row by row. A changed cell has both values. False when it
/// could not be written or `cancel` is set.
[[nodiscard]] bool writeTableReport(QIODevice &device, const TableAlignment &alignment, const TableReportLabels &labels,
                                    const QDateTime &time, const CancelFlag &cancel = {});

/// Writes the rows that differ as CSV in UTF-8 (RFC 4180, with line feeds): columns "change" ("modified", "left only"
/// or "right only"), "side" ("left" or "right") and "row" (the number of the record in its file, from 1 on), then those
/// of the result. A modified row takes two lines, the left one first. False as above.
[[nodiscard]] bool writeTableCsv(QIODevice &device, const TableAlignment &alignment, const CancelFlag &cancel = {});

/// Appends `value` as one field of CSV, in quotation marks where it needs them.
void appendCsvField(QByteArray &csv, std::string_view value, char delimiter = ',');

} // namespace velmora
