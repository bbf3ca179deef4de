#pragma once

#include "core/rare.h"
#include "platform/file_layer.h"

#include <QList>
#include <QString>

#include <functional>
#include <optional>

namespace velmora {

/// Operations on files as plain data: what `plan_builders.h` makes, `plan_survey.h` completes, a person sees as a
/// preview and `operation_executor.h` carries out.

/// An entry below one of the plan's roots.
struct Place {
    int root = -1;    ///< index into `OperationPlan::roots`; -1: no place
    QString relative; ///< "/" between the parts; no part is empty, "." or ".."

    [[nodiscard]] bool isSet() const noexcept { return root >= 0; }
    friend bool operator==(const Place &, const Place &) = default;
};

/// What was seen at a place when the plan was made: the executor acts only on what is still like that.
struct SeenEntry {
    enum class State : quint8 {
        Unknown, ///< nobody has looked yet; the survey does
        Absent,
        Listed, ///< as a comparison tells: files by size and time to the millisecond, links followed
        Exact,  ///< as the survey saw it
    };

    State state = State::Unknown;
    NodeKind kind = NodeKind::File;
    qint64 size = 0;                      ///< bytes of a file; of a whole tree the sum of its files
    qint64 modifiedNs = 0;                ///< nanoseconds since 1970-01-01 UTC
    std::optional<FileIdentity> identity; ///< of an exact entry, where the file system has one
    quint64 contents = 0; ///< of a whole tree: a fingerprint of every name, size, time and identity in it
    qint64 files = 1;     ///< of a whole tree the number of files in it

    [[nodiscard]] bool isPresent() const noexcept { return state == State::Listed || state == State::Exact; }
    [[nodiscard]] static SeenEntry absent();
    [[nodiscard]] static SeenEntry exactly(const NodeState &node);

    /// True when `node` is the entry that was seen. Of folders only the identity counts.
    [[nodiscard]] bool isStill(const NodeState &node) const;
    /// The same where nobody has a reason to change what is in a folder: its time counts, too.
    [[nodiscard]] bool isUntouched(const NodeState &node) const;

    friend bool operator==(const SeenEntry &, const SeenEntry &) = default;
};

enum class OperationKind : quint8 {
    MakeFolder, ///< at `to`; takes time and permissions from the folder `from`, if that is set, once all is done
    Copy,       ///< a file or link `from` to `to`, where nothing is
    Replace,    ///< a file or link `from` over the file or link `to`
    Move,       ///< `from` to `to`, over what is there when `toSeen` is present; folders within one volume only
    Recycle,    ///< `from`, a folder with everything in it, goes to the recycle bin
    Delete,     ///< `from`, a file, a link or an empty folder, goes for good
    Restore,    ///< what is in the recycle bin at `binPath` to `to`, where nothing is
};

/// What becomes of the entries of a folder that a comparison does not list: hidden ones, broken links, pipes.
enum class UnlistedEntries : quint8 {
    Stay,
    AreCopied, ///< the folder goes over whole, and they with it
    AreMoved,
};

struct OperationStep {
    OperationKind kind = OperationKind::Copy;
    Place from;
    Place to;
    SeenEntry fromSeen;
    SeenEntry toSeen;
    /// Of a deletion or a move that follows from a missing counterpart: where that must still be missing. Such a step
    /// is skipped, too, when anything went wrong in a folder that it lies in.
    Rare<Place> counterpart;
    /// Of a deletion of one of two files of the same contents: the one that stays, in any root, and what was seen of
    /// it. Right before the deletion both are read; unless every byte is the same, nothing is deleted.
    Rare<Place> keptCopy;
    Rare<SeenEntry> keptCopySeen;
    Rare<QString> binPath;
    /// Of `Recycle` and `Delete` of a folder, until the survey: what the comparison does not list goes as well.
    bool wholeTree = false;
    /// Of `Copy` and `Move` to a place that nobody has looked at: a file there may be replaced. Of `MakeFolder` without
    /// a source: one that is there serves as well.
    bool mayReplace = false;
    bool replacesProtected = false; ///< the file at `to` is marked as read-only; the survey tells
    /// Of `MakeFolder` with a source, until the survey, which adds a step for each such entry.
    UnlistedEntries unlistedEntries = UnlistedEntries::Stay;
    /// Of a surveyed `Recycle` or `Delete`: how many of the entries that go the comparison does not list.
    qint64 unlisted = 0;

    [[nodiscard]] bool copies() const { return kind == OperationKind::Copy || kind == OperationKind::Replace; }
    [[nodiscard]] bool deletes() const { return kind == OperationKind::Recycle || kind == OperationKind::Delete; }
    /// True when nothing is at `from` any more once the step is done.
    [[nodiscard]] bool vacates() const { return deletes() || kind == OperationKind::Move; }
    /// True when it puts something into a root or takes something from it.
    [[nodiscard]] bool changes(int root) const { return to.root == root || (vacates() && from.root == root); }

