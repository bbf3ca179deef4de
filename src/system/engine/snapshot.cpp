#include "system/engine/snapshot.h"

namespace velmora {

namespace {

QList<KeyedItem> keyedItems(const Snapshot &snapshot)
{
    QList<KeyedItem> items;
    items.reserve(snapshot.size());
    for (auto item = snapshot.begin(); item != snapshot.end(); ++item)
        items.append({item.key(), item->value, item->displayName});
    return items;
}

} // namespace

SnapshotItem serviceItem(const QString &displayName, const QString &state, const QString &startMode)
{
    return {state + QLatin1String(" / ") + startMode, displayName, state, startMode};
}

QList<KeyedRow> compareSnapshots(const Snapshot &left, const Snapshot &right, KeyMatch match)
{
    return compareKeyed(keyedItems(left), keyedItems(right), match);
}

} // namespace velmora
