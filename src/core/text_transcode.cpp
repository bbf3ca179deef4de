#include "core/text_transcode.h"

#include "core/text_scan.h"
#include "platform/text_codec.h"

#include <algorithm>

namespace velmora {

namespace {

constexpr size_t blockSize = 256 * 1024;
constexpr char32_t replacement = U'\uFFFD';

/// Writes code points behind the bytes that an `Utf8Output` holds. Room for the worst case is made block by block, so
/// that no character pays for a check.
class Utf8Writer {
public:
    explicit Utf8Writer(Utf8Output &output) : m_output(output) {}
    ~Utf8Writer() { close(); }
    Utf8Writer(const Utf8Writer &) = delete;
    Utf8Writer &operator=(const Utf8Writer &) = delete;

    /// Precondition of the writing functions: together they write at most `bytes` bytes until the next call.
    void makeRoom(size_t bytes)
    {
        close();
        const qsizetype filled = m_output.bytes.size();
        m_output.bytes.resize(filled + qsizetype(bytes));
        m_next = m_output.bytes.data() + filled;
    }

    void append(char32_t codePoint)
    {
        if (codePoint < 0x80) {
            put(codePoint);
        } else if (codePoint < 0x800) {
            put(0xC0 | codePoint >> 6);
            put(0x80 | (codePoint & 0x3F));
        } else if (codePoint < 0x10000) {
            put(0xE0 | codePoint >> 12);
            put(0x80 | (codePoint >> 6 & 0x3F));
            put(0x80 | (codePoint & 0x3F));
        } else {
            put(0xF0 | codePoint >> 18);
            put(0x80 | (codePoint >> 12 & 0x3F));
            put(0x80 | (codePoint >> 6 & 0x3F));
            put(0x80 | (codePoint & 0x3F));
        }
    }

    void appendBytes(std::string_view bytes) { m_next = std::copy(bytes.begin(), bytes.end(), m_next); }

    void appendReplacement()
    {
        if (m_output.undecodable++ == 0)
            m_output.firstUndecodable = m_next - m_output.bytes.constData();
        append(replacement);
    }

private:
    void put(char32_t byte) { *m_next++ = static_cast<char>(byte); }

    void close()
    {
        if (m_next)
            m_output.bytes.resize(m_next - m_output.bytes.constData());
        m_next = nullptr;
    }

