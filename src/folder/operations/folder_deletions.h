#pragma once

#include "core/cancel_flag.h"
#include "folder/operations/folder_chain.h"
#include "folder/operations/place_set.h"
#include "folder/operations/tree_summary.h"

namespace velmora {

/// Decides which folders of a plan may go, once it is known what else goes: one that holds more than the plan names
/// stays. For one thread; everything given to it must outlive it.
class FolderDeletions {
public:
    /// `vacated`: the places that the plan's steps empty; those of folders that stay are taken out of it. What stays,
    /// and why, is added to `leftOut`.
    FolderDeletions(const OperationPlan &plan, const FolderChain &chain, const CancelFlag &cancel, PlaceSet &vacated,
                    QList<LeftOutEntry> &leftOut)
        : m_plan(plan), m_chain(chain), m_cancel(cancel), m_vacated(vacated), m_leftOut(leftOut)
    {}

    /// The steps without the deletions of folders that stay. Folders that go to the recycle bin in full go as one.
    [[nodiscard]] QList<OperationStep> settled(QList<OperationStep> steps);

    /// Makes `step` one that recycles a whole folder, in which there is what `summary` tells.
    static void makeWhole(OperationStep &step, const TreeSummary &summary);

private:
    void dropFullerFolders(QList<OperationStep> &steps);
    void joinFolders(QList<OperationStep> &steps);
    [[nodiscard]] bool holdsNoMore(const OperationStep &step);
    [[nodiscard]] bool goesInFull(const OperationStep &step, TreeSummary &summary);
    [[nodiscard]] bool told(const OperationStep &step, const FileError &error, bool isAll);

    const OperationPlan &m_plan;
    const FolderChain &m_chain;
    const CancelFlag &m_cancel;
    PlaceSet &m_vacated;
    QList<LeftOutEntry> &m_leftOut;
};

} // namespace velmora
