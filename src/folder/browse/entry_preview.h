#pragma once

#include "core/cancel_flag.h"
#include "vfs/archive/archive_source.h"

#include <QImage>
#include <QSize>
#include <QString>

#include <memory>

namespace velmora {

class PlainDocument;

/// The beginning of an entry, made ready to be looked at.
struct EntryPreview {
    enum class Kind : quint8 {
        Text,
        Picture,
        Bytes,      ///< as a table of hexadecimal numbers
        Empty,      ///< there is nothing in the entry
        Unreadable, ///< nothing of it can be read; `error` has the library's words, which may be empty
    };

    Kind kind = Kind::Unreadable;
    std::shared_ptr<const PlainDocument> document; ///< of texts and bytes
    QString encoding;                              ///< of texts
    QImage picture;                                ///< at most `longestSide` pixels wide and high
    QSize pictureSize;                             ///< as it is in the archive
    qint64 shown = 0;                              ///< bytes of the entry that were read
    bool isWhole = false;                          ///< that is all of it
    bool isDamaged = false;                        ///< what comes after cannot be read; see `error`
    QString error;

    static constexpr int longestSide = 2048;
};

/// Reads an entry as far as anybody looks: the first megabyte of a text, 64 KiB of bytes, pictures of up to 64 MiB. For
/// a worker; where the format has no directory all entries before it are read as well.
[[nodiscard]] EntryPreview previewEntry(const ArchiveSource &archive, qint32 entry, const CancelFlag &cancel);

/// Bytes as lines of sixteen: where they stand, their values, and what they are as characters.
[[nodiscard]] QByteArray hexLines(QByteArrayView bytes);

} // namespace velmora
