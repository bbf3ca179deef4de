#include "folder/operations/opened_run.h"

#include "folder/operations/journal_folder.h"

namespace velmora {

OpenedRun openRun(FileLayer &files, const QString &folder, const QString &id, const CancelFlag &cancel)
{
    OpenedRun opened;
    FileError error;
    const std::unique_ptr<FolderHandle> journal = files.openRoot(folder, error);
    const std::unique_ptr<FolderHandle> run = journal ? journal->openFolder(id, error) : nullptr;
    if (!run) {
        opened.refusal = error.kind == FileErrorKind::Missing ? UndoRefusal::NothingToUndo : UndoRefusal::Unreadable;
        return opened;
    }
    const std::unique_ptr<FileSource> file = run->openFile(journalFileName, error);
    opened.record = file ? readJournal(*file, cancel, error) : std::nullopt;
    opened.isCancelled = error.kind == FileErrorKind::Stopped;
    if (!opened.record && !opened.isCancelled)
        opened.refusal = error.isError() ? UndoRefusal::Unreadable : UndoRefusal::Damaged;
    return opened;
}

void refuseOtherRoots(const JournalHeader &header, const std::set<int> &needed, const FolderChain &chain,
                      OperationPlan &plan)
{
    for (const int root : needed) {
        FolderHandle *const folder = chain.root(root);
        const QString number = folder ? rootNumber(folder->self().node.identity) : QString();
        if (folder && (header.rootNumbers.isEmpty() || header.rootNumbers[root] == number))
            continue;
        plan.refusal = PlanRefusal::RootMissing;
        plan.refusedAt = plan.roots[root].path;
        return;
    }
}

} // namespace velmora
