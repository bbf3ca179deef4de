#pragma once

#include "folder/operations/folder_chain.h"

namespace velmora {

/// Looks at one place after the other; holds the folder of the last, so that those of one folder are best asked for in
/// a row. For one thread; what is given to it must outlive it.
class PlaceLook {
public:
    PlaceLook(FileLayer &files, const QList<PlanRoot> &roots) : m_chain(files, roots) {}

    /// Nothing when nothing is there, or it cannot be reached.
    [[nodiscard]] std::optional<NodeState> at(const Place &place);

    [[nodiscard]] const FolderChain &chain() const { return m_chain; }

private:
    FolderChain m_chain;
    ReachedPlace m_reached;
    Place m_folder;
};

} // namespace velmora
