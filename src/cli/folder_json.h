#pragma once

#include "core/output_buffer.h"
#include "folder/engine/folder_diff_item.h"

#include <QList>

namespace velmora::cli {

struct FolderRequest;

/// The files that are the same by size and time alone.
[[nodiscard]] qint64 countUnread(const QList<FolderDiffItem> &items);

/// Writes a folder comparison as one JSON object, item by item; docs/velmora-cli.md has its schema.
void writeFolderJson(OutputBuffer &output, const FolderRequest &request, const QList<FolderDiffItem> &items,
                     const QList<FolderProblem> &problems);

} // namespace velmora::cli
