#include "filetypes/table/engine/value_lines.h"

#include <stdexcept>

namespace velmora {

void ValueLines::append(std::string_view value)
{
    // A line loses one carriage return before its line feed; a value that ends in one needs another to lose.
    const LineEnd end = value.ends_with('\r') ? LineEnd::CrLf : LineEnd::Lf;
    m_size += qsizetype(value.size() + lineEndBytes(end).size());
    if (m_size > TextLines::maximumSize)
        throw std::length_error("values of a table");
    m_builder.append(value, end);
}

} // namespace velmora
