#include "core/text_encoding.h"

#include "core/text_transcode.h"
#include "platform/text_codec.h"

#include <algorithm>
#include <array>
#include <optional>

namespace velmora {

namespace {

struct NamedEncoding {
    const char *name;
    const char *charset;
    bool mark;
};

constexpr const char *autoDetect = "Auto detect";

// Offered in this order. Shift-JIS means Microsoft's form: the standard's has no backslash.
constexpr std::array namedEncodings{
    NamedEncoding{"UTF-8", "UTF-8", false},
    NamedEncoding{"UTF-8 BOM", "UTF-8", true},
    NamedEncoding{"UTF-16 LE", "UTF-16LE", true},
    NamedEncoding{"UTF-16 BE", "UTF-16BE", true},
    NamedEncoding{"ASCII", "US-ASCII", false},
    NamedEncoding{"Big5", "BIG5", false},
    NamedEncoding{"Shift-JIS", "CP932", false},
    NamedEncoding{"GB18030", "GB18030", false},
    NamedEncoding{"GBK", "GBK", false},
    NamedEncoding{"EUC-JP", "EUC-JP", false},
    NamedEncoding{"EUC-KR", "EUC-KR", false},
    NamedEncoding{"ISO-8859-1", "ISO-8859-1", false},
    NamedEncoding{"ISO-8859-2", "ISO-8859-2", false},
    NamedEncoding{"ISO-8859-15", "ISO-8859-15", false},
    NamedEncoding{"Windows-1250", "WINDOWS-1250", false},
    NamedEncoding{"Windows-1251", "WINDOWS-1251", false},
    NamedEncoding{"Windows-1252", "WINDOWS-1252", false},
    NamedEncoding{"Windows-1253", "WINDOWS-1253", false},
    NamedEncoding{"Windows-1254", "WINDOWS-1254", false},
    NamedEncoding{"Windows-1255", "WINDOWS-1255", false},
    NamedEncoding{"Windows-1256", "WINDOWS-1256", false},
    NamedEncoding{"Windows-1257", "WINDOWS-1257", false},
    NamedEncoding{"Windows-1258", "WINDOWS-1258", false},
    NamedEncoding{"KOI8-R", "KOI8-R", false},
    NamedEncoding{"UTF-32 LE", "UTF-32LE", true},
    NamedEncoding{"UTF-32 BE", "UTF-32BE", true},
};

// Other words for the charsets above, in the form that `plainName` gives.
constexpr std::array aliases{
    NamedEncoding{"utf8sig", "UTF-8", true},
    NamedEncoding{"utf16", "UTF-16LE", true},
    NamedEncoding{"utf32", "UTF-32LE", true},
    NamedEncoding{"usascii", "US-ASCII", false},
    NamedEncoding{"ansix3.41968", "US-ASCII", false},
    NamedEncoding{"sjis", "CP932", false},
    NamedEncoding{"cp932", "CP932", false},
    NamedEncoding{"windows932", "CP932", false},
    NamedEncoding{"windows31j", "CP932", false},
    NamedEncoding{"latin1", "ISO-8859-1", false},
    NamedEncoding{"cp950", "BIG5", false},
};

/// What names are compared by.
QByteArray plainName(const QString &name)
{
    QByteArray plain = name.trimmed().toLower().toUtf8();
    plain.removeIf([](char character) { return character == ' ' || character == '-' || character == '_'; });
    return plain;
}

bool meansAutomatic(const QString &name)
{
    const QByteArray plain = plainName(name);
    return plain.isEmpty() || plain == "auto" || plain == "autodetect" || plain == QByteArrayLiteral("自动检测");
}

/// The system's own charsets under the name that was asked for, in capitals so that one charset has one spelling.
std::optional<TextEncoding> systemEncoding(const QString &name)
{
    const QByteArray charset = name.trimmed().toUpper().toLatin1();
    if (!TextCodec::open(charset))
        return std::nullopt;
    return TextEncoding::ofCharset(charset, false);
}

std::optional<TextEncoding> encodingOfName(const QString &name)
{
    const QByteArray plain = plainName(name);
    for (const NamedEncoding &entry : namedEncodings) {
        if (plain == plainName(QString::fromLatin1(entry.name)))
            return TextEncoding::ofCharset(entry.charset, entry.mark);
    }
    for (const NamedEncoding &alias : aliases) {
        if (plain == alias.name)
            return TextEncoding::ofCharset(alias.charset, alias.mark);
    }
    return systemEncoding(name);
}

} // namespace

TextEncoding TextEncoding::fromName(const QString &name)
{
    return meansAutomatic(name) ? TextEncoding() : encodingOfName(name).value_or(TextEncoding());
}

TextEncoding TextEncoding::ofCharset(const QByteArray &charset, bool mark)
{
    return TextEncoding(charset, mark);
}

QStringList TextEncoding::offeredNames()
{
    static const QStringList known = [] {
        QStringList names{QString::fromLatin1(autoDetect)};
        for (const NamedEncoding &entry : namedEncodings) {
            if (canTranscode(entry.charset))
                names.append(QString::fromLatin1(entry.name));
        }
        return names;
    }();
    return known;
}

bool TextEncoding::isKnownName(const QString &name)
{
    return meansAutomatic(name) || encodingOfName(name).has_value();
}

QString TextEncoding::name() const
{
    if (isAutomatic())
        return QStringLiteral("auto");
    // Only UTF-8 has a name of its own for each of the two forms.
    const auto matches = [this](const NamedEncoding &entry) {
        return m_charset == entry.charset && (m_mark == entry.mark || m_charset != "UTF-8");
    };
    const auto entry = std::find_if(namedEncodings.begin(), namedEncodings.end(), matches);
    return QString::fromLatin1(entry != namedEncodings.end() ? QByteArray(entry->name) : m_charset);
}

QByteArray TextEncoding::markBytes() const
{
    if (m_charset == "UTF-8")
        return QByteArrayLiteral("\xEF\xBB\xBF");
    if (m_charset == "UTF-16LE")
        return QByteArrayLiteral("\xFF\xFE");
    if (m_charset == "UTF-16BE")
        return QByteArrayLiteral("\xFE\xFF");
    if (m_charset == "UTF-32LE")
        return QByteArrayLiteral("\xFF\xFE\0\0");
    if (m_charset == "UTF-32BE")
        return QByteArrayLiteral("\0\0\xFE\xFF");
    return {};
}

} // namespace velmora
