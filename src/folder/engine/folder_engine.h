#pragma once

#include "core/cancel_flag.h"
#include "core/crc32.h"
#include "core/progress.h"
#include "folder/engine/folder_diff_item.h"
#include "settings/options/folder_session_options.h"
#include "vfs/tree_source.h"

#include <QFileInfo>

namespace velmora {

/// The folder comparison: plain, reentrant operations over two trees. They read and never write.
///
/// Entries are paired by names that are equal with case, unless a `ManualAlignRule` joins them, and come in the order
/// of the UTF-16 code units of their names. Broken links, pipes, sockets and devices are left out, and hidden entries
/// unless they are asked for. A folder that does not exist contributes nothing, one that cannot be read as much as it
/// lets see. A link to a folder that contains it is an entry without contents. Only regular files are ever opened.
///
/// No operation throws anything but what lack of memory throws. Setting `cancel` ends each within 100 ms with what it
/// has by then: the entries before the first that is undecided, in their order, folders rolled up over what is there of
/// them.
///
/// Helper threads are used where there are processors for them; the result does not depend on it.

/// The phases that the operations report. In `Reading` folders are read, and files that are soon compared; its units
/// are entries, their total is not known. In `Comparing` the rest of the files is; its units are bytes of the files,
/// and one for each pair.
enum class FolderPhase : int {
    Reading = 0,
    Comparing = 1,
};

/// Where an operation tells what its result does not say. Either may be null.
struct FolderRunReport {
    Progress *progress = nullptr;
    QList<FolderProblem> *problems = nullptr; ///< those of this run are appended: of folders, then of files, by path
};

[[nodiscard]] inline HiddenEntries hiddenEntries(const FolderSessionOptions &options)
{
    return options.showHidden ? HiddenEntries::Listed : HiddenEntries::LeftOut;
}

/// What is compared, and by which rules. A value.
struct FolderInput {
    Sides<TreeFolder> roots; ///< either may be none
    QString prefix = {};     ///< is put before all names, with a "/" between; empty for the roots of a comparison
    CompareMethod method = CompareMethod::Rules;
    qint32 toleranceSec = 0;
    QList<ManualAlignRule> alignRules = {};
    HiddenEntries hidden = HiddenEntries::LeftOut;
    bool ignoresHours = false; ///< times that are whole hours apart (`areWholeHoursApart`) are equal
    int threads = 0;           ///< at most so many; 0: as many as are good here

    /// What a session with these options compares.
    [[nodiscard]] static FolderInput of(const Sides<TreeFolder> &roots, const FolderSessionOptions &options);
};

/// Compares two trees. The result is in pre-order. A folder on both sides has the status that its contents have
/// together; every folder's sizes and times are the totals and the latest of what is in it. Costs about 0.5 KiB an
/// entry.
[[nodiscard]] QList<FolderDiffItem> compareFolderTree(const FolderInput &input, const CancelFlag &cancel = {},
                                                      const FolderRunReport &report = {});

/// The same with the paths of entries that are on one side alone in short (`fullPathOn`), which is a quarter of the
/// memory where most entries are: for plans over whole trees.
[[nodiscard]] QList<FolderDiffItem> compareFolderTreeInShort(const FolderInput &input, const CancelFlag &cancel = {},
                                                             const FolderRunReport &report = {});

/// Compares one level of two folders; names are bare. A folder on both sides is `Same`, whatever is in it; sizes of
/// folders are what the source says.
[[nodiscard]] QList<FolderDiffItem> compareFolderLevel(const FolderInput &input, const CancelFlag &cancel = {},
                                                       const FolderRunReport &report = {});

/// Lists which names exist on which side. No contents are compared: what exists on both sides is `Same`.
[[nodiscard]] QList<FolderDiffItem> listFolderStructure(const FolderInput &input, bool recursive,
                                                        const CancelFlag &cancel = {},
                                                        const FolderRunReport &report = {});

/// Counts what lies under `folder`.
[[nodiscard]] FolderTotals countFolderContents(const TreeFolder &folder, const CancelFlag &cancel = {},
                                               const FolderRunReport &report = {},
                                               HiddenEntries hidden = HiddenEntries::LeftOut);

/// Reads the files of those pairs that are unread, and no others, and gives them and the folders around them the status
/// that follows. `items` are in pre-order, of the trees that `input` tells. Cancelled, it leaves the rest unread.
void readUnread(const FolderInput &input, QList<FolderDiffItem> &items, const CancelFlag &cancel = {},
                const FolderRunReport &report = {});

/// True when two present files are equal under `method`.
[[nodiscard]] bool compareFilePair(const QFileInfo &left, const QFileInfo &right, CompareMethod method,
                                   const CancelFlag &cancel = {}, qint32 toleranceSec = 0);

/// `Same` or `Different`, as `compareFilePair`, save that under `Rules` files of different size are never read.
[[nodiscard]] FolderDiffStatus fileStatus(const QFileInfo &left, const QFileInfo &right, CompareMethod method,
                                          const CancelFlag &cancel = {}, qint32 toleranceSec = 0);

/// True when the modification times are at most `toleranceSec` whole seconds apart, or exactly equal when it is not
/// above 0.
[[nodiscard]] bool timestampsMatch(const QFileInfo &left, const QFileInfo &right, qint32 toleranceSec);

/// True when both files can be read and have the same bytes. See `ContentComparer::sameByDigest`.
[[nodiscard]] bool sameContentByDigest(const QString &left, const QString &right, const CancelFlag &cancel = {});

/// True when both files can be read and agree block by block up to a common zero byte. See
/// `ContentComparer::sameByBlocks`: bytes after such a zero within a block of 1 MiB are deliberately not compared.
[[nodiscard]] bool sameContentByBlocks(const QString &left, const QString &right, const CancelFlag &cancel = {});

} // namespace velmora
