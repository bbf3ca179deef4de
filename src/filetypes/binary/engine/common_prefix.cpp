#include "filetypes/binary/engine/common_prefix.h"

#include "core/crew.h"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <vector>

namespace velmora {

namespace {

constexpr qint64 stretchSize = 4 * 1024 * 1024;

/// The first place at which two pieces differ; `length` when they do not.
qint64 firstDifference(const PieceBuffers &buffers, qint64 length)
{
    const char *const left = buffers.left.data();
    if (std::memcmp(left, buffers.right.data(), std::size_t(length)) == 0)
        return length;
    return std::mismatch(left, left + length, buffers.right.data()).first - left;
}

void lower(std::atomic<qint64> &nearest, qint64 place)
{
    qint64 known = nearest;
    while (place < known && !nearest.compare_exchange_weak(known, place)) {
    }
}

} // namespace

qint64 commonPrefix(const BinaryPair &files, const CancelFlag &cancel, const std::function<void(qint64)> &advanced)
{
    const qint64 common = files.common();
    const int size = int(std::min<qint64>(crewSize(), common / stretchSize + 1));
    // Made before there are threads, so that a lack of memory meets the caller alone.
    const std::vector<PieceBuffers> buffers{std::size_t(size)};
    std::atomic<qint64> next{0};
    std::atomic<qint64> nearest{common};
    const auto scan = [&](qint64 from, const PieceBuffers &own) {
        const qint64 to = std::min(from + stretchSize, common);
        qint64 offset = std::clamp(files.nextData(from), from, to);
        while (offset < std::min<qint64>(to, nearest) && !cancel.isCancelled()) {
            const qint64 length = std::min(pieceSize, to - offset);
            files.read(offset, length, own);
            const qint64 same = firstDifference(own, length);
            offset += same;
            if (same < length) {
                lower(nearest, offset);
                return;
            }
        }
    };
    const auto work = [&](int worker) {
        for (qint64 from = next.fetch_add(stretchSize); from < nearest && !cancel.isCancelled();
             from = next.fetch_add(stretchSize)) {
            if (worker == 0 && advanced)
                advanced(from);
            scan(from, buffers[std::size_t(worker)]);
        }
    };
    runCrew(size, work, {});
    return nearest;
}

} // namespace velmora
