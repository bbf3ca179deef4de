#pragma once

#include "folder/engine/duplicate_files.h"

namespace velmora {

/// Finds folders that are copies of each other as a whole. `contents` has for each file a number that files of the same
/// contents share, and -1 for those that are copies of no other file. Empty files are all the same; a folder of
/// nothing else is not told.
[[nodiscard]] QList<DuplicateFolders> findDuplicateFolders(const ScannedFiles &listed,
                                                           const std::vector<qint32> &contents);

} // namespace velmora
