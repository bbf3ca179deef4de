#include "cli/text_json.h"

#include "cli/json_text.h"
#include "text/engine/line_diff_engine.h"

namespace velmora::cli {

namespace {

constexpr qsizetype rowsAtOnce = 1024;

void writeSide(OutputBuffer &output, std::string_view name, const TextInput &input)
{
    output << '"' << name << "\":{\"path\":";
    writeJsonString(output, input.path);
    output << ",\"encoding\":";
    writeJsonString(output, input.text.encoding.name());
    output << ",\"lineEnds\":";
    writeJsonString(output, lineEndStyleName(input.text.lineEnds));
    const TextLines &lines = input.text.lines;
    const LineEnd lastEnd = lines.isEmpty() ? LineEnd::None : lines.lineEnd(lines.count() - 1);
    const bool endsWithFeed = lastEnd == LineEnd::Lf || lastEnd == LineEnd::CrLf;
    output << ",\"lastLineFeed\":" << (endsWithFeed ? "true" : "false") << ",\"lines\":" << qint64(lines.count())
           << ",\"undecodable\":" << input.text.undecodable << '}';
}

void writeCounts(OutputBuffer &output, const DiffCounts &counts, const LineEndCounts &ends)
{
    output << "\"counts\":{\"differences\":" << counts.differences() << ",\"added\":" << counts.added
           << ",\"removed\":" << counts.removed << ",\"modified\":" << counts.modified
           << ",\"leftLines\":" << counts.leftLines << ",\"rightLines\":" << counts.rightLines
           << ",\"lineEnds\":" << ends.rows
           << ",\"missingLastLineFeeds\":" << qint64(ends.lastFeedMissesLeft) + qint64(ends.lastFeedMissesRight) << '}';
}

std::string_view nameOf(LineEnd end)
{
    switch (end) {
    case LineEnd::None:
        break;
    case LineEnd::Lf:
        return "LF";
    case LineEnd::CrLf:
        return "CRLF";
    case LineEnd::Cr:
        return "CR";
    }
    return "";
}

/// `ends` is null for lines that end the same.
void writeRow(OutputBuffer &output, const DiffLine &row, const LineEndRow *ends)
{
    output << "{\"kind\":" << qint64(row.kind) << ",\"leftLine\":" << qint64(row.leftLine)
           << ",\"rightLine\":" << qint64(row.rightLine) << ",\"leftText\":";
    writeJsonString(output, row.leftText);
    output << ",\"rightText\":";
    writeJsonString(output, row.rightText);
    if (ends)
        output << ",\"leftEnd\":\"" << nameOf(ends->left) << "\",\"rightEnd\":\"" << nameOf(ends->right) << '"';
    output << '}';
}

} // namespace

void writeTextJson(OutputBuffer &output, const TextInput &left, const TextInput &right, const QList<AlignedRow> &rows,
                   const std::vector<LineEndRow> &lineEnds, const TextSessionOptions &options)
{
    output << "{\n";
    writeSide(output, "left", left);
    output << ",\n";
    writeSide(output, "right", right);
    output << ",\n\"binary\":false,\n";
    writeCounts(output, countRows(rows), countLineEnds(lineEnds));
    output << ",\n\"rows\":[";
    std::string_view separator = "\n";
    auto ends = lineEnds.begin();
    for (qsizetype index = 0; index < rows.size(); index += rowsAtOnce) {
        const QList<DiffLine> texts =
            withTexts(rows.mid(index, rowsAtOnce), left.text.lines, right.text.lines, options);
        for (qsizetype k = 0; k < texts.size(); ++k) {
            const bool hasEnds = ends != lineEnds.end() && ends->row == index + k;
            output << separator;
            writeRow(output, texts[k], hasEnds ? &*ends++ : nullptr);
            separator = ",\n";
        }
    }
    output << "\n]\n}\n";
}

void writeBinaryJson(OutputBuffer &output, const TextInput &left, const TextInput &right)
{
    output << "{\n";
    writeSide(output, "left", left);
    output << ",\n";
    writeSide(output, "right", right);
    output << ",\n\"binary\":true,\n\"identical\":" << (left.raw == right.raw ? "true" : "false") << "\n}\n";
}

} // namespace velmora::cli
