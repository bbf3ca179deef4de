#pragma once

#include "text/syntax/syntax_library.h"
#include "text/syntax/syntax_scanner.h"

namespace velmora::test {

/// The definitions as they lie in the source folder.
[[nodiscard]] inline const SyntaxLibrary &library()
{
    static const SyntaxLibrary library(QStringLiteral(VELMORA_SOURCE_DIR "/resources/syntax"));
    return library;
}

/// A letter for each unit of a line, which says what it is; a blank for plain text. Ends with the last token.
[[nodiscard]] inline QString picture(const std::vector<SyntaxToken> &tokens)
{
    constexpr QLatin1String letters(" csenktofpvgahid");
    QString drawn;
    for (const SyntaxToken &token : tokens) {
        drawn.resize(token.start, u' ');
        drawn.resize(token.start + token.length, letters.at(int(token.role)));
    }
    return drawn;
}

} // namespace velmora::test
