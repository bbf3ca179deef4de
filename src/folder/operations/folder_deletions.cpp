#include "folder/operations/folder_deletions.h"

#include <QStringBuilder>

namespace velmora {

namespace {

bool isRecycledIn(const OperationStep &step, const OperationStep &folder)
{
    return step.kind == OperationKind::Recycle && step.from.root == folder.from.root &&
           step.from.relative.startsWith(folder.from.relative + u'/');
}

} // namespace

QList<OperationStep> FolderDeletions::settled(QList<OperationStep> steps)
{
    dropFullerFolders(steps);
    joinFolders(steps);
    return steps;
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
void FolderDeletions::dropFullerFolders(QList<OperationStep> &steps)
{
    qsizetype kept = 0;
    for (qsizetype i = 0; i < steps.size(); ++i) {
        const OperationStep &step = steps.at(i);
        const bool isFolder = step.kind == OperationKind::Delete && step.fromSeen.kind == NodeKind::Folder;
        if (isFolder && !m_cancel.isCancelled() && !holdsNoMore(step)) {
            m_vacated.remove(step.from);
            continue;
        }
        if (kept != i)
            steps[kept] = std::move(steps[i]);
        ++kept;
    }
    steps.resize(kept);
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
void FolderDeletions::joinFolders(QList<OperationStep> &steps)
{
    qsizetype kept = steps.size();
    for (qsizetype i = steps.size() - 1; i >= 0; --i) {
        const qsizetype current = i;
        OperationStep &step = steps[current];
        const bool isFolder = step.kind == OperationKind::Recycle && step.fromSeen.kind == NodeKind::Folder;
        if (isFolder && !step.wholeTree && !m_cancel.isCancelled()) {
            TreeSummary summary;
            if (!goesInFull(step, summary)) {
                m_vacated.remove(step.from);
                continue;
            }
            makeWhole(step, summary);
            while (i > 0 && isRecycledIn(steps.at(i - 1), step))
                --i;
        }
        if (--kept != current)
            steps[kept] = std::move(step);
    }
    steps.remove(0, kept);
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
