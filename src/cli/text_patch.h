#pragma once

#include "core/output_buffer.h"
#include "core/text_lines.h"
#include "text/engine/diff_line.h"

#include <QList>
#include <QString>

#include <vector>

namespace velmora::cli {

/// Lines [leftBegin, leftEnd) that lines [rightBegin, rightEnd) take the place of; 0-based.
struct LineChange {
    qsizetype leftBegin = 0;
    qsizetype leftEnd = 0;
    qsizetype rightBegin = 0;
    qsizetype rightEnd = 0;

    friend bool operator==(const LineChange &, const LineChange &) = default;
};

/// What turns `left` into `right` byte by byte, aligned as `rows` say. The rows may leave lines out and call lines
/// equal that are not the same bytes: such lines are changes here. Precondition: the rows' line numbers rise and are
/// those of `left` and `right`.
[[nodiscard]] std::vector<LineChange> byteChanges(const QList<AlignedRow> &rows, const TextLines &left,
                                                  const TextLines &right);

/// Writes `changes` as a unified diff with three lines of context, nothing when there are none.
void writePatch(OutputBuffer &output, const std::vector<LineChange> &changes, const QString &leftPath,
                const TextLines &left, const QString &rightPath, const TextLines &right);

} // namespace velmora::cli
