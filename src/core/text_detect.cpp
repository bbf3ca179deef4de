#include "core/text_detect.h"

#include "core/charset_evidence.h"
#include "core/text_scan.h"
#include "core/text_transcode.h"

#include <algorithm>

#include <uchardet.h>

namespace velmora {

namespace {

constexpr size_t zerosSample = 64 * 1024;
constexpr size_t statisticsSample = 128 * 1024;

/// How plausible a text is as UTF-16 of one byte order.
struct Utf16Evidence {
    size_t units = 0;
    size_t ascii = 0;    ///< printable ASCII characters, tabs and line ends
    bool broken = false; ///< holds what no text holds

    Utf16Evidence(std::string_view bytes, bool bigEndian)
    {
        bool highPending = false;
        for (size_t at = 0; at + 1 < bytes.size() && !broken; at += 2) {
            const auto first = static_cast<unsigned char>(bytes[at]);
            const auto second = static_cast<unsigned char>(bytes[at + 1]);
            const unsigned unit = bigEndian ? unsigned(first) << 8 | second : unsigned(second) << 8 | first;
            const bool low = unit >= 0xDC00 && unit < 0xE000;
            const bool control = unit < 0x20 && !(unit >= '\t' && unit <= '\r') && unit != 0x1B;
            const bool noCharacter = unit >= 0xFFFE || (unit >= 0xFDD0 && unit <= 0xFDEF);
            broken = low != highPending || control || noCharacter || (unit >= 0x7F && unit < 0xA0);
            highPending = unit >= 0xD800 && unit < 0xDC00;
            ascii += unit < 0x7F;
            ++units;
        }
    }
};

/// Damaged UTF-8: of the sequences above ASCII all but a few are well-formed. By chance next to none would be.
bool isNearlyUtf8(std::string_view bytes)
{
    size_t damaged = 0;
    size_t wellFormed = 0;
    for (size_t at = 0; at < bytes.size();) {
        const size_t valid = validUtf8Until(bytes, at, bytes.size());
        const auto isLead = [](char byte) { return static_cast<unsigned char>(byte) >= 0xC0; };
        wellFormed += size_t(std::count_if(bytes.begin() + at, bytes.begin() + valid, isLead));
        at = valid;
        if (at < bytes.size()) {
            ++damaged;
            at += damagedUtf8Length(bytes, at);
        }
    }
    return damaged * 20 <= wellFormed;
}

QByteArray charsetByUchardet(std::string_view bytes)
{
    const std::unique_ptr<uchardet, void (*)(uchardet_t)> detector(uchardet_new(), uchardet_delete);
    if (!detector || uchardet_handle_data(detector.get(), bytes.data(), bytes.size()) != 0)
        return {};
    uchardet_data_end(detector.get());
    return uchardet_get_charset(detector.get());
}

bool isHigh(char byte)
{
    return static_cast<unsigned char>(byte) >= 0x80;
}

} // namespace

std::string_view tellingBytes(std::string_view bytes)
{
    const auto first = size_t(std::find_if(bytes.begin(), bytes.end(), isHigh) - bytes.begin());
    const size_t lineFeed = bytes.substr(0, first).rfind('\n');
    const size_t begin = lineFeed == std::string_view::npos ? 0 : lineFeed + 1;
    // A line without end would push the telling byte out of the sample.
    return bytes.substr(std::max(begin, first - std::min(first, statisticsSample / 2)), statisticsSample);
}

std::string_view tellingText(std::string_view utf8)
{
    std::string_view part = tellingBytes(utf8);
    const auto startsWithin = [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; };
    while (!part.empty() && startsWithin(part.front()))
        part.remove_prefix(1);
    return part.substr(0, validUtf8Until(part, 0, part.size()));
}

bool fitsEncoding(std::string_view bytes, const QByteArray &charset)
{
    const auto high = std::count_if(bytes.begin(), bytes.end(), isHigh);
    const Utf8Output output = transcodeToUtf8(bytes, charset, {});
    return output.undecodable <= 1 + high / 100;
}

std::optional<TextEncoding> encodingByMark(std::string_view bytes)
{
    // The mark of UTF-32 LE starts with that of UTF-16 LE, and its length is always a multiple of four.
    const bool couldBeUtf32 = bytes.size() % 4 == 0;
    for (const char *charset : {"UTF-32LE", "UTF-32BE", "UTF-8", "UTF-16LE", "UTF-16BE"}) {
        const TextEncoding encoding = TextEncoding::ofCharset(charset, true);
        const QByteArray mark = encoding.markBytes();
        if (bytes.starts_with(std::string_view(mark.constData(), size_t(mark.size()))) &&
            (mark.size() != 4 || couldBeUtf32))
            return encoding;
    }
    return std::nullopt;
}

std::optional<TextEncoding> encodingByZeros(std::string_view bytes, bool validUtf8)
{
    if (bytes.size() % 2 != 0)
        return std::nullopt;
    const std::string_view sample = bytes.substr(0, zerosSample);
    const Utf16Evidence little(sample, false);
    const Utf16Evidence big(sample, true);
    const bool isBig = little.broken || (!big.broken && big.ascii > little.ascii);
    const Utf16Evidence &better = isBig ? big : little;
    // ASCII names between zero bytes look like Chinese with a letter here and there.
    const size_t needed = validUtf8 ? better.units - better.units / 8 : 0;
    if (better.broken || better.ascii == 0 || better.ascii < needed)
        return std::nullopt;
    return TextEncoding::ofCharset(isBig ? "UTF-16BE" : "UTF-16LE", false);
}

TextEncoding encodingByStatistics(std::string_view bytes, const QList<QByteArray> &preferred)
{
    const TextEncoding latin1 = TextEncoding::ofCharset("ISO-8859-1", false);
    const std::string_view sample = tellingBytes(bytes);
    if (isNearlyUtf8(sample))
        return TextEncoding::ofCharset("UTF-8", false);
    for (const auto likely : {likelyDoubleByteCharset, likelySingleByteCharset}) {
        const auto found = likely(sample, preferred);
        if (found && canTranscode(*found))
            return TextEncoding::ofCharset(*found, false);
    }
    const QByteArray charset = charsetByUchardet(sample);
    if (charset.isEmpty())
        return latin1;
    const TextEncoding found = TextEncoding::fromName(QString::fromLatin1(charset));
    // Pure ASCII is what uchardet calls a text that it cannot place.
    if (found.isAutomatic() || found.charset() == "US-ASCII" || !fitsEncoding(sample, found.charset()))
        return latin1;
    return found;
}

} // namespace velmora
