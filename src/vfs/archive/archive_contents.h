#pragma once

#include "core/cancel_flag.h"
#include "platform/file_access.h"
#include "vfs/archive/archive_entry.h"
#include "vfs/archive/archive_limits.h"
#include "vfs/archive/spool.h"
#include "vfs/tree_source.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <vector>

namespace velmora {

/// Is given the contents of entries, one after the other.
class ContentVisitor {
public:
    ContentVisitor() = default;
    virtual ~ContentVisitor() = default;
    ContentVisitor(const ContentVisitor &) = delete;
    ContentVisitor &operator=(const ContentVisitor &) = delete;

    virtual void begin(qint32 entry) = 0;
    /// False: no more of this entry is wanted.
    [[nodiscard]] virtual bool take(QByteArrayView bytes) = 0;
    /// `isWhole` also says that the checksum holds; else `error` has the library's words. False ends the visit.
    [[nodiscard]] virtual bool end(bool isWhole, const QString &error) = 0;
};

enum class VisitEnd : quint8 {
    Done,    ///< every entry was visited, or the visitor or the cancel flag ended it
    Broken,  ///< the archive cannot be read any further
    TooMuch, ///< the limit of what is unpacked has been reached
};

/// The contents of the entries of one archive. Usable from any thread at once.
class ArchiveContents {
public:
    ArchiveContents() = default;
    virtual ~ArchiveContents() = default;
    ArchiveContents(const ArchiveContents &) = delete;
    ArchiveContents &operator=(const ArchiveContents &) = delete;

    /// Visits some entries, whose numbers are in ascending order, in one pass over the archive.
    [[nodiscard]] virtual VisitEnd visit(std::span<const qint32> entries, ContentVisitor &visitor,
                                         const CancelFlag &cancel) const = 0;
    /// Null when the content cannot be read whole, or `cancel` is set first.
    [[nodiscard]] virtual std::unique_ptr<OpenFile> open(qint32 entry, const CancelFlag &cancel) const = 0;
    /// The same for who reads from the beginning to the end: may be unpacked as it is read, and turn out to be not
    /// whole by then. This object must outlive it.
    [[nodiscard]] virtual std::unique_ptr<OpenFile> openForward(qint32 entry) const { return open(entry, {}); }
    /// Where that is found out without reading the content here.
    [[nodiscard]] virtual std::optional<ContentIdentity> identity(qint32 /*entry*/) const { return std::nullopt; }
    /// As `TreeSource::identitiesAtOnce`.
    [[nodiscard]] virtual qsizetype identitiesAtOnce() const { return 0; }
    /// As `TreeSource::contentIdentities`, in the order of `entries`, which are files.
    [[nodiscard]] virtual std::vector<std::optional<ContentIdentity>>
    identities(std::span<const qint32> entries, ContentIdentity::Algorithm algorithm, const CancelFlag &cancel) const;
};

/// What contents are read from.
struct ArchiveFile {
    std::shared_ptr<OpenFile> file;
    QByteArray password;
    qint64 mostUnpacked = 0; ///< bytes, in one visit
};

/// Entries that can be reached one by one: those of a zip with a directory.
class ZipContents final : public ArchiveContents {
public:
    /// `blocked` are the numbers of entries that are not unpacked, in ascending order.
    ZipContents(ArchiveFile file, std::shared_ptr<const std::vector<ArchiveEntry>> entries,
                std::vector<std::size_t> blocked)
        : m_file(std::move(file)), m_entries(std::move(entries)), m_blocked(std::move(blocked))
    {}

    [[nodiscard]] VisitEnd visit(std::span<const qint32> entries, ContentVisitor &visitor,
                                 const CancelFlag &cancel) const override;
    [[nodiscard]] std::unique_ptr<OpenFile> open(qint32 entry, const CancelFlag &cancel) const override;
    [[nodiscard]] std::unique_ptr<OpenFile> openForward(qint32 entry) const override;

private:
    [[nodiscard]] bool isBlocked(qint32 entry) const;

    ArchiveFile m_file;
    std::shared_ptr<const std::vector<ArchiveEntry>> m_entries;
    std::vector<std::size_t> m_blocked;
};

/// Entries that are only reached over those before them. What is to be read in another order is all unpacked first, in
/// one pass.
class StreamContents final : public ArchiveContents {
public:
    explicit StreamContents(ArchiveFile file) : m_file(std::move(file)) {}

    [[nodiscard]] VisitEnd visit(std::span<const qint32> entries, ContentVisitor &visitor,
                                 const CancelFlag &cancel) const override;
    [[nodiscard]] std::unique_ptr<OpenFile> open(qint32 entry, const CancelFlag &cancel) const override;

private:
    class Unpacked;

    ArchiveFile m_file;
    mutable std::mutex m_mutex;
    mutable std::shared_ptr<const Unpacked> m_unpacked; ///< guarded by the mutex
};

} // namespace velmora
