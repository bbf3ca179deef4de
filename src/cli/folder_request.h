#pragma once

#include "cli/arguments.h"
#include "cli/command_line.h"
#include "folder/engine/folder_diff_item.h"
#include "settings/options/folder_session_options.h"
#include "vfs/archive/archive_problem.h"
#include "vfs/tree_source.h"

#include <QString>

namespace velmora::cli {

/// The values of `--method`; the first is the default.
[[nodiscard]] std::span<const Choice> methodChoices();

/// What the arguments of the folder command ask for, apart from the output.
struct FolderRequest {
    enum class Scope {
        Tree,           ///< everything, with contents
        Level,          ///< one level, with contents
        Structure,      ///< everything, names only
        StructureLevel, ///< one level, names only
    };

    Sides<TreeFolder> folders;
    Scope scope = Scope::Tree;
    Sides<QList<ArchiveProblem>> archiveProblems; ///< of sides that are archives
    FolderSessionOptions options;
    bool readsUnread = false;   ///< files are read even when their sizes and times agree
    bool filtered = false;      ///< some entries are not asked for
    bool tellsVersions = false; ///< of programs and libraries

    [[nodiscard]] bool isOfPresence() const { return scope == Scope::Structure || scope == Scope::StructureLevel; }

    /// Reads the arguments; returns what is wrong with them, empty when nothing is.
    [[nodiscard]] QString take(const Arguments &arguments);

private:
    /// Opens the two sides.
    [[nodiscard]] QString takeTrees(const Arguments &arguments);
};

/// Tells about what a comparison has not looked at. True when a part of it is missing for that.
bool complainAbout(const Streams &streams, const QList<FolderProblem> &problems);

} // namespace velmora::cli
