#pragma once

#include "vfs/archive/single_contents.h"
#include "vfs/git/git_objects.h"
#include "vfs/git/git_tree.h"

#include <QByteArray>

#include <memory>
#include <vector>

namespace velmora {

/// The contents of a tree of a repository.
class StateContents final : public SingleContents {
public:
    /// `names` are those of the contents in hexadecimal, by entry.
    StateContents(const GitTree &tree, std::shared_ptr<const std::vector<ArchiveEntry>> entries,
                  std::vector<QByteArray> names, qint64 mostRead);

protected:
    [[nodiscard]] bool read(qint32 entry, const Sink &sink, const CancelFlag &cancel) const override;

private:
    std::shared_ptr<const GitScratch> m_scratch; ///< the contents of the disk live as long as this
    std::vector<QByteArray> m_names;
    GitObjects m_objects;
};

} // namespace velmora
