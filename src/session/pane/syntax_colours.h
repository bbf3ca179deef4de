#pragma once

#include "text/syntax/syntax_role.h"

#include <QColor>

#include <array>

namespace velmora {

/// The ink of each role; an invalid colour for `Text`, which keeps the view's own.
using RoleInks = std::array<QColor, syntaxRoleCount>;

/// The inks in which the roles stand in the light or the dark theme.
///
/// The inks are of one lightness, so that none stands out and the backgrounds that tell differences stay the stronger
/// sign. Each is readable on every background of a row; on changed characters and search hits text keeps the view's
/// ink.
[[nodiscard]] RoleInks syntaxInks(bool dark);

} // namespace velmora
