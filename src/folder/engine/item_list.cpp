#include "folder/engine/item_list.h"

#include "folder/engine/folder_walk.h"

#include <algorithm>
#include <chrono>

namespace velmora {

namespace {

/// A node that is being taken apart, and how far.
struct Position {
    WalkNode *node;
    qint32 parent;
    std::size_t item = 0;
    std::size_t child = 0;
};

std::size_t countItems(const WalkNode &root)
{
    std::size_t count = 0;
    std::vector<const WalkNode *> waiting{&root};
    while (!waiting.empty()) {
        const WalkNode *const node = waiting.back();
        waiting.pop_back();
        count += node->items.size();
        for (const WalkNode::Child &child : node->children)
            waiting.push_back(child.node);
    }
    return count;
}

/// True from 50 ms after the first look that found the run cancelled.
class Overdue {
public:
    explicit Overdue(const CancelFlag &cancel) : m_cancel(cancel) {}

    [[nodiscard]] bool look()
    {
        constexpr unsigned interval = 1024;
        if (++m_looks % interval != 0 || !m_cancel.isCancelled())
            return false;
        const Time now = std::chrono::steady_clock::now();
        m_deadline = std::min(m_deadline, now + std::chrono::milliseconds(50));
        return now >= m_deadline;
    }

private:
    using Time = std::chrono::steady_clock::time_point;

    const CancelFlag &m_cancel;
    unsigned m_looks = 0;
    Time m_deadline = Time::max();
};

} // namespace

ItemList takeItems(WalkNode &root, const CancelFlag &cancel)
{
    ItemList list;
    const std::size_t count = countItems(root);
    list.items.reserve(qsizetype(count));
    list.parents.reserve(count);

    Overdue overdue(cancel);
    std::vector<Position> path{{&root, -1}};
    while (!path.empty()) {
        Position &at = path.back();
        if (at.item == at.node->items.size()) {
            if (!at.node->complete)
                break;
            std::vector<FolderDiffItem>().swap(at.node->items);
            path.pop_back();
            continue;
        }
        if (overdue.look())
            break;
        const std::size_t item = at.item++;
        list.items.append(std::move(at.node->items[item]));
        list.parents.push_back(at.parent);
        if (at.child < at.node->children.size() && at.node->children[at.child].item == item) {
            WalkNode *const next = at.node->children[at.child++].node;
            path.push_back({next, qint32(list.items.size() - 1)});
        }
    }
    return list;
}

void cutAtUndecided(ItemList &list)
{
    const auto undecided = std::find_if(list.items.cbegin(), list.items.cend(), [](const FolderDiffItem &item) {
        return item.status == UndecidedFiles || item.status == UndecidedSpecial;
    });
    const qsizetype kept = undecided - list.items.cbegin();
    list.items.erase(undecided, list.items.cend());
    list.parents.resize(std::size_t(kept));
}

void takeLater(QDateTime &time, const QDateTime &other)
{
    if (other.isValid() && (!time.isValid() || time < other))
        time = other;
}

FolderDiffStatus statusTogether(unsigned bits)
{
    for (const FolderDiffStatus side : {FolderDiffStatus::LeftOnly, FolderDiffStatus::RightOnly}) {
        if (bits == statusBit(side))
            return side;
    }
    return (bits & ~statusBit(FolderDiffStatus::Same)) != 0 ? FolderDiffStatus::Different : FolderDiffStatus::Same;
}

void rollUpStatuses(ItemList &list)
{
    // The statuses that occur under each item, one bit for each, and one for what is unread.
    std::vector<quint8> under(list.parents.size(), 0);
    constexpr unsigned unread = 0x80;
    FolderDiffItem *const items = list.items.data();
    for (std::size_t i = list.parents.size(); i-- > 0;) {
        FolderDiffItem &item = items[i];
        if (item.status == UndecidedFolder) {
            item.setDiffStatus(statusTogether(under[i] & ~unread));
            item.isUnread = item.diffStatus() == FolderDiffStatus::Same && (under[i] & unread) != 0;
        }
        if (list.parents[i] >= 0) {
            quint8 &above = under[std::size_t(list.parents[i])];
            above = quint8(above | under[i] | statusBit(item.diffStatus()) | (item.isUnread ? unread : 0));
        }
    }
}

void addChildTotals(ItemList &list)
{
    FolderDiffItem *const items = list.items.data();
    for (std::size_t i = list.parents.size(); i-- > 0;) {
        if (list.parents[i] < 0)
            continue;
        FolderDiffItem &folder = items[list.parents[i]];
        folder.leftSize += items[i].leftSize;
        folder.rightSize += items[i].rightSize;
        takeLater(folder.leftTime, items[i].leftTime);
        takeLater(folder.rightTime, items[i].rightTime);
    }
}

std::vector<qint32> parentsByName(const QList<FolderDiffItem> &items)
{
    std::vector<qint32> parents;
    parents.reserve(std::size_t(items.size()));
    std::vector<qint32> path;
    for (qsizetype i = 0; i < items.size(); ++i) {
        const QString &name = items.at(i).name;
        // Called for every entry: without a text made for it.
        const auto isUnder = [&name](const QString &folder) {
            return name.size() > folder.size() && name.at(folder.size()) == u'/' && name.startsWith(folder);
        };
        while (!path.empty() && !isUnder(items.at(path.back()).name))
            path.pop_back();
        parents.push_back(path.empty() ? -1 : path.back());
        if (items.at(i).isDir)
            path.push_back(qint32(i));
    }
    return parents;
}

} // namespace velmora
