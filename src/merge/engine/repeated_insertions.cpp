#include "merge/engine/repeated_insertions.h"

#include "merge/engine/telling_lines.h"

#include <algorithm>

namespace velmora {

namespace {

using Numbers = std::span<const qint32>;

/// What one text alone has inserted in a chunk.
struct Insertion {
    Numbers lines;
    MergeChunk *chunk;
};

bool isBefore(const Insertion &one, const Insertion &other)
{
    return std::ranges::lexicographical_compare(one.lines, other.lines);
}

std::vector<Insertion> insertions(std::vector<MergeChunk> &chunks, ChunkKind kind, LineRange MergeChunk::*side,
                                  Numbers lines)
{
    std::vector<Insertion> found;
    for (MergeChunk &chunk : chunks) {
        if (chunk.kind == kind && chunk.base.isEmpty()) {
            const LineRange range = chunk.*side;
            found.push_back({lines.subspan(size_t(range.first), size_t(range.count)), &chunk});
        }
    }
    std::ranges::sort(found, isBefore);
    return found;
}

} // namespace

void markInsertions(std::vector<MergeChunk> &chunks, const TextLines &left, std::span<const qint32> leftNumbers,
                    std::span<const qint32> rightNumbers)
{
    for (MergeChunk &chunk : chunks) {
        if (chunk.kind == ChunkKind::Both && chunk.base.isEmpty())
            chunk.mark = ChunkMark::BothInserted;
    }
    const std::vector<Insertion> onLeft = insertions(chunks, ChunkKind::Left, &MergeChunk::left, leftNumbers);
    const std::vector<Insertion> onRight = insertions(chunks, ChunkKind::Right, &MergeChunk::right, rightNumbers);
    for (const Insertion &insertion : onLeft) {
        const auto alike = std::equal_range(onRight.begin(), onRight.end(), insertion, isBefore);
        if (alike.first == alike.second || !isTelling(bytesOf(left, insertion.chunk->left)))
            continue;
        insertion.chunk->mark = ChunkMark::InsertedTwice;
        // All alike have been marked with the first of them.
        if (alike.first->chunk->mark == ChunkMark::InsertedTwice)
            continue;
        for (auto other = alike.first; other != alike.second; ++other)
            other->chunk->mark = ChunkMark::InsertedTwice;
    }
}

} // namespace velmora
