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

} // namespace velmora
