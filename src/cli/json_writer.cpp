#include "cli/json_writer.h"

namespace velmora::cli {

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

void writeJsonString(OutputBuffer &output, const QString &text)
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

} // namespace

void JsonWriter::key(std::string_view name)
{
    separate();
    m_output << '"' << name << "\":";
    m_afterKey = true;
}

void JsonWriter::text(const QString &value)
{
    beginValue();
    writeJsonString(m_output, value);
}

void JsonWriter::number(qint64 value)
{
    beginValue();
    m_output << value;
}

void JsonWriter::boolean(bool value)
{
    beginValue();
    m_output << (value ? "true" : "false");
}

void JsonWriter::null()
{
    beginValue();
    m_output << "null";
}

void JsonWriter::begin(char bracket)
{
    beginValue();
    m_output << bracket;
    const bool isBroken = m_levels.empty() || (m_levels.size() == 1 && bracket == '[');
    m_levels.push_back({.isBroken = isBroken});
}

void JsonWriter::end(char bracket)
{
    if (m_levels.back().isBroken)
        m_output << '\n';
    m_levels.pop_back();
    m_output << bracket;
    if (m_levels.empty())
        m_output << '\n';
}

void JsonWriter::separate()
{
    Level &level = m_levels.back();
    if (!level.isEmpty)
        m_output << ',';
    if (level.isBroken)
        m_output << '\n';
    level.isEmpty = false;
}

void JsonWriter::beginValue()
{
    if (!m_afterKey && !m_levels.empty())
        separate();
    m_afterKey = false;
}

} // namespace velmora::cli
