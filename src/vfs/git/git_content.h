#pragma once

#include "vfs/git/git_comparison.h"

namespace velmora {

/// Where a program finds the file of a change, or why it does not.
struct GitLaidOut {
    QString path; ///< absolute
    GitFault fault;
};

/// The file of one side: of the work tree and of folders the file itself, of anything else a read-only copy in a new
/// folder within `folder`, under the last part of its name as far as systems can hold
/// it. A link is given as a file with what it leads to, a submodule as one with the name of its commit. Nothing is ever
/// written elsewhere, whatever the tree calls the file.
[[nodiscard]] GitLaidOut layOutChange(const GitComparison &comparison, const GitChange &change, Side side,
                                      const QString &folder, const CancelFlag &cancel);

} // namespace velmora
