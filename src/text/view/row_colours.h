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

/// What is behind changed characters: `strong`, or for those that do not matter a shade between it and the background.
[[nodiscard]] inline QColor markColour(bool minor, const QColor &background, const QColor &strong)
{
    if (!minor)
        return strong;
    const auto between = [](int back, int front) { return (3 * back + 2 * front) / 5; };
    return {between(background.red(), strong.red()), between(background.green(), strong.green()),
            between(background.blue(), strong.blue())};
}

} // namespace velmora
