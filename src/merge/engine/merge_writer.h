#pragma once

#include "merge/engine/chunk_merge.h"

#include <QByteArray>

namespace velmora {

class OutputBuffer;

/// How a conflict is written into a text.
enum class MarkerStyle : quint8 {
    Merge,  ///< both versions without the base; what they have in common is no part of the conflict
    Diff3,  ///< both versions whole, with the base between them
    Zdiff3, ///< the same without the lines that both versions begin or end with
};

/// The lines that frame a conflict: a run of one character, and a name behind it.
struct MarkerFormat {
    MarkerStyle style = MarkerStyle::Merge;
    qsizetype size = 7;  ///< characters in a run, at least 1
    QByteArray leftName; ///< without line feeds; empty for none
    QByteArray baseName;
    QByteArray rightName;
};

/// The three texts of a merge.
struct ChunkTexts {
    const TextLines &base;
    const TextLines &left;
    const TextLines &right;
};

/// The chunks as `style` shows them. In `MarkerStyle::Merge` a conflict is cut up by what its two versions have in
/// common, and conflicts are one that have between them at most three lines, or none with a letter or digit; the lines
/// of the base are with the first part of a conflict then.
[[nodiscard]] std::vector<MergeChunk> shownChunks(const ChunkMerge &merge, const ChunkTexts &texts, MarkerStyle style);

/// Writes the merged text, with markers where there are conflicts. What is taken from a text is taken byte for byte.
/// A marker ends as the lines before it do in both versions, with CR LF or LF; so does, within a conflict, a last line
/// without an end.
void writeMerge(OutputBuffer &output, const std::vector<MergeChunk> &shown, const ChunkTexts &texts,
                const MarkerFormat &format);

} // namespace velmora
