#include "filetypes/table/engine/table_keys.h"

#include "filetypes/table/engine/value_lines.h"

#include <algorithm>

namespace velmora {

namespace {

constexpr qint32 rowsPerLook = 4096;
constexpr char fieldSeparator = 0x1F;

/// Takes the keys of a table's rows, field by field.
class KeyReader {
public:
    explicit KeyReader(const TableText &table) : m_table(table) {}

    /// Valid until the next call.
    std::string_view value(qint32 row, const KeyField &key)
    {
        if (key.field < 0)
            return {};
        FieldCursor cursor = m_table.fields(row);
        for (qint32 at = 0; at <= key.field; ++at) {
            if (!cursor.next())
                return {};
        }
        const std::string_view value = fieldValue(cursor.field(), m_value);
        return key.rule ? valueForm(value, *key.rule, m_form) : value;
    }

    /// The values one after the other, each behind its length, so that no two lists look alike. Valid until the next
    /// call.
    std::string_view values(qint32 row, const QList<KeyField> &keys)
    {
        m_joined.clear();
        for (const KeyField &key : keys) {
            const std::string_view value = this->value(row, key);
            m_joined += std::to_string(value.size());
            m_joined += ':';
            m_joined += value;
        }
        return m_joined;
    }

private:
    const TableText &m_table;
    std::string m_value;
    std::string m_form;
    std::string m_joined;
};

/// Appends `value` with delimiter and separator exchanged, so that a row whose bytes hold no separator is its own
/// bytes.
void appendExchanged(std::string &line, std::string_view value, std::string_view delimiter)
{
    for (size_t at = 0; at < value.size();) {
        if (value[at] == fieldSeparator) {
            line += delimiter;
            ++at;
        } else if (value.substr(at).starts_with(delimiter)) {
            line += fieldSeparator;
            at += delimiter.size();
        } else {
            line += value[at++];
        }
    }
}

} // namespace

TextLines rowKeys(const TableText &table, qint32 firstRow, qint32 endRow, const QList<KeyField> &fields,
                  const CancelFlag &cancel)
{
    const qint32 end = std::min(endRow, table.rowCount());
    ValueLines keys;
    keys.reserve(0, std::max(0, end - firstRow));
    KeyReader reader(table);
    for (qint32 row = firstRow; row < end; ++row) {
        if (row % rowsPerLook == 0 && cancel.isCancelled())
            break;
        keys.append(fields.size() == 1 ? reader.value(row, fields.first()) : reader.values(row, fields));
    }
    return keys.take();
}

bool rowsAreLines(const TableText &table)
{
    return table.isPlain() && table.text().bytes().find(fieldSeparator) == std::string_view::npos;
}

TextLines joinedRows(const TableText &table, const CancelFlag &cancel)
{
    if (rowsAreLines(table))
        return table.text();
    ValueLines lines;
    lines.reserve(qsizetype(table.text().bytes().size()), table.rowCount());
    std::string line;
    std::string buffer;
    for (qint32 row = 0; row < table.rowCount(); ++row) {
        if (row % rowsPerLook == 0 && cancel.isCancelled())
            break;
        line.clear();
        bool isFirst = true;
        for (FieldCursor cursor = table.fields(row); cursor.next(); isFirst = false) {
            if (!isFirst)
                line += table.delimiter();
            appendExchanged(line, fieldValue(cursor.field(), buffer), table.delimiter());
        }
        lines.append(line);
    }
    return lines.take();
}

} // namespace velmora
