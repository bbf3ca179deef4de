#pragma once

#include "core/wildcard.h"
#include "text/syntax/syntax_role.h"
#include "text/syntax/word_table.h"

#include <QString>

#include <array>
#include <bitset>
#include <vector>

namespace velmora {

/// A set of ASCII characters.
using AsciiSet = std::bitset<128>;

/// What begins at a certain text: a token, or a span that ends somewhere behind.
///
/// Made by `readSyntaxDefinition`, whose documentation says what the fields do for a language.
struct SyntaxRule {
    enum class Place : quint8 { Anywhere, LineStart, Column, WordStart, BehindBlank, Operand };
    enum class Next : quint8 { Anything, Letter, WordCharacter, NoWordCharacter, Blank, Digit };
    enum class Kind : quint8 {
        Plain,        ///< a token, and the span `context` if there is one
        Delimited,    ///< the span's end repeats characters that stand behind the start
        HereDocument, ///< names the line that ends a span, which begins at the next line
        Indented,     ///< the following lines that are indented deeper
        UpTo,         ///< what stands before one of `stops`
    };

    Kind kind = Kind::Plain;
    QString start; ///< begins with an ASCII character; may be empty for UpTo only
    bool ignoresCase = false;
    Place place = Place::Anywhere;
    int column = 0; ///< for Place::Column, 0-based
    Next next = Next::Anything;
    bool takesWord = false;      ///< the word behind the start belongs to it
    bool takesName = false;      ///< the same for letters, digits and "_" alone
    bool takesCharacter = false; ///< the character behind the start belongs to it
    bool keepsLineStart = false; ///< what follows still counts as the start of the line
    SyntaxRole role = SyntaxRole::Text;
    int context = -1; ///< the span that begins behind the start, -1 for none

    bool mustClose = false; ///< no match without the span's end in the same line
    int atMost = 0;         ///< characters between start and end, 0 for any number
    QChar before;           ///< what has to stand behind the span's end, blanks aside; null for anything

    QString delimiterCharacters; ///< empty for word characters
    QString open;                ///< behind the delimiter
    QString stops;
    bool stopsBeforeBlank = false; ///< a stop counts only where a blank or the end of the line follows
};

/// The rules, words and numbers that hold inside of a span, or outside of all.
struct SyntaxSet {
    std::vector<SyntaxRule> rules;
    std::array<std::vector<quint16>, 128> byStart; ///< the rules that begin with a character, in their order
    std::vector<quint16> atLineStart;              ///< rules without a start text
    WordTable words;
    AsciiSet wordStarts; ///< empty where words do not matter
    AsciiSet wordCharacters;
    SyntaxRole calls = SyntaxRole::Text; ///< of other words before "("
    SyntaxRole keys = SyntaxRole::Text;  ///< of other words before ":"
    SyntaxRole otherWords = SyntaxRole::Text;
    bool numbers = false;
    QString numberSigns; ///< characters that begin a number before a hexadecimal digit
    QChar numberSeparator;
};

/// A kind of span.
struct SyntaxContext {
    int set = 0;
    SyntaxRole role = SyntaxRole::Text;
    SyntaxRole edge = SyntaxRole::Text; ///< of the end
    QString end;            ///< "%1" is the delimiter; empty for a span that ends with the line or by other rules
    bool hasOwnEnd = false; ///< each span has an end text of its own
    bool ignoresCase = false;
    bool endsAtLineStart = false; ///< the end counts only there
    bool multiline = false;
    bool doubled = false;    ///< the end twice is a character of the span
    bool nested = false;     ///< the start inside opens another one
    bool isEmbedded = false; ///< the end counts whatever is open inside, and is no part of the span
    bool isHereDocument = false;
    bool isIndented = false;
    QString start; ///< for nested spans
    QChar escape;
    QChar continued; ///< at the end of a line keeps the span open
    int then = -1;   ///< the span that follows, -1 for none
    AsciiSet stops;  ///< characters that anything can begin at
};

/// A file type and how its texts are coloured. Immutable, usable from any thread.
///
/// Sets and contexts of embedded languages are copied into it, so that it refers to no other definition. Context 0
/// stands for what is outside of all spans.
struct SyntaxDefinition {
    QString name;
    bool indentationHasMeaning = false; ///< white space at the start of a line is part of what it says
    WildcardList files;
    WildcardList firstLines;
    WildcardList otherFirstLines; ///< a file whose first line matches is of another type whatever its name
    std::vector<SyntaxSet> sets;
    std::vector<SyntaxContext> contexts;
};

} // namespace velmora
