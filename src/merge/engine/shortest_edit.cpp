#include "merge/engine/shortest_edit.h"

#include <algorithm>
#include <cstdlib>
#include <limits>

namespace velmora {

namespace {

/// Elements [aFirst, aEnd) against [bFirst, bEnd).
struct Box {
    qint32 aFirst = 0;
    qint32 aEnd = 0;
    qint32 bFirst = 0;
    qint32 bEnd = 0;
    bool isCheap = false; ///< few edits are known to suffice, so that the shortest script is looked for to the end
};

struct Point {
    qint32 x = 0;
    qint32 y = 0;
};

/// Where two parts of a box meet, and which of them are cheap.
struct Split {
    Point at;
    bool cheapBefore = true;
    bool cheapBehind = true;
};

constexpr qint32 leastCostLimit = 256;
/// A search that has cost so much takes a path for right that ends in so long a run of equal elements and has left so
/// many elements behind for each edit.
constexpr qint32 longSearch = 256;
constexpr qint32 longRun = 20;
constexpr qint32 farForItsCost = 4;

/// A power of two of about the root of `value`.
qint32 rootLike(qint64 value) noexcept
{
    qint32 root = 1;
    for (; value > 0; value >>= 2)
        root *= 2;
    return root;
}

/// How far paths reach on the diagonals from a corner of a box on: one step back or one on changes the diagonal by 1.
class Front {
public:
    Front(qint64 diagonals, qint32 lowest) : m_reach(size_t(diagonals)), m_lowest(lowest) {}

    qint32 &operator[](qint32 diagonal) noexcept { return m_reach[size_t(diagonal - m_lowest)]; }

    void start(qint32 diagonal, qint32 reach) noexcept
    {
        low = high = diagonal;
        (*this)[diagonal] = reach;
    }

    /// One more diagonal at each side, or one less where the box ends. `never` loses against every reach.
    void widen(qint32 lowest, qint32 highest, qint32 never) noexcept
    {
        if (low > lowest)
            (*this)[--low - 1] = never;
        else
            ++low;
        if (high < highest)
            (*this)[++high + 1] = never;
        else
            --high;
    }

    [[nodiscard]] bool has(qint32 diagonal) const noexcept { return low <= diagonal && diagonal <= high; }

    qint32 low = 0;
    qint32 high = 0;

private:
    std::vector<qint32> m_reach;
    qint32 m_lowest;
};

class EditSearch {
public:
    EditSearch(std::span<const qint32> a, std::span<const qint32> b, CancelPoll &poll)
        : m_a(a),
          m_b(b),
          m_poll(poll),
          m_forward(qint64(a.size()) + qint64(b.size()) + 3, -qint32(b.size()) - 1),
          m_backward(qint64(a.size()) + qint64(b.size()) + 3, -qint32(b.size()) - 1),
          m_costLimit(std::max(leastCostLimit, rootLike(qint64(a.size()) + qint64(b.size()) + 3))),
          m_marks{std::vector<quint8>(a.size()), std::vector<quint8>(b.size())}
    {}

    EditMarks take()
    {
        std::vector<Box> boxes{{0, qint32(m_a.size()), 0, qint32(m_b.size())}};
        while (!boxes.empty() && !m_poll.stopped()) {
            const Box box = withoutEqualEnds(boxes.back());
            boxes.pop_back();
            if (box.aFirst == box.aEnd) {
                std::fill(m_marks.b.begin() + box.bFirst, m_marks.b.begin() + box.bEnd, quint8(1));
            } else if (box.bFirst == box.bEnd) {
                std::fill(m_marks.a.begin() + box.aFirst, m_marks.a.begin() + box.aEnd, quint8(1));
            } else {
                const Split middle = split(box);
                boxes.push_back({middle.at.x, box.aEnd, middle.at.y, box.bEnd, middle.cheapBehind});
                boxes.push_back({box.aFirst, middle.at.x, box.bFirst, middle.at.y, middle.cheapBefore});
            }
        }
        return std::move(m_marks);
    }

private:
    Box withoutEqualEnds(Box box) noexcept
    {
        while (box.aFirst < box.aEnd && box.bFirst < box.bEnd && m_a[box.aFirst] == m_b[box.bFirst])
            ++box.aFirst, ++box.bFirst;
        while (box.aFirst < box.aEnd && box.bFirst < box.bEnd && m_a[box.aEnd - 1] == m_b[box.bEnd - 1])
            --box.aEnd, --box.bEnd;
        return box;
    }

    /// A point that a shortest path through `box` passes, or a good one when that would cost too much.
    Split split(const Box &box)
    {
        const qint32 lowest = box.aFirst - box.bEnd;
        const qint32 highest = box.aEnd - box.bFirst;
        m_forward.start(box.aFirst - box.bFirst, box.aFirst);
        m_backward.start(box.aEnd - box.bEnd, box.aEnd);
        const bool odd = ((m_forward.low - m_backward.low) & 1) != 0;
        for (qint32 cost = 1;; ++cost) {
            Point met;
            m_hasLongRun = false;
            m_forward.widen(lowest, highest, -1);
            if (goForward(box, odd, met))
                return {met};
            m_backward.widen(lowest, highest, std::numeric_limits<qint32>::max());
            if (goBackward(box, !odd, met))
                return {met};
            if (m_poll.stop(qint64(cost) * 4))
                return furthest(box);
            if (box.isCheap)
                continue;
            if (cost > longSearch && m_hasLongRun) {
                if (forwardRun(box, cost, met))
                    return {met, true, false};
                if (backwardRun(box, cost, met))
                    return {met, false, true};
            }
            if (cost >= m_costLimit)
                return furthest(box);
        }
    }

