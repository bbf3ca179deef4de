#include "folder/operations/kept_copy.h"

#include <cstring>
#include <vector>

namespace velmora {

namespace {

constexpr qint64 blockSize = 256 << 10;

bool isAsSeen(const SeenFile &file, std::optional<FileIdentity> &identity)
{
    const NodeResult state = file.source.state();
    identity = state.node.identity;
    return !state.error.isError() && file.seen.isStill(state.node);
}

CopiesFound compareBytes(FileSource &left, FileSource &right, const FileSink::Tick &tick)
{
    std::vector<char> leftBlock(static_cast<std::size_t>(blockSize));
    std::vector<char> rightBlock(static_cast<std::size_t>(blockSize));
    for (;;) {
        if (!tick(0))
            return CopiesFound::Stopped;
        const FilePiece one = left.read(leftBlock.data(), blockSize);
        const FilePiece other = right.read(rightBlock.data(), blockSize);
        if (one.failed || other.failed || one.length != other.length ||
            std::memcmp(leftBlock.data(), rightBlock.data(), std::size_t(one.length)) != 0)
            return CopiesFound::Different;
        if (one.length < blockSize)
            return CopiesFound::Same;
    }
}

} // namespace

CopiesFound compareCopies(const SeenFile &left, const SeenFile &right, const FileSink::Tick &tick)
{
    std::optional<FileIdentity> leftIdentity;
    std::optional<FileIdentity> rightIdentity;
    if (!isAsSeen(left, leftIdentity) || !isAsSeen(right, rightIdentity) ||
        (leftIdentity && leftIdentity == rightIdentity))
        return CopiesFound::Different;
    const CopiesFound found = compareBytes(left.source, right.source, tick);
    const bool stayed = isAsSeen(left, leftIdentity) && isAsSeen(right, rightIdentity);
    return found == CopiesFound::Same && !stayed ? CopiesFound::Different : found;
}

} // namespace velmora
