#include "text/engine/text_report.h"

#include "core/html.h"
#include "text/engine/line_diff_engine.h"

#include <QIODevice>

#include <array>

namespace velmora {

namespace {

constexpr qsizetype flushSize = 256 * 1024;
constexpr qsizetype rowsAtOnce = 1024;

constexpr const char *styleSheet =
    "body { font-family: 'Consolas', 'Courier New', monospace; font-size: 12px; margin: 20px; }\n"
    "h1 { font-family: sans-serif; font-size: 18px; color: #333; }\n"
    ".info { font-family: sans-serif; font-size: 13px; color: #555; margin-bottom: 16px; }\n"
    "table { border-collapse: collapse; width: 100%; table-layout: fixed; }\n"
    "th { background: #e8e8e8; padding: 6px 8px; text-align: left; border: 1px solid #ccc; font-family: sans-serif; }\n"
    "td { padding: 1px 6px; border: 1px solid #ddd; white-space: pre-wrap; word-break: break-all; vertical-align: top; }\n"
    ".ln { width: 50px; text-align: right; color: #888; background: #f5f5f5; }\n"
    ".eq { background: #fff; }\n"
    ".add { background: #dff0d8; }\n"
    ".del { background: #f2dede; }\n"
    ".mod { background: #d9edf7; }\n"
    ".summary { font-family: sans-serif; margin-top: 12px; font-size: 13px; color: #333; }\n";

constexpr const char *noBreakSpace = "&nbsp;";

const char *rowClass(DiffLineKind kind)
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

void appendEscaped(QByteArray &page, const QString &text)
{
    const QByteArray utf8 = text.toUtf8();
    appendHtmlEscaped(page, {utf8.constData(), size_t(utf8.size())});
}

QByteArray escaped(const QString &text)
{
    QByteArray html;
    appendEscaped(html, text);
    return html;
}

} // namespace

TextReportWriter::TextReportWriter(QIODevice &device) : m_device(device)
{
    m_page.reserve(flushSize + flushSize / 4);
}

void TextReportWriter::begin(const TextReportLabels &labels, const QDateTime &time)
{
    m_page += "<!DOCTYPE html>\n<html>\n<head>\n<meta charset=\"utf-8\">\n<title>" + escaped(labels.title) +
              "</title>\n<style>\n" + styleSheet + "</style>\n</head>\n<body>\n";
    m_page += "<h1>" + escaped(labels.heading) + "</h1>\n";
    m_page += "<div class=\"info\">" + escaped(labels.left) + "<br>" + escaped(labels.right) + "<br>" +
              escaped(labels.generatedAt) + ": " + time.toString(u"yyyy-MM-dd hh:mm:ss").toUtf8() + "</div>\n";
    m_page += "<table>\n<tr><th class=\"ln\">#</th><th>" + escaped(labels.leftColumn) +
              "</th><th class=\"ln\">#</th><th>" + escaped(labels.rightColumn) + "</th></tr>\n";
}

void TextReportWriter::addRow(const DiffLine &row)
{
    m_page += "<tr class=\"";
    m_page += rowClass(row.kind);
    m_page += "\">";
    addSide(row.leftLine, row.leftText);
    addSide(row.rightLine, row.rightText);
    m_page += "</tr>\n";
    if (m_page.size() >= flushSize)
        flush();
}

void TextReportWriter::addSide(qint32 line, const QString &text)
{
    const bool present = line >= 1;
    m_page += "<td class=\"ln\">";
    m_page += present ? QByteArray::number(line) : QByteArray(noBreakSpace);
    m_page += "</td><td>";
    if (present || !text.isEmpty())
        appendEscaped(m_page, text);
    else
        m_page += noBreakSpace;
    m_page += "</td>";
}

bool TextReportWriter::finish(const TextReportLabels &labels)
{
    m_page += "</table>\n<div class=\"summary\">" + escaped(labels.summary) + "</div>\n</body>\n</html>\n";
    flush();
    return m_ok;
}

void TextReportWriter::flush()
{
    m_ok = m_ok && m_device.write(m_page) == m_page.size();
    m_page.resize(0);
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
