#pragma once

#include "core/sides.h"
#include "filetypes/image/engine/image_difference.h"
#include "filetypes/image/engine/image_levels.h"
#include "filetypes/image/engine/picture_file.h"

#include <memory>

namespace velmora {

/// A difference map, and how it is shown.
struct ShownMap {
    DifferenceMap map; ///< without its image, which `levels` has
    std::shared_ptr<const ImageLevels> levels;
    bool outOfMemory = false;
};

/// Two pictures as a session holds them.
struct ImagePair {
    Sides<Picture> pictures;
    Sides<std::shared_ptr<const ImageLevels>> levels; ///< null where there is no picture
    bool sameBytes = false;                           ///< of the files
    ShownMap map;                                     ///< when both are loaded
};

/// Loads both files at the same time and compares them. What would not fit into memory is not loaded. Phase 0 counts
/// the files, phase 1 the rows of the map.
[[nodiscard]] ImagePair loadImagePair(const Sides<QString> &paths, int frame, const DifferenceOptions &options,
                                      const CancelFlag &cancel, Progress &progress);

/// The map of two pictures that are loaded.
[[nodiscard]] ShownMap shownMap(const QImage &left, const QImage &right, const DifferenceOptions &options,
                                const CancelFlag &cancel, Progress &progress);

} // namespace velmora
