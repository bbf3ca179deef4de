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

} // namespace velmora
