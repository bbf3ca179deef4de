#include "core/pair_scan.h"

#include "core/crew.h"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <mutex>
#include <vector>

namespace velmora {

namespace {

constexpr qint64 blockSize = 1024 * 1024;
static_assert(blockSize % pieceSize == 0);

/// What one thread reads in a row: long enough for the system to see that it reads on, whole blocks, and short enough
/// that all threads end at about the same time.
constexpr qint64 stretchSize = 4 * blockSize;

/// Tells equal pieces from others, in the order of their offsets from the start of a block on.
class PieceJudge {
public:
    PieceJudge(PieceRule rule, const PieceBuffers &buffers)
        : m_rule(rule), m_left(buffers.left.data()), m_right(buffers.right.data())
    {}

    [[nodiscard]] bool isSame(qint64 offset, qint64 length)
    {
        const auto size = std::size_t(length);
        if (m_rule == PieceRule::Bytes)
            return std::memcmp(m_left, m_right, size) == 0;
        if (offset % blockSize == 0)
            m_zeroSeen = false;
        if (m_zeroSeen)
            return true;
        const bool equal = std::memcmp(m_left, m_right, size) == 0;
        const char *const end = equal ? m_left + size : std::mismatch(m_left, m_left + size, m_right).first;
        m_zeroSeen = std::memchr(m_left, 0, std::size_t(end - m_left)) != nullptr;
        return equal || m_zeroSeen;
    }

private:
    PieceRule m_rule;
    const char *m_left;
    const char *m_right;
    bool m_zeroSeen = false; ///< in the current block, at the same place of both files
};

/// The end that comes first of those that several threads find. A thread that is beyond it has nothing left to do; one
/// that is before it goes on, since it may find an earlier one.
class NearestEnd {
public:
    [[nodiscard]] bool isBefore(qint64 offset) const { return m_offset.load(std::memory_order_relaxed) < offset; }

    void offer(const std::optional<PairEnd> &end)
    {
        if (!end)
            return;
        const std::lock_guard lock(m_mutex);
        if (!m_end || end->offset < m_end->offset) {
            m_end = end;
            m_offset = end->offset;
        }
    }

    [[nodiscard]] const std::optional<PairEnd> &value() const { return m_end; }

private:
    std::mutex m_mutex;
    std::optional<PairEnd> m_end;
    std::atomic<qint64> m_offset{PairScan::toTheEnd};
};

} // namespace

std::optional<PairEnd> PairScan::walk(qint64 from, qint64 to, PieceBuffers &buffers,
                                      const std::function<bool(qint64)> &before, const Listener &listener) const
{
    PieceJudge judge(m_rule, buffers);
    for (qint64 offset = from; offset < to; offset += pieceSize) {
        if (m_cancel.isCancelled() || !before(offset) || m_cancel.isCancelled())
            return std::nullopt;
        const FilePiece left = m_left.readAt(offset, buffers.left.data(), pieceSize);
        const FilePiece right = m_right.readAt(offset, buffers.right.data(), pieceSize);
        const bool same = left == right && judge.isSame(offset, left.length);
        if (same)
            listener(left.length);
        if (!same || left.length < pieceSize)
            return PairEnd{offset, same, left.failed, right.failed};
    }
    return std::nullopt;
}

std::optional<PairEnd> PairScan::walkWithCrew(qint64 from, PieceBuffers &buffers, const Listener &listener) const
{
    const int size = crewSize();
    // Made before there are threads, so that a lack of memory meets the caller alone.
    std::vector<PieceBuffers> others(std::size_t(size - 1));
    std::atomic<qint64> next{from};
    std::atomic<qint64> uncounted{0};
    NearestEnd nearest;
    const auto tell = [&](qint64 bytes) { listener(bytes + uncounted.exchange(0)); };
    const auto work = [&](int worker) {
        PieceBuffers &own = worker == 0 ? buffers : others[std::size_t(worker - 1)];
        const Listener count = worker == 0 ? Listener(tell) : [&uncounted](qint64 bytes) { uncounted += bytes; };
        const auto before = [&nearest](qint64 offset) { return !nearest.isBefore(offset); };
        while (!m_cancel.isCancelled()) {
            const qint64 begin = next.fetch_add(stretchSize);
            if (nearest.isBefore(begin))
                return;
            nearest.offer(walk(begin, begin + stretchSize, own, before, count));
        }
    };
    runCrew(size, work, [&tell] { tell(0); });
    tell(0);
    return m_cancel.isCancelled() ? std::nullopt : nearest.value();
}

} // namespace velmora
