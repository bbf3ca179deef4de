#include "filetypes/binary/engine/binary_align.h"

#include "core/crew.h"
#include "core/sides.h"
#include "filetypes/binary/engine/block_anchors.h"
#include "filetypes/binary/engine/common_prefix.h"
#include "filetypes/binary/engine/sliding_reader.h"

#include <algorithm>
#include <atomic>
#include <bitset>
#include <optional>

namespace velmora {

namespace {

/// Fewer equal bytes than this between two changes are chance.
constexpr qint64 leastMatch = 32;
/// How far a change may reach that leaves everything after it at its place.
constexpr qint64 changeReach = 4096;
constexpr qint64 firstWindow = 4096;
constexpr qint64 windowGrowth = 8;
constexpr qint64 nearbyWindow = firstWindow * windowGrowth;
/// What is compared before threads are worth their making.
constexpr qint64 soloReach = 1024 * 1024;

/// Whether bytes are so various that finding them again means something.
bool isTelling(QByteArrayView bytes)
{
    constexpr std::size_t variety = 4;
    std::bitset<256> seen;
    for (const char byte : bytes)
        seen.set(uchar(byte));
    return seen.count() >= variety;
}

class Aligner {
public:
    Aligner(const BinaryPair &files, const CancelFlag &cancel, Progress &progress)
        : m_files(files), m_cancel(cancel), m_progress(progress), m_left(files.left), m_right(files.right)
    {}

    Alignment run()
    {
        while (!m_cancel.isCancelled() && m_result.ranges.size() + 2 < Alignment::rangeLimit) {
            m_progress.report(0, m_at.left, m_files.left.size());
            const qint64 same = equalLength();
            add({same, same}, true);
            if (m_at.left >= m_left.end() || m_at.right >= m_right.end())
                break;
            const std::optional<Distance> gap = findAgain();
            if (!gap)
                break;
            add(*gap, false);
        }
        const Distance rest{m_files.left.size() - m_at.left, m_files.right.size() - m_at.right};
        m_result.isCapped = m_result.ranges.size() + 2 >= Alignment::rangeLimit && (rest.left > 0 || rest.right > 0);
        add(rest, false);
        return std::move(m_result);
    }

private:
    using Distance = Sides<qint64>; ///< from where both sides are

    void add(const Distance &length, bool isEqual)
    {
        if (length.left == 0 && length.right == 0)
            return;
        m_result.ranges.push_back({isEqual ? RangeKind::Equal : kindOfDifference(length.left, length.right),
                                   m_files.left.start + m_at.left, length.left, m_files.right.start + m_at.right,
                                   length.right});
        m_at.left += length.left;
        m_at.right += length.right;
    }

    /// How far both go on alike.
    qint64 equalLength()
    {
        qint64 same = 0;
        while (same < soloReach) {
            const QByteArrayView left = m_left.from(m_at.left + same, 1);
            const QByteArrayView right = m_right.from(m_at.right + same, 1);
            const qsizetype length = std::min(left.size(), right.size());
            const auto end = std::mismatch(left.begin(), left.begin() + length, right.begin()).first;
            same += end - left.begin();
            if (length == 0 || end != left.begin() + length)
                return same;
        }
        const BinaryPair rest{{m_files.left.source, m_files.left.start + m_at.left + same},
                              {m_files.right.source, m_files.right.start + m_at.right + same}};
        const auto advanced = [&](qint64 bytes) {
            m_progress.report(0, m_at.left + same + bytes, m_files.left.size());
        };
        return same + commonPrefix(rest, m_cancel, advanced);
    }

    /// Where the sides are alike again.
    std::optional<Distance> findAgain()
    {
        const std::optional<qint64> changed = findAtSamePlace();
        if (changed && isTelling(m_left.from(m_at.left + *changed, leastMatch).first(leastMatch)))
            return Distance{*changed, *changed};
        // Bytes that say little, as padding, are trusted unless something nearby contradicts them: to search all that
        // follows for each change in a long padding would take for ever.
        const qint64 rest = std::max(m_files.left.size() - m_at.left, m_files.right.size() - m_at.right);
        const qint64 longest = changed ? std::min(rest, nearbyWindow) : rest;
        for (qint64 window = firstWindow;; window *= windowGrowth) {
            const std::optional<Distance> moved = findMoved(AnchorRule::of(std::min(window, longest)));
            if (moved && changed && moved->left == moved->right)
                break;
            if (moved)
                return moved;
            if (window >= longest || m_cancel.isCancelled())
                break;
        }
        return changed ? std::optional(Distance{*changed, *changed}) : std::nullopt;
    }

