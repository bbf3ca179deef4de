#pragma once

#include "session/pane/syntax_colours.h"

#include <QColor>
#include <QList>

#include <span>
#include <vector>

namespace velmora {

/// A part of a line in a colour of its own, in UTF-16 code units.
struct Tint {
    qsizetype first = 0;
    qsizetype end = 0;
    QColor colour;

    friend bool operator==(const Tint &, const Tint &) = default;
};

/// In which colours the characters of a line are drawn. Refers to tokens and inks that live longer.
struct LineInks {
    QColor text;                         ///< of what nothing else is said of
    std::span<const SyntaxToken> tokens; ///< in order, without overlaps
    const RoleInks *ofRoles = nullptr;   ///< set where there are tokens
    QList<Tint> over;                    ///< cover the tokens, a later one those before it; may reach beyond the line
};

/// The colours of the units [first, end) other than that of the text: in order, without overlaps. Takes time in
/// proportion to what falls into the part, and the logarithm of the tokens.
[[nodiscard]] std::vector<Tint> tintsIn(const LineInks &inks, qsizetype first, qsizetype end);

} // namespace velmora
