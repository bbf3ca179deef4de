#pragma once

#include "core/cancel_flag.h"
#include "core/progress.h"
#include "core/text_lines.h"
#include "merge/engine/line_numbers.h"
#include "merge/engine/line_range.h"

#include <vector>

namespace velmora {

/// Who changed the base in a chunk.
enum class ChunkKind : quint8 {
    Unchanged, ///< nobody
    Left,      ///< the left text alone
    Right,
    Both,     ///< both texts, alike
    Conflict, ///< both texts, each in its own way
};

/// What makes a chunk that is no conflict worth a look.
enum class ChunkMark : quint8 {
    None,
    BothInserted,  ///< both texts inserted the same lines at the same place; the merge has them once
    InsertedTwice, ///< the other text inserted the same lines elsewhere; the merge has them twice
};

/// Some lines of the three texts that belong together. Any of the ranges may be empty, but not all.
struct MergeChunk {
    ChunkKind kind = ChunkKind::Unchanged;
    ChunkMark mark = ChunkMark::None;
    LineRange base;
    LineRange left;
    LineRange right;

    friend bool operator==(const MergeChunk &, const MergeChunk &) = default;
};

/// Three texts as chunks, which cover every line of each text exactly once, in the order of all three.
///
/// Two unchanged chunks never follow one another; neither do two chunks of one side. Three empty texts have no chunks.
struct ChunkMerge {
    std::vector<MergeChunk> chunks;

    [[nodiscard]] qsizetype conflicts() const noexcept;
    [[nodiscard]] bool isClean() const noexcept { return conflicts() == 0; }
};

/// What counts as a change, and which changes are in each other's way.
struct ChunkMergeOptions {
    bool compareLineEnds = true; ///< a line that only ends otherwise is changed
    /// Changes of the two texts are one conflict when they touch: when no unchanged line stands between them. Without
    /// this, only changes of the same lines and insertions at the same place are, where lines that replace as many
    /// lines are paired in their order; the chunks of touching changes then follow one another.
    bool joinTouching = true;
};

/// The steps that a `Progress` counts.
enum ChunkMergePhase : int {
    NumberingLines = 0,    ///< lines of all three texts
    ComparingWithBase = 1, ///< texts that have been compared with the base
};

/// Merges `left` and `right`, which were both made of `base`, without losing a line of any.
///
/// What differs between two texts are the fewest lines, as Myers' algorithm finds them, in the place that `diff` and
/// `git` give them (see `lineChanges`). Looks only at bytes, which need not be valid UTF-8. Reentrant; costs about 12
/// bytes a line beside the texts, and about linear time unless the texts have little in common. When `cancel` is set
/// the call ends within 100 ms without chunks.
[[nodiscard]] ChunkMerge mergeChunks(const TextLines &base, const TextLines &left, const TextLines &right,
                                     const ChunkMergeOptions &options, const CancelFlag &cancel, Progress &progress);

/// The same for a base that is numbered already, with or without the ends of its lines, which counts instead of
/// `compareLineEnds`.
[[nodiscard]] ChunkMerge mergeChunks(LineNumbering &&base, const TextLines &left, const TextLines &right,
                                     const ChunkMergeOptions &options, const CancelFlag &cancel, Progress &progress);

} // namespace velmora
