#pragma once

#include "merge/model/merge_part.h"

#include <QByteArray>

namespace velmora {

/// The texts that a file with conflict markers was made of, as far as it tells.
struct MarkedMerge {
    TextLines left;
    TextLines base; ///< without markers of a base its lines are those outside of conflicts
    TextLines right;
    ChunkMerge merge;
    bool hasBase = false; ///< some conflict says what the base had
    QByteArray leftLabel; ///< of the first conflict, UTF-8
    QByteArray baseLabel;
    QByteArray rightLabel;
};

/// Takes a text with conflict markers apart: blocks of "<<<<<<<", "|||||||" (not in all), "=======" and ">>>>>>>", each
/// of seven characters, alone or before a blank, at the start of a line. Nothing when there is no such block, or when
/// one is not complete or within another: what cannot be told apart for certain is left to a person. Reentrant.
[[nodiscard]] std::optional<MarkedMerge> readConflictMarkers(const TextLines &text);

/// What stands behind the markers, UTF-8.
struct MarkerLabels {
    QByteArray left;
    QByteArray base;
    QByteArray right;
};

/// `result` with a block of markers, base included, in the place of each open conflict.
[[nodiscard]] TextLines withConflictMarkers(const MergeTexts &texts, const std::vector<MergePart> &parts,
                                            const EditSnapshot &result, const MarkerLabels &labels);

} // namespace velmora
