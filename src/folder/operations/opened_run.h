#pragma once

#include "folder/operations/journal_lines.h"
#include "folder/operations/operation_journal.h"

namespace velmora {

/// A run as its journal tells.
struct OpenedRun {
    std::optional<JournalRecord> record;
    UndoRefusal refusal = UndoRefusal::None; ///< why there is no record
    bool isCancelled = false;
};

/// Reads the run `id` of the journal in `folder`.
[[nodiscard]] OpenedRun openRun(FileLayer &files, const QString &folder, const QString &id, const CancelFlag &cancel);

} // namespace velmora
