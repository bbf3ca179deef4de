#pragma once

#include "folder/operations/folder_chain.h"
#include "folder/operations/journal_lines.h"
#include "folder/operations/operation_journal.h"

#include <set>

namespace velmora {

/// A run as its journal tells.
struct OpenedRun {
    std::optional<JournalRecord> record;
    UndoRefusal refusal = UndoRefusal::None; ///< why there is no record
    bool isCancelled = false;
};

/// Refuses `plan`, whose first roots are those of the run, when one of these that is among `needed` is not there or is
/// another folder than it was when the run began: on a drive that was taken away, or below the place where one was.
/// `chain` has the roots of the plan open.
void refuseOtherRoots(const JournalHeader &header, const std::set<int> &needed, const FolderChain &chain,
                      OperationPlan &plan);

/// Reads the run `id` of the journal in `folder`.
[[nodiscard]] OpenedRun openRun(FileLayer &files, const QString &folder, const QString &id, const CancelFlag &cancel);

} // namespace velmora
