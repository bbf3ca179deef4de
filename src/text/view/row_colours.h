#pragma once

#include "session/diff_colours.h"
#include "text/engine/diff_line.h"

namespace velmora {

/// What is behind a line in a row of `kind`; `unimportant` says that an equal row's lines are not the same text.
[[nodiscard]] inline DiffColour rowBackground(DiffLineKind kind, bool unimportant)
{
    switch (kind) {
    case Added:
        return DiffColour::Added;
    case Removed:
        return DiffColour::Removed;
    case Modified:
        return DiffColour::Modified;
    case Equal:
        break;
    }
    return unimportant ? DiffColour::Unimportant : DiffColour::Background;
}

} // namespace velmora
