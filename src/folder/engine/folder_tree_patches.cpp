#include "folder/engine/folder_tree.h"
#include "folder/engine/item_list.h"

#include <algorithm>
#include <numeric>

namespace velmora {

qint32 FolderTree::placeFor(const FolderDiffItem &item, qint32 parent) const
{
    const qint32 end = parent < 0 ? size() : node(parent).end;
    qint32 place = parent + 1;
    while (place < end && comesBefore(this->item(place), item))
        place = node(place).end;
    return place;
}

std::vector<FolderTree::Edit> FolderTree::editsFor(const std::vector<Patch> &patches) const
{
    QSet<QString> names;
    for (const Patch &patch : patches)
        names.insert(patch.name);
    const auto isInsideAnother = [&names](const QString &name) {
        for (qsizetype slash = name.indexOf(u'/'); slash >= 0; slash = name.indexOf(u'/', slash + 1)) {
            if (names.contains(name.left(slash)))
                return true;
        }
        return false;
    };
    std::vector<Edit> edits;
    for (const Patch &patch : patches) {
        if (isInsideAnother(patch.name))
            continue;
        const FolderTree *const branch = patch.branch && !patch.branch->isEmpty() ? patch.branch.get() : nullptr;
        const qint32 old = find(patch.name);
        if (old >= 0 && branch && branch->item(0).isDir == item(old).isDir) {
            edits.push_back({old, node(old).end, node(old).parent, branch});
            continue;
        }
        if (old >= 0)
            edits.push_back({old, node(old).end, node(old).parent, nullptr});
        if (!branch)
            continue;
        const qsizetype slash = patch.name.lastIndexOf(u'/');
        const qint32 parent = slash < 0 ? -1 : find(patch.name.left(slash));
        if (slash >= 0 && (parent < 0 || node(parent).unloaded))
            continue;
        const qint32 place = placeFor(branch->item(0), parent);
        edits.push_back({place, place, parent, branch});
    }
    std::stable_sort(edits.begin(), edits.end(), [](const Edit &a, const Edit &b) {
        if (a.begin != b.begin)
            return a.begin < b.begin;
        // What is new at a place goes before the entry that stands there, and in its order.
        const bool aInserts = a.end == a.begin;
        const bool bInserts = b.end == b.begin;
        if (aInserts != bInserts)
            return aInserts;
        if (!aInserts)
            return false;
        // A place may be the end of several folders at once; the deepest of them comes first.
        return a.parent != b.parent ? a.parent > b.parent : comesBefore(a.branch->item(0), b.branch->item(0));
    });
    return edits;
}

void FolderTree::appendBranch(const FolderTree &branch, const Edit &edit, qint32 newParent, FolderTree &result) const
{
    QSet<QString> expanded;
    for (qint32 old = edit.begin; old < edit.end; ++old) {
        if (node(old).expanded)
            expanded.insert(item(old).name);
    }
    const qint32 base = result.size();
    result.m_items.append(branch.m_items);
    for (qint32 i = 0; i < branch.size(); ++i) {
        Node node = branch.node(i);
        node.parent = node.parent < 0 ? newParent : node.parent + base;
        node.expanded = !expanded.isEmpty() && expanded.contains(branch.item(i).name);
        result.m_nodes.push_back(node);
    }
}

bool FolderTree::overwrite(const std::vector<Edit> &edits)
{
    const bool fits = std::all_of(edits.begin(), edits.end(), [](const Edit &edit) {
        return edit.branch && edit.end == edit.begin + 1 && edit.branch->size() == 1;
    });
    if (!fits)
        return false;
    for (const Edit &edit : edits) {
        Node &node = at(edit.begin);
        const Node &other = edit.branch->node(0);
        m_items[edit.begin] = edit.branch->item(0);
        node.unloaded = other.unloaded;
        node.unreadable = other.unreadable;
        node.unsure = other.unsure;
        node.hidden = other.hidden;
        node.ignored = other.ignored;
        node.scanning = false;
    }
    return true;
}

std::vector<qint32> FolderTree::apply(const std::vector<Patch> &patches)
{
    std::vector<qint32> places(m_nodes.size(), -1);
    const std::vector<Edit> edits = editsFor(patches);
    // What happens most, files that were compared anew, moves nothing.
    if (overwrite(edits)) {
        std::iota(places.begin(), places.end(), 0);
        std::vector<qint32> touched;
        for (const Edit &edit : edits)
            touched.push_back(edit.parent);
        addTotalsAbove(touched);
        rollUp();
        return places;
    }
    FolderTree result;
    result.m_items.reserve(m_items.size());
    result.m_nodes.reserve(m_nodes.size());
    const bool ownsItems = m_items.isDetached();
    qint32 done = 0;
    const auto keepUntil = [&](qint32 end) {
        for (; done < end; ++done) {
            Node node = this->node(done);
            if (node.parent >= 0)
                node.parent = places[std::size_t(node.parent)];
            places[std::size_t(done)] = result.size();
            result.m_nodes.push_back(node);
            if (ownsItems)
                result.m_items.append(std::move(m_items[done]));
            else
                result.m_items.append(m_items.at(done));
        }
    };
    std::vector<qint32> touched;
    for (const Edit &edit : edits) {
        keepUntil(edit.begin);
        const qint32 parent = edit.parent < 0 ? -1 : places[std::size_t(edit.parent)];
        if (edit.branch) {
            if (edit.end > edit.begin)
                places[std::size_t(edit.begin)] = result.size();
            appendBranch(*edit.branch, edit, parent, result);
        }
        done = edit.end;
        if (parent >= 0)
            touched.push_back(parent);
    }
    keepUntil(size());
    result.completeNodes();
    result.addTotalsAbove(touched);
    result.rollUp();
    *this = std::move(result);
    return places;
}

void FolderTree::addTotalsAbove(const std::vector<qint32> &touched)
{
    // Deepest first, each folder once; a folder comes after its own.
    std::vector<qint32> folders;
    for (qint32 folder : touched) {
        for (; folder >= 0; folder = node(folder).parent)
            folders.push_back(folder);
    }
    std::sort(folders.begin(), folders.end(), std::greater<>());
    folders.erase(std::unique(folders.begin(), folders.end()), folders.end());
    for (const qint32 folder : folders)
        addTotals(folder);
}

void FolderTree::addTotals(qint32 folder)
{
    FolderDiffItem &total = m_items[folder];
    total.leftSize = 0;
    total.rightSize = 0;
    for (qint32 child = folder + 1; child < node(folder).end; child = node(child).end) {
        total.leftSize += item(child).leftSize;
        total.rightSize += item(child).rightSize;
        takeLater(total.leftTime, item(child).leftTime);
        takeLater(total.rightTime, item(child).rightTime);
    }
}

} // namespace velmora
