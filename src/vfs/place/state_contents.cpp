#include "vfs/place/state_contents.h"

#include <utility>

namespace velmora {

StateContents::StateContents(const GitTree &tree, std::shared_ptr<const std::vector<ArchiveEntry>> entries,
                             std::vector<QByteArray> names, qint64 mostRead)
    : SingleContents(std::move(entries), mostRead),
      m_scratch(tree.scratch),
      m_names(std::move(names)),
      m_objects(tree.repository.caller(), tree.extras().variables)
{}

bool StateContents::read(qint32 entry, const Sink &sink, const CancelFlag &cancel) const
{
    return m_objects.read(m_names[std::size_t(entry)], entryAt(entry).size, sink, cancel);
}

} // namespace velmora
