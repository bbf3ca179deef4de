#include "filetypes/table/engine/field_cursor.h"

#include <algorithm>

namespace velmora {

// Looked for once per delimiter: a row of many quotes and no delimiter would be searched to its end at each of them.
size_t FieldCursor::delimiterFrom(size_t at) noexcept
{
    if (!m_delimiterKnown || m_nextDelimiter < at) {
        m_nextDelimiter = std::min(m_row.find(m_delimiter, at), m_row.size());
        m_delimiterKnown = true;
    }
    return m_nextDelimiter;
}

bool FieldCursor::next() noexcept
{
    if (m_next > m_row.size()) {
        m_field = {};
        return false;
    }
    size_t at = m_next;
    size_t end = delimiterFrom(at);
    for (;;) {
        const size_t opening = m_row.substr(at, end - at).find('"');
        if (opening == std::string_view::npos)
            break;
        const size_t closing = m_row.find('"', at + opening + 1);
        if (closing == std::string_view::npos) {
            end = m_row.size();
            break;
        }
        at = closing + 1;
        end = delimiterFrom(at);
    }
    m_field = m_row.substr(m_next, end - m_next);
    m_next = end < m_row.size() ? end + m_delimiter.size() : m_row.size() + 1;
    return true;
}

std::string_view fieldValue(std::string_view field, std::string &buffer)
{
    const size_t special = std::min(field.find('"'), field.find('\r'));
    if (special == std::string_view::npos)
        return field;
    buffer.assign(field.substr(0, special));
    bool quoted = false;
    for (size_t at = special; at < field.size(); ++at) {
        const char byte = field[at];
        if (byte == '"' && quoted && at + 1 < field.size() && field[at + 1] == '"')
            buffer += field[++at];
        else if (byte == '"')
            quoted = !quoted;
        else if (quoted || byte != '\r')
            buffer += byte;
    }
    return buffer;
}

} // namespace velmora
