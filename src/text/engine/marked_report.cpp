#include "text/engine/marked_report.h"

#include "core/html.h"
#include "core/line_ends.h"
#include "core/output_buffer.h"
#include "text/engine/line_marks.h"

#include <QIODevice>

#include <algorithm>

namespace velmora {

namespace {

constexpr qsizetype rowsAtOnce = 1024;

// Beyond this, marks take too long to find, and say little: a report has thousands of lines.
constexpr qint64 cellsAtMost = 4'000'000;

QByteArray colourName(ReportColour colour)
{
    return '#' + QByteArray::number(colour, 16).rightJustified(6, '0');
}

QByteArray styleSheet(const ReportColours &colours)
{
    const auto rule = [](const char *selector, const QByteArray &declarations) {
        return QByteArray(selector) + " { " + declarations + " }\n";
    };
    const auto behind = [](ReportColour colour) { return "background: " + colourName(colour) + ';'; };
    const QByteArray edge = "1px solid " + colourName(colours.rule) + ';';
    return rule("body", "font: 12px 'Consolas', 'Courier New', monospace; margin: 20px; color: " +
                            colourName(colours.text) + "; " + behind(colours.background)) +
           rule("h1, .info, .summary, th", "font-family: sans-serif;") + rule("h1", "font-size: 18px;") +
           rule(".info, .summary", "font-size: 13px; margin: 12px 0;") +
           rule("table", "border-collapse: collapse; width: 100%; table-layout: fixed;") +
           rule("th", "padding: 6px 8px; text-align: left; border: " + edge + ' ' + behind(colours.gutter)) +
           rule("td", "padding: 1px 6px; border: " + edge +
                          " white-space: pre-wrap; word-break: break-all; vertical-align: top;") +
           rule(".ln",
                "width: 50px; text-align: right; color: " + colourName(colours.muted) + "; " + behind(colours.gutter)) +
           rule(".nav", "width: 28px; text-align: center; " + behind(colours.gutter)) +
           rule(".nav a", "text-decoration: none; color: " + colourName(colours.link) + ';') +
           rule("tr:target", "outline: 2px solid " + colourName(colours.link) + ';') +
           rule(".gap td", "text-align: center; color: " + colourName(colours.muted) + "; " + behind(colours.gutter)) +
           rule(".add", behind(colours.added)) + rule(".del", behind(colours.removed)) +
           rule(".mod", behind(colours.modified)) + rule(".m", behind(colours.mark)) +
           rule(".n", behind(colours.minorMark));
}

QString endName(LineEnd end)
{
    return end == LineEnd::None ? QStringLiteral("\u2205") : lineEndName(end);
}

/// Consecutive rows [first, end).
struct Rows {
    qsizetype first = 0;
    qsizetype end = 0;
};

/// The differences in order. Of rows that differ in their line ends alone, the first of each run is one.
std::vector<Rows> differencesOf(const ReportedTexts &texts)
{
    std::vector<Rows> found;
    auto ends = texts.lineEnds.begin();
    bool endsDifferBefore = false;
    for (qsizetype row = 0; row < texts.rows.size(); ++row) {
        const bool endsDiffer = ends != texts.lineEnds.end() && ends->row == row;
        if (endsDiffer)
            ++ends;
        const bool isText = texts.rows[row].kind != Equal;
        if (isText && !found.empty() && found.back().end == row && texts.rows[row - 1].kind != Equal)
            ++found.back().end;
        else if (isText || (endsDiffer && !endsDifferBefore))
            found.push_back({row, row + 1});
        endsDifferBefore = endsDiffer;
    }
    return found;
}

class MarkedReport {
public:
    MarkedReport(QIODevice &device, const ReportedTexts &texts, const MarkedReportForm &form, const CancelFlag &cancel)
        : m_page(device), m_texts(texts), m_form(form), m_cancel(cancel), m_differences(differencesOf(texts))
    {}

    bool write(const TextReportLabels &labels, const QDateTime &time)
    {
        writeHead(labels, time);
        qsizetype written = 0;
        for (size_t next = 0; next < m_differences.size() && m_form.context;) {
            // Differences whose contexts meet stand in one part.
            const qsizetype first = std::max(written, m_differences[next].first - *m_form.context);
            qsizetype end = m_differences[next].end + *m_form.context;
            while (++next < m_differences.size() && m_differences[next].first - *m_form.context <= end)
                end = m_differences[next].end + *m_form.context;
            writeGap(first - written);
            written = std::min(end, m_texts.rows.size());
            writeRows({first, written});
        }
        if (m_form.context)
            writeGap(m_texts.rows.size() - written);
        else
            writeRows({0, m_texts.rows.size()});
        writeReportEnd(m_page, labels);
        return m_page.finish() && !m_cancel.isCancelled();
    }

private:
    void writeHead(const TextReportLabels &labels, const QDateTime &time)
    {
        m_page << "<!DOCTYPE html>\n<html>\n<head>\n<meta charset=\"utf-8\">\n";
        writeHtmlElement(m_page, "<title>", labels.title, "</title>\n<style>\n");
        m_page.bytes() += styleSheet(m_form.colours);
        m_page << "</style>\n</head>\n<body>\n";
        writeReportHeading(m_page, labels, time);
        writeHtmlElement(m_page, "<table>\n<tr><th class=\"nav\"></th><th class=\"ln\">#</th><th>", labels.leftColumn,
                         "</th>");
        writeHtmlElement(m_page, "<th class=\"ln\">#</th><th>", labels.rightColumn, "</th></tr>\n");
    }

