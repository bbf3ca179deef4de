#pragma once

#include "merge/model/merge_part.h"

#include <QByteArray>

namespace velmora {

/// What stands behind the markers, UTF-8.
struct MarkerLabels {
    QByteArray left;
    QByteArray base;
    QByteArray right;
};

/// `result` with a block of markers, base included, in the place of each open conflict.
[[nodiscard]] TextLines withConflictMarkers(const MergeTexts &texts, const std::vector<MergePart> &parts,
                                            const EditSnapshot &result, const MarkerLabels &labels);

} // namespace velmora
