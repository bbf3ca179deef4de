#include "settings/options/text_session_options.h"

namespace velmora {

void deriveLegacySwitches(TextSessionOptions &options)
{
    options.ignoreWhitespace = !(options.importantLeadingWhitespace || options.importantEmbeddedWhitespace ||
                                 options.importantTrailingWhitespace);
    options.ignoreCase = !options.importantCharacterCase;
    options.ignoreLineEndings = !options.compareLineEndings;
}

} // namespace velmora
