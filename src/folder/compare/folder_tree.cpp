#include "folder/compare/folder_tree.h"

#include "core/natural_order.h"
#include "folder/engine/item_list.h"

#include <algorithm>
#include <numeric>

namespace velmora {

namespace {

void takeLater(QDateTime &time, const QDateTime &other)
{
    if (other.isValid() && (!time.isValid() || time < other))
        time = other;
}

/// The items' numbers in display order. Keys are made once: comparing names anew at each step of the sort would fold
/// and cut each of them some twenty times.
std::vector<qint32> displayOrder(const QList<FolderDiffItem> &items, const std::vector<qint32> &parents)
{
    const std::size_t count = parents.size();
    std::vector<QString> keys(count);
    for (std::size_t i = 0; i < count; ++i)
        keys[i] = naturalKey(bareNameOf(items.at(qsizetype(i)).name));

    // The children of item p are children[starts[p + 1]] up to children[starts[p + 2]]; p is -1 for the top.
    std::vector<qint32> starts(count + 2, 0);
    for (const qint32 parent : parents)
        ++starts[std::size_t(parent + 2)];
    std::partial_sum(starts.begin(), starts.end(), starts.begin());
    std::vector<qint32> next(starts.begin(), starts.end() - 1);
    std::vector<qint32> children(count);
    for (std::size_t i = 0; i < count; ++i)
        children[std::size_t(next[std::size_t(parents[i] + 1)]++)] = qint32(i);

    const auto before = [&](qint32 a, qint32 b) {
        const FolderDiffItem &left = items.at(a);
        const FolderDiffItem &right = items.at(b);
        if (left.isDir != right.isDir)
            return left.isDir;
        const int byKey = keys[std::size_t(a)].compare(keys[std::size_t(b)]);
        return byKey != 0 ? byKey < 0 : left.name < right.name;
    };
    for (std::size_t p = 0; p <= count; ++p)
        std::sort(children.begin() + starts[p], children.begin() + starts[p + 1], before);

    std::vector<qint32> order;
    order.reserve(count);
    struct Level {
        qint32 at;
        qint32 end;
    };
    std::vector<Level> path{{starts[0], starts[1]}};
    while (!path.empty()) {
        Level &level = path.back();
        if (level.at == level.end) {
            path.pop_back();
            continue;
        }
        const qint32 item = children[std::size_t(level.at++)];
        order.push_back(item);
        path.push_back({starts[std::size_t(item) + 1], starts[std::size_t(item) + 2]});
    }
    return order;
}

} // namespace

QStringView bareNameOf(const QString &relativeName)
{
    return QStringView(relativeName).mid(relativeName.lastIndexOf(u'/') + 1);
}

bool comesBefore(const FolderDiffItem &left, const FolderDiffItem &right)
{
    if (left.isDir != right.isDir)
        return left.isDir;
    return compareNatural(bareNameOf(left.name), bareNameOf(right.name)) < 0;
}

FolderTree::FolderTree(QList<FolderDiffItem> items)
{
    const std::vector<qint32> parents = parentsByName(items);
    takeInOrder(std::move(items), displayOrder(items, parents), parents);
    rollUp();
}

void FolderTree::takeInOrder(QList<FolderDiffItem> items, const std::vector<qint32> &order,
                             const std::vector<qint32> &parents)
{
    std::vector<qint32> places(order.size());
    m_nodes.resize(order.size());
    m_items.reserve(items.size());
    for (std::size_t i = 0; i < order.size(); ++i) {
        const qint32 item = order[i];
        const qint32 parent = parents[std::size_t(item)];
        places[std::size_t(item)] = qint32(i);
        m_nodes[i].parent = parent < 0 ? -1 : places[std::size_t(parent)];
        m_items.append(std::move(items[item]));
    }
    completeNodes();
}

void FolderTree::completeNodes()
{
    for (std::size_t i = 0; i < m_nodes.size(); ++i) {
        Node &node = m_nodes[i];
        node.end = qint32(i) + 1;
        node.nameStart = qint32(m_items.at(qsizetype(i)).name.lastIndexOf(u'/')) + 1;
        node.depth = node.parent < 0 ? quint16(0) : quint16(m_nodes[std::size_t(node.parent)].depth + 1);
    }
    for (std::size_t i = m_nodes.size(); i-- > 0;) {
        const Node &node = m_nodes[i];
        if (node.parent >= 0) {
            qint32 &end = m_nodes[std::size_t(node.parent)].end;
            end = std::max(end, node.end);
        }
    }
}

QStringView FolderTree::bareName(qint32 node) const
{
    return QStringView(item(node).name).mid(this->node(node).nameStart);
}

qint32 FolderTree::find(const QString &name) const
{
    qint32 at = 0;
    qint32 end = size();
    while (at < end) {
        const QString &here = item(at).name;
        if (here.size() == name.size() && here == name)
            return at;
        if (name.size() > here.size() && name.at(here.size()) == u'/' && name.startsWith(here)) {
            end = node(at).end;
            ++at;
        } else {
            at = node(at).end;
        }
    }
    return -1;
}

RowState FolderTree::state(qint32 number) const
{
    const FolderDiffItem &entry = item(number);
    const Node &here = node(number);
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

bool FolderTree::isExpandable(qint32 number) const
{
    return item(number).isDir && (node(number).unloaded || node(number).end > number + 1);
}

qint32 FolderTree::childCount(qint32 folder) const
{
    qint32 count = 0;
    for (qint32 child = folder + 1; child < node(folder).end; child = node(child).end)
        ++count;
    return count;
}

void FolderTree::setAllExpanded(bool expanded)
{
    for (std::size_t i = 0; i < m_nodes.size(); ++i)
        m_nodes[i].expanded = expanded && m_items.at(qsizetype(i)).isDir;
}

QSet<QString> FolderTree::expandedNames() const
{
    QSet<QString> names;
    for (std::size_t i = 0; i < m_nodes.size(); ++i) {
        if (m_nodes[i].expanded)
            names.insert(m_items.at(qsizetype(i)).name);
    }
    return names;
}

void FolderTree::expand(const QSet<QString> &names)
{
    if (names.isEmpty())
        return;
    for (std::size_t i = 0; i < m_nodes.size(); ++i) {
        const FolderDiffItem &entry = m_items.at(qsizetype(i));
        if (entry.isDir && names.contains(entry.name))
            m_nodes[i].expanded = true;
    }
}

void FolderTree::setStatus(qint32 node, qint32 status)
{
    if (item(node).status != status)
        m_items[node].status = status;
}

FolderTree::Verdicts FolderTree::judge(const QList<FolderDiffItem> &items, const FolderFilter &filter,
                                       const QSet<QString> &ignoredNames, const CancelFlag &cancel)
{
    Verdicts verdicts;
    verdicts.hidden.reserve(std::size_t(items.size()));
    verdicts.ignored.reserve(std::size_t(items.size()));
    for (const FolderDiffItem &item : items) {
        if (cancel.isCancelled())
            break;
        verdicts.hidden.push_back(!filter.shows(item));
        verdicts.ignored.push_back(!ignoredNames.isEmpty() && ignoredNames.contains(bareNameOf(item.name).toString()));
    }
    return verdicts;
}

void FolderTree::setVerdicts(const Verdicts &verdicts)
{
    for (std::size_t i = 0; i < m_nodes.size(); ++i) {
        m_nodes[i].hidden = verdicts.hidden[i];
        m_nodes[i].ignored = verdicts.ignored[i];
    }
}

// Patches -------------------------------------------------------------------------------------------------------------

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

// Marks ---------------------------------------------------------------------------------------------------------------

void FolderTree::markFile(qint32 number)
{
    const FolderDiffItem &entry = item(number);
    Node &node = at(number);
    node.left = MarkSet();
    node.right = MarkSet();
    switch (state(number)) {
    case RowState::LeftOnly:
        node.left.add(FolderMark::Unique);
        return;
    case RowState::RightOnly:
        node.right.add(FolderMark::Unique);
        return;
    case RowState::Different:
        if (entry.leftTime.isValid() && entry.rightTime.isValid() && entry.leftTime != entry.rightTime) {
            const bool leftIsNewer = entry.rightTime < entry.leftTime;
            node.left.add(leftIsNewer ? FolderMark::Newer : FolderMark::Older);
            node.right.add(leftIsNewer ? FolderMark::Older : FolderMark::Newer);
            return;
        }
        node.left.add(FolderMark::Newer);
        node.right.add(FolderMark::Newer);
        return;
    case RowState::Unknown:
    case RowState::Scanning: {
        const FolderMark mark = node.scanning ? FolderMark::Scanning : FolderMark::Unknown;
        node.left.add(mark);
        node.right.add(mark);
        return;
    }
    case RowState::Same:
    case RowState::Filtered:
        node.left.add(FolderMark::Same);
        node.right.add(FolderMark::Same);
        return;
    }
}

void FolderTree::markFolder(qint32 number, bool hasContents)
{
    const FolderDiffItem &entry = item(number);
    Node &node = at(number);
    if (!isPair(entry)) {
        MarkSet &own = entry.rightPath.isEmpty() ? node.left : node.right;
        own.remove(FolderMark::Filtered);
        own.add(FolderMark::Unique);
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
    if (item(number).isDir) {
        ++m_counts.folders;
        return;
    }
    switch (state(number)) {
    case RowState::Same:
    case RowState::Filtered:
        ++m_counts.same;
        break;
    case RowState::LeftOnly:
        ++m_counts.leftOnly;
        break;
    case RowState::RightOnly:
        ++m_counts.rightOnly;
        break;
    case RowState::Different:
        ++m_counts.different;
        break;
    case RowState::Unknown:
    case RowState::Scanning:
        ++m_counts.unknown;
        break;
    }
}

void FolderTree::rollUp()
{
    // The statuses of the children of each node, one bit for each; those of children that nobody decided have none.
    std::vector<quint8> under(m_nodes.size(), 0);
    constexpr quint8 undecided = 0x80;
    const auto bit = [](FolderDiffStatus status) { return quint8(1U << unsigned(status)); };
    for (qint32 i = 0; i < size(); ++i) {
        if (item(i).isDir) {
            at(i).left = MarkSet();
            at(i).right = MarkSet();
        }
    }
    for (qint32 i = size(); i-- > 0;) {
        const FolderDiffItem &entry = item(i);
        const quint8 inside = under[std::size_t(i)];
        if (!entry.isDir) {
            markFile(i);
        } else {
            markFolder(i, inside != 0);
            if (isPair(entry) && inside != 0 && (inside & undecided) == 0) {
                const FolderDiffStatus status = inside == bit(FolderDiffStatus::LeftOnly) ? FolderDiffStatus::LeftOnly
                                                : inside == bit(FolderDiffStatus::RightOnly)
                                                    ? FolderDiffStatus::RightOnly
                                                : inside == bit(FolderDiffStatus::Same) ? FolderDiffStatus::Same
                                                                                        : FolderDiffStatus::Different;
                setStatus(i, qint32(status));
            }
        }
        const Node &node = this->node(i);
        if (node.parent < 0)
            continue;
        quint8 &above = under[std::size_t(node.parent)];
        const bool decided = item(i).status != unknownStatus && !(node.unloaded && isPair(entry));
        above = quint8(above | (decided ? bit(item(i).diffStatus()) : undecided));
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

} // namespace velmora
