#pragma once

#include "core/cancel_flag.h"
#include "core/progress.h"
#include "folder/actions/action_outcome.h"
#include "folder/operations/journal_place.h"

namespace velmora {

/// Carries out a plan and words what came of it. Waits while another session, or another program, writes to the
/// journal. Synchronous, for a worker.
[[nodiscard]] ActionOutcome runAction(const ActionRequest &request, const OperationPlan &plan, FileLayer &files,
                                      const JournalPlace &place, const CancelFlag &cancel, Progress &progress);

/// The undoing of a run of the journal.
struct PreparedUndo {
    UndoPlan undo;
    JournalEntry entry; ///< of the run to be undone
};
/// Of the run `id`; of the last one while it is empty.
[[nodiscard]] PreparedUndo prepareUndoing(FileLayer &files, const JournalPlace &place, const QString &id,
                                          const CancelFlag &cancel);

} // namespace velmora
