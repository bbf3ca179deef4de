#pragma once

#include "system/snapshot_kind.h"

#include <QDateTime>

#include <optional>

namespace velmora {

/// What a file was when it was read, so that a change shows.
struct SnapshotStamp {
    QDateTime modified;
    qint64 size = -1;

    [[nodiscard]] static SnapshotStamp of(const QString &path);
    [[nodiscard]] bool exists() const noexcept { return size >= 0; }
    friend bool operator==(const SnapshotStamp &, const SnapshotStamp &) = default;
};

/// What a run is to do for one side.
struct SideOrder {
    enum class Source : quint8 { None, Keep, Load, Capture };

    Source source = Source::None;
    QString path;  ///< to load from
    Snapshot kept; ///< to keep
};

/// What became of it.
struct SideResult {
    std::optional<Snapshot> snapshot; ///< none where it failed or nothing was ordered
    SnapshotFault loadFault = SnapshotFault::None;
    CaptureFault captureFault = CaptureFault::None;
    QString detail; ///< of the fault
    qsizetype repeated = 0;
    SnapshotStamp stamp;
};

struct SnapshotOrder {
    SideOrder left;
    SideOrder right;
    bool compare = false; ///< once both sides are there
};

struct SnapshotOutcome {
    SideResult left;
    SideResult right;
    std::optional<QList<KeyedRow>> rows; ///< of a comparison that was ordered, where both sides are there
};

/// Gets the snapshots of both sides and compares them if that is asked for. When both sides are to be captured, it is
/// done once. On a worker.
[[nodiscard]] SnapshotOutcome carryOut(const SnapshotOrder &order, const SnapshotKind &kind, const CancelFlag &cancel,
                                       Progress &progress);

} // namespace velmora
