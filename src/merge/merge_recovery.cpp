#include "merge/merge_recovery.h"

#include <limits>

namespace velmora {

namespace {

constexpr qsizetype resultField = 7;
constexpr int mostLines = std::numeric_limits<int>::max();

/// The field as a number from 0 to `most`; nothing when it is none.
std::optional<int> numberAt(const QJsonArray &fields, qsizetype index, int most)
{
    const int number = fields.at(index).toInt(-1);
    return number >= 0 && number <= most ? std::optional(number) : std::nullopt;
}

/// The lines that a part has left out, each as a source and its number in the part; no more of them behind one that it
/// does not have.
QList<SourceLine> leftOutOf(const MergePart &part, const QJsonArray &array)
{
    QList<SourceLine> lines;
    for (const QJsonValue &value : array) {
        const QJsonArray fields = value.toArray();
        const std::optional<int> source = numberAt(fields, 0, int(MergeSource::Right));
        if (!source)
            break;
        const LineRange &own = part.of(MergeSource(*source));
        const std::optional<int> line = own.count > 0 ? numberAt(fields, 1, int(own.count - 1)) : std::nullopt;
        if (!line)
            break;
        lines.append({MergeSource(*source), own.first + *line});
    }
    return lines;
}

} // namespace

QJsonArray toJson(const std::vector<MergePart> &parts)
{
    QJsonArray array;
    for (const MergePart &part : parts) {
        QJsonArray fields{int(part.kind), int(part.mark), int(part.choice), part.isByPerson ? 1 : 0};
        for (const LineRange &lines : part.lines)
            fields.append(lines.count);
        fields.append(part.resultCount);
        QJsonArray leftOut;
        for (const SourceLine &line : part.leftOut)
            leftOut.append(QJsonArray{int(line.source), line.line - part.of(line.source).first});
        fields.append(leftOut);
        array.append(fields);
    }
    return array;
}

std::vector<MergePart> partsFromJson(const QJsonArray &array)
{
    std::vector<MergePart> parts;
    std::array<qsizetype, mergeSourceCount> next{};
    for (const QJsonValue &value : array) {
        const QJsonArray fields = value.toArray();
        const std::optional<int> kind = numberAt(fields, 0, int(ChunkKind::Conflict));
        const std::optional<int> mark = numberAt(fields, 1, int(ChunkMark::InsertedTwice));
        const std::optional<int> choice = numberAt(fields, 2, int(MergeChoice::LineByLine));
        const std::optional<int> result = numberAt(fields, resultField, mostLines);
        if (!kind || !mark || !choice || !result)
            break;
        MergePart part;
        part.kind = ChunkKind(*kind);
        part.mark = ChunkMark(*mark);
        part.choice = MergeChoice(*choice);
        part.isByPerson = fields.at(3).toInt() == 1;
        part.resultCount = *result;
        for (std::size_t k = 0; k < mergeSourceCount; ++k) {
            const qsizetype count = numberAt(fields, 4 + qsizetype(k), mostLines).value_or(0);
            part.lines[k] = {next[k], count};
            next[k] += count;
        }
        part.leftOut = leftOutOf(part, fields.at(resultField + 1).toArray());
        parts.push_back(part);
    }
    return parts;
}

QJsonArray toJson(const MergeTexts &texts, const std::vector<LineRun> &result)
{
    std::vector<ResultRun> runs;
    for (const LineRun &run : result) {
        const std::optional<SourceLine> origin = texts.originOf(run, 0);
        ResultRun next{{}, {0, run.count}};
        if (origin)
            next = {origin->source, {origin->line, run.count}};
        const bool continues = !runs.empty() && runs.back().source == next.source &&
                               (!next.source || runs.back().lines.end() == next.lines.first);
        if (continues)
            runs.back().lines.count += next.lines.count;
        else
            runs.push_back(next);
    }
    QJsonArray array;
    for (const ResultRun &run : runs)
        array.append(
            QJsonArray{run.source ? int(*run.source) : int(mergeSourceCount), run.lines.first, run.lines.count});
    return array;
}

std::vector<ResultRun> runsFromJson(const QJsonArray &array)
{
    std::vector<ResultRun> runs;
    for (const QJsonValue &value : array) {
        const QJsonArray fields = value.toArray();
        const std::optional<int> source = numberAt(fields, 0, int(mergeSourceCount));
        const std::optional<int> first = numberAt(fields, 1, mostLines);
        const std::optional<int> count = numberAt(fields, 2, mostLines);
        if (!source || !first || !count)
            break;
        ResultRun run{{}, {*first, *count}};
        if (*source < int(mergeSourceCount))
            run.source = MergeSource(*source);
        runs.push_back(run);
    }
    return runs;
}

} // namespace velmora
