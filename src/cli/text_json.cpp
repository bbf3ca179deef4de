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
    output << ",\"lines\":" << qint64(input.text.lines.count()) << ",\"undecodable\":" << input.text.undecodable << '}';
}

void writeCounts(OutputBuffer &output, const DiffCounts &counts)
{
    output << "\"counts\":{\"differences\":" << counts.differences() << ",\"added\":" << counts.added
           << ",\"removed\":" << counts.removed << ",\"modified\":" << counts.modified
           << ",\"leftLines\":" << counts.leftLines << ",\"rightLines\":" << counts.rightLines << '}';
}

void writeRow(OutputBuffer &output, const DiffLine &row)
{
    output << "{\"kind\":" << qint64(row.kind) << ",\"leftLine\":" << qint64(row.leftLine)
           << ",\"rightLine\":" << qint64(row.rightLine) << ",\"leftText\":";
    writeJsonString(output, row.leftText);
    output << ",\"rightText\":";
    writeJsonString(output, row.rightText);
    output << '}';
}

} // namespace

void writeTextJson(OutputBuffer &output, const TextInput &left, const TextInput &right, const QList<AlignedRow> &rows,
                   const TextLines &leftLines, const TextLines &rightLines, const TextSessionOptions &options)
{
    output << "{\n";
    writeSide(output, "left", left);
    output << ",\n";
    writeSide(output, "right", right);
    output << ",\n\"binary\":false,\n";
    writeCounts(output, countRows(rows));
    output << ",\n\"rows\":[";
    std::string_view separator = "\n";
    for (qsizetype index = 0; index < rows.size(); index += rowsAtOnce) {
        const QList<DiffLine> texts = withTexts(rows.mid(index, rowsAtOnce), leftLines, rightLines, options);
        for (const DiffLine &row : texts) {
            output << separator;
            writeRow(output, row);
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
