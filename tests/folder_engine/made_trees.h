#pragma once

#include "folder/engine/folder_diff_item.h"

#include <QList>
#include <QRandomGenerator>

namespace velmora::test {

/// The result of a comparison as the engine gives it, made without a disk: up to `most` entries in pre-order, nested,
/// of all statuses, folders rolled up. Names and times come from the generator, with numbers and letter case in them.
[[nodiscard]] QList<FolderDiffItem> randomResult(QRandomGenerator &random, int most);

/// A result of exactly `count` entries: folders of 40 files each, three deep.
[[nodiscard]] QList<FolderDiffItem> largeResult(int count);

} // namespace velmora::test
