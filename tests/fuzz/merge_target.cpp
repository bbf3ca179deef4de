#include "core/text_file.h"
#include "fuzz/targets.h"
#include "merge/engine/conflict_markers.h"

#include <algorithm>

namespace velmora::fuzz {

/// What a file with conflict markers is taken apart into covers its three texts, and they hold nothing but its lines.
void conflictMarkers(const QByteArray &input)
{
    const TextLines marked = decodeText(input, {}).lines;
    const std::optional<MarkedMerge> read = readConflictMarkers(marked);
    if (!read)
        return;
    qsizetype left = 0;
    qsizetype base = 0;
    qsizetype right = 0;
    for (const MergeChunk &chunk : read->merge.chunks) {
        require(chunk.left.first == left && chunk.base.first == base && chunk.right.first == right, "chunks follow");
        left = chunk.left.end();
        base = chunk.base.end();
        right = chunk.right.end();
        if (chunk.kind != ChunkKind::Unchanged)
            continue;
        require(bytesOf(read->left, chunk.left) == bytesOf(read->right, chunk.right), "both sides are the same");
        require(bytesOf(read->left, chunk.left) == bytesOf(read->base, chunk.base), "and so is the base");
    }
    require(left == read->left.count() && base == read->base.count() && right == read->right.count(),
            "chunks cover the texts");
    require(std::max({left, base, right}) < marked.count(), "markers are no lines of a text");
}

} // namespace velmora::fuzz
