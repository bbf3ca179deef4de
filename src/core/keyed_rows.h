#pragma once

#include "core/side.h"

#include <QList>
#include <QString>

namespace velmora {

/// How one thing compares between two sides.
enum class PairStatus : quint8 { Same, Changed, LeftOnly, RightOnly };

/// Whether `side` has it.
[[nodiscard]] constexpr bool isOn(PairStatus status, Side side)
{
    return status != (side == Side::Left ? PairStatus::RightOnly : PairStatus::LeftOnly);
}

/// One key of one side.
struct KeyedItem {
    QString key;
    QString value;     ///< what is compared
    QString note = {}; ///< what else is known of it, as a name in words
};

/// One key of either side.
struct KeyedRow {
    QString key; ///< as the left side spells it, where it has it
    PairStatus status = PairStatus::Same;
    QString left; ///< the values, empty where the side lacks the key
    QString right;
    QString note = {}; ///< of the right side where both have one

    friend bool operator==(const KeyedRow &, const KeyedRow &) = default;
};

/// Whether keys that differ in nothing but letter case are the same.
enum class KeyMatch : quint8 { Exact, IgnoringCase };

/// The keys of both sides in their order, by the numbers of their letters, each with its status. A side has no key
/// twice. Where letter case does not matter, the order ignores it too, and a side that has a key in several spellings
/// has each paired with the same spelling first. Linear in the items but for sorting those that are in no order.
[[nodiscard]] QList<KeyedRow> compareKeyed(const QList<KeyedItem> &left, const QList<KeyedItem> &right, KeyMatch match);

struct PairCounts {
    qsizetype same = 0;
    qsizetype changed = 0;
    qsizetype leftOnly = 0;
    qsizetype rightOnly = 0;

    [[nodiscard]] qsizetype differences() const noexcept { return changed + leftOnly + rightOnly; }
    [[nodiscard]] qsizetype all() const noexcept { return same + differences(); }
    void add(PairStatus status);
    friend bool operator==(const PairCounts &, const PairCounts &) = default;
};

[[nodiscard]] PairCounts countRows(const QList<KeyedRow> &rows);

} // namespace velmora
