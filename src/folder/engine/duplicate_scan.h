#pragma once

#include "core/cancel_flag.h"
#include "core/progress.h"
#include "folder/engine/folder_diff_item.h"
#include "vfs/tree_source.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <span>

namespace velmora {

/// Finds files of the same contents.
///
/// Two files are copies of each other when they have the same size, above 0, and the same bytes; that is what equal
/// size and equal MD5 digests mean, without the reading of every byte: files of one size are told apart by their first
/// and last blocks where they are large, and the contents decide. Files of a size that no other has are never opened.
///
/// A file that several names lead to is one file: hard links, links, and folders reached by two paths. Links to folders
/// are not gone into, and neither are recycle bins. What cannot be opened or read to its end is left out, and so is
/// what is shorter by then than it was listed.

struct DuplicateRoot {
    TreeFolder folder;
    bool isReference = false; ///< its files count as copies, but are not to be deleted
};

struct DuplicateQuestion {
    QList<DuplicateRoot> roots;
    HiddenEntries hidden = HiddenEntries::LeftOut;
    int threads = 0; ///< at most so many; 0: as many as are good here
};

/// One file of a group.
struct DuplicateCopy {
    QString path;
    qint64 modifiedMs = 0; ///< as listed
    qint32 root = 0;       ///< index into `DuplicateScan::roots`
    bool isReference = false;
    bool isLink = false;         ///< only links lead to it: the file lies outside of the folders
    QStringList otherNames = {}; ///< other paths that lead to the same file, sorted

    friend bool operator==(const DuplicateCopy &, const DuplicateCopy &) = default;
};

/// Two or more different files of the same contents.
struct DuplicateGroup {
    qint64 size = 0; ///< of each
    QList<DuplicateCopy> copies;
    QByteArray digest = {}; ///< MD5, 16 bytes; empty until `addDigests`

    friend bool operator==(const DuplicateGroup &, const DuplicateGroup &) = default;
};

/// A file that has several names and no copies.
struct ManyNamedFile {
    qint64 size = 0;
    QStringList paths; ///< sorted

    friend bool operator==(const ManyNamedFile &, const ManyNamedFile &) = default;
};

/// Folders that hold the same files under the same names, each of them a copy of the other's.
struct DuplicateFolders {
    QStringList paths;
    qint64 files = 0; ///< in each, with the folders in it
    qint64 bytes = 0;

    friend bool operator==(const DuplicateFolders &, const DuplicateFolders &) = default;
};

struct DuplicateScan {
    /// The folders that were gone through: those of the question, save those that lie in another one.
    QList<DuplicateRoot> roots;
    qint64 files = 0;                ///< listed, whatever their size; each name counts
    qint64 sameFiles = 0;            ///< names that lead to a file that another name leads to
    QList<DuplicateGroup> groups;    ///< those that waste most first
    QList<ManyNamedFile> manyNamed;  ///< by their first paths
    QList<DuplicateFolders> folders; ///< the largest first; folders that lie in such ones are not told
    QStringList overlapping;         ///< folders of the question that lie in another one, so that they were no roots
    QList<FolderProblem> problems;   ///< all on the left side
    bool cancelled = false;          ///< what had been found by then is there
};

/// In `Listing` the units are entries, their total not known; in `Reading` they are bytes of the files in question.
enum class DuplicatePhase : int { Listing = 0, Reading = 1 };

/// Synchronous, for a worker; reads only. Uses helper threads; what it finds does not depend on them. Setting `cancel`
/// ends it within the time that reading 1 MiB takes. Throws what lack of memory throws.
[[nodiscard]] DuplicateScan scanDuplicates(const DuplicateQuestion &question, const CancelFlag &cancel,
                                           Progress &progress);

/// What deleting all copies but one of each group would free: those that may be deleted.
[[nodiscard]] qint64 wastedBytes(const DuplicateGroup &group);

/// Reads one file of each group that has no digest yet, of folders of this system, on several threads. Groups whose
/// files cannot be read any more, and those not reached when `cancel` is set, stay without.
void addDigests(std::span<DuplicateGroup> groups, const CancelFlag &cancel);

/// The MD5 digest of a whole file, 16 bytes; empty when it cannot be read to its end or `cancel` is set.
[[nodiscard]] QByteArray duplicateDigest(FileOpener &opener, const QString &path, const CancelFlag &cancel);

} // namespace velmora
