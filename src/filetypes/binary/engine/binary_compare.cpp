#include "filetypes/binary/engine/binary_compare.h"

#include "core/crew.h"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <map>
#include <mutex>

namespace velmora {

namespace {

/// What one thread takes on at a time: long enough for the system to see that it reads on.
constexpr qint64 stretchSize = 4 * 1024 * 1024;
static_assert(stretchSize % pieceSize == 0);
static_assert(pieceSize % rowSize == 0);

/// The rows that differ in one stretch.
struct StretchRows {
    qint64 count = 0;
    std::vector<qint64> rows; ///< all of them, unless nobody wants them
};

/// Puts the rows of stretches into their order, which are done in another one.
class RowCollector {
public:
    explicit RowCollector(RowComparison &result) : m_result(result) {}

    /// What a thread takes on next.
    struct Task {
        qint64 stretch = 0;
        bool wantsRows = false; ///< its rows can still come into the list
    };

    /// Hands out one stretch after the other. Those that wait for an earlier one to be done stand before it, so that
    /// their rows fill the list before its own: what was found when it is handed out decides.
    [[nodiscard]] Task begin()
    {
        const std::lock_guard lock(m_mutex);
        return {m_begun++, m_result.diffRows.size() + m_waitingRows < RowComparison::listLimit};
    }

    /// The stretches that were handed out.
    [[nodiscard]] qint64 begun()
    {
        const std::lock_guard lock(m_mutex);
        return m_begun;
    }

    void take(qint64 stretch, StretchRows &&found)
    {
        const std::lock_guard lock(m_mutex);
        m_result.differing += found.count;
        m_waitingRows += found.rows.size();
        m_waiting.emplace(stretch, std::move(found.rows));
        for (auto first = m_waiting.begin(); first != m_waiting.end() && first->first == m_next; ++m_next) {
            m_waitingRows -= first->second.size();
            append(first->second);
            first = m_waiting.erase(first);
        }
    }

private:
    void append(const std::vector<qint64> &rows)
    {
        const std::size_t room = RowComparison::listLimit - m_result.diffRows.size();
        const std::size_t taken = std::min(room, rows.size());
        m_result.diffRows.insert(m_result.diffRows.end(), rows.begin(), rows.begin() + std::ptrdiff_t(taken));
    }

    std::mutex m_mutex;
    RowComparison &m_result;
    std::map<qint64, std::vector<qint64>> m_waiting; ///< by stretch
    std::size_t m_waitingRows = 0;
    qint64 m_begun = 0;
    qint64 m_next = 0; ///< the first stretch that is not done
};

bool rowsEqual(const char *left, const char *right) noexcept
{
    quint64 a[2];
    quint64 b[2];
    static_assert(sizeof(a) == rowSize);
    std::memcpy(a, left, sizeof(a));
    std::memcpy(b, right, sizeof(b));
    return ((a[0] ^ b[0]) | (a[1] ^ b[1])) == 0;
}

/// Judges the rows of two pieces of `length` bytes. The last row may be a part of one.
void judgeRows(qint64 offset, qint64 length, const PieceBuffers &buffers, bool listed, StretchRows &found)
{
    const char *const left = buffers.left.data();
    const char *const right = buffers.right.data();
    if (std::memcmp(left, right, std::size_t(length)) == 0)
        return;
    const qint64 whole = length - length % rowSize;
    qint64 count = 0;
    for (qint64 at = 0; at < whole; at += rowSize) {
        if (rowsEqual(left + at, right + at))
            continue;
        ++count;
        if (listed)
            found.rows.push_back((offset + at) / rowSize);
    }
    if (std::memcmp(left + whole, right + whole, std::size_t(length - whole)) != 0) {
        ++count;
        if (listed)
            found.rows.push_back((offset + whole) / rowSize);
    }
    found.count += count;
}

StretchRows compareStretch(const BinaryPair &files, qint64 from, qint64 to, const PieceBuffers &buffers, bool listed,
                           const CancelFlag &cancel)
{
    StretchRows found;
    // Asked for once: where there is data there is likely to be more.
    const qint64 hole = std::clamp(files.nextData(from), from, to) - from;
    for (qint64 offset = from + hole / pieceSize * pieceSize; offset < to && !cancel.isCancelled();
         offset += pieceSize) {
        const qint64 length = std::min(pieceSize, to - offset);
        files.read(offset, length, buffers);
        judgeRows(offset, length, buffers, listed, found);
    }
    return found;
}

/// Counts and lists the rows from `first` on, all of which differ.
void addRows(RowComparison &result, qint64 first)
{
    result.differing += result.rowCount - first;
    const qint64 room = qint64(RowComparison::listLimit - result.diffRows.size());
    for (qint64 row = first; row < std::min(result.rowCount, first + room); ++row)
        result.diffRows.push_back(row);
}

} // namespace

RowComparison compareRows(const BinaryPair &files, const CancelFlag &cancel, Progress &progress)
{
    RowComparison result;
    const qint64 longer = std::max(files.left.size(), files.right.size());
    result.rowCount = (longer + rowSize - 1) / rowSize;
    const bool sameSize = files.left.size() == files.right.size();
    // The row in which only one file ends differs whatever it holds.
    const qint64 read = sameSize ? longer : files.common() / rowSize * rowSize;

    const int size = int(std::min<qint64>(crewSize(), read / stretchSize + 1));
    // Made before there are threads, so that a lack of memory meets the caller alone.
    const std::vector<PieceBuffers> buffers{std::size_t(size)};
    RowCollector collector(result);
    std::atomic<bool> failed{false};
    const auto work = [&](int worker) {
        try {
            while (!failed && !cancel.isCancelled()) {
                const RowCollector::Task task = collector.begin();
                const qint64 from = task.stretch * stretchSize;
                if (from >= read)
                    return;
                if (worker == 0)
                    progress.report(0, from, read);
                const qint64 to = std::min(read, from + stretchSize);
                const PieceBuffers &own = buffers[std::size_t(worker)];
                collector.take(task.stretch, compareStretch(files, from, to, own, task.wantsRows, cancel));
            }
        } catch (...) {
            failed = true;
            throw;
        }
    };
    runCrew(size, work, [&] { progress.report(0, std::min(read, collector.begun() * stretchSize), read); });
    if (!sameSize)
        addRows(result, read / rowSize);
    result.isCapped = result.differing > qint64(result.diffRows.size());
    return result;
}

} // namespace velmora
