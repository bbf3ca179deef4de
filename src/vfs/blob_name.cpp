#include "vfs/blob_name.h"

#include "core/message_digest.h"

#include <algorithm>

namespace velmora {

QByteArray blobHead(qint64 size)
{
    return "blob " + QByteArray::number(size) + '\0';
}

std::optional<ContentIdentity> blobName(OpenFile &file, ContentIdentity::Algorithm algorithm, const CancelFlag &cancel)
{
    constexpr qint64 blockSize = 256 * 1024;
    const std::optional<qint64> size = file.size();
    if (!size)
        return std::nullopt;
    using enum ContentIdentity::Algorithm;
    MessageDigest digest(algorithm == GitBlobSha1 ? MessageDigest::Kind::Sha1 : MessageDigest::Kind::Sha256);
    if (algorithm != Sha256)
        digest.update(blobHead(*size));
    QByteArray block(std::clamp<qint64>(*size + 1, 1, blockSize), Qt::Uninitialized);
    for (qint64 offset = 0; !cancel.isCancelled();) {
        const FilePiece piece = file.readAt(offset, block.data(), block.size());
        digest.update(QByteArrayView(block.constData(), piece.length));
        offset += piece.length;
        if (piece.failed || offset > *size)
            return std::nullopt;
        if (piece.length < block.size())
            return offset == *size ? std::optional(ContentIdentity{algorithm, digest.value()}) : std::nullopt;
    }
    return std::nullopt;
}

} // namespace velmora
