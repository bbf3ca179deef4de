#include "cli/text_json.h"

#include "cli/json_writer.h"
#include "core/line_ends.h"
#include "text/engine/line_diff_engine.h"

namespace velmora::cli {

namespace {

constexpr qsizetype rowsAtOnce = 1024;

void writeSide(JsonWriter &json, std::string_view name, const TextInput &input)
{
    const TextLines &lines = input.text.lines;
    const LineEnd lastEnd = lines.isEmpty() ? LineEnd::None : lines.lineEnd(lines.count() - 1);
    json.key(name);
    json.beginObject();
    json.text("path", input.path);
    json.text("encoding", input.text.encoding.name());
    json.text("lineEnds", lineEndStyleName(input.text.lineEnds));
    json.boolean("lastLineFeed", lastEnd == LineEnd::Lf || lastEnd == LineEnd::CrLf);
    json.number("lines", lines.count());
    json.number("undecodable", input.text.undecodable);
    json.endObject();
}

void writeCounts(JsonWriter &json, const DiffCounts &counts, const LineEndCounts &ends)
{
    json.key("counts");
    json.beginObject();
    json.number("differences", counts.differences());
    json.number("added", counts.added);
    json.number("removed", counts.removed);
    json.number("modified", counts.modified);
    json.number("leftLines", counts.leftLines);
    json.number("rightLines", counts.rightLines);
    json.number("lineEnds", ends.rows);
    json.number("missingLastLineFeeds", qint64(ends.lastFeedMissesLeft) + qint64(ends.lastFeedMissesRight));
    json.endObject();
}

/// `ends` is null for lines that end the same.
void writeRow(JsonWriter &json, const DiffLine &row, const LineEndRow *ends)
{
    json.beginObject();
    json.number("kind", row.kind);
    json.number("leftLine", row.leftLine);
    json.number("rightLine", row.rightLine);
    json.text("leftText", row.leftText);
    json.text("rightText", row.rightText);
    if (ends) {
        json.text("leftEnd", lineEndName(ends->left));
        json.text("rightEnd", lineEndName(ends->right));
    }
    json.endObject();
}

} // namespace

void writeTextJson(OutputBuffer &output, const TextInput &left, const TextInput &right, const QList<AlignedRow> &rows,
                   const std::vector<LineEndRow> &lineEnds, const TextSessionOptions &options)
{
    JsonWriter json(output);
    json.beginObject();
    writeSide(json, "left", left);
    writeSide(json, "right", right);
    json.boolean("binary", false);
    writeCounts(json, countRows(rows), countLineEnds(lineEnds));
    json.key("rows");
    json.beginList();
    auto ends = lineEnds.begin();
    for (qsizetype index = 0; index < rows.size(); index += rowsAtOnce) {
        const QList<DiffLine> texts =
            withTexts(rows.mid(index, rowsAtOnce), left.text.lines, right.text.lines, options);
        for (qsizetype k = 0; k < texts.size(); ++k) {
            const bool hasEnds = ends != lineEnds.end() && ends->row == index + k;
            writeRow(json, texts[k], hasEnds ? &*ends++ : nullptr);
        }
    }
    json.endList();
    json.endObject();
}

void writeBinaryJson(OutputBuffer &output, const TextInput &left, const TextInput &right)
{
    JsonWriter json(output);
    json.beginObject();
    writeSide(json, "left", left);
    writeSide(json, "right", right);
    json.boolean("binary", true);
    json.boolean("identical", left.raw == right.raw);
    json.endObject();
}

} // namespace velmora::cli
