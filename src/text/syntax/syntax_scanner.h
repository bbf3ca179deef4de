#pragma once

#include "text/syntax/syntax_role.h"
#include "text/syntax/syntax_state.h"

#include <QStringView>

#include <vector>

namespace velmora {

struct SyntaxDefinition;

/// UTF-16 code units of a line that are looked at. What stands behind is plain, and such a line leaves open what was
/// open before it: a file of one endless line costs no more than a screen of usual ones.
inline constexpr qsizetype longestColouredLine = 16'384;

/// What a line consists of.
struct ColouredLine {
    std::vector<SyntaxToken> tokens; ///< in order, without overlaps, inside the line, none of them empty
    SyntaxState end;
};

/// Colours one line, which comes without its line end. Takes time in proportion to its length, whatever stands in it.
/// A state of another definition counts as the start of a text. Usable from any thread.
[[nodiscard]] ColouredLine colourLine(const SyntaxDefinition &definition, const SyntaxState &start, QStringView line);

/// The state behind a line alone.
[[nodiscard]] SyntaxState stateBehind(const SyntaxDefinition &definition, const SyntaxState &start, QStringView line);

} // namespace velmora
