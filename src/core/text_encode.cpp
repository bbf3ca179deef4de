#include "core/text_encode.h"

#include "core/text_transcode.h"
#include "core/utf8_text.h"
#include "platform/text_codec.h"

#include <algorithm>
#include <optional>

namespace velmora {

namespace {

constexpr size_t blockSize = 256 * 1024;
constexpr size_t longestCharacter = 4; ///< of UTF-8, in bytes

struct CodePoint {
    char32_t value;
    size_t length;
};

/// The character at `at` of valid UTF-8.
CodePoint codePointAt(std::string_view utf8, size_t at)
{
    const auto byteAt = [&](size_t index) { return char32_t(static_cast<unsigned char>(utf8[at + index])); };
    const auto tail = [&](size_t index) { return byteAt(index) & 0x3F; };
    const char32_t lead = byteAt(0);
    if (lead < 0x80)
        return {lead, 1};
    if (lead < 0xE0)
        return {(lead & 0x1F) << 6 | tail(1), 2};
    if (lead < 0xF0)
        return {(lead & 0x0F) << 12 | tail(1) << 6 | tail(2), 3};
    return {(lead & 0x07) << 18 | tail(1) << 12 | tail(2) << 6 | tail(3), 4};
}

/// Appends characters to `bytes` until one does not fit: returns its offset, or the size of the text. `put` writes one
/// to the place that it gets and moves that on, by at most `worst` bytes for a byte of `utf8`.
template <int worst, typename Put>
size_t encodeEach(std::string_view utf8, QByteArray &bytes, const CancelFlag &cancel, Put put)
{
    size_t at = 0;
    bool fits = true;
    while (at < utf8.size() && fits && !cancel.isCancelled()) {
        // Room is made block by block, so that no character pays for a check.
        const size_t end = std::min(at + blockSize, utf8.size());
        const qsizetype filled = bytes.size();
        bytes.resize(filled + qsizetype(end - at + longestCharacter) * worst);
        char *out = bytes.data() + filled;
        while (at < end && fits) {
            const CodePoint character = codePointAt(utf8, at);
            fits = put(character.value, out);
            at += fits ? character.length : 0;
        }
        bytes.resize(out - bytes.constData());
    }
    return fits ? utf8.size() : at;
}

template <int unitBytes, bool bigEndian>
void putUnit(char *&out, char32_t unit)
{
    for (int index = 0; index < unitBytes; ++index)
        *out++ = static_cast<char>(unit >> 8 * (bigEndian ? unitBytes - 1 - index : index));
}

template <bool bigEndian>
size_t encodeUtf16(std::string_view utf8, QByteArray &bytes, const CancelFlag &cancel)
{
    return encodeEach<2>(utf8, bytes, cancel, [](char32_t character, char *&out) {
        if (character >= 0x10000) {
            putUnit<2, bigEndian>(out, 0xD800 + ((character - 0x10000) >> 10));
            character = 0xDC00 + ((character - 0x10000) & 0x3FF);
        }
        putUnit<2, bigEndian>(out, character);
        return true;
    });
}

template <bool bigEndian>
size_t encodeUtf32(std::string_view utf8, QByteArray &bytes, const CancelFlag &cancel)
{
    return encodeEach<4>(utf8, bytes, cancel, [](char32_t character, char *&out) {
        putUnit<4, bigEndian>(out, character);
        return true;
    });
}

template <char32_t limit>
size_t encodeBytes(std::string_view utf8, QByteArray &bytes, const CancelFlag &cancel)
{
    return encodeEach<1>(utf8, bytes, cancel, [](char32_t character, char *&out) {
        if (character < limit)
            *out++ = static_cast<char>(character);
        return character < limit;
    });
}

/// A block of whole characters at the start of `utf8`.
std::string_view wholeBlock(std::string_view utf8)
{
    size_t size = std::min(blockSize, utf8.size());
    const auto isContinuation = [&](size_t at) { return (static_cast<unsigned char>(utf8[at]) & 0xC0) == 0x80; };
    while (size < utf8.size() && isContinuation(size))
        --size;
    return utf8.substr(0, size);
}

size_t encodeWithCodec(std::string_view utf8, QByteArray &bytes, const QByteArray &charset, const CancelFlag &cancel)
{
    const auto codec = TextCodec::open(charset);
    if (!codec)
        return 0;
    size_t at = 0;
    while (at < utf8.size() && !cancel.isCancelled()) {
        const TextCodec::Step step = codec->encode(wholeBlock(utf8.substr(at)), bytes);
        at += step.consumed;
        if (step.stop != TextCodec::Stop::End)
            return at;
    }
    codec->finishEncoding(bytes);
    return utf8.size();
}

size_t copyUtf8(std::string_view utf8, QByteArray &bytes, const CancelFlag & /*cancel*/)
{
    bytes.append(utf8.data(), qsizetype(utf8.size()));
    return utf8.size();
}

/// Appends `utf8` to `bytes`; returns how much of it, all of it when cancelled.
size_t encode(std::string_view utf8, QByteArray &bytes, const QByteArray &charset, const CancelFlag &cancel)
{
    struct Entry {
        const char *charset;
        size_t (*encoder)(std::string_view, QByteArray &, const CancelFlag &);
    };
    static constexpr Entry entries[] = {
        {"UTF-8", copyUtf8},
        {"UTF-16LE", encodeUtf16<false>},
        {"UTF-16BE", encodeUtf16<true>},
        {"UTF-32LE", encodeUtf32<false>},
        {"UTF-32BE", encodeUtf32<true>},
        {"ISO-8859-1", encodeBytes<0x100>},
        {"US-ASCII", encodeBytes<0x80>},
    };
    for (const Entry &entry : entries) {
        if (charset == entry.charset)
            return entry.encoder(utf8, bytes, cancel);
    }
    return encodeWithCodec(utf8, bytes, charset, cancel);
}

/// Where what `bytes` mean in `encoding` first differs from `utf8`, which they were made of; its size when nowhere.
size_t firstMisread(std::string_view utf8, std::string_view bytes, const TextEncoding &encoding,
                    const CancelFlag &cancel)
{
    const QByteArray mark = encoding.markBytes();
    if (!mark.isEmpty() && bytes.starts_with(std::string_view(mark.constData(), size_t(mark.size()))))
        bytes.remove_prefix(size_t(mark.size()));
    if (encoding.charset() == "UTF-8") // needs no decoding: the bytes are the text, unless a mark was taken off it
        return bytes.size() == utf8.size() ? utf8.size() : 0;
    const QByteArray readAgain = transcodeToUtf8(bytes, encoding.charset(), cancel).bytes;
    const std::string_view again(readAgain.constData(), size_t(readAgain.size()));
    if (again == utf8 || cancel.isCancelled())
        return utf8.size();
    const auto differing = std::mismatch(utf8.begin(), utf8.end(), again.begin(), again.end());
    auto at = std::min(size_t(differing.first - utf8.begin()), utf8.size() - 1);
    while (at > 0 && (static_cast<unsigned char>(utf8[at]) & 0xC0) == 0x80)
        --at;
    return at;
}

void noteFailure(EncodedText &text, std::string_view utf8, size_t at)
{
    const size_t lineFeed = at == 0 ? std::string_view::npos : utf8.rfind('\n', at - 1);
    const size_t lineStart = lineFeed == std::string_view::npos ? 0 : lineFeed + 1;
    text.failedCharacter = textOfUtf8(utf8.substr(at, codePointAt(utf8, at).length));
    text.failedLine = std::count(utf8.begin(), utf8.begin() + qsizetype(at), '\n');
    text.failedColumn = textOfUtf8(utf8.substr(lineStart, at - lineStart)).size();
}

/// The place of the first surrogate without its partner, -1 when there is none.
qsizetype loneSurrogate(QStringView text)
{
    for (qsizetype at = 0; at < text.size(); ++at) {
        if (!text[at].isSurrogate())
            continue;
        if (!text[at].isHighSurrogate() || at + 1 == text.size() || !text[at + 1].isLowSurrogate())
            return at;
        ++at;
    }
    return -1;
}

} // namespace

EncodedText encodeText(std::string_view utf8, const TextEncoding &encoding, const CancelFlag &cancel)
{
    EncodedText text;
    if (utf8.empty() && !encoding.hasMark())
        return text;
    const TextEncoding target = encoding.isAutomatic() ? TextEncoding::ofCharset("UTF-8", false) : encoding;
    if (target.hasMark())
        text.bytes = target.markBytes();
    size_t done = encode(utf8, text.bytes, target.charset(), cancel);
    if (done == utf8.size() && !cancel.isCancelled())
        done = firstMisread(utf8, {text.bytes.constData(), size_t(text.bytes.size())}, target, cancel);
    if (done < utf8.size())
        noteFailure(text, utf8, done);
    return text;
}

EncodedText encodeText(QStringView text, const TextEncoding &encoding, const CancelFlag &cancel)
{
    const qsizetype lone = loneSurrogate(text);
    if (lone < 0) {
        const QByteArray utf8 = text.toUtf8();
        return encodeText(std::string_view(utf8.constData(), size_t(utf8.size())), encoding, cancel);
    }
    EncodedText failed;
    failed.failedCharacter = text.sliced(lone, 1).toString();
    failed.failedLine = text.first(lone).count(u'\n');
    failed.failedColumn = lone - (text.first(lone).lastIndexOf(u'\n') + 1);
    return failed;
}

} // namespace velmora
