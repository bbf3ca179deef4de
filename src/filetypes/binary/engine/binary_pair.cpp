#include "filetypes/binary/engine/binary_pair.h"

#include <algorithm>
#include <vector>

namespace velmora {

namespace {

struct Gap {
    qint64 begin = 0; ///< within the piece
    qint64 end = 0;
};

/// What of a piece cannot be read. A medium that fails is asked again after each page: it may have lost one only.
std::vector<Gap> readAround(const BinaryPart &part, qint64 offset, qint64 length, char *buffer)
{
    constexpr qint64 page = 4096;
    std::vector<Gap> gaps;
    for (qint64 at = 0; at < length;) {
        const FilePiece piece = part.source.readSome(part.start + offset + at, buffer + at, length - at);
        at += piece.length;
        if (at >= length)
            break;
        const qint64 next = piece.failed ? std::min(length, ((offset + at) / page + 1) * page - offset) : length;
        gaps.push_back({at, next});
        at = next;
    }
    return gaps;
}

void makeDiffer(const std::vector<Gap> &gaps, char *bytes, const char *others)
{
    for (const Gap &gap : gaps)
        std::transform(others + gap.begin, others + gap.end, bytes + gap.begin, [](char byte) { return char(~byte); });
}

} // namespace

void BinaryPair::read(qint64 offset, qint64 length, const PieceBuffers &buffers) const
{
    const std::vector<Gap> leftGaps = readAround(left, offset, length, buffers.left.data());
    const std::vector<Gap> rightGaps = readAround(right, offset, length, buffers.right.data());
    // In this order a byte that neither side can read differs, too.
    makeDiffer(leftGaps, buffers.left.data(), buffers.right.data());
    makeDiffer(rightGaps, buffers.right.data(), buffers.left.data());
}

} // namespace velmora