    void writeGap(qsizetype rows)
    {
        if (rows > 0)
            writeHtmlElement(m_page, "<tr class=\"gap\"><td colspan=\"5\">", m_form.folded.arg(rows), "</td></tr>\n");
    }

    void writeRows(Rows rows)
    {
        for (qsizetype row = rows.first; row < rows.end && !m_cancel.isCancelled(); row += rowsAtOnce) {
            const qsizetype count = std::min(rowsAtOnce, rows.end - row);
            const QList<DiffLine> lines =
                withTexts(m_texts.rows.mid(row, count), m_texts.left, m_texts.right, m_texts.options);
            for (qsizetype k = 0; k < count; ++k)
                writeRow(row + k, lines[k]);
        }
    }

    void writeRow(qsizetype row, const DiffLine &line)
    {
        const LineEndRow *ends = endsOf(row);
        m_page << "<tr class=\"" << reportRowClass(line.kind) << '"';
        const bool startsDifference = m_next < m_differences.size() && m_differences[m_next].first == row;
        if (startsDifference)
            m_page << " id=\"d" << qint64(++m_next) << '"';
        m_page << "><td class=\"nav\">";
        if (startsDifference) {
            writeLink(m_next - 1, m_form.previous, "&uarr;");
            writeLink(m_next + 1, m_form.next, "&darr;");
        }
        m_page << "</td>";
        QList<LineMark> leftMarks;
        QList<LineMark> rightMarks;
        if (line.kind == Modified && qint64(line.leftText.size()) * line.rightText.size() <= cellsAtMost) {
            leftMarks = marksIn(line.leftText, line.rightText);
            rightMarks = marksIn(line.rightText, line.leftText);
        }
        writeSide(line.leftLine, line.leftText, leftMarks, ends ? &ends->left : nullptr);
        writeSide(line.rightLine, line.rightText, rightMarks, ends ? &ends->right : nullptr);
        m_page << "</tr>\n";
    }

    /// Nothing where there is no such difference; they are counted from 1.
    void writeLink(size_t difference, const QString &title, std::string_view arrow)
    {
        if (difference < 1 || difference > m_differences.size())
            return;
        m_page << "<a href=\"#d" << qint64(difference);
        writeHtmlElement(m_page, "\" title=\"", title, "\">");
        m_page << arrow << "</a>";
    }

    void writeSide(qint32 number, const QString &text, const QList<LineMark> &marks, const LineEnd *end)
    {
        m_page << "<td class=\"ln\">";
        if (number >= 1)
            m_page << qint64(number);
        m_page << "</td><td>";
        qsizetype written = 0;
        for (const LineMark &mark : marks) {
            // A mark takes in the whole of a character of two units.
            const qsizetype first = std::max<qsizetype>(written, mark.start - text.at(mark.start).isLowSurrogate());
            const qsizetype behind = mark.end() + text.at(mark.end() - 1).isHighSurrogate();
            writeHtmlElement(m_page, "", text.mid(written, first - written), "");
            writeHtmlElement(m_page, mark.minor ? "<span class=\"n\">" : "<span class=\"m\">",
                             text.mid(first, behind - first), "</span>");
            written = behind;
        }
        writeHtmlElement(m_page, "", text.mid(written), "");
        if (end)
            writeHtmlElement(m_page, " <span class=\"m\">", endName(*end), "</span>");
        m_page << "</td>";
    }

    [[nodiscard]] QList<LineMark> marksIn(const QString &own, const QString &other) const
    {
        return lineMarks(own, intraLineChanges(other, own, m_cancel), other, m_rules, m_cancel);
    }

    [[nodiscard]] const LineEndRow *endsOf(qsizetype row) const
    {
        const auto found = std::lower_bound(m_texts.lineEnds.begin(), m_texts.lineEnds.end(), row,
                                            [](const LineEndRow &at, qsizetype wanted) { return at.row < wanted; });
        return found != m_texts.lineEnds.end() && found->row == row ? &*found : nullptr;
    }

    OutputBuffer m_page;
    const ReportedTexts &m_texts;
    const MarkedReportForm &m_form;
    const CancelFlag &m_cancel;
    const KeyRules m_rules = KeyRules::of(m_texts.options);
    const std::vector<Rows> m_differences;
    size_t m_next = 0; ///< differences written so far
};

} // namespace

bool writeMarkedReport(QIODevice &device, const ReportedTexts &texts, const TextReportLabels &labels,
                       const MarkedReportForm &form, const QDateTime &time, const CancelFlag &cancel)
{
    return MarkedReport(device, texts, form, cancel).write(labels, time);
}

} // namespace velmora
