#include "folder/operations/kept_copy.h"
#include "folder/operations/step_work.h"
#include "folder/operations/tree_summary.h"

namespace velmora {

namespace {

/// Lets the owner change what is in a folder for as long as it lives, where that is asked for and needed.
class Lifted {
public:
    explicit Lifted(FolderHandle *folder)
    {
        constexpr quint32 ownerMayWrite = 0200;
        const NodeResult self = folder ? folder->self() : NodeResult{{}, {FileErrorKind::Missing, {}}};
        if (!self.error.isError() && (self.node.permissions & ownerMayWrite) == 0 &&
            !folder->letOwnerWrite(true).isError())
            m_folder = folder;
    }
    ~Lifted()
    {
        if (m_folder)
            (void)m_folder->letOwnerWrite(false);
    }
    Lifted(const Lifted &) = delete;
    Lifted &operator=(const Lifted &) = delete;

private:
    FolderHandle *m_folder = nullptr;
};

} // namespace

StepRunner::StepRunner(const OperationPlan &plan, FileLayer &files, const FolderChain &chain, JournalRun *journal,
                       bool verifiesContent, FileSink::Tick tick)
    : m_plan(plan),
      m_files(files),
      m_chain(chain),
      m_journal(journal),
      m_problems(plan),
      m_copier(plan, files, verifiesContent, tick),
      m_tick(std::move(tick))
{
    if (!verifiesContent && !plan.liftsProtection) // these need the folders of sources
        m_ahead = SourceAhead::start(plan, files, chain);
}

StepResult StepRunner::run(qsizetype index)
{
    Work work{index, m_plan.steps[index], {}, {}, {}, {}, {}};
    StepResult result = reach(work);
    if (result.isDone() && work.step.counterpart->isSet())
        result = checkCounterpart(work.step);
    if (result.isDone() && work.step.keptCopy->isSet())
        result = checkKeptCopy(work);
    if (!result.isDone())
        return result;
    const Lifted source(m_plan.liftsProtection ? work.from.folder : nullptr);
    const Lifted target(m_plan.liftsProtection ? work.to.folder : nullptr);
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
    if (step.from.isSet()) {
        const bool leavesIt = step.kind != OperationKind::Move && step.kind != OperationKind::Delete &&
                              step.kind != OperationKind::Recycle;
        if (!leavesIt && !m_plan.roots[step.from.root].writable)
            return m_problems.failed(OperationErrorCode::NotWritable, step.from);
        const StepResult reached = reachSource(work);
        if (!reached.isDone())
            return reached;
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

StepResult StepRunner::reachSource(Work &work) const
{
    if (std::optional<OpenedSource> ahead = m_ahead ? m_ahead->take(work.index) : std::nullopt) {
        work.source = ahead->node;
        work.opened = std::move(ahead->file);
        return {};
    }
    work.from = m_chain.reach(work.step.from);
    return work.from.folder ? checkSource(work) : m_problems.failedAtSource(work.step.from, work.from.error);
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

StepResult StepRunner::checkKeptCopy(const Work &work) const
{
    const OperationStep &step = work.step;
    const ReachedPlace kept = m_chain.reach(step.keptCopy);
    FileError error = kept.error;
    const std::unique_ptr<FileSource> stays = kept.folder ? kept.folder->openFile(kept.name, error) : nullptr;
    if (!stays)
        return m_problems.failed(OperationErrorCode::KeptCopyChanged, step.keptCopy, error);
    const std::unique_ptr<FileSource> goes = work.from.folder->openFile(work.from.name, error);
    if (!goes)
        return m_problems.failedAtSource(step.from, error);
    switch (compareCopies({*goes, step.fromSeen}, {*stays, step.keptCopySeen}, m_tick)) {
    case CopiesFound::Same:
        return {};
    case CopiesFound::Stopped:
        return m_problems.failed(OperationErrorCode::Cancelled, step.from);
    case CopiesFound::Different:
        break;
    }
    return m_problems.failed(OperationErrorCode::KeptCopyChanged, step.keptCopy);
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

void StepRunner::endJournal(StepResult &result, const Work &work)
{
    SeenEntry now = SeenEntry::absent();
    if (m_journal && work.step.to.isSet()) {
        const NodeResult made = work.to.folder->stat(work.to.name);
        if (!made.error.isError())
            now = SeenEntry::exactly(made.node);
    }
    noteEnd(result, work, now);
}

void StepRunner::noteEnd(StepResult &result, const Work &work, const SeenEntry &now, const QString &binPath)
{
    if (!m_journal)
        return;
    const FileError error = m_journal->endDone(now, binPath);
    if (error.isError())
        m_problems.warn(result, OperationErrorCode::NotJournalled, work.step.to.isSet() ? work.step.to : work.step.from,
                        error);
}

} // namespace velmora
