#pragma once

#include "core/cancel_flag.h"
#include "platform/file_access.h"
#include "vfs/archive/archive_entry.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <memory>

namespace velmora {

/// An archive read from its beginning to its end, entry after entry, whatever its format: zip, tar with every usual
/// compression, 7z, cab, iso, cpio, ar (deb), rpm, rar, lha, xar, and a single compressed file. The format is told by
/// the content. Compression that would need another program is not read. Used by one thread; through libarchive.
class ArchiveStream {
public:
    /// False when this system lacks what reads archives.
    [[nodiscard]] static bool isPossible();

    /// Reads `file` as long as the object lives. `password` is UTF-8; empty: none. Only `cancel`, seen at each block
    /// that is read, ends a call early.
    ArchiveStream(std::shared_ptr<OpenFile> file, const QByteArray &password, CancelFlag cancel);
    ~ArchiveStream();
    ArchiveStream(const ArchiveStream &) = delete;
    ArchiveStream &operator=(const ArchiveStream &) = delete;

    enum class Step : quint8 {
        Entry,
        End,
        Broken, ///< nothing more can be read; see `error`
    };
    /// Goes to the next entry.
    [[nodiscard]] Step next();
    /// The one that `next` has come to; its `position` counts from 0.
    [[nodiscard]] const ArchiveEntry &entry() const noexcept { return m_entry; }

    /// Takes bytes of a content in their order; false stops.
    using Sink = std::function<bool(QByteArrayView bytes)>;
    /// Gives the content of the entry to `sink`. True when it was whole and its checksum, where it has one, holds.
    [[nodiscard]] bool readContent(const Sink &sink);
    /// The next bytes of it, `length` at most: how many there are, 0 at its end, and -1 when it cannot be read to its
    /// end or its checksum does not hold.
    [[nodiscard]] qint64 readSome(char *buffer, qint64 length);

    /// Whether nothing more can be read: one content that is damaged may end the reading of all.
    [[nodiscard]] bool isBroken() const noexcept { return m_isBroken; }
    /// Whether encrypted contents of this format can be read, given the password.
    [[nodiscard]] bool canDecrypt() const;
    /// Whether the names of entries are encrypted, too, in a way that cannot be read.
    [[nodiscard]] bool hidesNames() const;
    /// Whether it could not go on because of an encryption that cannot be read: what a link in a 7z leads to is a
    /// content like any other.
    [[nodiscard]] bool endsEncrypted() const;

    /// The library's words about what went wrong last.
    [[nodiscard]] QString error() const;
    /// "ZIP 2.0 (deflation)", "GNU tar format"; known once there is an entry or the end.
    [[nodiscard]] QByteArray format() const;
    /// The compressions around the archive, the inner one first: "gzip".
    [[nodiscard]] QByteArray compression() const;
    /// Bytes of the archive that have been read.
    [[nodiscard]] qint64 consumed() const;

private:
    class Handle;

    std::unique_ptr<Handle> m_handle;
    ArchiveEntry m_entry;
    QByteArray m_buffer;
    qint64 m_count = 0;
    bool m_isBroken = false;
};

} // namespace velmora
