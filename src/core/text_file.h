#pragma once

#include "core/cancel_flag.h"
#include "core/text_lines.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace velmora {

/// How the characters of a file are stored.
///
/// A value: either automatic detection or one charset, with or without a byte-order mark. Knows the names under which
/// encodings are offered and stored.
class TextEncoding {
public:
    /// Automatic detection.
    TextEncoding() = default;

    /// The encoding that `name` means: one of `offeredNames()`, the stored words for automatic detection ("auto",
    /// "自动检测", empty), or any charset name that the system can decode ("GB18030", "windows-1252"). Letter case does not
    /// matter. A name nobody knows gives automatic detection.
    [[nodiscard]] static TextEncoding fromName(const QString &name);

    /// "Auto detect", "UTF-8", "UTF-8 BOM", "UTF-16 LE", "UTF-16 BE", "ASCII", "Big5", "Shift-JIS", in this order.
    [[nodiscard]] static QStringList offeredNames();

    /// False for a name that `fromName` would have to take for automatic detection although it does not mean it.
    [[nodiscard]] static bool isKnownName(const QString &name);

    [[nodiscard]] bool isAutomatic() const noexcept { return m_charset.isEmpty(); }

    /// The name as it is shown and stored; "auto" for automatic detection.
    [[nodiscard]] QString name() const;

    /// The charset in the form that decoders know ("UTF-8", "UTF-16LE", "BIG5"); empty for automatic detection.
    [[nodiscard]] const QByteArray &charset() const noexcept { return m_charset; }
    [[nodiscard]] bool hasMark() const noexcept { return m_mark; }

    friend bool operator==(const TextEncoding &, const TextEncoding &) = default;

private:
    friend struct TextDecoder;
    TextEncoding(QByteArray charset, bool mark) : m_charset(std::move(charset)), m_mark(mark) {}

    QByteArray m_charset;
    bool m_mark = false;
};

/// The line ends that a text uses.
enum class LineEndStyle : quint8 {
    Lf,    ///< also for a text without any line end
    CrLf,
    Cr,
    Mixed, ///< more than one of them
};

/// "LF", "CRLF", "CR" or "Mixed".
[[nodiscard]] QString lineEndStyleName(LineEndStyle style);

/// A text file as it was understood.
struct DecodedText {
    TextLines lines;
    TextEncoding encoding;               ///< what was asked for, or what was found; never automatic
    LineEndStyle lineEnds = LineEndStyle::Lf;
    qint64 undecodable = 0;              ///< byte sequences that the encoding does not know, each shown as U+FFFD
    qsizetype firstUndecodableLine = -1; ///< 0-based, -1 when there is none
    bool binary = false;                 ///< holds what no text holds: zero bytes outside UTF-16 and UTF-32
    bool tooLarge = false;               ///< longer than a line table can address; `lines` is empty then
};

/// Decodes the raw bytes of a file. Automatic detection takes a byte-order mark first, then valid UTF-8, then UTF-16
/// without a mark by where its zero bytes stand, then what the uchardet library makes of it, and at last Latin-1, which
/// knows every byte. An explicit `encoding` is obeyed whatever the bytes are; a mark of that encoding is still no text.
/// Valid UTF-8 is not copied: the lines share `raw`. When `cancel` is set on the way the result is incomplete.
[[nodiscard]] DecodedText decodeText(const QByteArray &raw, const TextEncoding &encoding, const CancelFlag &cancel = {});

/// The raw bytes of a file, or why there are none.
struct FileContents {
    QByteArray bytes;
    QString error; ///< the system's own words, empty when the file was read whole
    [[nodiscard]] bool ok() const noexcept { return error.isEmpty(); }
};

/// Reads a regular file whole, in one allocation. Directories, devices, pipes and sockets are refused without opening them
/// for reading; a file that shrinks or grows meanwhile gives what was there. Stops early when `cancel` is set.
[[nodiscard]] FileContents readFile(const QString &path, const CancelFlag &cancel = {});

} // namespace velmora
