#pragma once

#include "core/text_file.h"

namespace velmora {

/// One side of a comparison: the bytes of a file and what was made of them.
struct RawText {
    QByteArray bytes; ///< empty for a text that is settled, since it was read before
    DecodedText text;
};

/// Looks again at encodings that were only guessed: two files that are compared mostly are of one language, and often
/// the same text. Two guesses are made from both texts at once; beside a text whose encoding is sure, a guess gives way
/// to the encoding in which the two have most characters in common. A side whose encoding turns out another is decoded
/// anew. Reentrant.
void settleGuesses(RawText &left, RawText &right, const CancelFlag &cancel = {});

} // namespace velmora
