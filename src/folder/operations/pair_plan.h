#pragma once

#include "folder/operations/plan_entries.h"

namespace velmora {

/// Puts the steps of a plan between two sides together: what is made and copied first, deletions from the leaves up
/// last. Used for one plan. Items that nobody else holds lose the paths that follow from their places.
class PairPlan {
public:
    explicit PairPlan(PlanInput input);

    [[nodiscard]] const PlanEntries &entries() const { return m_entries; }
    [[nodiscard]] OperationPlan &plan() { return m_plan; }

    /// Both are false, with the refusal in the plan, when nothing can be done at all.
    bool needsSidesApart();
    bool needsWritable(Side side);

    void leaveOut(const PlanEntry &entry, LeftOutReason reason, Side side);

    /// Copies, or moves, one entry to the other side; of a folder only the folder itself.
    void copy(int index, Side source, OperationKind kind = OperationKind::Copy);

    /// Moves the file of the entry `from` to where the other side has that of the entry `to`, on one side. Only while
    /// the other side lacks the one and this side the other.
    void moveWithin(Side side, int from, int to);

    /// Deletions must be asked for in the order of the items. `followsMissing`: the entry goes because it is missing on
    /// the other side.
    void remove(int index, Side side, DeleteManner manner, bool followsMissing);
    /// The latest deletion takes what the comparison does not list as well.
    void takeWholeFolder() { m_deletions.last().wholeTree = true; }
    [[nodiscard]] qsizetype deletions() const { return m_deletions.size(); }

    /// The plan, which the object has no longer.
    [[nodiscard]] OperationPlan finished();

    [[nodiscard]] static Place placeOf(const PlanEntry &entry, Side side);

private:
    bool canWrite(const PlanEntry &entry, Side side);
    /// Makes the folder `index` and those that it lies in where the other side lacks them.
    void makeFolders(int index, Side source);
    /// A folder that was asked for goes over whole when everything goes that is listed in it and that filters show.
    void markWholeFolders();
    [[nodiscard]] bool isBelowProblem(const PlanEntry &entry, Side side) const;
    void forgetPaths();
    [[nodiscard]] QString pathOf(const PlanEntry &entry, Side side) const;

    PlanInput m_input;
    PlanEntries m_entries;
    OperationPlan m_plan;
    QList<OperationStep> m_deletions;
    std::vector<UnlistedEntries> m_going; ///< of each entry that goes, what happens beside it; else `Stay`
    std::vector<qint32> m_made;           ///< the step that makes each folder, below 0 where there is none
};

} // namespace velmora
