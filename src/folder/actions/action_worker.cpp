#include "folder/actions/action_worker.h"

#include "folder/actions/command_words.h"

namespace velmora {

ActionOutcome runAction(const ActionRequest &request, const OperationPlan &plan, FileLayer &files,
                        const JournalPlace &place, const CancelFlag &cancel, Progress &progress)
{
    const JournalNote note{actionTitle(request), request.undoOf, request.restOf, request.keeping != Keeping::NoNotes,
                           request.keeping == Keeping::OldContents};
    const ExecutionReport report = executeJournalled(plan, files, place, note, cancel, progress);
    return outcomeOf(request, report, QTime::currentTime());
}

PreparedUndo prepareUndoing(FileLayer &files, const JournalPlace &place, const QString &id, const CancelFlag &cancel)
{
    const OperationJournal journal(files, place.folder, place.limits);
    PreparedUndo prepared{journal.planUndo(id, cancel), {}};
    for (const JournalEntry &entry : journal.entries().entries) {
        if (entry.id == prepared.undo.id)
            prepared.entry = entry;
    }
    return prepared;
}

} // namespace velmora
