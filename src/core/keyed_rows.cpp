#include "core/keyed_rows.h"

#include <algorithm>
#include <span>
#include <vector>

namespace velmora {

namespace {

/// An item with the form in which keys are compared.
struct Entry {
    QString folded;
    const KeyedItem *item;

    friend bool operator<(const Entry &a, const Entry &b)
    {
        return a.folded != b.folded ? a.folded < b.folded : a.item->key < b.item->key;
    }
};

/// Letter by letter, as systems do, so that no key changes its length.
QString foldedKey(const QString &key, KeyMatch match)
{
    QString folded = key;
    if (match == KeyMatch::IgnoringCase)
        std::transform(folded.cbegin(), folded.cend(), folded.begin(), [](QChar c) { return c.toCaseFolded(); });
    return folded;
}

std::vector<Entry> sortedEntries(const QList<KeyedItem> &items, KeyMatch match)
{
    std::vector<Entry> entries;
    entries.reserve(std::size_t(items.size()));
    for (const KeyedItem &item : items)
        entries.push_back({foldedKey(item.key, match), &item});
    if (!std::is_sorted(entries.begin(), entries.end()))
        std::sort(entries.begin(), entries.end());
    return entries;
}

/// Takes the entries of the key `folded` from the front of `entries`.
std::span<const Entry> takeGroup(std::span<const Entry> &entries, const QString &folded)
{
    std::size_t count = 0;
    while (count < entries.size() && entries[count].folded == folded)
        ++count;
    const std::span<const Entry> group = entries.first(count);
    entries = entries.subspan(count);
    return group;
}

KeyedRow pairedRow(const KeyedItem &left, const KeyedItem &right)
{
    return {left.key, left.value == right.value ? PairStatus::Same : PairStatus::Changed, left.value, right.value,
            right.note.isEmpty() ? left.note : right.note};
}

/// Pairs the spellings of one key, which are in order on both sides.
void pairSpellings(std::span<const Entry> left, std::span<const Entry> right, QList<KeyedRow> &rows)
{
    std::vector<const KeyedItem *> leftAlone;
    std::vector<const KeyedItem *> rightAlone;
    auto other = right.begin();
    for (const auto &[folded, item] : left) {
        for (; other != right.end() && other->item->key < item->key; ++other)
            rightAlone.push_back(other->item);
        if (other != right.end() && other->item->key == item->key)
            rows.append(pairedRow(*item, *(other++)->item));
        else
            leftAlone.push_back(item);
    }
    for (; other != right.end(); ++other)
        rightAlone.push_back(other->item);

    const std::size_t both = std::min(leftAlone.size(), rightAlone.size());
    for (std::size_t i = 0; i < both; ++i)
        rows.append(pairedRow(*leftAlone[i], *rightAlone[i]));
    for (std::size_t i = both; i < leftAlone.size(); ++i)
        rows.append({leftAlone[i]->key, PairStatus::LeftOnly, leftAlone[i]->value, {}, leftAlone[i]->note});
    for (std::size_t i = both; i < rightAlone.size(); ++i)
        rows.append({rightAlone[i]->key, PairStatus::RightOnly, {}, rightAlone[i]->value, rightAlone[i]->note});
}

} // namespace

QList<KeyedRow> compareKeyed(const QList<KeyedItem> &left, const QList<KeyedItem> &right, KeyMatch match)
{
    const std::vector<Entry> leftEntries = sortedEntries(left, match);
    const std::vector<Entry> rightEntries = sortedEntries(right, match);
    std::span<const Entry> leftRest = leftEntries;
    std::span<const Entry> rightRest = rightEntries;
    QList<KeyedRow> rows;
    rows.reserve(std::max(left.size(), right.size()));
    while (!leftRest.empty() || !rightRest.empty()) {
        const bool leftIsNext =
            rightRest.empty() || (!leftRest.empty() && leftRest.front().folded < rightRest.front().folded);
        const QString folded = (leftIsNext ? leftRest : rightRest).front().folded;
        const std::span<const Entry> leftGroup = takeGroup(leftRest, folded);
        pairSpellings(leftGroup, takeGroup(rightRest, folded), rows);
    }
    return rows;
}

void PairCounts::add(PairStatus status)
{
    static constexpr qsizetype PairCounts::*counts[] = {&PairCounts::same, &PairCounts::changed, &PairCounts::leftOnly,
                                                        &PairCounts::rightOnly};
    ++(this->*counts[std::size_t(status)]);
}

PairCounts countRows(const QList<KeyedRow> &rows)
{
    PairCounts counts;
    for (const KeyedRow &row : rows)
        counts.add(row.status);
    return counts;
}

} // namespace velmora
