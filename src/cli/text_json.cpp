#include "cli/text_json.h"

#include "text/engine/line_diff_engine.h"

namespace velmora::cli {

namespace {

constexpr qsizetype rowsAtOnce = 1024;

void writeString(OutputBuffer &output, const QString &text)
{
    static constexpr char hex[] = "0123456789abcdef";
    const QByteArray utf8 = text.toUtf8();
    const std::string_view view(utf8.constData(), size_t(utf8.size()));
    output << '"';
    size_t written = 0;
    for (size_t at = 0; at < view.size(); ++at) {
        const char byte = view[at];
        const auto code = static_cast<unsigned char>(byte);
        if (code >= 0x20 && byte != '"' && byte != '\\')
            continue;
        output << view.substr(written, at - written) << '\\';
        if (byte == '"' || byte == '\\')
            output << byte;
        else if (byte == '\t')
            output << 't';
        else
            output << "u00" << hex[code >> 4] << hex[code & 0xF];
        written = at + 1;
    }
    output << view.substr(written) << '"';
}

void writeSide(OutputBuffer &output, std::string_view name, const TextInput &input)
{
    output << '"' << name << "\":{\"path\":";
    writeString(output, input.path);
    output << ",\"encoding\":";
    writeString(output, input.text.encoding.name());
    output << ",\"lineEnds\":";
    writeString(output, lineEndStyleName(input.text.lineEnds));
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
    writeString(output, row.leftText);
    output << ",\"rightText\":";
    writeString(output, row.rightText);
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
