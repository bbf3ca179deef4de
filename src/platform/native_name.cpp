#include "platform/file_access.h"

#include <QChar>

#include <algorithm>

namespace velmora {

namespace {

constexpr char16_t escapedByteBase = 0xDC00;

/// The length of the well-formed UTF-8 sequence at the begin of `bytes`, whose code point goes to `point`; 0 when there
/// is none. Table 3-7 of the Unicode Standard.
int utf8Sequence(std::string_view bytes, char32_t &point)
{
    const auto byteAt = [&](std::size_t i) { return i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0U; };
    const auto continues = [&](std::size_t i) { return (byteAt(i) & 0xC0U) == 0x80U; };
    const unsigned lead = byteAt(0);
    if (lead < 0x80) {
        point = lead;
        return 1;
    }
    if (lead >= 0xC2 && lead <= 0xDF && continues(1)) {
        point = (lead & 0x1FU) << 6U | (byteAt(1) & 0x3FU);
        return 2;
    }
    if ((lead & 0xF0U) == 0xE0U && continues(1) && continues(2)) {
        point = (lead & 0x0FU) << 12U | (byteAt(1) & 0x3FU) << 6U | (byteAt(2) & 0x3FU);
        return point >= 0x800 && (point < 0xD800 || point > 0xDFFF) ? 3 : 0;
    }
    if (lead >= 0xF0 && lead <= 0xF4 && continues(1) && continues(2) && continues(3)) {
        point = (lead & 0x07U) << 18U | (byteAt(1) & 0x3FU) << 12U | (byteAt(2) & 0x3FU) << 6U | (byteAt(3) & 0x3FU);
        return point >= 0x10000 && point <= 0x10FFFF ? 4 : 0;
    }
    return 0;
}

void appendUtf8(std::string &bytes, char32_t point)
{
    const auto append = [&bytes](char32_t value) {
        bytes.push_back(static_cast<char>(static_cast<unsigned char>(value)));
    };
    if (point < 0x80) {
        append(point);
    } else if (point < 0x800) {
        append(0xC0U | point >> 6U);
        append(0x80U | (point & 0x3FU));
    } else if (point < 0x10000) {
        append(0xE0U | point >> 12U);
        append(0x80U | (point >> 6U & 0x3FU));
        append(0x80U | (point & 0x3FU));
    } else {
        append(0xF0U | point >> 18U);
        append(0x80U | (point >> 12U & 0x3FU));
        append(0x80U | (point >> 6U & 0x3FU));
        append(0x80U | (point & 0x3FU));
    }
}

} // namespace

std::string nativeName(QStringView name)
{
    const auto isAscii = [](QChar unit) { return unit.unicode() < 0x80; };
    const qsizetype plain = std::find_if_not(name.begin(), name.end(), isAscii) - name.begin();
    std::string bytes(std::size_t(plain), '\0');
    std::transform(name.begin(), name.begin() + plain, bytes.begin(),
                   [](QChar unit) { return static_cast<char>(unit.unicode()); });
    for (qsizetype i = plain; i < name.size(); ++i) {
        const char16_t unit = name[i].unicode();
        if (QChar::isHighSurrogate(unit) && i + 1 < name.size() && name[i + 1].isLowSurrogate()) {
            appendUtf8(bytes, QChar::surrogateToUcs4(unit, name[i + 1].unicode()));
            ++i;
        } else if (unit >= escapedByteBase + 0x80 && unit <= escapedByteBase + 0xFF) {
            bytes.push_back(static_cast<char>(static_cast<unsigned char>(unit - escapedByteBase)));
        } else {
            appendUtf8(bytes, unit);
        }
    }
    return bytes;
}

QString nameFromNative(std::string_view bytes)
{
    const auto isAscii = [](char byte) { return static_cast<unsigned char>(byte) < 0x80; };
    if (std::all_of(bytes.begin(), bytes.end(), isAscii))
        return QString::fromLatin1(bytes.data(), qsizetype(bytes.size()));

    QString name;
    name.reserve(qsizetype(bytes.size()));
    while (!bytes.empty()) {
        char32_t point = 0;
        const int length = utf8Sequence(bytes, point);
        if (length == 0)
            name.append(QChar(char16_t(escapedByteBase + static_cast<unsigned char>(bytes.front()))));
        else if (QChar::requiresSurrogates(point))
            name.append(QChar(QChar::highSurrogate(point))).append(QChar(QChar::lowSurrogate(point)));
        else
            name.append(QChar(char16_t(point)));
        bytes.remove_prefix(std::size_t(std::max(length, 1)));
    }
    return name;
}

} // namespace velmora
