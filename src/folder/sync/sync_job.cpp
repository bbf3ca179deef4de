#include "folder/sync/sync_job.h"

#include "folder/engine/folder_engine.h"
#include "folder/operations/folder_chain.h"
#include "vfs/local_folder.h"

namespace velmora {

SyncProposal proposeSync(const QList<FolderDiffItem> &items, const QList<MovedFile> &moved, const SyncRules &rules)
{
    SyncProposal proposal;
    proposal.items = withMoves(planSync(items, rules), moved);
    proposal.conflicts = findNameConflicts(items, proposal.items);
    return proposal;
}

SyncAnalysis analyseFolders(const SyncQuestion &question, const CancelFlag &cancel, Progress &progress)
{
    SyncAnalysis analysis;
    FolderInput input;
    input.roots = localFolders(question.folders.left, question.folders.right);
    input.ignoresHours = question.rules.ignoresHours;
    const FolderRunReport report{&progress, &analysis.input.problems};
    analysis.input.roots = input.roots;
    analysis.input.identities = identitiesOf(FileLayer::native(), input.roots);
    analysis.input.items = compareFolderTree(input, cancel, report);
    if (question.readsContents)
        readUnread(input, analysis.input.items, cancel, report);
    if (question.findsMoves)
        analysis.moved = findMovedFiles(input.roots, analysis.input.items, cancel, progress);
    analysis.proposal = proposeSync(analysis.input.items, analysis.moved, question.rules);
    analysis.likelyMoves = countLikelyMoves(analysis.input.items);
    analysis.wholeHours = countWholeHours(analysis.input.items);
    return analysis;
}

} // namespace velmora
