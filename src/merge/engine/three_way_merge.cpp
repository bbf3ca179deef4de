#include "merge/engine/three_way_merge.h"

#include "core/crew.h"
#include "text/engine/alignment.h"
#include "text/engine/side_reader.h"

#include <algorithm>

namespace velmora {

namespace {

constexpr AlignParams mergeParams{.mode = 0, .threshold = 0.35, .lookahead = 0, .skewTolerance = 2000};

/// Comparing fewer takes less time than starting a thread for it.
constexpr qint32 linesWorthAThread = 4096;

constexpr qint32 kept = -1;
constexpr qint32 deleted = -2;

/// What one version has made of the base.
struct VersionChanges {
    std::vector<qint32> fates; ///< of each base line: `kept`, `deleted`, or the index of the line that it has become
    struct Inserted {
        qint32 line;
        qint32 beforeBase;
    };
    std::vector<Inserted> inserted; ///< lines without a line in the base, and the base line before which they stand
};

template <typename Source>
VersionChanges changesOf(const Source &base, const Source &version, const CancelFlag &cancel)
{
    Progress silent;
    BothSides<Source> sides = readSides(base, version, nullptr, nullptr, cancel, silent);
    VersionChanges changes;
    changes.fates.assign(size_t(base.count()), kept);
    if (cancel.isCancelled())
        return changes;
    qint32 next = 0;
    for (const AlignedRow &row : alignSides(sides.left, sides.right, mergeParams, {}, cancel)) {
        if (row.kind == Added) {
            changes.inserted.push_back({row.rightLine - 1, next});
            continue;
        }
        next = row.leftLine;
        if (row.kind != Equal)
            changes.fates[size_t(row.leftLine - 1)] = row.kind == Removed ? deleted : row.rightLine - 1;
    }
    return changes;
}

/// What becomes of one base line by its two fates. `sameText` says whether the lines of both versions are one.
/// Precondition: not both have deleted it.
template <typename SameText>
MergedFrom originOf(qint32 left, qint32 right, SameText sameText)
{
    if (left < 0 && right < 0)
        return MergedFrom::Base;
    if (right < 0)
        return MergedFrom::Left;
    if (left < 0)
        return MergedFrom::Right;
    return sameText(left, right) ? MergedFrom::Both : MergedFrom::Conflict;
}

/// Nobody's change is lost with a deletion, but a line that the other version has left alone goes.
bool isDeleted(qint32 left, qint32 right) noexcept
{
    return (left == deleted && right < 0) || (right == deleted && left < 0);
}

class InsertionList {
public:
    InsertionList(const VersionChanges &changes, Side side)
        : m_next(changes.inserted.begin()), m_end(changes.inserted.end()), m_side(side)
    {}

    void moveUpTo(qint32 baseLine, size_t mergedLine, std::vector<LeftOutLine> &leftOut)
    {
        for (; m_next != m_end && m_next->beforeBase <= baseLine; ++m_next)
            leftOut.push_back({m_side, m_next->line, qint32(mergedLine)});
    }

private:
    std::vector<VersionChanges::Inserted>::const_iterator m_next;
    std::vector<VersionChanges::Inserted>::const_iterator m_end;
    Side m_side;
};

void orderByPlace(std::vector<LeftOutLine> &lines)
{
    // Around a deleted line, both versions may have lines of one place in turns.
    std::ranges::stable_sort(lines, [](const LeftOutLine &one, const LeftOutLine &other) {
        return one.at != other.at ? one.at < other.at : one.side == Side::Left && other.side == Side::Right;
    });
}

template <typename Source>
ThreeWayMerge mergeSources(const Source &base, const Source &left, const Source &right, const CancelFlag &cancel,
                           Progress &progress)
{
    progress.report(0, 0, 2);
    VersionChanges ofLeft;
    VersionChanges ofRight;
    const int crew = base.count() < linesWorthAThread ? 1 : std::min(2, crewSize());
    runCrew(
        crew,
        [&](int worker) {
            if (worker == 0)
                ofLeft = changesOf(base, left, cancel);
            if (worker == crew - 1)
                ofRight = changesOf(base, right, cancel);
        },
        [] {});
    progress.report(0, 2, 2);
    ThreeWayMerge merge;
    if (cancel.isCancelled())
        return merge;
    merge.lines.reserve(size_t(base.count()));
    InsertionList fromLeft(ofLeft, Side::Left);
    InsertionList fromRight(ofRight, Side::Right);
    const auto sameText = [&](qint32 l, qint32 r) { return left.line(l) == right.line(r); };
    for (qint32 index = 0; index < base.count(); ++index) {
        fromLeft.moveUpTo(index, merge.lines.size(), merge.leftOut);
        fromRight.moveUpTo(index, merge.lines.size(), merge.leftOut);
        const qint32 l = ofLeft.fates[size_t(index)];
        const qint32 r = ofRight.fates[size_t(index)];
        if (!isDeleted(l, r))
            merge.lines.push_back({originOf(l, r, sameText), index, std::max(l, -1), std::max(r, -1)});
    }
    fromLeft.moveUpTo(base.count(), merge.lines.size(), merge.leftOut);
    fromRight.moveUpTo(base.count(), merge.lines.size(), merge.leftOut);
    orderByPlace(merge.leftOut);
    return merge;
}

} // namespace

QStringList mergeThreeWay(const QStringList &base, const QStringList &left, const QStringList &right,
                          QList<MergeConflict> &conflicts, const CancelFlag &cancel)
{
    conflicts.clear();
    Progress silent;
    const ThreeWayMerge merge = mergeSources(Utf16Lines(base), Utf16Lines(left), Utf16Lines(right), cancel, silent);
    QStringList merged;
    merged.reserve(qsizetype(merge.lines.size()));
    for (const MergedLine &line : merge.lines) {
        switch (line.from) {
        case MergedFrom::Base:
            merged.append(base.at(line.base));
            break;
        case MergedFrom::Left:
        case MergedFrom::Both:
            merged.append(left.at(line.left));
            break;
        case MergedFrom::Right:
            merged.append(right.at(line.right));
            break;
        case MergedFrom::Conflict: {
            const auto start = qint32(merged.size());
            merged << QStringLiteral("<<<<<<< LEFT") << left.at(line.left) << QStringLiteral("||||||| BASE")
                   << base.at(line.base) << QStringLiteral("=======") << right.at(line.right)
                   << QStringLiteral(">>>>>>> RIGHT");
            conflicts.append(
                {start, qint32(merged.size()) - 1, {base.at(line.base)}, {left.at(line.left)}, {right.at(line.right)}});
            break;
        }
        }
    }
    return merged;
}

ThreeWayMerge mergeThreeWay(const TextLines &base, const TextLines &left, const TextLines &right,
                            const CancelFlag &cancel, Progress &progress)
{
    return mergeSources(Utf8Lines(base), Utf8Lines(left), Utf8Lines(right), cancel, progress);
}

} // namespace velmora
