#pragma once

#include "core/output_buffer.h"
#include "folder/engine/folder_diff_item.h"

#include <QList>
#include <QSet>
#include <QString>

namespace velmora::cli {

struct FolderRequest;

/// The answer of the engine, as far as it was asked for.
struct FolderAnswer {
    QList<FolderDiffItem> items;
    QList<FolderProblem> problems;
    QSet<QString> notCompared = {}; ///< names of what nobody could look for on the other side, and of folders of such
};

/// The files that are the same by size and time alone.
[[nodiscard]] qint64 countUnread(const QList<FolderDiffItem> &items);

/// Writes a folder comparison as one JSON object, item by item; docs/velmora-cli.md has its schema.
void writeFolderJson(OutputBuffer &output, const FolderRequest &request, const FolderAnswer &answer);

} // namespace velmora::cli
