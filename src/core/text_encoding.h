#pragma once

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
    /// "自动检测", empty), or any charset name that the system can decode ("GB18030", "windows-1252"). Letter case,
    /// spaces, hyphens and underscores do not matter. A name nobody knows gives automatic detection. The UTF-16 and
    /// UTF-32 names mean files with a mark, without which other programs would hardly know them.
    [[nodiscard]] static TextEncoding fromName(const QString &name);

    /// The encoding of a charset in the form that decoders know. Precondition: `isKnownName` holds for it.
    [[nodiscard]] static TextEncoding ofCharset(const QByteArray &charset, bool mark);

    /// "Auto detect", "UTF-8", "UTF-8 BOM", "UTF-16 LE", "UTF-16 BE", "ASCII", "Big5", "Shift-JIS", in this order, and
    /// behind them those of the further ones that the system can decode.
    [[nodiscard]] static QStringList offeredNames();

    /// False for a name that `fromName` would have to take for automatic detection although it does not mean it.
    [[nodiscard]] static bool isKnownName(const QString &name);

    [[nodiscard]] bool isAutomatic() const noexcept { return m_charset.isEmpty(); }

    /// The name as it is shown and stored; "auto" for automatic detection.
    [[nodiscard]] QString name() const;

    /// The charset in the form that decoders know ("UTF-8", "UTF-16LE", "BIG5"); empty for automatic detection.
    [[nodiscard]] const QByteArray &charset() const noexcept { return m_charset; }
    [[nodiscard]] bool hasMark() const noexcept { return m_mark; }

    /// The bytes of the charset's byte-order mark, whether or not this encoding has one; empty for a charset without.
    [[nodiscard]] QByteArray markBytes() const;

    friend bool operator==(const TextEncoding &, const TextEncoding &) = default;

private:
    TextEncoding(QByteArray charset, bool mark) : m_charset(std::move(charset)), m_mark(mark) {}

    QByteArray m_charset;
    bool m_mark = false;
};

} // namespace velmora
