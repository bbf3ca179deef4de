#include "filetypes/table/engine/table_keys.h"

#include "filetypes/table/engine/value_lines.h"

#include <algorithm>

namespace velmora {

namespace {

constexpr qint32 rowsPerLook = 4096;
constexpr char fieldSeparator = 0x1F;

std::string_view valueAt(std::string_view row, std::string_view delimiter, qint32 column, std::string &buffer)
{
    if (column < 0)
        return {};
    FieldCursor cursor(row, delimiter);
    for (qint32 at = 0; at <= column; ++at) {
        if (!cursor.next())
            return {};
    }
    return fieldValue(cursor.field(), buffer);
}

/// The values one after the other, each behind its length, so that no two lists look alike.
void appendKey(ValueLines &keys, const TableText &table, qint32 row, const QList<qint32> &columns, std::string &joined,
               std::string &buffer)
{
    joined.clear();
    for (const qint32 column : columns) {
        const std::string_view value = valueAt(table.row(row), table.delimiter(), column, buffer);
        joined += std::to_string(value.size());
        joined += ':';
        joined += value;
    }
    keys.append(joined);
}

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

TextLines rowKeys(const TableText &table, qint32 firstRow, qint32 endRow, const QList<qint32> &columns,
                  const CancelFlag &cancel)
{
    const qint32 end = std::min(endRow, table.rowCount());
    ValueLines keys;
    keys.reserve(0, std::max(0, end - firstRow));
    std::string joined;
    std::string buffer;
    for (qint32 row = firstRow; row < end; ++row) {
        if (row % rowsPerLook == 0 && cancel.isCancelled())
            break;
        if (columns.size() == 1)
            keys.append(valueAt(table.row(row), table.delimiter(), columns.first(), buffer));
        else
            appendKey(keys, table, row, columns, joined, buffer);
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
