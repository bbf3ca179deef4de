#pragma once

#include "core/cancel_flag.h"
#include "core/progress.h"
#include "core/text_lines.h"
#include "text/engine/diff_line.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace velmora {

struct TextSessionOptions;

/// What `diffLinesAligned` goes by.
struct AlignParams {
    qint32 mode = 0;             ///< the alignment method; carried along, the other fields decide
    double threshold = 0.35;     ///< the least similarity, 0 to 1, at which two lines of a gap are paired as `Modified`
    qint32 lookahead = 3;        ///< the least number of further right lines that are searched for a partner
    qint32 skewTolerance = 2000; ///< lines by which a pairing may drift from the offset of the last anchor, at least 0

    friend bool operator==(const AlignParams &, const AlignParams &) = default;
};

/// The run of UTF-16 code units [start, start + length) of a string.
struct CharRange {
    qint32 start = 0;
    qint32 length = 0;

    friend bool operator==(const CharRange &, const CharRange &) = default;
};

/// What there is to say about a comparison beside its rows.
struct CompareRemarks {
    qint64 expressionsGivenUp = 0;  ///< times that an expression of the unimportant text was too slow to be decided
    QStringList expressionsLeftOut; ///< those that were too slow too often and found nothing from then on
};

/// Compares two texts given line by line under `options` and returns the aligned rows in display order.
///
/// Lines come without their line feeds; they may end in a carriage return. Reentrant. When `cancel` is set the call
/// ends within 100 ms and returns an empty list.
[[nodiscard]] QList<DiffLine> compareTextLines(const QStringList &left, const QStringList &right,
                                               const TextSessionOptions &options, const CancelFlag &cancel = {});

/// The same rows for two texts held as `TextLines`, without their texts (see `AlignedRow`). Only lines whose white
/// space or case is changed for the comparison are copied; costs about linear time, and 10 to 30 bytes a line beside
/// the texts. `progress` counts lines of both sides in phase 0 (reading them) and matched left lines in phase 1, and
/// names in phase 2 an expression that is left out from then on. Writes `remarks` unless it is null.
[[nodiscard]] QList<AlignedRow> compareTexts(const TextLines &left, const TextLines &right,
                                             const TextSessionOptions &options, const CancelFlag &cancel,
                                             Progress &progress, CompareRemarks *remarks = nullptr);

/// The rows of `compareTexts` with their texts, as `compareTextLines` would have returned them for the same lines.
[[nodiscard]] QList<DiffLine> withTexts(const QList<AlignedRow> &rows, const TextLines &left, const TextLines &right,
                                        const TextSessionOptions &options);

/// Aligns two lists of lines by their longest common blocks and pairs similar lines in the gaps between these.
[[nodiscard]] QList<DiffLine> diffLinesAligned(const QStringList &left, const QStringList &right,
                                               const AlignParams &params, const CancelFlag &cancel = {});

/// Pairs line k of one side with line k of the other.
[[nodiscard]] QList<DiffLine> diffLinesByIndex(const QStringList &left, const QStringList &right);

/// The parameters that `options` stand for.
[[nodiscard]] AlignParams alignParams(const TextSessionOptions &options);

/// The maximal runs of `b` that have no counterpart in `a`, in increasing order of start. Empty when cancelled.
[[nodiscard]] QList<CharRange> intraLineChanges(QStringView a, QStringView b, const CancelFlag &cancel = {});

} // namespace velmora
