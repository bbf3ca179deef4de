#include "folder/operations/plan_entries.h"

#include "folder/engine/short_path.h"

#include <QStringBuilder>

namespace velmora {

SeenEntry seenOn(const PlanEntry &entry, Side side)
{
    SeenEntry seen;
    if (entry.isFileAgainstFolder()) // which is which is not told
        return seen;
    const FolderDiffItem &item = *entry.item;
    const QDateTime &time = timeOn(item, side);
    seen.state = SeenEntry::State::Listed;
    seen.kind = item.isDir ? NodeKind::Folder : NodeKind::File;
    seen.size = item.isDir ? 0 : sizeOn(item, side);
    seen.files = item.isDir ? 0 : 1;
    seen.modifiedNs = time.isValid() ? time.toMSecsSinceEpoch() * 1'000'000 : 0;
    return seen;
}

std::function<bool(const QString &path, const NodeState &node)> unlistedFilter(const PlanInput &input)
{
    if (!input.shows)
        return {};
    return [shows = input.shows](const QString &path, const NodeState &node) {
        FolderDiffItem item; // filters do not ask for the side
        item.name = bareName(path);
        item.leftPath = path;
        item.leftSize = node.kind == NodeKind::File ? node.size : 0;
        item.leftTime = QDateTime::fromMSecsSinceEpoch(node.modifiedNs / 1'000'000, Qt::UTC);
        item.isDir = node.kind == NodeKind::Folder;
        item.setDiffStatus(FolderDiffStatus::LeftOnly);
        return shows(item);
    };
}

PlanEntries::PlanEntries(const PlanInput &input) : m_input(input)
{
    m_entries.reserve(std::size_t(input.items.size()));
    std::vector<int> open; // the folders that the item lies in
    for (const FolderDiffItem &item : input.items) {
        while (!open.empty() && !isOrIsInside(item.name, m_entries[std::size_t(open.back())].item->name))
            open.pop_back();
        PlanEntry entry;
        entry.item = &item;
        entry.parent = open.empty() ? -1 : open.back();
        place(entry);
        hide(entry);
        m_entries.push_back(entry);
        if (item.isDir)
            open.push_back(int(m_entries.size()) - 1);
    }
}

std::vector<char> PlanEntries::covered(const PlanSelection &selection) const
{
    std::vector<char> marks(m_entries.size(), 0);
    for (const qsizetype index : selection) {
        if (index >= 0 && std::size_t(index) < marks.size())
            marks[std::size_t(index)] = 2;
    }
    for (std::size_t i = 0; i < marks.size(); ++i) {
        const int parent = m_entries[i].parent;
        if (marks[i] == 0 && parent >= 0 && marks[std::size_t(parent)] != 0)
            marks[i] = 1;
    }
    return marks;
}

void PlanEntries::place(PlanEntry &entry) const
{
    for (const Side side : bothSides) {
        const QString &root = this->root(side);
        const QString path = fullPathOn(*entry.item, side, root);
        SideEntry &here = entry.on(side);
        here.isThere = !path.isEmpty();
        if (here.isThere && isOrIsInside(path, root)) {
            const QStringView relative = QStringView(path).mid(root.endsWith(u'/') ? root.size() : root.size() + 1);
            // Mostly the same, and then it takes no room of its own.
            here.relative = relative == entry.item->name ? entry.item->name : relative.toString();
            continue;
        }
        const QString &other = pathOn(*entry.item, otherSide(side));
        here.relative = entry.item->name;
        if (entry.parent < 0)
            continue;
        const QString relative = joinedPath(at(entry.parent).on(side).relative, bareName(here.isThere ? path : other));
        if (relative != here.relative)
            here.relative = relative;
    }
}

void PlanEntries::hide(PlanEntry &entry)
{
    if (entry.parent >= 0)
        m_entries[std::size_t(entry.parent)].hasEntries = true;
    entry.isHidden = (entry.parent >= 0 && at(entry.parent).isHidden) || (m_input.shows && !m_input.shows(*entry.item));
    if (!entry.isHidden)
        return;
    for (int parent = entry.parent; parent >= 0 && !at(parent).holdsHidden; parent = at(parent).parent)
        m_entries[std::size_t(parent)].holdsHidden = true;
}

} // namespace velmora
