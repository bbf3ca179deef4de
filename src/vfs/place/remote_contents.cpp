#include "vfs/place/remote_contents.h"

#include <algorithm>
#include <mutex>
#include <utility>

namespace velmora {

namespace {

/// A file of the host, of which one piece is at hand.
class RemoteFile final : public OpenFile {
public:
    RemoteFile(std::shared_ptr<const RemoteFiles> files, RemoteFiles::File file)
        : m_files(std::move(files)), m_file(std::move(file))
    {}

    FilePiece readAt(qint64 offset, char *buffer, qint64 length) override
    {
        const std::lock_guard lock(m_mutex);
        FilePiece read;
        while (read.length < length && offset + read.length < m_file.size) {
            const qint64 from = offset + read.length;
            if (!fetch(from - from % RemoteFiles::pieceSize)) {
                read.failed = true;
                break;
            }
            const qint64 within = from - m_offset;
            const qint64 some = std::min(length - read.length, m_piece.size() - within);
            std::copy_n(m_piece.constData() + within, some, buffer + read.length);
            read.length += some;
        }
        return read;
    }
    std::optional<qint64> size() const override { return m_file.size; }
    void expect(qint64, qint64) override {}
    std::optional<FileIdentity> identity() const override { return std::nullopt; }

private:
    bool fetch(qint64 offset)
    {
        if (offset == m_offset)
            return true;
        m_offset = -1;
        m_piece.clear();
        const auto add = [this](QByteArrayView bytes) {
            m_piece += bytes.toByteArray();
            return true;
        };
        if (!m_files->readPiece(m_file, offset, add, {}))
            return false;
        m_offset = offset;
        return true;
    }

    std::shared_ptr<const RemoteFiles> m_files;
    RemoteFiles::File m_file;
    std::mutex m_mutex; ///< guards what follows
    QByteArray m_piece;
    qint64 m_offset = -1;
};

} // namespace

RemoteContents::RemoteContents(const SshTarget &target, std::shared_ptr<const std::vector<ArchiveEntry>> entries,
                               qint64 mostRead)
    : SingleContents(std::move(entries), mostRead), m_files(std::make_shared<const RemoteFiles>(target))
{}

RemoteFiles::File RemoteContents::fileAt(qint32 entry) const
{
    return {entryAt(entry).name, entryAt(entry).size};
}

std::unique_ptr<OpenFile> RemoteContents::open(qint32 entry, const CancelFlag & /*cancel*/) const
{
    return std::make_unique<RemoteFile>(m_files, fileAt(entry));
}

std::optional<ContentIdentity> RemoteContents::identity(qint32 entry) const
{
    const std::optional<QByteArray> name = m_files->blobName(fileAt(entry), {});
    if (!name)
        return std::nullopt;
    return ContentIdentity{ContentIdentity::Algorithm::GitBlobSha1, *name};
}

qsizetype RemoteContents::identitiesAtOnce() const
{
    constexpr qsizetype most = 512; // then starting the programs of the host costs less than what they read
    return m_files->asksForMany() ? most : 0;
}

std::vector<std::optional<ContentIdentity>> RemoteContents::identities(std::span<const qint32> entries,
                                                                       ContentIdentity::Algorithm algorithm,
                                                                       const CancelFlag &cancel) const
{
    using enum ContentIdentity::Algorithm;
    std::vector<std::optional<ContentIdentity>> known(entries.size());
    if (algorithm != Sha256 && algorithm != GitBlobSha1)
        return known;
    std::vector<RemoteFiles::File> files;
    files.reserve(entries.size());
    for (const qint32 entry : entries)
        files.push_back(fileAt(entry));
    const RemoteDigest digest = algorithm == Sha256 ? RemoteDigest::Sha256 : RemoteDigest::GitBlobSha1;
    const std::vector<QByteArray> values = m_files->digests(files, digest, cancel);
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (!values[i].isEmpty())
            known[i] = ContentIdentity{algorithm, values[i]};
    }
    return known;
}

bool RemoteContents::read(qint32 entry, const Sink &sink, const CancelFlag &cancel) const
{
    const RemoteFiles::File file = fileAt(entry);
    qint64 offset = 0;
    while (offset < file.size && !cancel.isCancelled() && m_files->readPiece(file, offset, sink, cancel))
        offset += RemoteFiles::pieceSize;
    return offset >= file.size;
}

} // namespace velmora
