#pragma once

#include "vfs/git/git_change.h"
#include "vfs/git/git_side.h"

#include <QString>

namespace velmora {

/// "Modified", "Renamed".
[[nodiscard]] QString gitStatusText(GitStatus status);

/// What is to be said of the kinds and rights of a file on both sides; empty for an ordinary one.
[[nodiscard]] QString gitModeText(const GitChange &change);

/// A state as it is shown: "Work tree", "Index", a folder with the system's separators, or the revision.
[[nodiscard]] QString gitSideShown(const GitSide &side);
/// The reverse for what a person has written or chosen.
[[nodiscard]] GitSide gitSideWritten(const QString &text);

} // namespace velmora
