#include "cli/table_json.h"

#include "cli/json_writer.h"
#include "core/utf8_text.h"
#include "filetypes/table/engine/cell_cursor.h"

namespace velmora::cli {

namespace {

void writeSide(JsonWriter &json, const TableAlignment &table, Side side, const TextInput &input)
{
    json.key(side == Side::Left ? "left" : "right");
    json.beginObject();
    json.text("path", input.path);
    json.text("encoding", input.text.encoding.name());
    json.number("rows", table.tables[side].rowCount());
    json.number("replaced", qint64(table.replaced[side].size()));
    json.endObject();
}

void writeCounts(JsonWriter &json, const TableCounts &counts)
{
    json.key("counts");
    json.beginObject();
    json.number("same", counts.same);
    json.number("modified", counts.modified);
    json.number("leftOnly", counts.leftOnly);
    json.number("rightOnly", counts.rightOnly);
    json.endObject();
}

void writeRow(JsonWriter &json, const TableAlignment &table, const AlignedTableRow &row)
{
    json.beginObject();
    json.number("status", qint32(row.status));
    json.number("leftRow", row.left >= 0 ? row.left + 1 : -1);
    json.number("rightRow", row.right >= 0 ? row.right + 1 : -1);
    json.key("cells");
    json.beginList();
    for (CellCursor cells(table, row); cells.next();) {
        json.beginObject();
        json.number("status", qint32(cells.status()));
        json.text("left", textOfUtf8(cells.value(Side::Left)));
        json.text("right", textOfUtf8(cells.value(Side::Right)));
        json.endObject();
    }
    json.endList();
    json.endObject();
}

} // namespace

void writeTableJson(OutputBuffer &output, const TableAlignment &table, const TextInput &left, const TextInput &right)
{
    JsonWriter json(output);
    json.beginObject();
    writeSide(json, table, Side::Left, left);
    writeSide(json, table, Side::Right, right);
    json.key("columns");
    json.beginList();
    for (qint32 column = 0; column < table.columns.count(); ++column)
        json.text(table.columns.name(column));
    json.endList();
    writeCounts(json, table.counts);
    json.key("rows");
    json.beginList();
    for (const AlignedTableRow &row : table.rows)
        writeRow(json, table, row);
    json.endList();
    json.endObject();
}

} // namespace velmora::cli
