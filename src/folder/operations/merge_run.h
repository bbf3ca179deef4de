#pragma once

#include "folder/engine/folder_merge.h"
#include "folder/operations/operation_plan.h"

#include <optional>
#include <vector>

namespace velmora {

/// For each file of a merge the version that goes into the merged tree; nothing for what is left out.
using MergeSources = std::vector<std::optional<MergeVersion>>;

/// What the statuses say, before anything is chosen by hand.
[[nodiscard]] MergeSources mergeSourcesOf(const QList<FolderMergeFile> &files);

/// The steps that write the merged tree into the folder `target`, which must be there when they are surveyed and may
/// hold other files: those of the same name are replaced, and nothing is deleted. Only the survey tells what is
/// replaced. Refused when the target is one of the three folders or lies in one, or the other way round.
[[nodiscard]] OperationPlan planFolderMerge(const MergeVersions<QString> &folders, const QList<FolderMergeFile> &files,
                                            const MergeSources &sources, const QString &target);

} // namespace velmora
