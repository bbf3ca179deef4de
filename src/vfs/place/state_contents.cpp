#include "vfs/place/state_contents.h"

#include "vfs/archive/spool.h"

#include <utility>

namespace velmora {

StateContents::StateContents(const GitTree &tree, std::shared_ptr<const std::vector<ArchiveEntry>> entries,
                             std::vector<QByteArray> names, qint64 mostRead)
    : m_scratch(tree.scratch),
      m_entries(std::move(entries)),
      m_names(std::move(names)),
      m_mostRead(mostRead),
      m_objects(tree.repository.caller(), tree.extras().variables)
{}

VisitEnd StateContents::visit(std::span<const qint32> entries, ContentVisitor &visitor, const CancelFlag &cancel) const
{
    qint64 left = m_mostRead;
    for (const qint32 entry : entries) {
        const qint64 size = (*m_entries)[std::size_t(entry)].size;
        if (cancel.isCancelled())
            break;
        if (left -= size; left < 0)
            return VisitEnd::TooMuch;
        visitor.begin(entry);
        const auto give = [&visitor](QByteArrayView bytes) { return visitor.take(bytes); };
        const bool isWhole = m_objects.read(m_names[std::size_t(entry)], size, give, cancel);
        if (!visitor.end(isWhole, {}))
            break;
    }
    return VisitEnd::Done;
}

std::unique_ptr<OpenFile> StateContents::open(qint32 entry) const
{
    const qint64 size = (*m_entries)[std::size_t(entry)].size;
    const auto spool = std::make_shared<Spool>();
    const auto add = [&spool](QByteArrayView bytes) { return spool->add(bytes); };
    const bool isWhole = size <= m_mostRead && m_objects.read(m_names[std::size_t(entry)], size, add, {});
    return isWhole ? spool->open() : nullptr;
}

} // namespace velmora
