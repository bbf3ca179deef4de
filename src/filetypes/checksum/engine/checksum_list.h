#pragma once

#include "filetypes/checksum/engine/checksum.h"

#include <QByteArrayView>

namespace velmora {

/// One file of a list.
struct ChecksumEntry {
    QString name; ///< as `nameFromNative` makes it, with "/" between the parts
    ChecksumAlgorithm algorithm = ChecksumAlgorithm::Sha256;
    QByteArray digest;
};

/// What a list of checksums says.
struct ChecksumList {
    QList<ChecksumEntry> entries;
    qsizetype badLines = 0;     ///< lines that say nothing: neither a checksum nor a comment
    qsizetype firstBadLine = 0; ///< counted from 1; 0 for none
};

/// How a list is written.
enum class ChecksumForm : quint8 {
    Gnu, ///< "digest  name", as md5sum, sha1sum and sha256sum write it; not for CRC-32
    Bsd, ///< "SHA256 (name) = digest"
    Sfv, ///< "name digest", for CRC-32 alone; lines that begin with ";" are comments
};

/// Reads a list, each line in whichever form it has; the algorithm of a line without a name for it is told by the
/// length of the digest. A backslash before a line says that line feeds, carriage returns and backslashes of the name
/// are escaped. In lines of the third form "\" parts the names, too.
[[nodiscard]] ChecksumList parseChecksumList(QByteArrayView bytes);

/// Whether a list in this form can hold checksums of that algorithm.
[[nodiscard]] bool canHold(ChecksumForm form, ChecksumAlgorithm algorithm);
/// One line of a list, with its line feed. Precondition: canHold(form, entry.algorithm).
[[nodiscard]] QByteArray checksumLine(ChecksumForm form, const ChecksumEntry &entry);

/// The path, relative to the folder of a list, that a name in it means; nothing for one that would lead out of it.
[[nodiscard]] std::optional<QString> pathWithin(const QString &name);

} // namespace velmora
