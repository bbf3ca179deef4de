#pragma once

#include <QtGlobal>

namespace velmora {

/// What a part of a text is to the reader of its language. The view gives each role its colour.
enum class SyntaxRole : quint8 {
    Text, ///< nothing special; never in a token
    Comment,
    String,
    Escape, ///< a character sequence inside a string that stands for something else
    Number,
    Keyword,
    Type,
    Constant,
    Function,
    Preprocessor, ///< directives, attributes and decorators: what speaks about the program
    Variable,     ///< where variables have a sign of their own, and placeholders
    Tag,
    Attribute, ///< names that get a value: of attributes, keys and properties
    Heading,
    Inserted, ///< lines of a diff
    Deleted,
};

inline constexpr int syntaxRoleCount = int(SyntaxRole::Deleted) + 1;

/// A part of one line, in UTF-16 code units.
struct SyntaxToken {
    qsizetype start = 0;
    qsizetype length = 0;
    SyntaxRole role = SyntaxRole::Text;

    friend bool operator==(const SyntaxToken &, const SyntaxToken &) = default;
};

} // namespace velmora
