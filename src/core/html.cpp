#include "core/html.h"

#include "core/output_buffer.h"

#include <array>

namespace velmora {

namespace {

/// What each byte is written as; empty for itself.
constexpr std::array<std::string_view, 128> makeReferences()
{
    std::array<std::string_view, 128> references{};
    for (size_t control = 0; control < 0x20; ++control)
        references[control] = "\xEF\xBF\xBD";
    for (const char allowed : {'\t', '\n', '\f', '\r'})
        references[size_t(uchar(allowed))] = {};
    references[0x7F] = "\xEF\xBF\xBD";
    references['&'] = "&amp;";
    references['<'] = "&lt;";
    references['>'] = "&gt;";
    references['"'] = "&quot;";
    references['\''] = "&#39;";
    return references;
}

constexpr std::array references = makeReferences();

} // namespace

void appendHtmlEscaped(QByteArray &html, std::string_view utf8)
{
    size_t written = 0;
    for (size_t at = 0; at < utf8.size(); ++at) {
        const auto byte = static_cast<unsigned char>(utf8[at]);
        if (byte >= references.size() || references[byte].empty())
            continue;
        html.append(utf8.data() + written, qsizetype(at - written));
        html.append(references[byte].data(), qsizetype(references[byte].size()));
        written = at + 1;
    }
    html.append(utf8.data() + written, qsizetype(utf8.size() - written));
}

void writeHtmlElement(OutputBuffer &page, std::string_view open, const QString &text, std::string_view close)
{
    const QByteArray utf8 = text.toUtf8();
    page << open;
    appendHtmlEscaped(page.bytes(), {utf8.constData(), size_t(utf8.size())});
    page << close;
}

} // namespace velmora