    bool goForward(const Box &box, bool mayMeet, Point &met)
    {
        for (qint32 d = m_forward.high; d >= m_forward.low; d -= 2) {
            qint32 x = m_forward[d - 1] >= m_forward[d + 1] ? m_forward[d - 1] + 1 : m_forward[d + 1];
            const qint32 from = x;
            while (x < box.aEnd && x - d < box.bEnd && m_a[size_t(x)] == m_b[size_t(x - d)])
                ++x;
            m_hasLongRun = m_hasLongRun || x - from > longRun;
            m_forward[d] = x;
            if (mayMeet && m_backward.has(d) && m_backward[d] <= x) {
                met = {x, x - d};
                return true;
            }
        }
        return false;
    }

    bool goBackward(const Box &box, bool mayMeet, Point &met)
    {
        for (qint32 d = m_backward.high; d >= m_backward.low; d -= 2) {
            qint32 x = m_backward[d - 1] < m_backward[d + 1] ? m_backward[d - 1] : m_backward[d + 1] - 1;
            const qint32 from = x;
            while (x > box.aFirst && x - d > box.bFirst && m_a[size_t(x - 1)] == m_b[size_t(x - d - 1)])
                --x;
            m_hasLongRun = m_hasLongRun || from - x > longRun;
            m_backward[d] = x;
            if (mayMeet && m_forward.has(d) && x <= m_forward[d]) {
                met = {x, x - d};
                return true;
            }
        }
        return false;
    }

    /// Whether the elements from (x, y) on are a long run of equal ones.
    [[nodiscard]] bool isLongRun(qint32 x, qint32 y) const
    {
        return std::equal(m_a.begin() + x, m_a.begin() + x + longRun, m_b.begin() + y);
    }

    /// The end of the path from the start that has come furthest, if it has come far and ends in a long run.
    bool forwardRun(const Box &box, qint32 cost, Point &end)
    {
        qint32 most = farForItsCost * cost;
        const qint32 middle = box.aFirst - box.bFirst;
        bool found = false;
        for (qint32 d = m_forward.high; d >= m_forward.low; d -= 2) {
            const qint32 x = m_forward[d];
            const qint32 y = x - d;
            const qint32 behind = x - box.aFirst + y - box.bFirst - std::abs(d - middle);
            if (behind > most && x >= box.aFirst + longRun && x < box.aEnd && y >= box.bFirst + longRun &&
                y < box.bEnd && isLongRun(x - longRun, y - longRun)) {
                most = behind;
                end = {x, y};
                found = true;
            }
        }
        return found;
    }

    /// The same of the paths from the end.
    bool backwardRun(const Box &box, qint32 cost, Point &end)
    {
        qint32 most = farForItsCost * cost;
        const qint32 middle = box.aEnd - box.bEnd;
        bool found = false;
        for (qint32 d = m_backward.high; d >= m_backward.low; d -= 2) {
            const qint32 x = m_backward[d];
            const qint32 y = x - d;
            const qint32 behind = box.aEnd - x + box.bEnd - y - std::abs(d - middle);
            if (behind > most && x > box.aFirst && x <= box.aEnd - longRun && y > box.bFirst &&
                y <= box.bEnd - longRun && isLongRun(x, y)) {
                most = behind;
                end = {x, y};
                found = true;
            }
        }
        return found;
    }

    /// The end of the path, from either corner, that has left most behind.
    Split furthest(const Box &box)
    {
        Point fromStart{box.aFirst, box.bFirst};
        for (qint32 d = m_forward.high; d >= m_forward.low; d -= 2) {
            const qint32 x = std::min({m_forward[d], box.aEnd, box.bEnd + d});
            if (x + x - d > fromStart.x + fromStart.y)
                fromStart = {x, x - d};
        }
        Point fromEnd{box.aEnd, box.bEnd};
        for (qint32 d = m_backward.high; d >= m_backward.low; d -= 2) {
            const qint32 x = std::max({m_backward[d], box.aFirst, box.bFirst + d});
            if (x + x - d < fromEnd.x + fromEnd.y)
                fromEnd = {x, x - d};
        }
        const qint32 behind = fromStart.x + fromStart.y - box.aFirst - box.bFirst;
        const qint32 ahead = box.aEnd + box.bEnd - fromEnd.x - fromEnd.y;
        return behind > ahead ? Split{fromStart, true, false} : Split{fromEnd, false, true};
    }

    std::span<const qint32> m_a;
    std::span<const qint32> m_b;
    CancelPoll &m_poll;
    Front m_forward;
    Front m_backward;
    qint32 m_costLimit;
    bool m_hasLongRun = false; ///< in the last step from both ends
    EditMarks m_marks;
};

} // namespace

EditMarks shortestEdit(std::span<const qint32> a, std::span<const qint32> b, CancelPoll &poll)
{
    return EditSearch(a, b, poll).take();
}

} // namespace velmora
