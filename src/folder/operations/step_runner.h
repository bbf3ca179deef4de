#pragma once

#include "folder/operations/beside_copy.h"
#include "folder/operations/folder_chain.h"
#include "folder/operations/journal_run.h"
#include "folder/operations/operation_executor.h"
#include "folder/operations/source_ahead.h"

namespace velmora {

/// Carries out single steps of a surveyed plan, in their order. Used by one thread; everything given to it must outlive
/// it.
class StepRunner {
public:
    /// `tick` is told of bytes that have been copied in the current step and answers whether to go on.
    StepRunner(const OperationPlan &plan, FileLayer &files, const FolderChain &chain, JournalRun *journal,
               bool verifiesContent, FileSink::Tick tick);

    [[nodiscard]] StepResult run(qsizetype index);

    /// The second half of a move between volumes, to be called when the first is on the disk.
    [[nodiscard]] StepResult removeSource(qsizetype index);

    /// Gives a folder that was made the time and permissions of its model.
    [[nodiscard]] StepResult finishFolder(qsizetype index);

private:
    struct Work; // a step with the folders that it touches held open

    [[nodiscard]] StepResult reach(Work &work) const;
    [[nodiscard]] StepResult reachSource(Work &work) const;
    [[nodiscard]] StepResult checkSource(Work &work) const;
    [[nodiscard]] StepResult checkTarget(Work &work) const;
    [[nodiscard]] StepResult checkCounterpart(const OperationStep &step) const;
    [[nodiscard]] StepResult checkKeptCopy(const Work &work) const;
    [[nodiscard]] StepResult checkTree(const Work &work) const;

    [[nodiscard]] StepResult makeFolder(Work &work);
    [[nodiscard]] StepResult copy(Work &work);
    [[nodiscard]] StepResult move(Work &work);
    [[nodiscard]] StepResult remove(Work &work);
    [[nodiscard]] StepResult recycle(Work &work);
    [[nodiscard]] StepResult restore(Work &work);

    [[nodiscard]] StepResult putInPlace(Work &work, const QString &name);
    [[nodiscard]] StepResult place(Work &work, FolderHandle &folder, const QString &name, bool isSource);
    [[nodiscard]] StepResult placeOver(Work &work, FolderHandle &folder, const QString &name, bool isSource);
    [[nodiscard]] StepResult clearReplaced(Work &work, FolderHandle &folder, const QString &name, bool isSource);
    [[nodiscard]] StepResult keepAway(Work &work, bool &isMoved);
    [[nodiscard]] StepResult takeBackFromBin(Work &work, const QString &binPath);
    [[nodiscard]] StepResult beginJournal(Work &work, const NodeState *old);
    [[nodiscard]] StepResult keepTarget(Work &work);
    void endJournal(StepResult &result, const Work &work);
    void noteEnd(StepResult &result, const Work &work, const SeenEntry &now, const QString &binPath = {});

    const OperationPlan &m_plan;
    FileLayer &m_files;
    const FolderChain &m_chain;
    JournalRun *m_journal;
    StepProblems m_problems;
    BesideCopy m_copier;
    FileSink::Tick m_tick;
    std::unique_ptr<SourceAhead> m_ahead; ///< null where every source is opened at its turn
};

} // namespace velmora
