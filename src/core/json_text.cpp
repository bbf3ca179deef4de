#include "core/json_text.h"

#include "core/output_buffer.h"

namespace velmora {

namespace {

void writeEscape(OutputBuffer &output, char16_t unit)
{
    static constexpr char hex[] = "0123456789abcdef";
    output << "\\u" << hex[unit >> 12U] << hex[unit >> 8U & 0xFU] << hex[unit >> 4U & 0xFU] << hex[unit & 0xFU];
}

bool isLoneSurrogate(const QString &text, qsizetype at)
{
    const QChar unit = text[at];
    if (unit.isHighSurrogate())
        return at + 1 >= text.size() || !text[at + 1].isLowSurrogate();
    return unit.isLowSurrogate() && (at == 0 || !text[at - 1].isHighSurrogate());
}

} // namespace

void writeJsonText(OutputBuffer &output, const QString &text)
{
    output << '"';
    qsizetype written = 0;
    for (qsizetype at = 0; at < text.size(); ++at) {
        const char16_t unit = text[at].unicode();
        const bool quoted = unit == u'"' || unit == u'\\';
        if (unit >= 0x20 && !quoted && !isLoneSurrogate(text, at))
            continue;
        const QByteArray before = QStringView(text).mid(written, at - written).toUtf8();
        output << std::string_view(before.constData(), std::size_t(before.size()));
        if (quoted)
            output << '\\' << static_cast<char>(unit);
        else if (unit == u'\t')
            output << "\\t";
        else
            writeEscape(output, unit);
        written = at + 1;
    }
    const QByteArray rest = QStringView(text).mid(written).toUtf8();
    output << std::string_view(rest.constData(), std::size_t(rest.size())) << '"';
}

} // namespace velmora