    Utf8Output &m_output;
    char *m_next = nullptr;
};

/// Runs `convert(writer, begin, end)` over all blocks of `size` units; each writes at most `worst` bytes for a unit.
template <typename Convert>
void convertBlocks(Utf8Output &output, size_t size, size_t worst, const CancelFlag &cancel, Convert convert)
{
    Utf8Writer writer(output);
    for (size_t begin = 0; begin < size && !cancel.isCancelled();) {
        const size_t end = std::min(begin + blockSize, size);
        // A character that starts before the end of the block may reach over it.
        writer.makeRoom((end - begin + 4) * worst);
        begin = convert(writer, begin, end);
    }
}

template <int unitBytes, bool bigEndian>
char32_t unitAt(std::string_view bytes, size_t unit)
{
    char32_t value = 0;
    for (int index = 0; index < unitBytes; ++index) {
        const int shift = 8 * (bigEndian ? unitBytes - 1 - index : index);
        value |= char32_t(static_cast<unsigned char>(bytes[unit * unitBytes + size_t(index)])) << shift;
    }
    return value;
}

bool isSurrogate(char32_t unit)
{
    return unit >= 0xD800 && unit < 0xE000;
}

void appendReplacementTo(Utf8Output &output)
{
    Utf8Writer writer(output);
    writer.makeRoom(4);
    writer.appendReplacement();
}

/// One replacement for the bytes at the end that are too few for a unit.
void appendCutUnit(Utf8Output &output, std::string_view bytes, size_t unitBytes, const CancelFlag &cancel)
{
    if (bytes.size() % unitBytes != 0 && !cancel.isCancelled())
        appendReplacementTo(output);
}

template <bool bigEndian>
void decodeUtf16(Utf8Output &output, std::string_view bytes, const CancelFlag &cancel)
{
    const size_t units = bytes.size() / 2;
    convertBlocks(output, units, 3, cancel, [&](Utf8Writer &writer, size_t at, size_t end) {
        while (at < end) {
            const char32_t unit = unitAt<2, bigEndian>(bytes, at++);
            if (!isSurrogate(unit)) {
                writer.append(unit);
                continue;
            }
            const char32_t low = unit < 0xDC00 && at < units ? unitAt<2, bigEndian>(bytes, at) : 0;
            if (low >= 0xDC00 && low < 0xE000) {
                ++at;
                writer.append(0x10000 + ((unit - 0xD800) << 10) + (low - 0xDC00));
            } else {
                writer.appendReplacement();
            }
        }
        return at;
    });
    appendCutUnit(output, bytes, 2, cancel);
}

template <bool bigEndian>
void decodeUtf32(Utf8Output &output, std::string_view bytes, const CancelFlag &cancel)
{
    convertBlocks(output, bytes.size() / 4, 4, cancel, [&](Utf8Writer &writer, size_t at, size_t end) {
        for (; at < end; ++at) {
            const char32_t unit = unitAt<4, bigEndian>(bytes, at);
            if (unit > 0x10FFFF || isSurrogate(unit))
                writer.appendReplacement();
            else
                writer.append(unit);
        }
        return at;
    });
    appendCutUnit(output, bytes, 4, cancel);
}

void decodeLatin1(Utf8Output &output, std::string_view bytes, const CancelFlag &cancel)
{
    convertBlocks(output, bytes.size(), 2, cancel, [&](Utf8Writer &writer, size_t at, size_t end) {
        for (; at < end; ++at)
            writer.append(static_cast<unsigned char>(bytes[at]));
        return at;
    });
}

void decodeAscii(Utf8Output &output, std::string_view bytes, const CancelFlag &cancel)
{
    convertBlocks(output, bytes.size(), 3, cancel, [&](Utf8Writer &writer, size_t at, size_t end) {
        for (; at < end; ++at) {
            const auto byte = static_cast<unsigned char>(bytes[at]);
            if (byte < 0x80)
                writer.append(byte);
            else
                writer.appendReplacement();
        }
        return at;
    });
}

void repairUtf8(Utf8Output &output, std::string_view bytes, const CancelFlag &cancel)
{
    convertBlocks(output, bytes.size(), 3, cancel, [&](Utf8Writer &writer, size_t at, size_t end) {
        while (at < end) {
            const size_t valid = validUtf8Until(bytes, at, end);
            writer.appendBytes(bytes.substr(at, valid - at));
            at = valid;
            if (at < end) {
                writer.appendReplacement();
                at += damagedUtf8Length(bytes, at);
            }
        }
        return at;
    });
}

void decodeWithCodec(Utf8Output &output, std::string_view bytes, TextCodec &codec, const CancelFlag &cancel)
{
    size_t at = 0;
    while (at < bytes.size() && !cancel.isCancelled()) {
        const std::string_view part = bytes.substr(at, blockSize);
        const bool last = at + part.size() == bytes.size();
        const TextCodec::Step step = codec.decode(part, output.bytes);
        at += step.consumed;
        if (step.stop == TextCodec::Stop::Invalid) {
            appendReplacementTo(output);
            ++at;
        } else if (step.stop == TextCodec::Stop::Incomplete && last) {
            appendReplacementTo(output);
            break;
        }
    }
    codec.finishDecoding(output.bytes);
}

using Decoder = void (*)(Utf8Output &, std::string_view, const CancelFlag &);

Decoder builtInDecoder(const QByteArray &charset)
{
    struct Entry {
        const char *charset;
        Decoder decoder;
    };
    static constexpr Entry entries[] = {
        {"UTF-8", repairUtf8},           {"UTF-16LE", decodeUtf16<false>},
        {"UTF-16BE", decodeUtf16<true>}, {"UTF-32LE", decodeUtf32<false>},
        {"UTF-32BE", decodeUtf32<true>}, {"ISO-8859-1", decodeLatin1},
        {"US-ASCII", decodeAscii},
    };
    for (const Entry &entry : entries) {
        if (charset == entry.charset)
            return entry.decoder;
    }
    return nullptr;
}

} // namespace

bool canTranscode(const QByteArray &charset)
{
    return builtInDecoder(charset) || TextCodec::open(charset);
}

Utf8Output transcodeToUtf8(std::string_view bytes, const QByteArray &charset, const CancelFlag &cancel)
{
    Utf8Output output;
    if (const Decoder decoder = builtInDecoder(charset))
        decoder(output, bytes, cancel);
    else if (const auto codec = TextCodec::open(charset))
        decodeWithCodec(output, bytes, *codec, cancel);
    return output;
}

} // namespace velmora
