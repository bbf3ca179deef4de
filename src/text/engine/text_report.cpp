#include "text/engine/text_report.h"

#include "core/html.h"
#include "core/output_buffer.h"
#include "text/engine/line_diff_engine.h"

#include <QIODevice>

namespace velmora {

namespace {

constexpr qsizetype rowsAtOnce = 1024;

constexpr std::string_view styleSheet =
    "body { font-family: 'Consolas', 'Courier New', monospace; font-size: 12px; margin: 20px; }\n"
    "h1 { font-family: sans-serif; font-size: 18px; color: #333; }\n"
    ".info { font-family: sans-serif; font-size: 13px; color: #555; margin-bottom: 16px; }\n"
    "table { border-collapse: collapse; width: 100%; table-layout: fixed; }\n"
    "th { background: #e8e8e8; padding: 6px 8px; text-align: left; border: 1px solid #ccc; font-family: sans-serif; }\n"
    "td { padding: 1px 6px; border: 1px solid #ddd; white-space: pre-wrap; word-break: break-all; vertical-align: top; "
    "}\n"
    ".ln { width: 50px; text-align: right; color: #888; background: #f5f5f5; }\n"
    ".eq { background: #fff; }\n"
    ".add { background: #dff0d8; }\n"
    ".del { background: #f2dede; }\n"
    ".mod { background: #d9edf7; }\n"
    ".summary { font-family: sans-serif; margin-top: 12px; font-size: 13px; color: #333; }\n";

constexpr std::string_view noBreakSpace = "&nbsp;";

void writeSide(OutputBuffer &page, qint32 line, const QString &text)
{
    const bool present = line >= 1;
    page << "<td class=\"ln\">";
    if (present)
        page << qint64(line);
    else
        page << noBreakSpace;
    page << "</td><td>";
    if (present || !text.isEmpty())
        writeHtmlElement(page, {}, text, {});
    else
        page << noBreakSpace;
    page << "</td>";
}

} // namespace

std::string_view reportRowClass(DiffLineKind kind)
{
    constexpr std::string_view classes[] = {"eq", "add", "del", "mod"};
    return classes[kind];
}

void writeReportHeading(OutputBuffer &page, const TextReportLabels &labels, const QDateTime &time)
{
    writeHtmlElement(page, "<h1>", labels.heading, "</h1>\n");
    writeHtmlElement(page, "<div class=\"info\">", labels.left, "<br>");
    writeHtmlElement(page, "", labels.right, "<br>");
    writeHtmlElement(page, "", labels.generatedAt, ": ");
    writeHtmlElement(page, "", time.toString(u"yyyy-MM-dd hh:mm:ss"), "</div>\n");
}

void writeReportEnd(OutputBuffer &page, const TextReportLabels &labels)
{
    page << "</table>\n";
    writeHtmlElement(page, "<div class=\"summary\">", labels.summary, "</div>\n");
    for (const QString &sentence : labels.lineEnds)
        writeHtmlElement(page, "<div class=\"summary\">", sentence, "</div>\n");
    page << "</body>\n</html>\n";
}

bool writeTextReport(QIODevice &device, const ReportedTexts &texts, const TextReportLabels &labels,
                     const QDateTime &time, const CancelFlag &cancel)
{
    OutputBuffer page(device);
    page << "<!DOCTYPE html>\n<html>\n<head>\n<meta charset=\"utf-8\">\n";
    writeHtmlElement(page, "<title>", labels.title, "</title>\n");
    page << "<style>\n" << styleSheet << "</style>\n</head>\n<body>\n";
    writeReportHeading(page, labels, time);
    writeHtmlElement(page, "<table>\n<tr><th class=\"ln\">#</th><th>", labels.leftColumn, "</th>");
    writeHtmlElement(page, "<th class=\"ln\">#</th><th>", labels.rightColumn, "</th></tr>\n");
    for (qsizetype index = 0; index < texts.rows.size(); index += rowsAtOnce) {
        if (cancel.isCancelled())
            return false;
        const QList<DiffLine> lines =
            withTexts(texts.rows.mid(index, rowsAtOnce), texts.left, texts.right, texts.options);
        for (const DiffLine &row : lines) {
            page << "<tr class=\"" << reportRowClass(row.kind) << "\">";
            writeSide(page, row.leftLine, row.leftText);
            writeSide(page, row.rightLine, row.rightText);
            page << "</tr>\n";
        }
    }
    writeReportEnd(page, labels);
    return page.finish();
}

} // namespace velmora
