#pragma once

#include "core/cancel_flag.h"
#include "folder/engine/folder_diff_item.h"
#include "folder/engine/folder_engine.h"

#include <QList>
#include <QString>

#include <array>

namespace velmora {

/// The three-way merge of folders: what two versions have made of each file of a base. Reads and never writes.

/// The trees of a merge.
enum class MergeVersion : quint8 { Base, Left, Right };
inline constexpr std::array allMergeVersions{MergeVersion::Base, MergeVersion::Left, MergeVersion::Right};

/// One value for each tree.
template <typename T>
struct MergeVersions {
    T base{};
    T left{};
    T right{};

    [[nodiscard]] T &operator[](MergeVersion version) noexcept
    {
        return version == MergeVersion::Base ? base : version == MergeVersion::Left ? left : right;
    }
    [[nodiscard]] const T &operator[](MergeVersion version) const noexcept
    {
        return version == MergeVersion::Base ? base : version == MergeVersion::Left ? left : right;
    }

    friend bool operator==(const MergeVersions &, const MergeVersions &) = default;
};

/// What has become of a file (the numbers are stored and shown).
enum class FolderMergeStatus : qint32 {
    Unchanged = 0,
    LeftChanged = 1,
    RightChanged = 2,
    SameChange = 3, ///< both versions have the same, and the base something else or nothing
    Conflict = 4,   ///< both versions have something else
    LeftAdded = 5,
    RightAdded = 6,
    LeftDeleted = 7,
    RightDeleted = 8, ///< the left version may have changed it: that is not looked at
    BothDeleted = 9,
};

/// The version whose file goes into the merged tree; nothing for conflicts and for what is deleted.
[[nodiscard]] std::optional<MergeVersion> mergeSourceOf(FolderMergeStatus status);

/// One file of any of the trees.
struct FolderMergeFile {
    QString path;                ///< relative, with "/" between the parts
    MergeVersions<qint64> sizes; ///< bytes, -1 where the tree has no such file
    FolderMergeStatus status = FolderMergeStatus::Unchanged;

    friend bool operator==(const FolderMergeFile &, const FolderMergeFile &) = default;
};

struct FolderMergeResult {
    QList<FolderMergeFile> files; ///< by the UTF-16 code units of their paths
    qint64 changed = 0;           ///< files that are not `Unchanged`
    qint64 conflicts = 0;
    QStringList unreadable; ///< folders that could not be listed, or not in full, absolute
};

/// Classifies the files of three folders, whose paths are absolute. Hidden entries, broken links, pipes and the like
/// are left out, and links to folders are not followed.
///
/// Two files are the same when digests of their contents would be, where one that cannot be opened has the digest of no
/// bytes' absence: it equals another such file and nothing else. No digest is made: files of different sizes differ,
/// and all others are read side by side up to the first difference, each of them once.
///
/// Synchronous; helper threads are used where there are processors for them. Setting `cancel` ends it within the time
/// that a piece of 256 KiB takes; the result is then of no use. Progress as of `FolderPhase`.
[[nodiscard]] FolderMergeResult mergeFolderTrees(const MergeVersions<QString> &folders, const CancelFlag &cancel,
                                                 Progress &progress);

} // namespace velmora