    /// The length of a change that has moved nothing.
    std::optional<qint64> findAtSamePlace()
    {
        const QByteArrayView left = m_left.from(m_at.left, changeReach);
        const QByteArrayView right = m_right.from(m_at.right, changeReach);
        const qsizetype length = std::min({left.size(), right.size(), qsizetype(changeReach)});
        qint64 same = 0;
        for (qsizetype k = 0; k < length; ++k) {
            same = left[k] == right[k] ? same + 1 : 0;
            if (same == leastMatch)
                return k + 1 - leastMatch;
        }
        return std::nullopt;
    }

    std::optional<Distance> findMoved(const AnchorRule &rule)
    {
        constexpr qint64 worthAThread = 1024 * 1024;
        constexpr std::size_t candidates = 16;
        std::vector<Anchor> left;
        std::vector<Anchor> right;
        const auto find = [&](bool isLeft) {
            if (isLeft)
                left = findAnchors(m_files.left, m_at.left, rule, m_cancel);
            else
                right = findAnchors(m_files.right, m_at.right, rule, m_cancel);
        };
        const int size = rule.window >= worthAThread ? 2 : 1;
        std::atomic<int> next{0};
        const auto work = [&](int) {
            for (int side = next++; side < 2; side = next++)
                find(side == 0);
        };
        runCrew(size, work, {});
        for (const AnchorPair &pair : pairAnchors(std::move(left), std::move(right), candidates)) {
            if (const std::optional<Distance> found = verified(pair))
                return found;
        }
        return std::nullopt;
    }

    /// The beginning of the bytes that are alike around a pair of anchors.
    std::optional<Distance> verified(const AnchorPair &pair)
    {
        constexpr qint64 step = 4096;
        const QByteArrayView left = m_left.from(pair.left, leastMatch);
        const QByteArrayView right = m_right.from(pair.right, leastMatch);
        const qsizetype length = std::min({left.size(), right.size(), qsizetype(leastMatch)});
        const qint64 after = std::mismatch(left.begin(), left.begin() + length, right.begin()).first - left.begin();
        qint64 before = 0;
        const qint64 most = std::min(pair.left - m_at.left, pair.right - m_at.right);
        while (before < most) {
            const qint64 wanted = std::min(step, most - before);
            const QByteArrayView leftPart = m_left.from(pair.left - before - wanted, wanted);
            const QByteArrayView rightPart = m_right.from(pair.right - before - wanted, wanted);
            if (std::min(leftPart.size(), rightPart.size()) < wanted)
                break;
            qint64 same = 0;
            while (same < wanted && leftPart[wanted - 1 - same] == rightPart[wanted - 1 - same])
                ++same;
            before += same;
            if (same < wanted)
                break;
        }
        // Whatever ends both files is alike however short it is.
        const bool reachesEnds = pair.left + after == m_left.end() && pair.right + after == m_right.end();
        if (before + after < leastMatch && !reachesEnds)
            return std::nullopt;
        return Distance{pair.left - before - m_at.left, pair.right - before - m_at.right};
    }

    const BinaryPair &m_files;
    const CancelFlag &m_cancel;
    Progress &m_progress;
    SlidingReader m_left;
    SlidingReader m_right;
    Distance m_at;
    Alignment m_result;
};

} // namespace

qint64 Alignment::differences() const
{
    return std::count_if(ranges.begin(), ranges.end(),
                         [](const AlignedRange &range) { return range.kind != RangeKind::Equal; });
}

Alignment alignFiles(const BinaryPair &files, const CancelFlag &cancel, Progress &progress)
{
    return Aligner(files, cancel, progress).run();
}

} // namespace velmora
