#include "filetypes/table/engine/table_proposal.h"

#include "filetypes/table/engine/table_keys.h"

#include <algorithm>
#include <unordered_set>

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

} // namespace

qint32 proposedKey(const TableText &left, const TableText &right, qint32 columns, const CancelFlag &cancel)
{
    for (qint32 column = 0; column < std::min(columns, columnsLookedAt) && !cancel.isCancelled(); ++column) {
        const TextLines leftKeys = rowKeys(left, 1, rowsLookedAt, {column}, cancel);
        const TextLines rightKeys = rowKeys(right, 1, rowsLookedAt, {column}, cancel);
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
