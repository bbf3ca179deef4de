#include "filetypes/table/engine/table_report.h"

#include "core/html.h"
#include "core/output_buffer.h"
#include "filetypes/table/engine/cell_cursor.h"

#include <QIODevice>

namespace velmora {

namespace {

constexpr size_t rowsPerLook = 1024;

constexpr std::string_view styleSheet =
    "body { font-family: sans-serif; font-size: 13px; margin: 20px; color: #333; }\n"
    "h1 { font-size: 18px; }\n"
    ".info, .summary { color: #555; margin: 12px 0; }\n"
    "table { border-collapse: collapse; }\n"
    "th { background: #e8e8e8; padding: 6px 8px; text-align: left; border: 1px solid #ccc; }\n"
    "td { padding: 2px 8px; border: 1px solid #ddd; white-space: pre-wrap; vertical-align: top; }\n"
    ".n { text-align: right; color: #666; background: #f5f5f5; }\n"
    ".m td { background: #ffffc8; } .m td.c { background: #ffdc96; }\n"
    ".l td { background: #ffc8c8; } .r td { background: #c8ffc8; }\n"
    ".m td.n, .l td.n, .r td.n { background: #f5f5f5; }\n"
    "del { color: #7a1f00; } ins { color: #004d1a; }\n";

std::string_view rowClass(TableRowStatus status)
{
    constexpr std::string_view classes[] = {"", "m", "l", "r"};
    return classes[size_t(status)];
}

void writeNumber(OutputBuffer &page, qint32 row)
{
    page << "<td class=\"n\">";
    if (row >= 0)
        page << qint64(row) + 1;
    page << "</td>";
}

void writeValue(OutputBuffer &page, std::string_view open, std::string_view value, std::string_view close)
{
    page << open;
    appendHtmlEscaped(page.bytes(), value);
    page << close;
}

void writeCell(OutputBuffer &page, CellCursor &cells)
{
    if (cells.status() == TableCellStatus::Modified) {
        writeValue(page, "<td class=\"c\"><del>", cells.value(Side::Left), "</del> ");
        writeValue(page, "<ins>", cells.value(Side::Right), "</ins></td>");
    } else {
        const Side side = cells.status() == TableCellStatus::RightOnly ? Side::Right : Side::Left;
        writeValue(page, "<td>", cells.value(side), "</td>");
    }
}

/// Calls `write` for every row that differs; false when cancelled.
template <typename Write>
bool forEachDifference(const TableAlignment &alignment, const CancelFlag &cancel, Write write)
{
    for (size_t index = 0; index < alignment.rows.size(); ++index) {
        if (index % rowsPerLook == 0 && cancel.isCancelled())
            return false;
        if (alignment.rows[index].status != TableRowStatus::Same)
            write(alignment.rows[index]);
    }
    return true;
}

std::string_view changeName(TableRowStatus status)
{
    constexpr std::string_view names[] = {"same", "modified", "left only", "right only"};
    return names[size_t(status)];
}

void writeCsvRow(OutputBuffer &csv, const TableAlignment &alignment, const AlignedTableRow &row, Side side)
{
    csv << changeName(row.status) << (side == Side::Left ? ",left," : ",right,") << qint64(row.row(side)) + 1;
    for (CellCursor cells(alignment, row); cells.next();) {
        csv << ',';
        appendCsvField(csv.bytes(), cells.value(side));
    }
    csv << '\n';
}

} // namespace

bool writeTableReport(QIODevice &device, const TableAlignment &alignment, const TableReportLabels &labels,
                      const QDateTime &time, const CancelFlag &cancel)
{
    OutputBuffer page(device);
    page << "<!DOCTYPE html>\n<html>\n<head>\n<meta charset=\"utf-8\">\n";
    writeHtmlElement(page, "<title>", labels.title, "</title>\n<style>\n");
    page << styleSheet << "</style>\n</head>\n<body>\n";
    writeHtmlElement(page, "<h1>", labels.title, "</h1>\n");
    writeHtmlElement(page, "<div class=\"info\">", labels.left, "<br>");
    writeHtmlElement(page, "", labels.right, "<br>");
    writeHtmlElement(page, "", labels.generatedAt, ": ");
    writeHtmlElement(page, "", time.toString(u"yyyy-MM-dd hh:mm:ss"), "</div>\n");
    writeHtmlElement(page, "<div class=\"summary\">", labels.summary, "</div>\n");
    if (!labels.rules.isEmpty())
        writeHtmlElement(page, "<div class=\"summary\">", labels.rules, "</div>\n");
    page << "<table>\n";
    writeHtmlElement(page, "<tr><th>", labels.leftRow, "</th>");
    writeHtmlElement(page, "<th>", labels.rightRow, "</th>");
    for (qint32 column = 0; column < alignment.columns.count(); ++column)
        writeHtmlElement(page, "<th>", alignment.columns.name(column), "</th>");
    page << "</tr>\n";
    const bool whole = forEachDifference(alignment, cancel, [&](const AlignedTableRow &row) {
        page << "<tr class=\"" << rowClass(row.status) << "\">";
        writeNumber(page, row.left);
        writeNumber(page, row.right);
        for (CellCursor cells(alignment, row); cells.next();)
            writeCell(page, cells);
        page << "</tr>\n";
    });
    page << "</table>\n</body>\n</html>\n";
    return whole && page.finish();
}

bool writeTableCsv(QIODevice &device, const TableAlignment &alignment, const CancelFlag &cancel)
{
    OutputBuffer csv(device);
    csv << "change,side,row";
    for (qint32 column = 0; column < alignment.columns.count(); ++column) {
        const QByteArray name = alignment.columns.name(column).toUtf8();
        csv << ',';
        appendCsvField(csv.bytes(), {name.constData(), size_t(name.size())});
    }
    csv << '\n';
    const bool whole = forEachDifference(alignment, cancel, [&](const AlignedTableRow &row) {
        if (row.left >= 0)
            writeCsvRow(csv, alignment, row, Side::Left);
        if (row.right >= 0)
            writeCsvRow(csv, alignment, row, Side::Right);
    });
    return whole && csv.finish();
}

void appendCsvField(QByteArray &csv, std::string_view value, char delimiter)
{
    const char special[] = {delimiter, '"', '\n', '\r'};
    const bool quoted = value.find_first_of(std::string_view(special, sizeof special)) != std::string_view::npos;
    if (!quoted) {
        csv.append(value.data(), qsizetype(value.size()));
        return;
    }
    csv.append('"');
    for (const char byte : value) {
        if (byte == '"')
            csv.append('"');
        csv.append(byte);
    }
    csv.append('"');
}

} // namespace velmora