    friend bool operator==(const OperationStep &, const OperationStep &) = default;
};

/// A folder that a person chose. Nothing outside of the writable ones is ever written.
struct PlanRoot {
    QString path;                         ///< absolute
    std::optional<FileIdentity> identity; ///< set by the survey, which refuses another folder when it finds one here
    bool writable = true;
    bool isKept = false; ///< where a journal keeps old contents; no person's folder

    friend bool operator==(const PlanRoot &, const PlanRoot &) = default;
};

/// Why an entry that the request covers is not acted upon.
enum class LeftOutReason : quint8 {
    FileAgainstFolder,    ///< one side is a file and the other a folder; one must be deleted by hand first
    HiddenByFilter,       ///< a filter hides it
    HoldsHiddenEntries,   ///< the folder stays, since a filter hides something in it
    HoldsUnlistedEntries, ///< the folder stays, since there is something in it that the comparison does not list
    ReadOnlySide,
    TimesAreEqual,        ///< both files differ, and neither is newer
    NameTaken,            ///< another selected entry has the same name
    TargetExists,         ///< something is there already
    IntoItself,           ///< a folder cannot go into itself
    BelowLink,            ///< reached through a link only; the link is the entry
    ChangedSinceCompared, ///< no longer what the comparison saw
    NotReadable,          ///< could not be looked at, or not in full
    UnsupportedKind,      ///< a pipe, a socket or a device
    NameNotAllowed,       ///< the target's system does not allow the name
    NoPlaceOnThisSide,    ///< the entry is not there on the side asked for
    OldContentsGone,      ///< of an undoing: what was there before has not been kept
    InRecycleBin,         ///< of an undoing: it is in the bin of a system that does not tell where
    NotInRecycleBin,      ///< of an undoing: it has been taken out of the bin, or the bin has been emptied
    OtherInRecycleBin,    ///< of an undoing: another entry lies at its place in the bin
};

struct LeftOutEntry {
    LeftOutReason reason;
    QString path;   ///< absolute
    QString detail; ///< the system's own words, where there are any

    friend bool operator==(const LeftOutEntry &, const LeftOutEntry &) = default;
};

/// Why a plan has no steps at all.
enum class PlanRefusal : quint8 {
    None,
    ReadOnlySide,     ///< the side to be written is read-only
    OverlappingRoots, ///< the two folders are the same, or one lies in the other
    RootMissing,      ///< a folder that was chosen is not there, cannot be opened or is another one by now
    NameNotAllowed,   ///< no entry can have the name asked for
    NoLocalFolder,    ///< the entries of a side are no files of this system
    Cancelled,        ///< the survey was stopped
};

/// What a plan, or a run of it, amounts to. Folders count where they are made or removed one by one.
struct OperationTotals {
    qint64 writtenFiles = 0; ///< new files and links, by copy, move or restoring
    qint64 writtenBytes = 0;
    qint64 replacedFiles = 0;
    qint64 replacedBytes = 0; ///< of the new contents
    qint64 deletedFiles = 0;
    qint64 deletedBytes = 0;
    qint64 madeFolders = 0;
    qint64 deletedFolders = 0;
    qint64 deletedUnlisted = 0; ///< of what is deleted, files and folders that the comparison does not list

    void add(const OperationStep &step);
    friend bool operator==(const OperationTotals &, const OperationTotals &) = default;
};

/// A value. Steps are carried out in their order: folders are made before what goes into them, deletions come last and
/// from the leaves up.
struct OperationPlan {
    QList<PlanRoot> roots;
    QList<OperationStep> steps;
    QList<LeftOutEntry> leftOut;
    PlanRefusal refusal = PlanRefusal::None;
    QString refusedAt; ///< of `RootMissing`: the path of the folder, where it is known
    /// Of a mirror: there is nothing at the source, so that everything at the destination would go.
    bool sourceIsEmpty = false;
    /// Of folders that go as whole trees: what the comparison lists in them, as far as no step comes from there.
    QList<Place> listed;
    /// Whether the filters would show an entry that the comparison does not list; empty: they show everything.
    std::function<bool(const QString &path, const NodeState &node)> showsUnlisted;
    /// Of an undoing: folders whose permissions keep their owner from changing what is in them are opened for the
    /// moment. The run that is undone has made them like that.
    bool liftsProtection = false;
    bool rootsMustBeApart = false; ///< the first two roots may neither be the same nor lie in each other
    bool isSurveyed = false;

    [[nodiscard]] OperationTotals totals() const;
    /// Absolute; empty when the place is not set.
    [[nodiscard]] QString pathOf(const Place &place) const;
};

} // namespace velmora

Q_DECLARE_TYPEINFO(velmora::OperationStep, Q_RELOCATABLE_TYPE);
