#pragma once

#include "text/syntax/syntax_definition.h"

#include <QByteArray>

#include <functional>
#include <memory>

namespace velmora {

/// What reading a definition gave.
struct SyntaxReadResult {
    std::shared_ptr<const SyntaxDefinition> definition; ///< null when the file cannot be used
    QString error;                                      ///< what is wrong and where, for whoever writes definitions
};

/// Hands over the text of the definition of that name; empty when there is none.
using SyntaxTexts = std::function<QByteArray(const QString &name)>;

/// Reads a definition in the JSON form that docs/syntax-definitions.md describes. `others` is asked for the languages
/// that are embedded in this one. Anything unknown in the file is an error, so that a slip of the pen does not go
/// unnoticed.
[[nodiscard]] SyntaxReadResult readSyntaxDefinition(const QByteArray &json, const SyntaxTexts &others = {});

} // namespace velmora
