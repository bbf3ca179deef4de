#include "vfs/git/loose_object.h"

#include "core/message_digest.h"
#include "vfs/blob_name.h"

#include <QDir>
#include <QFile>
#include <QTemporaryFile>

#include <algorithm>

namespace velmora {

namespace {

MessageDigest::Kind digestOf(ContentIdentity::Algorithm algorithm)
{
    return algorithm == ContentIdentity::Algorithm::GitBlobSha256 ? MessageDigest::Kind::Sha256
                                                                  : MessageDigest::Kind::Sha1;
}

/// The checksum at the end of a zlib stream (RFC 1950).
class Adler32 {
public:
    void update(QByteArrayView bytes)
    {
        constexpr qsizetype mostBeforeOverflow = 5552;
        for (qsizetype from = 0; from < bytes.size(); from += mostBeforeOverflow) {
            for (const char byte : bytes.sliced(from, std::min(mostBeforeOverflow, bytes.size() - from))) {
                m_low += quint8(byte);
                m_high += m_low;
            }
            m_low %= modulus;
            m_high %= modulus;
        }
    }
    [[nodiscard]] quint32 value() const { return (m_high << 16U) | m_low; }

private:
    static constexpr quint32 modulus = 65521;
    quint32 m_low = 1;
    quint32 m_high = 0;
};

/// A zlib stream of stored blocks (RFC 1951, 3.2.4) that is named by what goes into it.
class StoredStream {
public:
    StoredStream(QTemporaryFile &file, ContentIdentity::Algorithm algorithm)
        : m_file(file), m_digest(digestOf(algorithm))
    {
        put(QByteArrayLiteral("\x78\x01"));
    }

    void write(QByteArrayView bytes)
    {
        constexpr qsizetype longest = 65535;
        m_digest.update(bytes);
        m_check.update(bytes);
        for (qsizetype from = 0; from < bytes.size(); from += longest) {
            const QByteArrayView block = bytes.sliced(from, std::min(longest, bytes.size() - from));
            putHead(0, quint16(block.size()));
            put(block);
        }
    }

    /// The name in hexadecimal, or nothing.
    std::optional<QByteArray> finish()
    {
        putHead(1, 0);
        const quint32 check = m_check.value();
        for (const unsigned shift : {24U, 16U, 8U, 0U})
            put(QByteArray(1, char((check >> shift) & 0xFFU)));
        return m_ok && m_file.flush() ? std::optional(m_digest.value().toHex()) : std::nullopt;
    }

private:
    void put(QByteArrayView bytes) { m_ok = m_ok && m_file.write(bytes.data(), bytes.size()) == bytes.size(); }
    void putHead(int last, quint16 length)
    {
        const char head[] = {char(last), char(length & 0xFFU), char(unsigned(length) >> 8U), char(~length & 0xFFU),
                             char((~unsigned(length) >> 8U) & 0xFFU)};
        put(QByteArrayView(head, sizeof head));
    }

    QTemporaryFile &m_file;
    MessageDigest m_digest;
    Adler32 m_check;
    bool m_ok = true;
};

/// Gives a finished object its name, which it may have already.
bool place(QTemporaryFile &file, const QString &folder, const QByteArray &name)
{
    const QString path =
        folder + u'/' + QString::fromLatin1(name.first(2)) + u'/' + QString::fromLatin1(name.sliced(2));
    if (QFile::exists(path))
        return true;
    if (!QDir(folder).mkpath(QString::fromLatin1(name.first(2))) || !file.rename(path))
        return false;
    file.setAutoRemove(false);
    return true;
}

} // namespace

LooseObjects::LooseObjects(QString folder, ContentIdentity::Algorithm algorithm)
    : m_folder(std::move(folder)), m_algorithm(algorithm)
{}

std::optional<QByteArray> LooseObjects::write(OpenFile &file, const CancelFlag &cancel) const
{
    constexpr qint64 blockSize = 256 * 1024;
    const std::optional<qint64> size = file.size();
    QTemporaryFile made(m_folder + QLatin1String("/XXXXXX"));
    if (!size || !made.open())
        return std::nullopt;
    StoredStream stream(made, m_algorithm);
    stream.write(blobHead(*size));
    QByteArray block(blockSize, Qt::Uninitialized);
    for (qint64 offset = 0; offset < *size;) {
        const FilePiece piece = file.readAt(offset, block.data(), std::min(blockSize, *size - offset));
        if (piece.failed || piece.length == 0 || cancel.isCancelled())
            return std::nullopt;
        stream.write(QByteArrayView(block.constData(), piece.length));
        offset += piece.length;
    }
    const std::optional<QByteArray> name = stream.finish();
    return name && place(made, m_folder, *name) ? name : std::nullopt;
}

std::optional<QByteArray> LooseObjects::write(const QByteArray &content) const
{
    QTemporaryFile made(m_folder + QLatin1String("/XXXXXX"));
    if (!made.open())
        return std::nullopt;
    StoredStream stream(made, m_algorithm);
    stream.write(blobHead(content.size()));
    stream.write(content);
    const std::optional<QByteArray> name = stream.finish();
    return name && place(made, m_folder, *name) ? name : std::nullopt;
}

QByteArray blobNameOf(const QByteArray &content, ContentIdentity::Algorithm algorithm)
{
    MessageDigest digest(digestOf(algorithm));
    digest.update(blobHead(content.size()));
    digest.update(content);
    return digest.value().toHex();
}

} // namespace velmora
