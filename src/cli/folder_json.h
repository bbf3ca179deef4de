#pragma once

#include "core/output_buffer.h"
#include "folder/engine/folder_diff_item.h"

#include <QList>

namespace velmora::cli {

struct FolderRequest;

/// Writes a folder comparison as one JSON object, item by item; docs/velmora-cli.md has its schema.
void writeFolderJson(OutputBuffer &output, const FolderRequest &request, const QList<FolderDiffItem> &items,
                     const QList<FolderProblem> &problems);

} // namespace velmora::cli
