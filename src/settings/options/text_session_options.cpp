#include "settings/options/text_session_options.h"

#include "settings/options/json_fields.h"

#include <array>

namespace velmora {

namespace {

using Options = TextSessionOptions;

// In the order in which the keys are written.
constexpr std::array jsonFields{
    JsonField<Options>{"ignoreWhitespace", &Options::ignoreWhitespace},
    JsonField<Options>{"ignoreCase", &Options::ignoreCase},
    JsonField<Options>{"ignoreLineEndings", &Options::ignoreLineEndings},
    JsonField<Options>{"ignoreBlankLines", &Options::ignoreBlankLines},
    JsonField<Options>{"leftReadOnly", &Options::leftReadOnly},
    JsonField<Options>{"rightReadOnly", &Options::rightReadOnly},
    JsonField<Options>{"leftFileType", &Options::leftFileType},
    JsonField<Options>{"leftEncoding", &Options::leftEncoding},
    JsonField<Options>{"leftEol", &Options::leftEol},
    JsonField<Options>{"rightFileType", &Options::rightFileType},
    JsonField<Options>{"rightEncoding", &Options::rightEncoding},
    JsonField<Options>{"rightEol", &Options::rightEol},
    JsonField<Options>{"alignAlgorithm", &Options::alignAlgorithm},
    JsonField<Options>{"curvatureTolerance", &Options::curvatureTolerance},
    JsonField<Options>{"useNearbyMatches", &Options::useNearbyMatches},
    JsonField<Options>{"neverAlignDifferences", &Options::neverAlignDifferences},
    JsonField<Options>{"sameAsLeftFileFormat", &Options::sameAsLeftFileFormat},
    JsonField<Options>{"importantLeadingWhitespace", &Options::importantLeadingWhitespace},
    JsonField<Options>{"importantEmbeddedWhitespace", &Options::importantEmbeddedWhitespace},
    JsonField<Options>{"importantTrailingWhitespace", &Options::importantTrailingWhitespace},
    JsonField<Options>{"importantEverythingElse", &Options::importantEverythingElse},
    JsonField<Options>{"importantCharacterCase", &Options::importantCharacterCase},
    JsonField<Options>{"orphanLinesAlwaysImportant", &Options::orphanLinesAlwaysImportant},
    JsonField<Options>{"compareLineEndings", &Options::compareLineEndings},
    JsonField<Options>{"unimportantText", &Options::unimportantText},
    JsonField<Options>{"leftReplaceFind", &Options::leftReplaceFind},
    JsonField<Options>{"leftReplaceWith", &Options::leftReplaceWith},
    JsonField<Options>{"rightReplaceFind", &Options::rightReplaceFind},
    JsonField<Options>{"rightReplaceWith", &Options::rightReplaceWith},
};

void deriveImportanceFlags(TextSessionOptions &options)
{
    options.importantCharacterCase = !options.ignoreCase;
    options.compareLineEndings = !options.ignoreLineEndings;
    options.importantLeadingWhitespace = !options.ignoreWhitespace;
    options.importantEmbeddedWhitespace = !options.ignoreWhitespace;
    options.importantTrailingWhitespace = !options.ignoreWhitespace;
}

} // namespace

bool leavesFileTypeOpen(const QString &fileType)
{
    return fileType.isEmpty() || fileType == TextSessionOptions().leftFileType ||
           fileType == QLatin1String("Everything else");
}

void deriveLegacySwitches(TextSessionOptions &options)
{
    options.ignoreWhitespace = !(options.importantLeadingWhitespace || options.importantEmbeddedWhitespace ||
                                 options.importantTrailingWhitespace);
    options.ignoreCase = !options.importantCharacterCase;
    options.ignoreLineEndings = !options.compareLineEndings;
}

QJsonObject toJson(const TextSessionOptions &options)
{
    return fieldsToJson<TextSessionOptions>(jsonFields, options);
}

bool fromJson(const QJsonObject &object, TextSessionOptions &options)
{
    if (object.isEmpty())
        return false;
    fieldsFromJson<TextSessionOptions>(jsonFields, object, options);
    if (object.contains(QLatin1String("importantLeadingWhitespace")))
        deriveLegacySwitches(options);
    else
        deriveImportanceFlags(options);
    return true;
}

} // namespace velmora
