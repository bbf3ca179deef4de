#pragma once

#include "core/progress.h"
#include "vfs/git/git_disk.h"

#include <vector>

namespace velmora {

/// A file of the disk whose content has no name yet.
struct UnnamedFile {
    std::size_t number = 0; ///< among the files that are made a tree of
    QString path;           ///< absolute
    QByteArray expected;    ///< the name of what the index has for it; may be empty
};

/// Which ends of lines a repository takes for the same.
enum class LineEnds : quint8 { AsTheyAre, TurnedWhenAdded };

/// Gives each file the name of its content, on several threads, and puts contents that the repository lacks into
/// `scratch`. Changes the entries of `files` that `unnamed` are of.
[[nodiscard]] GitFault nameContents(std::vector<GitFile> &files, const std::vector<UnnamedFile> &unnamed,
                                    const GitRepository &repository, const GitScratch &scratch, LineEnds ends,
                                    const CancelFlag &cancel, Progress &progress);

} // namespace velmora
