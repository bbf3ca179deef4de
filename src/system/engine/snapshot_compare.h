#pragma once

#include "system/engine/snapshot.h"

#include <QList>

namespace velmora {

enum class SnapshotStatus : quint8 { Same, Changed, LeftOnly, RightOnly };

/// One key of either snapshot.
struct SnapshotRow {
    QString key; ///< as the left side spells it, where it has it
    SnapshotStatus status = SnapshotStatus::Same;
    QString left; ///< the values, empty where the side lacks the key
    QString right;
    QString note = {}; ///< the display name of a service, of the right side where both have one

    friend bool operator==(const SnapshotRow &, const SnapshotRow &) = default;
};

/// Whether keys that differ in nothing but letter case are the same.
enum class KeyMatch : quint8 { Exact, IgnoringCase };

/// The keys of both snapshots in their order, each with its status. Where letter case does not matter, the order
/// ignores it too, and a snapshot that holds a key in several spellings has each paired with the same spelling first.
/// Linear in the keys but for sorting them.
[[nodiscard]] QList<SnapshotRow> compareSnapshots(const Snapshot &left, const Snapshot &right, KeyMatch match);

struct SnapshotCounts {
    qsizetype same = 0;
    qsizetype changed = 0;
    qsizetype leftOnly = 0;
    qsizetype rightOnly = 0;

    [[nodiscard]] qsizetype differences() const noexcept { return changed + leftOnly + rightOnly; }
    friend bool operator==(const SnapshotCounts &, const SnapshotCounts &) = default;
};

[[nodiscard]] SnapshotCounts countRows(const QList<SnapshotRow> &rows);

} // namespace velmora
