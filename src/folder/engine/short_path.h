#pragma once

#include "core/path_names.h"
#include "folder/engine/folder_diff_item.h"

#include <QString>

namespace velmora {

/// Paths of items in short: one that is that of the compared folder with the item's name is the name alone, and takes
/// no room of its own. No full path is a relative name, so that none is taken for the other. Runs are planned
/// (`planSync`, `findMovedFiles`, `planSyncRun`) from either; all else takes full paths.

inline void shortenPath(QString &path, const QString &name, const QString &root)
{
    if (path == joinedPath(root, name))
        path = name;
}

/// The path of an item, which may have it in short, below the compared folder `root`; empty where the side has none.
[[nodiscard]] inline QString fullPathOn(const FolderDiffItem &item, Side side, const QString &root)
{
    const QString &path = pathOn(item, side);
    return !path.isEmpty() && path == item.name ? joinedPath(root, path) : path;
}

} // namespace velmora
