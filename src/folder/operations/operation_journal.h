#pragma once

#include "core/cancel_flag.h"
#include "core/progress.h"
#include "folder/operations/operation_plan.h"

#include <QDateTime>

namespace velmora {

/// How much the journal keeps.
struct JournalLimits {
    qint64 keptBytes = qint64(2) << 30U; ///< of old contents, over all runs
    int days = 30;                       ///< runs older than this go
    int runs = 200;
};

/// What one run did, by its own account.
struct JournalEntry {
    QString id;
    QString title; ///< the caller's, to show the run again
    QDateTime started;
    bool undone = false;       ///< in full
    bool undoneInPart = false; ///< it can be tried again for the rest
    bool isAtWork = false;     ///< in another process, or another part of this one
    bool interrupted = false;  ///< a crash ended it, and the rest has not been done since
    bool continued = false;    ///< a crash ended it, and the rest has been done since
    bool told = false;         ///< a person has been told of the crash
    QString undoOf;            ///< the run that this one undid
};

/// What `OperationJournal::entries` could read.
struct JournalList {
    QList<JournalEntry> entries; ///< the oldest first
    QStringList unreadable;      ///< identifiers of runs whose journal is damaged
};

/// Why a run cannot be undone.
enum class UndoRefusal : quint8 { None, NothingToUndo, Unreadable, Damaged };

struct UndoPlan {
    OperationPlan plan; ///< surveyed; what has changed since is in `leftOut`
    QString id;         ///< of the run to be undone
    UndoRefusal refusal = UndoRefusal::None;
};

/// What a run did, and what it was still to do, as plans that can be shown.
struct PastRun {
    OperationPlan done;
    OperationPlan rest; ///< looked at and ready to be carried out; `leftOut` has what is no longer as it was
    UndoRefusal refusal = UndoRefusal::None;
};

/// The memory of operations: one folder for each run in a folder of the program's own, with what was done as JSON lines
/// in "journal.jsonl" and old contents in "kept". The plan is written down first, a line before each step and one
/// after, so that a run that a crash ended can be undone as far as it came, or continued. Old contents are hard links
/// or moved files where the volume is the same and copies elsewhere; beyond the limits they are not kept, which the run
/// reports.
///
/// An object is for one thread at a time and cheap to make: a run of its own may have its own. Two runs at once may
/// share the folder: each holds the lock "lock" in its own, and what is locked is not forgotten.
///
/// The next run also removes the copy that a run which a crash ended was just making beside its target: the journal has
/// its place, and that it is no longer at work shows by its lock. Nothing else is searched or removed.
class OperationJournal {
public:
    /// `folder` is absolute and made when needed.
    OperationJournal(FileLayer &files, QString folder, JournalLimits limits = {});
    ~OperationJournal();
    OperationJournal(const OperationJournal &) = delete;
    OperationJournal &operator=(const OperationJournal &) = delete;

    /// Of the run that is executed next. `undoOf` marks it as the undoing of another, `restOf` as what another has left
    /// to be done; that one is marked when all of it has been done.
    void setNext(const QString &title, const QString &undoOf = {}, const QString &restOf = {});

    [[nodiscard]] JournalList entries() const;

    /// False when `planUndo` without a run would find none that has not been undone. Costs a few looks at files.
    [[nodiscard]] bool mayUndo() const;

    /// Remembers that a person has been told that the run was interrupted.
    void markTold(const QString &id);
    /// Remembers that nothing is left to be done of a run that was interrupted.
    void markContinued(const QString &id);

    /// What takes back the run `id`, or the last one that is neither undone nor an undoing when `id` is empty. Files
    /// that were made are deleted if they are still as they were made, replaced and deleted ones come back, moved and
    /// not copied where the volume is the same. What is as it was before the run is not in the plan, so that the rest
    /// of a run that was undone in part can be tried again. Carry it out with `setNext(title, undo.id)`: when nothing
    /// is left out and all went well, the run is then marked as undone, else as undone in part. Synchronous, for a
    /// worker, as the survey in it.
    [[nodiscard]] UndoPlan planUndo(const QString &id = {}, const CancelFlag &cancel = {},
                                    Progress progress = Progress()) const;

    /// What the run `id` did, and what is left of it where a crash or a person has ended it. Synchronous, for a worker.
    [[nodiscard]] PastRun readRun(const QString &id, const CancelFlag &cancel = {}) const;

    /// Forgets the oldest runs beyond the limits. Called by the executor before each run.
    void prune();

private:
    friend class JournalRun;
    void markRun(const QString &id, const QString &name);
    [[nodiscard]] UndoPlan planUndoOf(const QString &id, const CancelFlag &cancel, Progress &progress) const;
    FileLayer &m_files;
    QString m_folder;
    JournalLimits m_limits;
    QString m_nextTitle;
    QString m_nextUndoOf;
    QString m_nextRestOf;
};

} // namespace velmora
