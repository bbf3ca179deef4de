#pragma once

#include "merge/model/merge_part.h"

#include <QJsonArray>
#include <QJsonObject>

namespace velmora {

/// The parts of a merge as a recovery record holds them: one array of numbers for each, with its kind, its mark, its
/// choice, whether a person chose, how many lines it has on the left, in the base, on the right and in the result, and
/// how many of the versions were left out.
[[nodiscard]] QJsonArray toJson(const std::vector<MergePart> &parts);

/// The parts in such an array; one that is not in order ends them. Whether they fit any texts is for the caller to see.
[[nodiscard]] std::vector<MergePart> partsFromJson(const QJsonArray &array);

/// Consecutive lines of a result that come from one text, or were all written by hand.
struct ResultRun {
    std::optional<MergeSource> source; ///< nothing for what was written by hand
    LineRange lines;                   ///< of the source; by hand of no meaning but their number
};

/// Where the lines of a result come from, as a recovery record holds it: an array for each run with its source (3 for
/// what was written by hand), first line and count.
[[nodiscard]] QJsonArray toJson(const MergeTexts &texts, const std::vector<LineRun> &result);

/// The runs in such an array; one that is not in order ends them. Whether they fit any texts is for the caller to see.
[[nodiscard]] std::vector<ResultRun> runsFromJson(const QJsonArray &array);

} // namespace velmora
