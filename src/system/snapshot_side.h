#pragma once

#include "system/snapshot_bar.h"
#include "system/snapshot_job.h"

#include <QFileInfo>
#include <QObject>

#include <optional>

namespace velmora {

class PathEdit;
class PathsBar;

/// One side of a snapshot session: the row of its label, field and buttons, and the snapshot that it holds.
///
/// The side's place, which records keep, is a path, the kind's live text, or empty. The snapshot belongs to the place
/// that the field had when it was taken, and is of no use for another one.
class SnapshotSide final : public QObject {
    Q_OBJECT
public:
    /// Takes over a field of `bar` and puts its buttons there; `bar` outlives it.
    SnapshotSide(const SnapshotKind &kind, Side side, const SnapshotBar::SideActions &actions, PathsBar &bar,
                 QObject *parent);

    [[nodiscard]] QString place() const;
    void setPlace(const QString &place);
    [[nodiscard]] bool isLive() const { return place() == m_live; }
    [[nodiscard]] bool isFile() const { return !isLive() && !place().isEmpty(); }
    /// What the side is called: its file's name, or what stands for this system.
    [[nodiscard]] QString name() const { return isFile() ? QFileInfo(place()).fileName() : m_shownLive; }

    /// Whether there is something that can be compared, or gone for.
    [[nodiscard]] bool isFilled() const { return m_emptyIsLive || !place().isEmpty(); }
    /// Whether a snapshot of the current place is at hand.
    [[nodiscard]] bool holdsSnapshot() const { return m_snapshot && m_snapshotPlace == place(); }
    /// Precondition: `holdsSnapshot()`.
    [[nodiscard]] const Snapshot &snapshot() const { return *m_snapshot; }

    /// What a comparison has to do for this side.
    [[nodiscard]] SideOrder orderForCompare() const;
    /// Takes over a snapshot of `place`, which becomes this side's place.
    void take(const QString &place, const SideResult &result);
    /// Takes over what a comparison got for this side, unless it was captured for this once.
    void takeCompared(const SideResult &result);

    [[nodiscard]] PathEdit &field() { return m_field; }
    /// Lets the field be edited or not.
    void setBusy(bool busy);
    /// The place of a side that was captured.
    [[nodiscard]] const QString &livePlace() const { return m_live; }

Q_SIGNALS:
    /// The place has changed.
    void edited();
    /// A person has pressed Return in the field.
    void submitted();

private:
    QString m_live;
    QString m_shownLive; ///< what stands for it in the field
    bool m_emptyIsLive;
    PathEdit &m_field;
    std::optional<Snapshot> m_snapshot;
    QString m_snapshotPlace;
    SnapshotStamp m_stamp;
};

} // namespace velmora
