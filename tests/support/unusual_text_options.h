#pragma once

#include "settings/options/text_session_options.h"

namespace velmora::test {

/// Options of which no field that a session file holds has its default value.
inline TextSessionOptions unusualTextOptions()
{
    TextSessionOptions options;
    options.leftReadOnly = true;
    options.rightReadOnly = true;
    options.ignoreBlankLines = true;
    options.importantLeadingWhitespace = true;
    options.importantEmbeddedWhitespace = true;
    options.importantTrailingWhitespace = true;
    options.importantEverythingElse = false;
    options.importantCharacterCase = false;
    options.orphanLinesAlwaysImportant = true;
    options.compareLineEndings = false;
    options.unimportantText = {QStringLiteral("^//"), QStringLiteral("(open")};
    options.leftFileType = QStringLiteral("Python");
    options.leftEncoding = QStringLiteral("UTF-8");
    options.leftEol = QStringLiteral("LF");
    options.rightFileType = QStringLiteral("A type from elsewhere");
    options.rightEncoding = QStringLiteral("GB18030");
    options.rightEol = QStringLiteral("CR");
    options.sameAsLeftFileFormat = false;
    options.alignAlgorithm = 2;
    options.curvatureTolerance = 0;
    options.useNearbyMatches = false;
    options.neverAlignDifferences = true;
    options.leftReplaceFind = {QStringLiteral("%2"), QStringLiteral("x")};
    options.leftReplaceWith = {QStringLiteral("y"), QString()};
    options.rightReplaceFind = {QStringLiteral(" ")};
    options.rightReplaceWith = {QStringLiteral("_")};
    deriveLegacySwitches(options);
    return options;
}

} // namespace velmora::test
