#include "folder/engine/folder_tree.h"

#include "core/natural_order.h"
#include "folder/engine/item_list.h"

#include <algorithm>
#include <numeric>

namespace velmora {

namespace {

QStringView bareNameOf(const QString &relativeName)
{
    return QStringView(relativeName).mid(relativeName.lastIndexOf(u'/') + 1);
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

FolderTree FolderTree::inGivenOrder(QList<FolderDiffItem> items)
{
    const std::vector<qint32> parents = parentsByName(items);
    std::vector<qint32> order(parents.size());
    std::iota(order.begin(), order.end(), 0);
    FolderTree tree;
    tree.takeInOrder(std::move(items), order, parents);
    return tree;
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

} // namespace velmora
