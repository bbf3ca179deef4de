#pragma once

#include "vfs/archive/archive_contents.h"
#include "vfs/archive/archive_entry.h"
#include "vfs/git/git_objects.h"
#include "vfs/git/git_tree.h"

#include <QByteArray>
#include <QString>

#include <memory>
#include <span>
#include <vector>

namespace velmora {

/// The contents of a tree of a repository. Each is read when it is asked for.
class StateContents final : public ArchiveContents {
public:
    /// `names` are those of the contents in hexadecimal, by entry. `mostRead` bytes are handed out in one visit.
    StateContents(const GitTree &tree, std::shared_ptr<const std::vector<ArchiveEntry>> entries,
                  std::vector<QByteArray> names, qint64 mostRead);

    [[nodiscard]] VisitEnd visit(std::span<const qint32> entries, ContentVisitor &visitor,
                                 const CancelFlag &cancel) const override;
    [[nodiscard]] std::unique_ptr<OpenFile> open(qint32 entry) const override;

private:
    std::shared_ptr<const GitScratch> m_scratch; ///< the contents of the disk live as long as this
    std::shared_ptr<const std::vector<ArchiveEntry>> m_entries;
    std::vector<QByteArray> m_names;
    qint64 m_mostRead;
    GitObjects m_objects;
};

} // namespace velmora
