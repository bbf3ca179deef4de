#include "filetypes/checksum/engine/checksum.h"

#include "core/aligned_buffer.h"
#include "core/crc32.h"
#include "platform/file_access.h"

#include <QCryptographicHash>
#include <QFileInfo>
#include <QtEndian>

namespace velmora {

namespace {

constexpr qint64 pieceSize = 1024 * 1024;

/// The digest of bytes that come piece by piece.
class Digest {
public:
    virtual ~Digest() = default;
    virtual void update(QByteArrayView bytes) = 0;
    [[nodiscard]] virtual QByteArray value() const = 0;
};

class ToolkitDigest final : public Digest {
public:
    explicit ToolkitDigest(QCryptographicHash::Algorithm algorithm) : m_hash(algorithm) {}
    void update(QByteArrayView bytes) override { m_hash.addData(bytes); }
    QByteArray value() const override { return m_hash.result(); }

private:
    QCryptographicHash m_hash;
};

class Crc32Digest final : public Digest {
public:
    void update(QByteArrayView bytes) override { m_crc.update(bytes); }
    QByteArray value() const override
    {
        QByteArray bytes(qsizetype(sizeof(quint32)), Qt::Uninitialized);
        qToBigEndian(m_crc.value(), bytes.data());
        return bytes;
    }

private:
    Crc32 m_crc;
};

std::unique_ptr<Digest> digestOf(ChecksumAlgorithm algorithm)
{
    switch (algorithm) {
    case ChecksumAlgorithm::Md5:
        return std::make_unique<ToolkitDigest>(QCryptographicHash::Md5);
    case ChecksumAlgorithm::Sha1:
        return std::make_unique<ToolkitDigest>(QCryptographicHash::Sha1);
    case ChecksumAlgorithm::Sha256:
        return std::make_unique<ToolkitDigest>(QCryptographicHash::Sha256);
    case ChecksumAlgorithm::Crc32:
        break;
    }
    return std::make_unique<Crc32Digest>();
}

} // namespace

FileChecksum fileChecksum(const QString &path, ChecksumAlgorithm algorithm, const FileAccess &files,
                          const CancelFlag &cancel, const std::function<void(qint64)> &advanced)
{
    const std::unique_ptr<FileOpener> opener = files.makeOpener();
    const std::unique_ptr<OpenFile> file = opener->open(QFileInfo(path).absoluteFilePath(), OpenHint::Unknown);
    if (!file)
        return {FileChecksum::End::NotOpened};

    const std::unique_ptr<Digest> digest = digestOf(algorithm);
    const AlignedBuffer buffer(pieceSize);
    for (qint64 offset = 0;;) {
        if (cancel.isCancelled())
            return {FileChecksum::End::Cancelled};
        const FilePiece piece = file->readAt(offset, buffer.data(), pieceSize);
        if (piece.failed)
            return {FileChecksum::End::Broken};
        digest->update(QByteArrayView(buffer.data(), piece.length));
        offset += piece.length;
        if (advanced)
            advanced(offset);
        if (piece.length < pieceSize)
            return {FileChecksum::End::Whole, digest->value()};
    }
}

ChecksumPair fileChecksums(const QString &left, const QString &right, ChecksumAlgorithm algorithm,
                           const FileAccess &files, const CancelFlag &cancel, Progress &progress)
{
    const qint64 total = QFileInfo(left).size() + QFileInfo(right).size();
    qint64 before = 0;
    const auto checksum = [&](const QString &path) -> std::optional<FileChecksum> {
        if (path.isEmpty())
            return std::nullopt;
        qint64 done = 0;
        const auto advanced = [&](qint64 bytes) {
            done = bytes;
            progress.report(0, before + done, total, path);
        };
        const FileChecksum result = fileChecksum(path, algorithm, files, cancel, advanced);
        before += done;
        return result;
    };
    ChecksumPair pair;
    pair.left = checksum(left);
    if (!pair.left || pair.left->isWhole())
        pair.right = checksum(right);
    return pair;
}

} // namespace velmora
