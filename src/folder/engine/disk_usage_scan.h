#pragma once

#include "core/cancel_flag.h"
#include "folder/engine/usage_tree.h"

#include <QList>
#include <QStringList>

namespace velmora {

class Progress;

/// What is to be measured.
struct DiskUsageRequest {
    QString folder;         ///< absolute, with "/"
    int maxDepth = 0;       ///< folders so many levels below are the last ones that are entered; 0: no limit
    bool listsFiles = true; ///< files are nodes of the tree, not only part of their folders
    bool withHidden = false;
};

/// One of the largest files.
struct LargeFile {
    QString path; ///< absolute
    qint64 size = 0;
};

/// Where the space went.
struct DiskUsage {
    UsageTree tree;           ///< a root alone, unreadable, when there is no such folder
    QList<LargeFile> largest; ///< at most 200, the largest first, whether files are nodes or not
    /// Folders that could not be listed, or not to their end, or were gone by then, in the order of their paths.
    QStringList unreadable;
    qint64 links = 0;       ///< symbolic links and the like, which are not followed and take no part
    qint64 sharedFiles = 0; ///< further names of files that have several; their room counts once
    qint64 milliseconds = 0;
    bool cancelled = false; ///< the tree has what was gathered
};

/// Measures a folder on as many threads as are good for it. Synchronous, for a worker; follows no links, so that no
/// cycle is possible. Progress counts entries, phase 0, and names the folder that is being read.
[[nodiscard]] DiskUsage scanDiskUsage(const DiskUsageRequest &request, const CancelFlag &cancel, Progress &progress);

} // namespace velmora
