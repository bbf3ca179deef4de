#include "folder_engine/made_trees.h"

#include "folder/engine/item_list.h"

#include <QSet>

namespace velmora::test {

namespace {

const QDateTime start = QDateTime::fromMSecsSinceEpoch(1'700'000'000'000, Qt::UTC);

FolderDiffItem itemOf(const QString &name, bool isDir, FolderDiffStatus status)
{
    FolderDiffItem item;
    item.name = name;
    item.isDir = isDir;
    item.setDiffStatus(status);
    if (status != FolderDiffStatus::RightOnly) {
        item.leftPath = QStringLiteral("/l/") + name;
        item.leftSize = isDir ? 0 : 100 + name.size();
        item.leftTime = start;
    }
    if (status != FolderDiffStatus::LeftOnly) {
        item.rightPath = QStringLiteral("/r/") + name;
        item.rightSize = item.leftSize;
        item.rightTime = start;
    }
    return item;
}

/// Makes the entries of a folder; `sides` is its own status, which one-sided folders hand down.
class Maker {
public:
    Maker(QRandomGenerator &random, int most) : m_random(random), m_left(most) {}

    ItemList list;

    void fill(qint32 parent, const QString &prefix, FolderDiffStatus sides, int depth)
    {
        QSet<QString> names;
        for (int count = m_random.bounded(6); count > 0 && m_left > 0; --count) {
            QString name;
            for (int length = 1 + m_random.bounded(3); length > 0; --length)
                name.append(QStringLiteral("aAb109").at(m_random.bounded(6)));
            names.insert(name);
        }
        QStringList ordered(names.begin(), names.end());
        ordered.sort();
        for (const QString &name : ordered)
            add(parent, prefix + name, sides, depth);
    }

private:
    void add(qint32 parent, const QString &name, FolderDiffStatus sides, int depth)
    {
        --m_left;
        const bool isDir = depth < 4 && m_random.bounded(3) == 0;
        FolderDiffStatus status = sides;
        if (sides != FolderDiffStatus::LeftOnly && sides != FolderDiffStatus::RightOnly)
            status = FolderDiffStatus(m_random.bounded(isDir ? 3 : 4));
        FolderDiffItem item = itemOf(name, isDir, status);
        if (status == FolderDiffStatus::Different && m_random.bounded(2) == 0)
            item.leftTime = item.leftTime.addSecs(m_random.bounded(-3, 4));
        if (isDir && status == FolderDiffStatus::Same)
            item.status = UndecidedFolder;
        const auto index = qint32(list.items.size());
        list.items.append(item);
        list.parents.push_back(parent);
        if (isDir)
            fill(index, name + u'/', status, depth + 1);
    }

    QRandomGenerator &m_random;
    int m_left;
};

} // namespace

QList<FolderDiffItem> randomResult(QRandomGenerator &random, int most)
{
    Maker maker(random, most);
    maker.fill(-1, {}, FolderDiffStatus::Same, 0);
    rollUpStatuses(maker.list);
    return maker.list.items;
}

QList<FolderDiffItem> largeResult(int count)
{
    QList<FolderDiffItem> items;
    items.reserve(count);
    const auto add = [&](const QString &name, bool isDir, FolderDiffStatus status) {
        if (items.size() < count)
            items.append(itemOf(name, isDir, status));
    };
    for (int a = 0; items.size() < count; ++a) {
        const QString top = QStringLiteral("package%1").arg(a);
        add(top, true, FolderDiffStatus::Different);
        for (int b = 0; b < 8; ++b) {
            const QString folder = top + QStringLiteral("/Part %1").arg(b);
            add(folder, true, FolderDiffStatus::Different);
            for (int c = 0; c < 40; ++c)
                add(folder + QStringLiteral("/file%1.cpp").arg(c), false, FolderDiffStatus(c % 4));
        }
    }
    return items;
}

} // namespace velmora::test
