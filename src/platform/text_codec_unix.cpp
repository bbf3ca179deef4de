#include "platform/text_codec.h"

#include <algorithm>
#include <cerrno>

#include <iconv.h>

namespace velmora {

namespace {

/// One direction of the C library's conversion.
class IconvHandle {
public:
    IconvHandle(const char *to, const char *from) : m_handle(iconv_open(to, from)) {}
    ~IconvHandle()
    {
        if (isOpen())
            iconv_close(m_handle);
    }
    IconvHandle(const IconvHandle &) = delete;
    IconvHandle &operator=(const IconvHandle &) = delete;

    [[nodiscard]] bool isOpen() const { return m_handle != iconv_t(-1); }

    TextCodec::Step convert(std::string_view input, QByteArray &output)
    {
        // The library takes the input by a pointer to non-const and leaves it alone.
        char *in = const_cast<char *>(input.data());
        size_t inLeft = input.size();
        const auto consumed = [&] { return input.size() - inLeft; };
        for (;;) {
            const qsizetype filled = output.size();
            output.resize(filled + qsizetype(inLeft + inLeft / 2) + 64);
            char *out = output.data() + filled;
            size_t outLeft = size_t(output.size() - filled);
            const size_t result = iconv(m_handle, &in, &inLeft, &out, &outLeft);
            const int error = errno;
            output.resize(output.size() - qsizetype(outLeft));
            if (result != size_t(-1))
                return {consumed(), TextCodec::Stop::End};
            if (error == EINVAL)
                return {consumed(), TextCodec::Stop::Incomplete};
            if (error != E2BIG)
                return {consumed(), TextCodec::Stop::Invalid};
        }
    }

    void finish(QByteArray &output)
    {
        char rest[64];
        char *out = rest;
        size_t outLeft = sizeof rest;
        iconv(m_handle, nullptr, nullptr, &out, &outLeft);
        output.append(rest, qsizetype(sizeof rest - outLeft));
    }

private:
    iconv_t m_handle;
};

class IconvCodec final : public TextCodec {
public:
    explicit IconvCodec(const QByteArray &charset)
        : m_decoder("UTF-8", charset.constData()), m_encoder(charset.constData(), "UTF-8")
    {}

    [[nodiscard]] bool isOpen() const { return m_decoder.isOpen() && m_encoder.isOpen(); }

    Step decode(std::string_view bytes, QByteArray &utf8) override { return m_decoder.convert(bytes, utf8); }
    Step encode(std::string_view utf8, QByteArray &bytes) override { return m_encoder.convert(utf8, bytes); }
    void finishDecoding(QByteArray &utf8) override { m_decoder.finish(utf8); }
    void finishEncoding(QByteArray &bytes) override { m_encoder.finish(bytes); }

private:
    IconvHandle m_decoder;
    IconvHandle m_encoder;
};

/// The C library reads a name of nothing but punctuation as the locale's charset, and a slash as a request for
/// substitutes.
bool isPlainName(const QByteArray &charset)
{
    const auto isLetterOrDigit = [](char character) {
        return (character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z') ||
               (character >= '0' && character <= '9');
    };
    return std::any_of(charset.begin(), charset.end(), isLetterOrDigit) &&
           std::all_of(charset.begin(), charset.end(), [&](char character) {
               return isLetterOrDigit(character) ||
                      std::string_view("-_.:()+").find(character) != std::string_view::npos;
           });
}

} // namespace

std::unique_ptr<TextCodec> TextCodec::open(const QByteArray &charset)
{
    if (!isPlainName(charset))
        return nullptr;
    auto codec = std::make_unique<IconvCodec>(charset);
    return codec->isOpen() ? std::move(codec) : nullptr;
}

} // namespace velmora
