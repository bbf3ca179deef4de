#include "folder/engine/folder_snapshot.h"

#include "core/path_names.h"

#include <QHash>

#include <algorithm>

namespace velmora {

namespace {

using Remark = FolderSnapshotRemark;
using Row = FolderSnapshotRow;

bool haveDigests(const FolderSnapshotEntry &left, const FolderSnapshotEntry &right)
{
    return !left.digest.isEmpty() && !right.digest.isEmpty();
}

void judge(Row &row, const FolderSnapshotEntry &left, const FolderSnapshotEntry &right)
{
    const bool sameSize = left.size == right.size;
    const bool sameTime = left.modifiedMs == right.modifiedMs;
    const bool withDigests = haveDigests(left, right);
    const bool sameDigest = !withDigests || left.digest == right.digest;
    row.status = sameSize && sameTime && sameDigest ? PairStatus::Same : PairStatus::Changed;
    if (sameSize && sameTime && !sameDigest)
        row.remark = Remark::ContentOnly;
    else if (sameSize && !sameTime && withDigests && sameDigest)
        row.remark = Remark::TimeOnly;
}

/// Finds the files that are on both sides under different paths.
class MovedFiles {
public:
    explicit MovedFiles(FolderSnapshotComparison &found) : m_found(found) {}

    void find()
    {
        // What kept its name has the first choice.
        pairAll([this](qsizetype row, Side side) {
            const FolderSnapshotEntry &entry = *m_found.entry(row, side);
            return entry.digest + bareName(entry.path).toUtf8();
        });
        pairAll([this](qsizetype row, Side side) { return m_found.entry(row, side)->digest; });
    }

private:
    [[nodiscard]] bool isOpen(qsizetype row, Side side) const
    {
        const Row &one = m_found.rows[std::size_t(row)];
        if (one.status != (side == Side::Left ? PairStatus::LeftOnly : PairStatus::RightOnly) ||
            one.partner != Row::none)
            return false;
        // Empty files are all alike: nobody can tell which of them went where.
        const FolderSnapshotEntry &entry = *m_found.entry(row, side);
        return !entry.digest.isEmpty() && entry.size > 0;
    }

    /// Pairs rows whose keys are equal, in their order.
    template <typename KeyOf>
    void pairAll(KeyOf keyOf)
    {
        const qsizetype count = qsizetype(m_found.rows.size());
        QHash<QByteArray, QList<qsizetype>> gone;
        for (qsizetype row = count - 1; row >= 0; --row) {
            if (isOpen(row, Side::Left))
                gone[keyOf(row, Side::Left)].append(row);
        }
        for (qsizetype row = 0; !gone.isEmpty() && row < count; ++row) {
            if (!isOpen(row, Side::Right))
                continue;
            const auto from = gone.find(keyOf(row, Side::Right));
            if (from != gone.end() && !from->isEmpty())
                pair(from->takeLast(), row);
        }
    }

    void pair(qsizetype from, qsizetype to)
    {
        Row &left = m_found.rows[std::size_t(from)];
        Row &right = m_found.rows[std::size_t(to)];
        left.partner = right.entries.right;
        right.partner = left.entries.left;
        left.remark = right.remark = Remark::Moved;
        ++m_found.moved;
    }

    FolderSnapshotComparison &m_found;
};

} // namespace

const FolderSnapshotEntry *FolderSnapshotComparison::entry(qsizetype row, Side side) const
{
    const qint32 index = rows[std::size_t(row)].entries[side];
    return index == Row::none ? nullptr : &snapshots[side]->entries[std::size_t(index)];
}

const FolderSnapshotEntry *FolderSnapshotComparison::partner(qsizetype row) const
{
    const Row &one = rows[std::size_t(row)];
    if (one.partner == Row::none)
        return nullptr;
    const Side other = one.status == PairStatus::LeftOnly ? Side::Right : Side::Left;
    return &snapshots[other]->entries[std::size_t(one.partner)];
}

const QString &FolderSnapshotComparison::path(qsizetype row) const
{
    const FolderSnapshotEntry *left = entry(row, Side::Left);
    return left ? left->path : entry(row, Side::Right)->path;
}

FolderSnapshotComparison compareFolderSnapshots(Sides<FolderSnapshot> snapshots)
{
    FolderSnapshotComparison found;
    for (const Side side : bothSides)
        found.snapshots[side] = std::make_shared<const FolderSnapshot>(std::move(snapshots[side]));
    const auto &left = found.snapshots.left->entries;
    const auto &right = found.snapshots.right->entries;
    found.rows.reserve(std::max(left.size(), right.size()));
    for (std::size_t l = 0, r = 0; l < left.size() || r < right.size();) {
        Row row;
        const bool hasLeft = l < left.size() && (r == right.size() || left[l].path <= right[r].path);
        const bool hasRight = r < right.size() && (!hasLeft || left[l].path == right[r].path);
        if (hasLeft && hasRight)
            judge(row, left[l], right[r]);
        else
            row.status = hasLeft ? PairStatus::LeftOnly : PairStatus::RightOnly;
        if (hasLeft)
            row.entries.left = qint32(l++);
        if (hasRight)
            row.entries.right = qint32(r++);
        found.counts.add(row.status);
        found.contentOnly += row.remark == Remark::ContentOnly;
        found.rows.push_back(row);
    }
    MovedFiles(found).find();
    return found;
}

} // namespace velmora
