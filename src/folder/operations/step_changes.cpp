// What `StepRunner` does once it has found the world as the plan has it.

#include "folder/operations/step_work.h"
#include "folder/operations/temporary_name.h"

namespace velmora {

namespace {

/// Of a step that has to be done in another way, since the two places lie on different volumes.
StepResult otherVolume()
{
    StepResult result;
    result.end = StepEnd::NotReached;
    return result;
}

/// Keeps the warnings of two parts of a step.
StepResult joined(const StepResult &first, StepResult second)
{
    second.problems = first.problems + second.problems;
    second.isLost = second.isLost || first.isLost;
    return second;
}

} // namespace

StepResult StepRunner::makeFolder(Work &work)
{
    if (work.targetExists) // an earlier run has made it and did not come to its end
        return {};
    const StepResult begun = beginJournal(work, nullptr);
    if (!begun.isDone())
        return begun;
    const bool hasModel = work.step.from.isSet();
    const FileError error = work.to.folder->makeFolder(work.to.name, hasModel ? &work.source : nullptr);
    if (error.isError())
        return m_problems.failedAtTarget(work.step.to, error);
    StepResult result;
    endJournal(result, work);
    return result;
}

StepResult StepRunner::finishFolder(qsizetype index)
{
    const OperationStep &step = m_plan.steps[index];
    const ReachedPlace from = m_chain.reach(step.from);
    const ReachedPlace to = m_chain.reach(step.to);
    StepResult result;
    if (!from.folder || !to.folder)
        return result; // whatever has happened to them has been told of
    const NodeResult model = from.folder->stat(from.name);
    if (model.error.isError() || model.node.kind != NodeKind::Folder)
        return result;
    FileError error = to.folder->keepFolderAttributes(to.name, *from.folder, from.name);
    if (!error.isError() && model.node.modifiedNs != step.fromSeen.modifiedNs) { // what was moved out changed it
        NodeResult made = to.folder->stat(to.name);
        made.node.modifiedNs = step.fromSeen.modifiedNs;
        error = made.error.isError() ? made.error : to.folder->keepAttributes(to.name, made.node);
    }
    if (error.isError())
        m_problems.warn(result, OperationErrorCode::AttributesLost, step.to, error);
    return result;
}

StepResult StepRunner::copy(Work &work)
{
    const Place &to = work.step.to;
    const QString name = temporaryName();
    if (m_journal) {
        const QString folder = to.relative.left(to.relative.lastIndexOf(u'/') + 1);
        const FileError error = m_journal->copying({to.root, folder + name});
        if (error.isError())
            return m_problems.failed(OperationErrorCode::NotJournalled, to, error);
    }
    const StepResult copied = m_copier.make({work.step, work.from.folder, work.from.name, std::move(work.opened),
                                             work.source, *work.to.folder, name, work.targetExists});
    if (!copied.isDone())
        return copied;
    const StepResult placed = joined(copied, putInPlace(work, name));
    if (!placed.isDone() && !work.isSwapped)
        (void)work.to.folder->removeFile(name);
    return placed;
}

/// Gives the finished copy `name` the target's name. What is there is looked at once more: copying takes its time.
/// Where nothing was, taking the name fails when something has appeared.
StepResult StepRunner::putInPlace(Work &work, const QString &name)
{
    StepResult result = work.targetExists ? checkTarget(work) : StepResult();
    if (result.isDone())
        result = beginJournal(work, work.targetExists ? &work.target : nullptr);
    if (result.isDone())
        result = keepTarget(work);
    if (!result.isDone())
        return result;
    result = place(work, *work.to.folder, name, false);
    if (result.isDone())
        endJournal(result, work);
    return result;
}

/// Gives the entry `name` of `folder` the target's name. `isSource`: it is what the plan has seen as the source.
StepResult StepRunner::place(Work &work, FolderHandle &folder, const QString &name, bool isSource)
{
    if (work.targetExists)
        return placeOver(work, folder, name, isSource);
    const FileError error = folder.move(name, *work.to.folder, work.to.name, FolderHandle::IfTaken::Fail);
    if (error.isError())
        return error.kind == FileErrorKind::OtherVolume ? otherVolume()
                                                        : m_problems.failedAtTarget(work.step.to, error);
    const NodeResult moved = isSource ? work.to.folder->stat(work.to.name) : NodeResult();
    if (!isSource || moved.error.isError() || work.step.fromSeen.isStill(moved.node))
        return {};
    const FileError back = work.to.folder->move(work.to.name, folder, name, FolderHandle::IfTaken::Fail);
    work.isJournalled = work.isJournalled && !back.isError(); // else undoing finds out where it is
    return m_problems.failed(OperationErrorCode::SourceChanged, work.step.from, back);
}

/// The two are swapped, so that what is replaced can be looked at before it goes: since the last look another may have
/// taken its place. Where that cannot be done some microseconds lie between the look and the replacing.
StepResult StepRunner::placeOver(Work &work, FolderHandle &folder, const QString &name, bool isSource)
{
    FolderHandle &target = *work.to.folder;
    FileError error = folder.exchange(name, target, work.to.name);
    if (error.kind == FileErrorKind::Unsupported)
        error = folder.move(name, target, work.to.name, FolderHandle::IfTaken::Replace);
    else if (!error.isError())
        return clearReplaced(work, folder, name, isSource);
    if (error.kind == FileErrorKind::OtherVolume)
        return otherVolume();
    return error.isError() ? m_problems.failedAtTarget(work.step.to, error) : StepResult();
}

/// After the swap: the old entry goes, or the two are swapped back.
StepResult StepRunner::clearReplaced(Work &work, FolderHandle &folder, const QString &name, bool isSource)
{
    FolderHandle &target = *work.to.folder;
    const NodeResult replaced = folder.stat(name);
    const NodeResult placed = isSource ? target.stat(work.to.name) : NodeResult();
    StepResult result;
    if (replaced.error.isError() || !work.step.toSeen.isStill(replaced.node))
        result = m_problems.failed(OperationErrorCode::TargetChanged, work.step.to, replaced.error);
    else if (isSource && (placed.error.isError() || !work.step.fromSeen.isStill(placed.node)))
        result = m_problems.failed(OperationErrorCode::SourceChanged, work.step.from, placed.error);
    else if (const FileError error = folder.removeFile(name); error.isError())
        result = m_problems.failedAtTarget(work.step.to, error);
    if (result.isDone())
        return result;
    if (folder.exchange(name, target, work.to.name).isError()) {
        work.isSwapped = true;
        work.isJournalled = false; // undoing finds out how far it came; what is kept stays
    }
    return result;
}

StepResult StepRunner::keepTarget(Work &work)
{
    if (!m_journal || !work.targetExists)
        return {};
    bool isMoved = false;
    const FileError error =
        m_journal->keep(*work.to.folder, work.to.name, work.target, JournalRun::Keep::Beside, m_tick, isMoved);
    if (error.kind == FileErrorKind::Stopped)
        return m_problems.failed(OperationErrorCode::Cancelled, work.step.to);
    if (error.isError())
        return m_problems.failed(OperationErrorCode::NotKept, work.step.to, error);
    // Keeping it may have taken long, too.
    return checkTarget(work);
}

StepResult StepRunner::move(Work &work)
{
    StepResult result = beginJournal(work, work.targetExists ? &work.target : nullptr);
    if (result.isDone())
        result = keepTarget(work);
    if (!result.isDone())
        return result;
    result = place(work, *work.from.folder, work.from.name, true);
    if (result.end != StepEnd::NotReached) {
        if (result.isDone())
            endJournal(result, work);
        return result;
    }
    if (work.source.kind == NodeKind::Folder)
        return m_problems.failed(OperationErrorCode::Unsupported, work.step.from);
    // The line that says "move" would be wrong until the source is gone.
    if (work.isJournalled)
        m_journal->endNothing();
    work.isJournalled = false;
    work.isFirstHalf = true;
    result = copy(work);
    result.sourceMustGo = result.isDone();
    return result;
}

StepResult StepRunner::removeSource(qsizetype index)
{
    Work work{index, m_plan.steps[index], {}, {}, {}, {}, {}};
    work.from = m_chain.reach(work.step.from);
    FileError error = work.from.error;
    if (work.from.folder && !checkSource(work).isDone())
        return m_problems.failed(OperationErrorCode::SourceStays, work.step.from, error);
    if (work.from.folder) {
        if (m_journal)
            error = m_journal->moved(index, false);
        if (!error.isError()) {
            error = work.from.folder->removeFile(work.from.name);
            if (error.isError() && m_journal)
                (void)m_journal->moved(index, true);
        }
    }
    const bool isGone = work.from.folder && !error.isError();
    return isGone ? StepResult() : m_problems.failed(OperationErrorCode::SourceStays, work.step.from, error);
}

StepResult StepRunner::remove(Work &work)
{
    const bool isFolder = work.source.kind == NodeKind::Folder;
    StepResult result = beginJournal(work, &work.source);
    if (!result.isDone())
        return result;
    bool isMoved = false;
    if (m_journal)
        result = keepAway(work, isMoved);
    if (!result.isDone())
        return result;
    if (!isMoved) {
        if (m_journal && !isFolder)
            result = checkSource(work);
        if (!result.isDone())
            return result;
        const FileError error =
            isFolder ? work.from.folder->removeFolder(work.from.name) : work.from.folder->removeFile(work.from.name);
        if (error.isError())
            return m_problems.failedAtTarget(work.step.from, error);
    }
    endJournal(result, work);
    return result;
}

/// Sets aside what is to be deleted. What got to its place since the last look goes back.
StepResult StepRunner::keepAway(Work &work, bool &isMoved)
{
    FileError error =
        m_journal->keep(*work.from.folder, work.from.name, work.source, JournalRun::Keep::Away, m_tick, isMoved);
    if (error.kind == FileErrorKind::Stopped)
        return m_problems.failed(OperationErrorCode::Cancelled, work.step.from);
    if (error.isError())
        return m_problems.failed(OperationErrorCode::NotKept, work.step.from, error);
    const NodeResult kept = isMoved ? m_journal->keptAway() : NodeResult();
    if (!isMoved || kept.error.isError() || work.step.fromSeen.isStill(kept.node))
        return {};
    error = m_journal->giveBack(*work.from.folder, work.from.name);
    if (error.isError()) // it must not be thrown away: undoing brings it back
        work.isJournalled = false;
    return m_problems.failed(OperationErrorCode::SourceChanged, work.step.from, error);
}

StepResult StepRunner::recycle(Work &work)
{
    StepResult result;
    if (work.source.kind == NodeKind::Folder)
        result = checkTree(work);
    if (result.isDone())
        result = beginJournal(work, nullptr);
    if (!result.isDone())
        return result;
    const RecycleResult recycled = work.from.folder->recycle(work.from.name, [this](const QString &binPath) {
        return m_journal ? m_journal->recycling(binPath) : FileError();
    });
    if (recycled.error.kind == FileErrorKind::Unsupported)
        return m_problems.failed(OperationErrorCode::NoRecycleBin, work.step.from, recycled.error);
    if (recycled.error.isError())
        return m_problems.failedAtTarget(work.step.from, recycled.error);
    const NodeResult inBin = recycled.binPath.isEmpty() ? NodeResult{{}, {FileErrorKind::Unsupported, {}}}
                                                        : m_files.statInBin(recycled.binPath);
    if (!inBin.error.isError() && !work.step.fromSeen.isStill(inBin.node))
        return takeBackFromBin(work, recycled.binPath);
    result.isInBinOnly = m_journal && recycled.binPath.isEmpty();
    noteEnd(result, work, inBin.error.isError() ? SeenEntry::absent() : SeenEntry::exactly(inBin.node),
            recycled.binPath);
    return result;
}

/// Another entry has got to the place since the last look.
StepResult StepRunner::takeBackFromBin(Work &work, const QString &binPath)
{
    const FileError error =
        m_files.restore(binPath, *work.from.folder, work.from.name, [](const NodeState &) { return true; });
    return m_problems.failed(OperationErrorCode::SourceChanged, work.step.from, error);
}

StepResult StepRunner::restore(Work &work)
{
    StepResult result = beginJournal(work, nullptr);
    if (!result.isDone())
        return result;
    const FileError error =
        m_files.restore(work.step.binPath, *work.to.folder, work.to.name,
                        [&work](const NodeState &node) { return work.step.fromSeen.isUntouched(node); });
    if (error.kind == FileErrorKind::NotExpected)
        return m_problems.failed(OperationErrorCode::OtherInBin, work.step.to, error);
    if (error.kind == FileErrorKind::Missing)
        return m_problems.failedAtSource(work.step.to, error);
    if (error.isError())
        return m_problems.failedAtTarget(work.step.to, error);
    endJournal(result, work);
    return result;
}

} // namespace velmora
