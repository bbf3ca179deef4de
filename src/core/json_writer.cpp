#include "core/json_writer.h"

#include "core/json_text.h"

namespace velmora {

void JsonWriter::key(std::string_view name)
{
    separate();
    m_output << '"' << name << "\":";
    m_afterKey = true;
}

void JsonWriter::text(const QString &value)
{
    beginValue();
    writeJsonText(m_output, value);
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

} // namespace velmora
