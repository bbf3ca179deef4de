#pragma once

#include "core/child_desk.h"
#include "vfs/archive/archive_contents.h"

#include <memory>
#include <span>
#include <vector>

namespace velmora {

/// Contents that are read one by one, each when it is asked for: those of a repository or a host.
class SingleContents : public ArchiveContents {
public:
    /// `mostRead` bytes are handed out in one visit.
    SingleContents(std::shared_ptr<const std::vector<ArchiveEntry>> entries, qint64 mostRead)
        : m_entries(std::move(entries)), m_mostRead(mostRead)
    {}

    [[nodiscard]] VisitEnd visit(std::span<const qint32> entries, ContentVisitor &visitor,
                                 const CancelFlag &cancel) const override;
    /// Reads it whole first.
    [[nodiscard]] std::unique_ptr<OpenFile> open(qint32 entry, const CancelFlag &cancel) const override;

protected:
    using Sink = ChildDesk::Sink;

    /// True when the sink took the content of an entry, and that has the size that the entry has.
    [[nodiscard]] virtual bool read(qint32 entry, const Sink &sink, const CancelFlag &cancel) const = 0;
    [[nodiscard]] const ArchiveEntry &entryAt(qint32 entry) const { return (*m_entries)[std::size_t(entry)]; }

private:
    std::shared_ptr<const std::vector<ArchiveEntry>> m_entries;
    qint64 m_mostRead;
};

} // namespace velmora
