#pragma once

#include "folder/engine/folder_engine.h"

namespace velmora {

class FileAccess;

/// The resources of a run, which tests choose for themselves. Results do not depend on the number of threads.
struct FolderRunResources {
    const FileAccess &files;
    int threads;

    /// The real file system and as many threads as are good here.
    [[nodiscard]] static FolderRunResources standard(HiddenEntries hidden = HiddenEntries::LeftOut);
};

/// As the functions of the same names without `resources`.
[[nodiscard]] QList<FolderDiffItem> compareFolderTree(const FolderRunResources &resources, const QString &leftRoot,
                                                      const QString &rightRoot, const QString &relativePrefix,
                                                      CompareMethod method, const CancelFlag &cancel,
                                                      qint32 toleranceSec, const QList<ManualAlignRule> &alignRules,
                                                      const FolderRunReport &report);
[[nodiscard]] QList<FolderDiffItem> compareFolderLevel(const FolderRunResources &resources, const QString &leftFolder,
                                                       const QString &rightFolder, CompareMethod method,
                                                       const CancelFlag &cancel, qint32 toleranceSec,
                                                       const QList<ManualAlignRule> &alignRules,
                                                       const FolderRunReport &report);
[[nodiscard]] QList<FolderDiffItem> listFolderStructure(const FolderRunResources &resources, const QString &leftFolder,
                                                        const QString &rightFolder, bool recursive,
                                                        const CancelFlag &cancel,
                                                        const QList<ManualAlignRule> &alignRules,
                                                        const FolderRunReport &report);
[[nodiscard]] FolderTotals countFolderContents(const FolderRunResources &resources, const QString &folder,
                                               const CancelFlag &cancel, const FolderRunReport &report);

} // namespace velmora
