#pragma once

#include "merge/model/merge_part.h"

namespace velmora {

/// A part merged line by line over its lines of the base, as `mergeThreeWay` does it for whole texts.
struct LineByLine {
    std::vector<LineRun> lines;      ///< of the three texts; without those of lines that are in conflict
    std::vector<SourceLine> leftOut; ///< lines of the versions that are not among them
    bool hasConflict = false;        ///< both versions have changed the same line, each in its own way
};

[[nodiscard]] LineByLine mergeLineByLine(const MergeTexts &texts, const MergePart &part);

} // namespace velmora
