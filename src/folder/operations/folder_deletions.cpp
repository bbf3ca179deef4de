#include "folder/operations/folder_deletions.h"

namespace velmora {

namespace {

bool isRecycledIn(const OperationStep &step, const OperationStep &folder)
{
    return step.kind == OperationKind::Recycle && step.from.root == folder.from.root &&
           step.from.relative.startsWith(folder.from.relative + u'/');
}

} // namespace

QList<OperationStep> FolderDeletions::settled(const QList<OperationStep> &steps)
{
    return withJoinedFolders(withoutFullerFolders(steps));
}

void FolderDeletions::makeWhole(OperationStep &step, const TreeSummary &summary)
{
    step.wholeTree = true;
    step.fromSeen.contents = summary.fingerprint;
    step.fromSeen.files = summary.files;
    step.fromSeen.size = summary.bytes;
}

/// Folders that are deleted one by one stay when they hold more than the plan names. The innermost come first, so
/// that a folder in a folder that stays keeps this, too.
QList<OperationStep> FolderDeletions::withoutFullerFolders(const QList<OperationStep> &steps)
{
    QList<OperationStep> kept;
    for (const OperationStep &step : steps) {
        const bool isFolder = step.kind == OperationKind::Delete && step.fromSeen.kind == NodeKind::Folder;
        if (!isFolder || m_cancel.isCancelled() || holdsNoMore(step))
            kept.append(step);
        else
            m_vacated.remove(step.from);
    }
    return kept;
}

bool FolderDeletions::holdsNoMore(const OperationStep &step)
{
    FileError error;
    const std::unique_ptr<FolderHandle> folder = m_chain.open(step.from, error);
    bool isAll = true;
    if (folder) {
        error = folder->list([&](const QString &name, const NodeState &) {
            isAll = m_vacated.contains({step.from.root, QString(step.from.relative % u'/' % name)});
            return isAll;
        });
    }
    return told(step, error, isAll);
}

/// What goes to the bin in full goes as one, the outermost folder first: from the end.
QList<OperationStep> FolderDeletions::withJoinedFolders(const QList<OperationStep> &steps)
{
    QList<OperationStep> kept;
    for (qsizetype i = steps.size() - 1; i >= 0; --i) {
        OperationStep step = steps[i];
        const bool isFolder = step.kind == OperationKind::Recycle && step.fromSeen.kind == NodeKind::Folder;
        if (isFolder && !step.wholeTree && !m_cancel.isCancelled()) {
            TreeSummary summary;
            if (!goesInFull(step, summary)) {
                m_vacated.remove(step.from);
                continue;
            }
            makeWhole(step, summary);
            while (i > 0 && isRecycledIn(steps[i - 1], step))
                --i;
        }
        kept.append(step);
    }
    std::reverse(kept.begin(), kept.end());
    return kept;
}

bool FolderDeletions::goesInFull(const OperationStep &step, TreeSummary &summary)
{
    FileError error;
    const std::unique_ptr<FolderHandle> folder = m_chain.open(step.from, error);
    bool isAll = true;
    if (folder) {
        error = visitTree(*folder, [&](const QString &relative, const NodeState &node) {
            summary.add(relative, node);
            isAll = m_vacated.contains({step.from.root, QString(step.from.relative % u'/' % relative)});
            return isAll && !m_cancel.isCancelled();
        });
    }
    return told(step, error, isAll);
}

/// Says why a folder stays, if it does.
bool FolderDeletions::told(const OperationStep &step, const FileError &error, bool isAll)
{
    if (error.isError())
        m_leftOut.append({LeftOutReason::NotReadable, m_plan.pathOf(step.from), error.reason});
    else if (!isAll)
        m_leftOut.append({LeftOutReason::HoldsUnlistedEntries, m_plan.pathOf(step.from), {}});
    return isAll && !error.isError();
}

} // namespace velmora
