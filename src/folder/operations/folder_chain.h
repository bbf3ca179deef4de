#pragma once

#include "core/sides.h"
#include "folder/operations/operation_plan.h"
#include "vfs/tree_source.h"

#include <optional>
#include <vector>

namespace velmora {

/// The folder that holds an entry, held open, with the entry's name in it.
struct ReachedPlace {
    std::unique_ptr<FolderHandle> held; ///< null for the root itself, which the chain holds
    FolderHandle *folder = nullptr;     ///< null when it could not be reached
    QString name;
    FileError error;
};

/// Opens the folders of a plan's places from the roots down, so that no link below a root is ever followed. Opens anew
/// for every call: what was true for the last step need not be true for the next.
class FolderChain {
public:
    /// Opens all roots; both must outlive the object.
    FolderChain(FileLayer &files, const QList<PlanRoot> &roots);

    /// Null when the root could not be opened or is not the one that the plan was made for.
    [[nodiscard]] FolderHandle *root(int index) const;
    [[nodiscard]] const FileError &rootError(int index) const { return m_errors[std::size_t(index)]; }

    [[nodiscard]] ReachedPlace reach(const Place &place) const;
    /// Opens the folder at `place` itself.
    [[nodiscard]] std::unique_ptr<FolderHandle> open(const Place &place, FileError &error) const;

private:
    std::vector<std::unique_ptr<FolderHandle>> m_roots;
    std::vector<FileError> m_errors;
};

/// What the folders of this system among `roots` are at the moment; nothing where that cannot be told.
[[nodiscard]] Sides<std::optional<FileIdentity>> identitiesOf(FileLayer &files, const Sides<TreeFolder> &roots);

} // namespace velmora
