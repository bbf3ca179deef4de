#include "filetypes/table/engine/table_proposal.h"

#include "filetypes/table/engine/table_keys.h"

#include <algorithm>
#include <unordered_set>
#include <vector>

namespace velmora {

namespace {

constexpr qint32 rowsLookedAt = 2000;
constexpr qint32 columnsLookedAt = 12; // keys stand in front
constexpr qint32 fewestRows = 3;       // of which hardly anything follows

struct Sample {
    std::unordered_set<std::string_view> values;
    qint32 rows = 0;
    bool hasEmpty = false;
};

Sample sampleOf(const TextLines &keys)
{
    Sample sample;
    sample.rows = qint32(keys.count());
    for (qsizetype row = 0; row < keys.count(); ++row) {
        sample.hasEmpty = sample.hasEmpty || keys.line(row).empty();
        sample.values.insert(keys.line(row));
    }
    return sample;
}

/// One in a hundred may stand twice: duplicates are what a person wants to be told of.
bool isNearlyUnique(const Sample &sample)
{
    return !sample.hasEmpty && sample.rows >= fewestRows &&
           qint64(sample.values.size()) * 100 >= qint64(sample.rows) * 99;
}

/// The whole lines among the first bytes.
TextLines beginningOf(const TextLines &text)
{
    constexpr std::size_t bytesLookedAt = 64 * 1024;
    std::string_view bytes = text.bytes().substr(0, bytesLookedAt);
    if (bytes.size() == bytesLookedAt)
        bytes = bytes.substr(0, bytes.rfind('\n') + 1);
    return TextLines::split(QByteArray(bytes.data(), qsizetype(bytes.size())));
}

/// How many fields each of the first rows has; 0 when they do not have the same number.
qint32 commonFields(const TextLines &text, QChar delimiter)
{
    constexpr qint32 rowsToCount = 30;
    const TableText table(text, delimiter);
    qint32 common = 0;
    for (qint32 row = 0; row < std::min(rowsToCount, table.rowCount()); ++row) {
        qint32 count = 0;
        for (FieldCursor cursor = table.fields(row); cursor.next();)
            ++count;
        if (row > 0 && count != common)
            return 0;
        common = count;
    }
    return common;
}

} // namespace

bool hasLongerRows(const TableText &table, qint32 columns)
{
    for (qint32 row = 1; row < std::min(rowsLookedAt, table.rowCount()); ++row) {
        qint32 field = 0;
        for (FieldCursor cursor = table.fields(row); cursor.next(); ++field) {
            if (field >= columns && !cursor.field().empty())
                return true;
        }
    }
    return false;
}

QChar proposedDelimiter(const TextLines &left, const TextLines &right, QChar delimiter)
{
    std::vector<TextLines> samples;
    for (const TextLines &text : {left, right}) {
        if (!text.isEmpty())
            samples.push_back(beginningOf(text));
    }
    const auto cutsAll = [&samples](QChar by, auto isGood) {
        return std::all_of(samples.begin(), samples.end(),
                           [&](const TextLines &sample) { return isGood(commonFields(sample, by)); });
    };
    if (samples.empty() || !cutsAll(delimiter, [](qint32 fields) { return fields <= 1; }))
        return {};
    const auto best = std::find_if(usualDelimiters.begin(), usualDelimiters.end(), [&](QChar other) {
        return cutsAll(other, [](qint32 fields) { return fields >= 2; });
    });
    return best == usualDelimiters.end() ? QChar() : *best;
}

qint32 proposedKey(const TableText &left, const TableText &right, qint32 columns, const CancelFlag &cancel)
{
    for (qint32 column = 0; column < std::min(columns, columnsLookedAt) && !cancel.isCancelled(); ++column) {
        const TextLines leftKeys = rowKeys(left, 1, rowsLookedAt, {{column}}, cancel);
        const TextLines rightKeys = rowKeys(right, 1, rowsLookedAt, {{column}}, cancel);
        const Sample leftSample = sampleOf(leftKeys);
        const Sample rightSample = sampleOf(rightKeys);
        if (!isNearlyUnique(leftSample) || !isNearlyUnique(rightSample))
            continue;
        const auto common = std::count_if(leftSample.values.begin(), leftSample.values.end(),
                                          [&](std::string_view value) { return rightSample.values.contains(value); });
        if (common * 2 >= std::min(leftSample.rows, rightSample.rows))
            return column;
    }
    return -1;
}

} // namespace velmora
