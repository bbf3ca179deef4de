#pragma once

#include "folder/operations/folder_chain.h"

#include <chrono>
#include <optional>
#include <vector>

namespace velmora {

/// A folder of a plan whose path no longer leads to it.
struct LostRoot {
    int index = -1;  ///< into the plan's roots
    FileError error; ///< `NotExpected`: the path leads to another folder
};

/// Looks while a plan is carried out whether the paths of its roots still lead to the folders that are held: a drive
/// that was taken away may go on taking what is written to it, where nobody finds it again. Once a root is lost it
/// stays lost. What is given to it must outlive it.
class RootWatch {
public:
    /// Only the roots that steps of the plan name are looked at.
    RootWatch(const OperationPlan &plan, const FolderChain &chain);

    /// Looks now, when `ended` steps of the plan have ended. True while all roots are where they were.
    [[nodiscard]] bool look(qsizetype ended);
    /// True too, without looking, when the last look is not long ago.
    [[nodiscard]] bool lookNowAndThen(qsizetype ended);

    [[nodiscard]] const std::optional<LostRoot> &lost() const { return m_lost; }
    [[nodiscard]] bool hasLost(int root) const { return m_lost && m_lost->index == root; }
    /// The steps that had ended when the last look found all roots: what these have written is where it belongs.
    [[nodiscard]] qsizetype sure() const { return m_sure; }

private:
    const OperationPlan &m_plan;
    const FolderChain &m_chain;
    std::vector<int> m_used;
    std::optional<LostRoot> m_lost;
    qsizetype m_sure = 0;
    std::chrono::steady_clock::time_point m_nextLook;
};

} // namespace velmora
