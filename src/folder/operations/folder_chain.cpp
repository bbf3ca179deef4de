#include "folder/operations/folder_chain.h"

namespace velmora {

FolderChain::FolderChain(FileLayer &files, const QList<PlanRoot> &roots)
{
    for (const PlanRoot &root : roots) {
        FileError error;
        std::unique_ptr<FolderHandle> folder = files.openRoot(root.path, error);
        if (folder && root.identity) {
            const NodeResult self = folder->self();
            error = self.error;
            if (!error.isError() && self.node.identity != root.identity)
                error.kind = FileErrorKind::Missing;
            if (error.isError())
                folder.reset();
        }
        m_roots.push_back(std::move(folder));
        m_errors.push_back(error);
    }
}

FolderHandle *FolderChain::root(int index) const
{
    return index >= 0 && std::size_t(index) < m_roots.size() ? m_roots[std::size_t(index)].get() : nullptr;
}

ReachedPlace FolderChain::reach(const Place &place) const
{
    ReachedPlace reached;
    reached.folder = root(place.root);
    if (!reached.folder || !isCleanRelative(place.relative)) {
        reached.error.kind = reached.folder ? FileErrorKind::NameNotAllowed : FileErrorKind::Missing;
        reached.folder = nullptr;
        return reached;
    }
    const qsizetype slash = place.relative.lastIndexOf(u'/');
    if (slash >= 0) {
        reached.held = reached.folder->openBelow(place.relative.left(slash), reached.error);
        reached.folder = reached.held.get();
        if (!reached.folder)
            return reached;
    }
    reached.name = place.relative.mid(slash + 1);
    return reached;
}

std::unique_ptr<FolderHandle> FolderChain::open(const Place &place, FileError &error) const
{
    const ReachedPlace reached = reach(place);
    error = reached.error;
    return reached.folder ? reached.folder->openFolder(reached.name, error) : nullptr;
}

Sides<std::optional<FileIdentity>> identitiesOf(FileLayer &files, const Sides<TreeFolder> &roots)
{
    Sides<std::optional<FileIdentity>> identities;
    for (const Side side : bothSides) {
        FileError error;
        if (roots[side].isThere() && roots[side].source->isLocal()) {
            const std::unique_ptr<FolderHandle> folder = files.openRoot(roots[side].path, error);
            identities[side] = folder ? folder->self().node.identity : std::nullopt;
        }
    }
    return identities;
}

} // namespace velmora
