#include "system/engine/snapshot_compare.h"

#include <algorithm>

namespace velmora {

namespace {

/// The form in which keys are compared: letter by letter, as systems do, so that no key changes its length.
QString foldedKey(const QString &key, KeyMatch match)
{
    QString folded = key;
    if (match == KeyMatch::IgnoringCase)
        std::transform(folded.cbegin(), folded.cend(), folded.begin(), [](QChar c) { return c.toCaseFolded(); });
    return folded;
}

/// The spellings of one folded key on both sides.
struct Spellings {
    QStringList left;
    QStringList right;
};

QMap<QString, Spellings> groupKeys(const Snapshot &left, const Snapshot &right, KeyMatch match)
{
    QMap<QString, Spellings> groups;
    for (auto item = left.begin(); item != left.end(); ++item)
        groups[foldedKey(item.key(), match)].left.append(item.key());
    for (auto item = right.begin(); item != right.end(); ++item)
        groups[foldedKey(item.key(), match)].right.append(item.key());
    return groups;
}

SnapshotRow pairedRow(const QString &key, const SnapshotItem &left, const SnapshotItem &right)
{
    return {key, left.value == right.value ? SnapshotStatus::Same : SnapshotStatus::Changed, left.value, right.value,
            right.displayName.isEmpty() ? left.displayName : right.displayName};
}

} // namespace

QList<SnapshotRow> compareSnapshots(const Snapshot &left, const Snapshot &right, KeyMatch match)
{
    QList<SnapshotRow> rows;
    const QMap<QString, Spellings> groups = groupKeys(left, right, match);
    for (const Spellings &group : groups) {
        QStringList alone;
        QStringList unpaired = group.right;
        for (const QString &key : group.left) {
            if (unpaired.removeOne(key))
                rows.append(pairedRow(key, left[key], right[key]));
            else
                alone.append(key);
        }
        for (const QString &key : alone) {
            const SnapshotItem item = left[key];
            if (unpaired.isEmpty())
                rows.append({key, SnapshotStatus::LeftOnly, item.value, {}, item.displayName});
            else
                rows.append(pairedRow(key, item, right[unpaired.takeFirst()]));
        }
        for (const QString &key : unpaired) {
            const SnapshotItem item = right[key];
            rows.append({key, SnapshotStatus::RightOnly, {}, item.value, item.displayName});
        }
    }
    return rows;
}

SnapshotCounts countRows(const QList<SnapshotRow> &rows)
{
    SnapshotCounts counts;
    for (const SnapshotRow &row : rows) {
        switch (row.status) {
        case SnapshotStatus::Same:
            ++counts.same;
            break;
        case SnapshotStatus::Changed:
            ++counts.changed;
            break;
        case SnapshotStatus::LeftOnly:
            ++counts.leftOnly;
            break;
        case SnapshotStatus::RightOnly:
            ++counts.rightOnly;
            break;
        }
    }
    return counts;
}

} // namespace velmora
