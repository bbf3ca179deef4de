#pragma once

#include "core/cancel_flag.h"
#include "core/progress.h"
#include "folder/operations/operation_plan.h"

namespace velmora {

class OperationJournal;

/// How a step ended.
enum class StepEnd : quint8 {
    NotReached, ///< the run was cancelled before, or a root was lost, perhaps with what the step had just done
    Done,
    Skipped, ///< the world is no longer what the plan says, or it was not safe to act; nothing was changed
    Failed,  ///< the system refused; nothing was changed unless the error says so
};

enum class OperationErrorCode : quint8 {
    None,
    RootMissing,         ///< a chosen folder is gone, or is another one now; that ends the run
    SourceMissing,       ///< it was there when the plan was made
    SourceChanged,       ///< before, or while it was read
    TargetChanged,       ///< it was there and is gone or another
    TargetAppeared,      ///< nothing was there
    CounterpartAppeared, ///< what was missing on the other side is there, or cannot be looked for
    KeptCopyChanged,     ///< the file that was to stay is gone, or no longer the same as the one that was to go
    LeadsOutside,        ///< a link stands where a folder was
    FolderNotEmpty,      ///< it holds what the plan does not cover
    TroubleInBranch,     ///< something else went wrong in its folder, so nothing is deleted there
    NameNotAllowed,
    NotReadable,
    NotWritable, ///< permissions, a read-only volume, a file in use
    NoSpace,
    NotTheSame,    ///< the copy is not what was read; it was removed again
    NotKept,       ///< the old contents could not be set aside for undoing; nothing was changed
    NotJournalled, ///< the journal cannot be written; nothing was changed
    NoRecycleBin,
    OtherInBin,       ///< another entry lies at the place in the recycle bin; it stays there
    SourceStays,      ///< of a move: the copy is in place, the source could not be removed
    AttributesLost,   ///< done, save that time or permissions could not be kept
    NotOnDiskForSure, ///< done, save that the system could not confirm that it reached the disk
    Unsupported,      ///< a pipe, a socket, a device; a folder to another volume in one step
    Cancelled,        ///< in the middle; what was begun is undone
};

struct OperationProblem {
    qsizetype step = -1; ///< index into the executed plan; -1: the run as a whole
    OperationErrorCode code = OperationErrorCode::None;
    QString path;   ///< absolute
    QString reason; ///< the system's own words, where there are any
    /// Of `TroubleInBranch`: how many deletions one folder, at `path`, has kept from being done. Of `RootMissing`,
    /// where `reason` is empty when another folder is there: how many steps are not done.
    qint64 steps = 1;

    friend bool operator==(const OperationProblem &, const OperationProblem &) = default;
};

struct ExecutionReport {
    OperationPlan plan;               ///< as it was carried out, after the survey; a refused one does nothing
    QList<StepEnd> ends;              ///< one for each step of `plan`
    QList<OperationProblem> problems; ///< in the order of their coming
    OperationTotals done;
    bool cancelled = false;
    QString journalId;      ///< empty when nothing was journalled
    qint64 notUndoable = 0; ///< steps whose old contents were beyond the journal's limits and are gone
    qint64 inBinOnly = 0;   ///< steps whose entry went to a recycle bin that it can be taken out of by hand only

    [[nodiscard]] bool isComplete() const
    {
        return problems.isEmpty() && !cancelled && plan.refusal == PlanRefusal::None;
    }
};

struct ExecutionOptions {
    /// Reads each copy again and compares it with its source.
    bool verifyContent = false;
    /// Where the run is written down and old contents are kept; null: it cannot be undone. Must outlive the run.
    OperationJournal *journal = nullptr;
    /// False: what is replaced or deleted is gone, and its space is free.
    bool keepsOld = true;
};

/// The phases of a run; `Surveying` counts steps and is left out for a plan that is surveyed, `Working` counts bytes
/// and `bytesForEachStep` for each step.
enum class OperationPhase : int { Surveying = 0, Working = 1 };
constexpr qint64 bytesForEachStep = 4096;

/// Carries out a plan. Synchronous, for a worker. Never throws but for lack of memory.
///
/// - Right before a step its places are looked at again, through folders that are held open and never through a link:
///   what is not as the plan says is skipped.
/// - A copy is made beside its target under a temporary name, checked, given time and permissions of its source, and
///   takes its place in one step. There is never half a file under a name that anybody knows.
/// - A replaced file's new contents, and those of a move between volumes, are on the disk before the old are given up.
///   New copies, whose sources stay, reach the disk together, by the end of the run unless it is
///   cancelled; other threads open what is copied next, and bring to the disk what has been. Waiting for that in the
///   end is the one thing that cannot be cancelled.
/// - Deletions wait until the copies before them are on the disk.
/// - Setting `cancel` ends the run between two steps, or in a copy, within 100 ms; a begun copy is removed.
/// - After an error nothing that depends on it is deleted; the run goes on with the rest.
/// - Every now and then, before anything is deleted, and at the end it is looked whether the paths of the roots still
///   lead to the folders that are held. If not, the run ends; what was written to such a folder since the last look is
///   not called done.
[[nodiscard]] ExecutionReport executePlan(OperationPlan plan, FileLayer &files, const ExecutionOptions &options,
                                          const CancelFlag &cancel, Progress &progress);

} // namespace velmora
