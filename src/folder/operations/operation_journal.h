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
    bool undone = false;
    QString undoOf; ///< the run that this one undid
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

/// The memory of operations: one folder for each run in a folder of the program's own, with what was done as JSON lines
/// in "journal.jsonl" and old contents in "kept". A line is written before a step and one after, so that a run that a
/// crash ended can be undone as far as it came. Old contents are hard links or moved files where the volume is the same
/// and copies elsewhere; beyond the limits they are not kept, which the run reports.
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

    /// Of the run that is executed next. `undoOf` marks it as the undoing of another.
    void setNext(const QString &title, const QString &undoOf = {});

    [[nodiscard]] JournalList entries() const;

    /// What takes back the run `id`, or the last one that is neither undone nor an undoing when `id` is empty. Files
    /// that were made are deleted for good if they are still as they were made, replaced and deleted ones come back.
    /// Carry it out with `setNext(title, undo.id)`: a run without problems is then marked as undone.
    /// Synchronous, for a worker, as the survey in it.
    [[nodiscard]] UndoPlan planUndo(const QString &id = {}, const CancelFlag &cancel = {},
                                    Progress progress = Progress()) const;

    /// Forgets the oldest runs beyond the limits. Called by the executor before each run.
    void prune();

private:
    friend class JournalRun;
    FileLayer &m_files;
    QString m_folder;
    JournalLimits m_limits;
    QString m_nextTitle;
    QString m_nextUndoOf;
};

} // namespace velmora
