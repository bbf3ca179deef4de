#pragma once

#include "core/output_buffer.h"
#include "core/text_lines.h"
#include "text/engine/diff_line.h"

#include <QList>
#include <QString>

#include <vector>

namespace velmora {

/// Lines [leftBegin, leftEnd) that lines [rightBegin, rightEnd) take the place of; 0-based.
struct PatchChange {
    qsizetype leftBegin = 0;
    qsizetype leftEnd = 0;
    qsizetype rightBegin = 0;
    qsizetype rightEnd = 0;

    friend bool operator==(const PatchChange &, const PatchChange &) = default;
};

/// What turns `left` into `right` byte by byte, aligned as `rows` say. The rows may leave lines out and call lines
/// equal that are not the same bytes: such lines are changes here. Precondition: the rows' line numbers rise and are
/// those of `left` and `right`.
[[nodiscard]] std::vector<PatchChange> byteChanges(const QList<AlignedRow> &rows, const TextLines &left,
                                                   const TextLines &right);

/// The parts of `changes` that lie in the given lines: [leftBegin, leftEnd) on the left and [rightBegin, rightEnd) on
/// the right, which rows pair with each other. They make a patch that does this part only.
[[nodiscard]] std::vector<PatchChange> changesWithin(const std::vector<PatchChange> &changes, const PatchChange &lines);

/// Writes `changes` as a unified diff with three lines of context, nothing when there are none. The changes may be some
/// of all that there are: then the patch leads to a text of its own, whose line numbers it has.
void writePatch(OutputBuffer &output, const std::vector<PatchChange> &changes, const QString &leftPath,
                const TextLines &left, const QString &rightPath, const TextLines &right);

} // namespace velmora
