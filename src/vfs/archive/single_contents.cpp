#include "vfs/archive/single_contents.h"

#include "vfs/archive/spool.h"

namespace velmora {

VisitEnd SingleContents::visit(std::span<const qint32> entries, ContentVisitor &visitor, const CancelFlag &cancel) const
{
    qint64 left = m_mostRead;
    for (const qint32 entry : entries) {
        if (cancel.isCancelled())
            break;
        if (left -= entryAt(entry).size; left < 0)
            return VisitEnd::TooMuch;
        visitor.begin(entry);
        const bool isWhole = read(
            entry, [&visitor](QByteArrayView bytes) { return visitor.take(bytes); }, cancel);
        if (!visitor.end(isWhole, {}))
            break;
    }
    return VisitEnd::Done;
}

std::unique_ptr<OpenFile> SingleContents::open(qint32 entry, const CancelFlag &cancel) const
{
    const auto spool = std::make_shared<Spool>();
    const auto add = [&spool](QByteArrayView bytes) { return spool->add(bytes); };
    return entryAt(entry).size <= m_mostRead && read(entry, add, cancel) ? spool->open() : nullptr;
}

} // namespace velmora
