#pragma once

#include "merge/engine/chunk_merge.h"

#include <QtGlobal>

#include <span>
#include <vector>

namespace velmora {

/// Sets the marks of `chunks`. `leftNumbers` and `rightNumbers` are the lines of both texts as numbers that are equal
/// where the lines are; `left` has the lines themselves. Lines without a letter or digit are never inserted twice.
void markInsertions(std::vector<MergeChunk> &chunks, const TextLines &left, std::span<const qint32> leftNumbers,
                    std::span<const qint32> rightNumbers);

} // namespace velmora
