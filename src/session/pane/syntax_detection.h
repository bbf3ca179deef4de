#pragma once

#include <QString>

#include <memory>

namespace velmora {

class LineSource;
struct SyntaxDefinition;

/// The syntax of a file, by its name or else its first line; null when neither says anything.
[[nodiscard]] std::shared_ptr<const SyntaxDefinition> detectSyntax(const QString &path, const LineSource &text);

} // namespace velmora
