#include "vfs/archive/archive_contents.h"

#include "vfs/archive/archive_stream.h"
#include "vfs/archive/forward_file.h"
#include "vfs/archive/resuming_stream.h"
#include "vfs/archive/zip_directory.h"

#include <QHash>

#include <algorithm>

namespace velmora {

namespace {

/// Hands contents on as long as they stay below a limit.
class LimitedVisit {
public:
    LimitedVisit(ContentVisitor &visitor, qint64 most) : m_visitor(visitor), m_left(most) {}

    /// Visits the entry that `stream` has come to. False ends the visit.
    [[nodiscard]] bool take(ArchiveStream &stream, qint32 entry)
    {
        if (stream.entry().isEncrypted && !stream.canDecrypt())
            return refuse(entry);
        m_visitor.begin(entry);
        const auto give = [this](QByteArrayView bytes) {
            m_left -= bytes.size();
            return m_left >= 0 && m_visitor.take(bytes);
        };
        // Of a link the library has taken the content for itself.
        const bool isLink = stream.entry().kind == ArchiveEntryKind::Link;
        const bool isWhole = isLink ? give(stream.entry().target) : stream.readContent(give);
        return m_visitor.end(isWhole, stream.error()) && m_left >= 0;
    }
    [[nodiscard]] bool refuse(qint32 entry)
    {
        m_visitor.begin(entry);
        return m_visitor.end(false, {});
    }
    [[nodiscard]] VisitEnd end() const { return m_left < 0 ? VisitEnd::TooMuch : VisitEnd::Done; }

private:
    ContentVisitor &m_visitor;
    qint64 m_left;
};

/// Puts down what it is given, as long as that is no more than `most` bytes.
class SpoolVisitor final : public ContentVisitor {
public:
    explicit SpoolVisitor(qint64 most) : m_most(most) {}

    struct Part {
        qint64 begin = 0;
        qint64 length = 0;
    };

    void begin(qint32 entry) override
    {
        m_entry = entry;
        m_begin = spool->size();
    }
    bool take(QByteArrayView bytes) override { return spool->size() + bytes.size() <= m_most && spool->add(bytes); }
    bool end(bool isWhole, const QString &) override
    {
        if (isWhole)
            parts.insert(m_entry, {m_begin, spool->size() - m_begin});
        return true;
    }

    std::shared_ptr<Spool> spool = std::make_shared<Spool>();
    QHash<qint32, Part> parts; ///< of the entries that could be read whole

private:
    qint64 m_most;
    qint32 m_entry = 0;
    qint64 m_begin = 0;
};

} // namespace

VisitEnd ZipContents::visit(std::span<const qint32> entries, ContentVisitor &visitor, const CancelFlag &cancel) const
{
    LimitedVisit visit(visitor, m_file.mostUnpacked);
    for (const qint32 number : entries) {
        if (cancel.isCancelled())
            break;
        std::shared_ptr<OpenFile> alone =
            isBlocked(number) ? nullptr : zipOfEntry(m_file.file, (*m_entries)[std::size_t(number)]);
        bool goesOn = false;
        if (alone) {
            ArchiveStream stream(std::move(alone), m_file.password, cancel);
            goesOn = stream.next() == ArchiveStream::Step::Entry ? visit.take(stream, number) : visit.refuse(number);
        } else {
            goesOn = visit.refuse(number);
        }
        if (!goesOn)
            break;
    }
    return visit.end();
}

std::unique_ptr<OpenFile> ZipContents::open(qint32 entry, const CancelFlag &cancel) const
{
    // A zip may lie about the size of an entry.
    SpoolVisitor visitor((*m_entries)[std::size_t(entry)].size);
    const VisitEnd end = visit(std::span(&entry, 1), visitor, cancel);
    return end == VisitEnd::Done && visitor.parts.contains(entry) ? visitor.spool->open() : nullptr;
}

std::unique_ptr<OpenFile> ZipContents::openForward(qint32 entry) const
{
    constexpr qint64 small = 1024 * 1024; // what a spool keeps in memory
    const qint64 size = (*m_entries)[std::size_t(entry)].size;
    std::shared_ptr<OpenFile> alone = size <= small || size > m_file.mostUnpacked || isBlocked(entry)
                                          ? nullptr
                                          : zipOfEntry(m_file.file, (*m_entries)[std::size_t(entry)]);
    if (!alone)
        return open(entry, {});
    auto stream = std::make_unique<ArchiveStream>(std::move(alone), m_file.password, CancelFlag());
    if (stream->next() != ArchiveStream::Step::Entry)
        return nullptr;
    return std::make_unique<ForwardFile>(std::move(stream), size, [this, entry] { return open(entry, {}); });
}

bool ZipContents::isBlocked(qint32 entry) const
{
    return std::binary_search(m_blocked.begin(), m_blocked.end(), std::size_t(entry));
}

/// The contents of all entries.
class StreamContents::Unpacked {
public:
    explicit Unpacked(qint64 most) : visitor(most) {}

    SpoolVisitor visitor;
};

VisitEnd StreamContents::visit(std::span<const qint32> entries, ContentVisitor &visitor, const CancelFlag &cancel) const
{
    LimitedVisit visit(visitor, m_file.mostUnpacked);
    ResumingStream archive(m_file.file, m_file.password, cancel);
    for (auto wanted = entries.begin(); wanted != entries.end();) {
        if (archive.next() != ArchiveStream::Step::Entry)
            return VisitEnd::Broken;
        if (archive.stream().entry().position != *wanted)
            continue;
        if (!visit.take(archive.stream(), *wanted))
            break;
        ++wanted;
    }
    return visit.end();
}

std::unique_ptr<OpenFile> StreamContents::open(qint32 entry, const CancelFlag &cancel) const
{
    const std::lock_guard lock(m_mutex);
    if (!m_unpacked) {
        auto unpacked = std::make_shared<Unpacked>(m_file.mostUnpacked);
        LimitedVisit visit(unpacked->visitor, m_file.mostUnpacked);
        ResumingStream archive(m_file.file, m_file.password, cancel);
        while (archive.next() == ArchiveStream::Step::Entry) {
            const ArchiveEntry &found = archive.stream().entry();
            if (found.kind == ArchiveEntryKind::File && !visit.take(archive.stream(), qint32(found.position)))
                break;
        }
        if (cancel.isCancelled())
            return nullptr;
        m_unpacked = std::move(unpacked);
    }
    const auto part = m_unpacked->visitor.parts.constFind(entry);
    return part == m_unpacked->visitor.parts.constEnd() ? nullptr
                                                        : m_unpacked->visitor.spool->open(part->begin, part->length);
}

std::vector<std::optional<ContentIdentity>>
ArchiveContents::identities(std::span<const qint32> entries, ContentIdentity::Algorithm, const CancelFlag &) const
{
    return std::vector<std::optional<ContentIdentity>>(entries.size());
}

} // namespace velmora
