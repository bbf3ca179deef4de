#pragma once

#include "core/text_lines.h"
#include "merge/engine/chunk_merge.h"

#include <QByteArray>

#include <optional>

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

/// Whether there is something to take apart. Costs a search where there is not, and a look at each line otherwise.
[[nodiscard]] bool hasConflictMarkers(const TextLines &text);

} // namespace velmora
