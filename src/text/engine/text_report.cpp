#include "text/engine/text_report.h"

#include "core/html.h"
#include "text/engine/line_diff_engine.h"

#include <QIODevice>

#include <string_view>

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

std::string_view rowClass(DiffLineKind kind)
{
    switch (kind) {
    case Equal:
        break;
    case Added:
        return "add";
    case Removed:
        return "del";
    case Modified:
        return "mod";
    }
    return "eq";
}

} // namespace

TextReportWriter::TextReportWriter(QIODevice &device) : m_page(device) {}

void TextReportWriter::begin(const TextReportLabels &labels, const QDateTime &time)
{
    m_page << "<!DOCTYPE html>\n<html>\n<head>\n<meta charset=\"utf-8\">\n";
    writeHtmlElement(m_page, "<title>", labels.title, "</title>\n");
    m_page << "<style>\n" << styleSheet << "</style>\n</head>\n<body>\n";
    writeHtmlElement(m_page, "<h1>", labels.heading, "</h1>\n");
    writeHtmlElement(m_page, "<div class=\"info\">", labels.left, "<br>");
    writeHtmlElement(m_page, "", labels.right, "<br>");
    writeHtmlElement(m_page, "", labels.generatedAt, ": ");
    writeHtmlElement(m_page, "", time.toString(u"yyyy-MM-dd hh:mm:ss"), "</div>\n");
    writeHtmlElement(m_page, "<table>\n<tr><th class=\"ln\">#</th><th>", labels.leftColumn, "</th>");
    writeHtmlElement(m_page, "<th class=\"ln\">#</th><th>", labels.rightColumn, "</th></tr>\n");
}

void TextReportWriter::addRow(const DiffLine &row)
{
    m_page << "<tr class=\"" << rowClass(row.kind) << "\">";
    addSide(row.leftLine, row.leftText);
    addSide(row.rightLine, row.rightText);
    m_page << "</tr>\n";
}

void TextReportWriter::addSide(qint32 line, const QString &text)
{
    const bool present = line >= 1;
    m_page << "<td class=\"ln\">";
    if (present)
        m_page << qint64(line);
    else
        m_page << noBreakSpace;
    m_page << "</td><td>";
    if (present || !text.isEmpty())
        writeHtmlElement(m_page, {}, text, {});
    else
        m_page << noBreakSpace;
    m_page << "</td>";
}

bool TextReportWriter::finish(const TextReportLabels &labels)
{
    m_page << "</table>\n";
    writeHtmlElement(m_page, "<div class=\"summary\">", labels.summary, "</div>\n");
    for (const QString &sentence : labels.lineEnds)
        writeHtmlElement(m_page, "<div class=\"summary\">", sentence, "</div>\n");
    m_page << "</body>\n</html>\n";
    return m_page.finish();
}

bool writeTextReport(QIODevice &device, const QList<DiffLine> &rows, const TextReportLabels &labels,
                     const QDateTime &time, const CancelFlag &cancel)
{
    TextReportWriter writer(device);
    writer.begin(labels, time);
    for (qsizetype index = 0; index < rows.size(); ++index) {
        if (index % rowsAtOnce == 0 && cancel.isCancelled())
            return false;
        writer.addRow(rows[index]);
    }
    return writer.finish(labels);
}

bool writeTextReport(QIODevice &device, const QList<AlignedRow> &rows, const TextLines &left, const TextLines &right,
                     const TextSessionOptions &options, const TextReportLabels &labels, const QDateTime &time,
                     const CancelFlag &cancel)
{
    TextReportWriter writer(device);
    writer.begin(labels, time);
    for (qsizetype index = 0; index < rows.size(); index += rowsAtOnce) {
        if (cancel.isCancelled())
            return false;
        const QList<DiffLine> texts = withTexts(rows.mid(index, rowsAtOnce), left, right, options);
        for (const DiffLine &row : texts)
            writer.addRow(row);
    }
    return writer.finish(labels);
}

} // namespace velmora
