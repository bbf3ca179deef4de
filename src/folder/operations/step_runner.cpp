#include "folder/operations/step_runner.h"

#include "folder/operations/temporary_name.h"
#include "folder/operations/tree_summary.h"

namespace velmora {

namespace {

/// Keeps the warnings of two parts of a step.
StepResult joined(const StepResult &first, StepResult second)
{
    second.problems = first.problems + second.problems;
    second.isLost = second.isLost || first.isLost;
    return second;
}

} // namespace

struct StepRunner::Work {
    qsizetype index;
    const OperationStep &step;
    ReachedPlace from;
    ReachedPlace to;
    NodeState source;
    NodeState target;
    bool targetExists = false;
    bool isJournalled = false;
    bool isFirstHalf = false; ///< of a move between volumes: for now it is a copy
};

StepRunner::StepRunner(const OperationPlan &plan, FileLayer &files, const FolderChain &chain, JournalRun *journal,
                       bool verifiesContent, FileSink::Tick tick)
    : m_plan(plan),
      m_files(files),
      m_chain(chain),
      m_journal(journal),
      m_problems(plan),
      m_copier(plan, files, verifiesContent, tick),
      m_tick(std::move(tick))
{}

StepResult StepRunner::run(qsizetype index)
{
    Work work{index, m_plan.steps[index], {}, {}, {}, {}};
    StepResult result = reach(work);
    if (result.isDone() && work.step.counterpart.isSet())
        result = checkCounterpart(work.step);
    if (!result.isDone())
        return result;
    switch (work.step.kind) {
    case OperationKind::MakeFolder:
        result = makeFolder(work);
        break;
    case OperationKind::Copy:
    case OperationKind::Replace:
        result = copy(work);
        break;
    case OperationKind::Move:
        result = move(work);
        break;
    case OperationKind::Recycle:
        result = recycle(work);
        break;
    case OperationKind::Delete:
        result = remove(work);
        break;
    case OperationKind::Restore:
        result = restore(work);
        break;
    }
    if (!result.isDone() && work.isJournalled)
        m_journal->endNothing();
    result.isLost = result.isDone() && work.isJournalled && m_journal->isLost();
    return result;
}

StepResult StepRunner::reach(Work &work) const
{
    const OperationStep &step = work.step;
    for (const Place &place : {step.from, step.to, step.counterpart}) {
        if (place.isSet() && !m_chain.root(place.root))
            return m_problems.failed(OperationErrorCode::RootMissing, {place.root, {}}, m_chain.rootError(place.root));
    }
    if (step.from.isSet()) {
        const bool leavesIt = step.kind != OperationKind::Move && step.kind != OperationKind::Delete &&
                              step.kind != OperationKind::Recycle;
        if (!leavesIt && !m_plan.roots[step.from.root].writable)
            return m_problems.failed(OperationErrorCode::NotWritable, step.from);
        work.from = m_chain.reach(step.from);
        if (!work.from.folder)
            return m_problems.failedAtSource(step.from, work.from.error);
        const StepResult checked = checkSource(work);
        if (!checked.isDone())
            return checked;
    }
    if (!step.to.isSet())
        return {};
    if (!m_plan.roots[step.to.root].writable)
        return m_problems.failed(OperationErrorCode::NotWritable, step.to);
    work.to = m_chain.reach(step.to);
    if (!work.to.folder)
        return m_problems.failedAtTarget(step.to, work.to.error);
    if (!isPlainName(work.to.name))
        return m_problems.failed(OperationErrorCode::NameNotAllowed, step.to);
    return checkTarget(work);
}

StepResult StepRunner::checkSource(Work &work) const
{
    const NodeResult found = work.from.folder->stat(work.from.name);
    if (found.error.isError())
        return m_problems.failedAtSource(work.step.from, found.error);
    if (!work.step.fromSeen.isStill(found.node))
        return m_problems.failed(OperationErrorCode::SourceChanged, work.step.from);
    work.source = found.node;
    return {};
}

StepResult StepRunner::checkTarget(Work &work) const
{
    const NodeResult found = work.to.folder->stat(work.to.name);
    work.targetExists = !found.error.isError();
    if (!work.targetExists && found.error.kind != FileErrorKind::Missing)
        return m_problems.failedAtTarget(work.step.to, found.error);
    const bool isExpected = work.step.toSeen.isPresent();
    if (!work.targetExists)
        return isExpected ? m_problems.failed(OperationErrorCode::TargetChanged, work.step.to) : StepResult();
    work.target = found.node;
    if (isExpected)
        return work.step.toSeen.isStill(found.node)
                   ? StepResult()
                   : m_problems.failed(OperationErrorCode::TargetChanged, work.step.to);
    // Another spelling of the entry's own name finds the entry itself.
    const bool isItself = work.step.kind == OperationKind::Move && found.node.identity &&
                          found.node.identity == work.source.identity &&
                          work.step.from.relative.compare(work.step.to.relative, Qt::CaseInsensitive) == 0;
    if (!isItself)
        return m_problems.failed(OperationErrorCode::TargetAppeared, work.step.to);
    work.targetExists = false;
    return {};
}

StepResult StepRunner::checkCounterpart(const OperationStep &step) const
{
    const ReachedPlace place = m_chain.reach(step.counterpart);
    // A folder on the way that is not there, or a file in its place, means that the entry is not there.
    const auto isAbsence = [](const FileError &error) {
        return error.kind == FileErrorKind::Missing || error.kind == FileErrorKind::NotAFolder;
    };
    const FileError error = place.folder ? place.folder->stat(place.name).error : place.error;
    return isAbsence(error) ? StepResult()
                            : m_problems.failed(OperationErrorCode::CounterpartAppeared, step.counterpart, error);
}

StepResult StepRunner::checkTree(const Work &work) const
{
    FileError error;
    const std::unique_ptr<FolderHandle> folder = work.from.folder->openFolder(work.from.name, error);
    if (!folder)
        return m_problems.failedAtSource(work.step.from, error);
    TreeSummary summary;
    error = visitTree(*folder, [&](const QString &relative, const NodeState &node) {
        summary.add(relative, node);
        return m_tick(0);
    });
    if (error.isError())
        return m_problems.failedAtSource(work.step.from, error);
    if (!m_tick(0))
        return m_problems.failed(OperationErrorCode::Cancelled, work.step.from);
    const SeenEntry &seen = work.step.fromSeen;
    const bool isSame = summary.fingerprint == seen.contents && summary.files == seen.files;
    return isSame ? StepResult() : m_problems.failed(OperationErrorCode::SourceChanged, work.step.from);
}

StepResult StepRunner::beginJournal(Work &work, const NodeState *old)
{
    if (!m_journal)
        return {};
    OperationStep step = work.step;
    if (work.isFirstHalf)
        step.kind = work.targetExists ? OperationKind::Replace : OperationKind::Copy;
    const FileError error = m_journal->begin(work.index, step, old);
    if (error.isError())
        return m_problems.failed(OperationErrorCode::NotJournalled,
                                 work.step.to.isSet() ? work.step.to : work.step.from, error);
    work.isJournalled = true;
    return {};
}

void StepRunner::endJournal(StepResult &result, const Work &work, const QString &binPath)
{
    if (!m_journal)
        return;
    SeenEntry now = SeenEntry::absent();
    if (work.step.to.isSet()) {
        const NodeResult made = work.to.folder->stat(work.to.name);
        if (!made.error.isError())
            now = SeenEntry::exactly(made.node);
    }
    const FileError error = m_journal->endDone(now, binPath);
    if (error.isError())
        m_problems.warn(result, OperationErrorCode::NotJournalled, work.step.to.isSet() ? work.step.to : work.step.from,
                        error);
}

StepResult StepRunner::makeFolder(Work &work)
{
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
    const StepResult copied = m_copier.make(
        {work.step, *work.from.folder, work.from.name, work.source, *work.to.folder, name, work.targetExists});
    if (!copied.isDone())
        return copied;
    const StepResult placed = joined(copied, putInPlace(work, name));
    if (!placed.isDone())
        (void)work.to.folder->removeFile(name);
    return placed;
}

/// Gives the finished copy `name` the target's name. The target is looked at once more: copying takes its time.
StepResult StepRunner::putInPlace(Work &work, const QString &name)
{
    StepResult result = checkTarget(work);
    if (result.isDone())
        result = beginJournal(work, work.targetExists ? &work.target : nullptr);
    if (result.isDone())
        result = keepTarget(work);
    if (!result.isDone())
        return result;
    const auto ifTaken = work.targetExists ? FolderHandle::IfTaken::Replace : FolderHandle::IfTaken::Fail;
    const FileError error = work.to.folder->move(name, *work.to.folder, work.to.name, ifTaken);
    if (error.isError())
        return m_problems.failedAtTarget(work.step.to, error);
    endJournal(result, work);
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
    const auto ifTaken = work.targetExists ? FolderHandle::IfTaken::Replace : FolderHandle::IfTaken::Fail;
    const FileError error = work.from.folder->move(work.from.name, *work.to.folder, work.to.name, ifTaken);
    if (!error.isError()) {
        endJournal(result, work);
        return result;
    }
    if (error.kind != FileErrorKind::OtherVolume)
        return m_problems.failedAtTarget(work.step.to, error);
    if (work.source.kind == NodeKind::Folder)
        return m_problems.failed(OperationErrorCode::Unsupported, work.step.from, error);
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
    Work work{index, m_plan.steps[index], {}, {}, {}, {}};
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
    FileError error;
    if (m_journal) {
        error =
            m_journal->keep(*work.from.folder, work.from.name, work.source, JournalRun::Keep::Away, m_tick, isMoved);
        if (error.kind == FileErrorKind::Stopped)
            return m_problems.failed(OperationErrorCode::Cancelled, work.step.from);
        if (error.isError())
            return m_problems.failed(OperationErrorCode::NotKept, work.step.from, error);
    }
    if (!isMoved) {
        if (m_journal && !isFolder)
            result = checkSource(work);
        if (!result.isDone())
            return result;
        error =
            isFolder ? work.from.folder->removeFolder(work.from.name) : work.from.folder->removeFile(work.from.name);
        if (error.isError())
            return m_problems.failedAtTarget(work.step.from, error);
    }
    endJournal(result, work);
    return result;
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
    const RecycleResult recycled = work.from.folder->recycle(work.from.name);
    if (recycled.error.kind == FileErrorKind::Unsupported)
        return m_problems.failed(OperationErrorCode::NoRecycleBin, work.step.from, recycled.error);
    if (recycled.error.isError())
        return m_problems.failedAtTarget(work.step.from, recycled.error);
    result.isInBinOnly = m_journal && recycled.binPath.isEmpty();
    endJournal(result, work, recycled.binPath);
    return result;
}

StepResult StepRunner::restore(Work &work)
{
    StepResult result = beginJournal(work, nullptr);
    if (!result.isDone())
        return result;
    const FileError error = m_files.restore(work.step.binPath, *work.to.folder, work.to.name);
    if (error.kind == FileErrorKind::Missing)
        return m_problems.failedAtSource(work.step.to, error);
    if (error.isError())
        return m_problems.failedAtTarget(work.step.to, error);
    endJournal(result, work);
    return result;
}

} // namespace velmora
