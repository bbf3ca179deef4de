#include "filetypes/binary/engine/byte_text.h"

#include <QStringDecoder>

#include <limits>

namespace velmora {

namespace {

void appendHex(QString &text, char byte)
{
    static constexpr char digits[] = "0123456789ABCDEF";
    text += QLatin1Char(digits[uchar(byte) >> 4]);
    text += QLatin1Char(digits[uchar(byte) & 15]);
}

QString hexLines(QByteArrayView bytes)
{
    constexpr qsizetype perLine = 16;
    QString text;
    text.reserve(3 * bytes.size());
    for (qsizetype k = 0; k < bytes.size(); ++k) {
        if (k > 0)
            text += k % perLine == 0 ? u'\n' : u' ';
        appendHex(text, bytes[k]);
    }
    return text;
}

QString plainText(QByteArrayView bytes)
{
    while (!bytes.isEmpty() && bytes.last() == '\0')
        bytes.chop(1);
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder(bytes);
    return decoder.hasError() ? QString::fromLatin1(bytes) : text;
}

QString cArray(QByteArrayView bytes)
{
    constexpr qsizetype perLine = 12;
    QString text = QStringLiteral("const unsigned char data[%1] = {").arg(bytes.size());
    text.reserve(text.size() + 7 * bytes.size());
    for (qsizetype k = 0; k < bytes.size(); ++k) {
        text += k % perLine == 0 ? QStringLiteral("\n    0x") : QStringLiteral(" 0x");
        appendHex(text, bytes[k]);
        text += u',';
    }
    return text + QStringLiteral("\n};\n");
}

int hexDigit(QChar character)
{
    const char16_t code = character.toLower().unicode();
    if (code >= u'0' && code <= u'9')
        return code - u'0';
    return code >= u'a' && code <= u'f' ? code - u'a' + 10 : -1;
}

} // namespace

QString writtenBytes(QByteArrayView bytes, ByteForm form)
{
    switch (form) {
    case ByteForm::Text:
        return plainText(bytes);
    case ByteForm::CArray:
        return cArray(bytes);
    case ByteForm::Hex:
        break;
    }
    return hexLines(bytes);
}

std::optional<QByteArray> bytesFromHex(QStringView text)
{
    QString digits = text.toString();
    for (const char *mark : {"0x", "0X", "\\x"})
        digits.replace(QLatin1String(mark), QStringLiteral(" "));
    QByteArray bytes;
    int high = -1;
    for (const QChar character : std::as_const(digits)) {
        const bool separates = character.isSpace() || character == u',';
        const int digit = hexDigit(character);
        // A separator within a byte would hide that a digit is missing.
        if (separates ? high >= 0 : digit < 0)
            return std::nullopt;
        if (separates)
            continue;
        if (high >= 0)
            bytes.append(char(high * 16 + digit));
        high = high >= 0 ? -1 : digit;
    }
    return high < 0 && !bytes.isEmpty() ? std::optional(bytes) : std::nullopt;
}

std::optional<qint64> offsetFromText(QStringView text, qint64 here)
{
    QStringView number = text.trimmed();
    const int sign = number.startsWith(u'+') ? 1 : number.startsWith(u'-') ? -1 : 0;
    if (sign != 0)
        number = number.mid(1).trimmed();
    if (number.startsWith(u'+') || number.startsWith(u'-'))
        return std::nullopt;
    bool ok = false;
    qint64 value = 0;
    if (number.startsWith(QLatin1String("0x"), Qt::CaseInsensitive))
        value = number.mid(2).toLongLong(&ok, 16);
    else if (number.endsWith(u'h', Qt::CaseInsensitive))
        value = number.chopped(1).toLongLong(&ok, 16);
    else
        value = number.toLongLong(&ok);
    if (!ok || value < 0 || (sign > 0 && value > std::numeric_limits<qint64>::max() - here))
        return std::nullopt;
    const qint64 place = sign == 0 ? value : here + sign * value;
    return place < 0 ? std::nullopt : std::optional(place);
}

} // namespace velmora
