#pragma once

#include "core/keyed_rows.h"

#include <QMap>
#include <QString>

namespace velmora {

/// One item of a snapshot.
struct SnapshotItem {
    QString value; ///< what is compared
    // Of services only, and kept for their file: the value is made of the state and the start mode.
    QString displayName = {};
    QString state = {};
    QString startMode = {};

    friend bool operator==(const SnapshotItem &, const SnapshotItem &) = default;
};

/// A piece of the state of a system at one moment: its items by their keys, in the order of the keys.
using Snapshot = QMap<QString, SnapshotItem>;

/// The item of a service: its value is "STATE / START MODE".
[[nodiscard]] SnapshotItem serviceItem(const QString &displayName, const QString &state, const QString &startMode);

/// The keys of both snapshots, each with its status; a service's display name is its note.
[[nodiscard]] QList<KeyedRow> compareSnapshots(const Snapshot &left, const Snapshot &right, KeyMatch match);

} // namespace velmora
