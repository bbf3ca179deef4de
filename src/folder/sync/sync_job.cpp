#include "folder/sync/sync_job.h"

#include "folder/engine/folder_engine.h"
#include "vfs/local_folder.h"

namespace velmora {

SyncAnalysis analyseFolders(const SyncQuestion &question, const CancelFlag &cancel, Progress &progress)
{
    SyncAnalysis analysis;
    FolderInput input;
    input.roots = localFolders(question.folders.left, question.folders.right);
    const FolderRunReport report{&progress, &analysis.input.problems};
    analysis.input.roots = input.roots;
    analysis.input.items = compareFolderTree(input, cancel, report);
    if (question.readsContents)
        readUnread(input, analysis.input.items, cancel, report);
    analysis.plan = planSync(analysis.input.items, question.mode);
    return analysis;
}

} // namespace velmora
