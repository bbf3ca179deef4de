#pragma once

#include "core/cancel_flag.h"
#include "core/text_encoding.h"
#include "core/text_lines.h"

#include <QByteArray>
#include <QString>

namespace velmora {

/// The line ends that a text uses.
enum class LineEndStyle : quint8 {
    Lf, ///< also for a text without any line end
    CrLf,
    Cr,
    Mixed, ///< more than one of them
};

/// "LF", "CRLF", "CR" or "Mixed".
[[nodiscard]] QString lineEndStyleName(LineEndStyle style);

/// A text file as it was understood.
struct DecodedText {
    TextLines lines;
    TextEncoding encoding; ///< what was asked for, or what was found; never automatic
    LineEndStyle lineEnds = LineEndStyle::Lf;
    bool encodingGuessed = false;        ///< nothing but the statistics of the bytes speaks for `encoding`
    qint64 undecodable = 0;              ///< byte sequences that the encoding does not know, each shown as U+FFFD
    qsizetype firstUndecodableLine = -1; ///< 0-based, -1 when there is none
    bool binary = false;                 ///< holds what no text holds: zero bytes outside UTF-16 and UTF-32
    bool tooLarge = false;               ///< longer than a line table can address; `lines` is empty then
};

/// Decodes the raw bytes of a file. Automatic detection takes a byte-order mark first, then valid UTF-8 without zero
/// bytes, then UTF-16 without a mark by where its zero bytes stand, then UTF-8 with a few damaged places, then what the
/// statistics of the bytes and the languages of the interface and the system suggest (see `settleGuesses` for the two
/// sides of a comparison), and at last Latin-1, which knows every byte. An explicit `encoding` is obeyed whatever
/// the bytes are; a mark of that encoding is still no text. Valid UTF-8 is not copied: the lines share `raw`. When
/// `cancel` is set on the way the result is incomplete. Reentrant.
[[nodiscard]] DecodedText decodeText(const QByteArray &raw, const TextEncoding &encoding,
                                     const CancelFlag &cancel = {});

/// The raw bytes of a file, or why there are none.
struct FileContents {
    QByteArray bytes;
    QString error; ///< the system's own words, empty when the file was read whole
    [[nodiscard]] bool ok() const noexcept { return error.isEmpty(); }
};

/// Reads a regular file whole, in one allocation. Directories, devices, pipes and sockets are refused without opening
/// them for reading, and so are files of more than `TextLines::maximumSize` bytes; a file that shrinks or grows
/// meanwhile gives what was there. Stops early when `cancel` is set.
[[nodiscard]] FileContents readFile(const QString &path, const CancelFlag &cancel = {});

} // namespace velmora
