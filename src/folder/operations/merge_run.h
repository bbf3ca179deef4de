#pragma once

#include "folder/engine/folder_merge.h"
#include "folder/operations/operation_plan.h"

#include <QList>
#include <QString>

#include <vector>

namespace velmora {

/// Where a file of the merged tree comes from.
enum class MergedFileSource : quint8 {
    LeftOut, ///< from nowhere: it is not written
    Base,
    Left,
    Right,
    Text, ///< from the folder of merged texts
};
[[nodiscard]] MergedFileSource mergeSource(MergeVersion version);

/// For each file of a merge what goes into the merged tree.
using MergeSources = std::vector<MergedFileSource>;

/// What the statuses say, before anything is chosen by hand.
[[nodiscard]] MergeSources mergeSourcesOf(const QList<FolderMergeFile> &files);

/// The steps that write the merged tree into the folder `target`, which must be there when they are surveyed and may
/// hold other files: those of the same name are replaced, and nothing is deleted. Only the survey tells what is
/// replaced. Refused when the target is one of the three folders or lies in one, or the other way round. `texts`: the
/// folder that has merged texts under the paths of their files; empty when none is among the sources.
[[nodiscard]] OperationPlan planFolderMerge(const MergeVersions<QString> &folders, const QList<FolderMergeFile> &files,
                                            const MergeSources &sources, const QString &target,
                                            const QString &texts = {});

} // namespace velmora
