#pragma once

#include "folder/operations/operation_executor.h"
#include "folder/operations/operation_journal.h"

namespace velmora {

/// Where runs are written down.
struct JournalPlace {
    QString folder; ///< absolute
    JournalLimits limits;
};

/// Where the programs keep their journal, with the limits that are set.
[[nodiscard]] JournalPlace standardJournal();

/// How a run is written down.
struct JournalNote {
    QString title;         ///< to show the run again
    QString undoOf = {};   ///< the run that this one undoes
    QString restOf = {};   ///< the interrupted run of which this one does the rest
    bool isWritten = true; ///< false: not at all, so that a full disk does not stand in the way
    bool keepsOld = true;  ///< false: what is replaced or deleted is gone, and its space is free
};

/// Carries out a plan as `executePlan`. Waits while another session, or another program, writes to the journal; a run
/// that is cancelled meanwhile has done nothing. Synchronous, for a worker.
[[nodiscard]] ExecutionReport executeJournalled(OperationPlan plan, FileLayer &files, const JournalPlace &place,
                                                const JournalNote &note, const CancelFlag &cancel, Progress &progress);

} // namespace velmora
