#pragma once

#include "folder/operations/folder_chain.h"

#include <optional>

namespace velmora {

/// What stands at a place.
struct FoundEntry {
    bool isThere = false;
    NodeState node;
    FileError error; ///< other than that nothing is there
};

/// Looks at one place after the other; holds the folder of the last, so that those of one folder are best asked for in
/// a row. For one thread; what is given to it must outlive it.
class PlaceLook {
public:
    PlaceLook(FileLayer &files, const QList<PlanRoot> &roots) : m_chain(files, roots) {}

    [[nodiscard]] FoundEntry entryAt(const Place &place);
    /// Nothing when nothing is there, or it cannot be reached.
    [[nodiscard]] std::optional<NodeState> at(const Place &place);
    /// The link that a place lies behind; the place itself where there is none.
    [[nodiscard]] Place linkOnTheWay(const Place &place) const;

    [[nodiscard]] const FolderChain &chain() const { return m_chain; }

private:
    FolderChain m_chain;
    ReachedPlace m_reached;
    Place m_folder;
};

} // namespace velmora
