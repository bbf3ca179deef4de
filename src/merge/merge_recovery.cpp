#include "merge/merge_recovery.h"

#include <limits>

namespace velmora {

namespace {

constexpr qsizetype resultField = 7;

/// The field as a number from 0 to `most`; nothing when it is none.
std::optional<int> numberAt(const QJsonArray &fields, qsizetype index, int most)
{
    const int number = fields.at(index).toInt(-1);
    return number >= 0 && number <= most ? std::optional(number) : std::nullopt;
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
        fields.append(part.leftOut);
        array.append(fields);
    }
    return array;
}

std::vector<MergePart> partsFromJson(const QJsonArray &array)
{
    constexpr int mostLines = std::numeric_limits<int>::max();
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
        part.leftOut = numberAt(fields, resultField + 1, mostLines).value_or(0);
        for (std::size_t k = 0; k < mergeSourceCount; ++k) {
            const qsizetype count = numberAt(fields, 4 + qsizetype(k), mostLines).value_or(0);
            part.lines[k] = {next[k], count};
            next[k] += count;
        }
        parts.push_back(part);
    }
    return parts;
}

} // namespace velmora
