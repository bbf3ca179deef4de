#include "folder/engine/folder_tree.h"
#include "folder/engine/item_list.h"

#include <QHash>

#include <algorithm>
#include <iterator>

namespace velmora {

namespace {

/// What a report says of an entry on both sides: what nobody has decided may differ.
FolderDiffStatus shownStatus(RowState state)
{
    const bool isKnown = state >= RowState::Same && state <= RowState::Different;
    return isKnown                       ? FolderDiffStatus(int(state) - int(RowState::Same))
           : state == RowState::Filtered ? FolderDiffStatus::Same
                                         : FolderDiffStatus::Different;
}

} // namespace

RowState FolderTree::state(qint32 number) const
{
    const FolderDiffItem &entry = item(number);
    const Node &here = node(number);
    if (!isPair(entry) && here.unsure)
        return RowState::Unknown;
    if (!isPair(entry))
        return entry.rightPath.isEmpty() ? RowState::LeftOnly : RowState::RightOnly;
    if (!entry.isDir) {
        if (here.scanning)
            return RowState::Scanning;
        return entry.status == unknownStatus ? RowState::Unknown
                                             : RowState(int(RowState::Same) + std::clamp(entry.status, 0, 3));
    }
    const auto has = [&here](FolderMark mark) { return here.left.has(mark) || here.right.has(mark); };
    const bool left = here.left.has(FolderMark::Unique);
    const bool right = here.right.has(FolderMark::Unique);
    if (has(FolderMark::Newer) || has(FolderMark::Older) || (left && right) ||
        ((left || right) && has(FolderMark::Same)))
        return RowState::Different;
    if (has(FolderMark::Scanning))
        return RowState::Scanning;
    if (has(FolderMark::Unknown))
        return RowState::Unknown;
    if (left || right)
        return left ? RowState::LeftOnly : RowState::RightOnly;
    return has(FolderMark::Filtered) ? RowState::Filtered : RowState::Same;
}

void FolderTree::markUnreadable(const QList<FolderProblem> &problems, const Sides<QString> &roots)
{
    if (problems.isEmpty())
        return;
    Sides<QHash<QString, qint32>> places;
    for (qint32 i = 0; i < size(); ++i) {
        for (const Side side : bothSides) {
            if (const QString &path = pathOn(item(i), side); !path.isEmpty())
                places[side].insert(path, i);
        }
    }
    for (const FolderProblem &problem : problems) {
        const qint32 node = places[problem.side].value(problem.path, -1);
        if (node >= 0)
            at(node).unreadable = true;
        const bool isRoot = problem.path == roots[problem.side];
        if (problem.kind != FolderProblem::Kind::UnreadableFile && (node >= 0 || isRoot))
            markUnsure(node, problem.side);
    }
}

void FolderTree::markUnsure(qint32 folder, Side missing)
{
    const qint32 end = folder < 0 ? size() : node(folder).end;
    for (qint32 i = folder + 1; i < end; ++i) {
        if (pathOn(item(i), missing).isEmpty())
            at(i).unsure = true;
    }
}

void FolderTree::markFile(qint32 number)
{
    const FolderDiffItem &entry = item(number);
    Node &node = at(number);
    const auto mark = [&node](FolderMark left, FolderMark right) {
        node.left = MarkSet(left);
        node.right = MarkSet(right);
    };
    switch (state(number)) {
    case RowState::LeftOnly:
    case RowState::RightOnly:
        node.left = node.right = MarkSet();
        (state(number) == RowState::LeftOnly ? node.left : node.right).add(FolderMark::Unique);
        return;
    case RowState::Different:
        if (!entry.leftTime.isValid() || !entry.rightTime.isValid() || entry.leftTime == entry.rightTime)
            return mark(FolderMark::Newer, FolderMark::Newer);
        return entry.rightTime < entry.leftTime ? mark(FolderMark::Newer, FolderMark::Older)
                                                : mark(FolderMark::Older, FolderMark::Newer);
    case RowState::Unknown:
    case RowState::Scanning: {
        const FolderMark both = node.scanning ? FolderMark::Scanning : FolderMark::Unknown;
        return mark(both, both);
    }
    case RowState::Same:
    case RowState::Filtered:
        return mark(FolderMark::Same, FolderMark::Same);
    }
}

void FolderTree::markFolder(qint32 number, bool hasContents)
{
    const FolderDiffItem &entry = item(number);
    Node &node = at(number);
    if (!isPair(entry)) {
        MarkSet &own = entry.rightPath.isEmpty() ? node.left : node.right;
        own.remove(FolderMark::Filtered);
        own.add(node.unsure ? FolderMark::Unknown : FolderMark::Unique);
        return;
    }
    const auto addToBoth = [&node](FolderMark mark) {
        node.left.add(mark);
        node.right.add(mark);
    };
    if (node.unloaded || node.unreadable) {
        addToBoth(node.scanning ? FolderMark::Scanning : FolderMark::Unknown);
        return;
    }
    if (!hasContents) {
        // Two empty folders, or a folder and a file of one name.
        const bool unknown = entry.status == unknownStatus;
        addToBoth(entry.diffStatus() == FolderDiffStatus::Different ? FolderMark::Newer
                  : unknown                                         ? FolderMark::Unknown
                                                                    : FolderMark::Same);
        return;
    }
    MarkSet all = node.left;
    all.add(node.right);
    if (all == MarkSet(FolderMark::Filtered))
        return;
    if (all.isEmpty())
        addToBoth(FolderMark::Same); // everything in it is ignored
    node.left.remove(FolderMark::Filtered);
    node.right.remove(FolderMark::Filtered);
}

void FolderTree::count(qint32 number)
{
    using Counts = FolderCounts;
    static constexpr qint64 Counts::*byState[] = {&Counts::unknown,  &Counts::unknown,   &Counts::same,
                                                  &Counts::leftOnly, &Counts::rightOnly, &Counts::different,
                                                  &Counts::same};
    static_assert(std::size(byState) == std::size_t(RowState::Filtered) + 1);
    ++(m_counts.*(item(number).isDir ? &Counts::folders : byState[std::size_t(state(number))]));
    if (!item(number).isDir && isUnread(number))
        ++m_counts.unread;
}

void FolderTree::rollUp()
{
    // The statuses of the children of each node, one bit for each; those of children that nobody decided have none.
    std::vector<quint8> under(m_nodes.size(), 0);
    constexpr quint8 undecided = 0x80;
    constexpr quint8 unread = 0x40;
    for (qint32 i = 0; i < size(); ++i) {
        if (item(i).isDir) {
            at(i).left = MarkSet();
            at(i).right = MarkSet();
        }
    }
    for (qint32 i = size(); i-- > 0;) {
        const FolderDiffItem &entry = item(i);
        const auto inside = quint8(under[std::size_t(i)] & ~unread);
        if (!entry.isDir) {
            markFile(i);
        } else {
            markFolder(i, inside != 0);
            if (isPair(entry) && inside != 0 && (inside & undecided) == 0)
                setStatus(i, qint32(statusTogether(inside)));
            const bool isUnread = isPair(entry) && (under[std::size_t(i)] & unread) != 0;
            if (item(i).isUnread != isUnread)
                m_items[i].isUnread = isUnread;
        }
        const Node &node = this->node(i);
        if (node.parent < 0)
            continue;
        quint8 &above = under[std::size_t(node.parent)];
        const bool decided = item(i).status != unknownStatus && !node.unsure && !(node.unloaded && isPair(entry));
        above = quint8(above | (decided ? statusBit(item(i).diffStatus()) : undecided));
        if (!node.hidden && !node.ignored && item(i).isUnread)
            above = quint8(above | unread);
        Node &parent = at(node.parent);
        if (node.hidden) {
            parent.left.add(FolderMark::Filtered);
            parent.right.add(FolderMark::Filtered);
        } else if (!node.ignored) {
            parent.left.add(node.left);
            parent.right.add(node.right);
        }
    }

    m_counts = {};
    for (qint32 i = 0; i < size(); ++i) {
        if (node(i).hidden) {
            m_counts.hidden += node(i).end - i;
            i = node(i).end - 1;
        } else {
            count(i);
        }
    }
}

QList<FolderDiffItem> shownItems(const FolderTree &tree)
{
    QList<FolderDiffItem> items;
    for (qint32 node = 0; node < tree.size(); ++node) {
        if (tree.node(node).hidden) {
            node = tree.node(node).end - 1;
            continue;
        }
        FolderDiffItem item = tree.item(node);
        if (isPair(item)) {
            item.setDiffStatus(shownStatus(tree.state(node)));
            item.isUnread = tree.isUnread(node);
        }
        items.append(std::move(item));
    }
    return items;
}

} // namespace velmora
