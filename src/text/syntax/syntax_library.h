#pragma once

#include "text/syntax/syntax_definition.h"

#include <QStringList>

#include <memory>
#include <vector>

namespace velmora {

/// The file types that can be coloured, read from a folder of definitions (`readSyntaxDefinition`). Immutable, usable
/// from any thread.
class SyntaxLibrary final {
public:
    /// Reads all "*.json" files of `folder` in the order of their names. A file that cannot be used is left out.
    explicit SyntaxLibrary(const QString &folder);

    /// The definitions that the program brings along. Read on first use, which takes some milliseconds.
    [[nodiscard]] static const SyntaxLibrary &bundled();

    /// The names of the types, in alphabetical order.
    [[nodiscard]] const QStringList &names() const noexcept { return m_names; }
    /// What is wrong with the files that were left out.
    [[nodiscard]] const QStringList &errors() const noexcept { return m_errors; }

    /// Null when there is no type of that name.
    [[nodiscard]] std::shared_ptr<const SyntaxDefinition> named(const QString &name) const;

    /// The type of a file by its bare name, else by its first line; null for neither. The first line may also tell
    /// that a name says something else than usual.
    [[nodiscard]] std::shared_ptr<const SyntaxDefinition> detect(const QString &fileName,
                                                                 QStringView firstLine = {}) const;

private:
    std::vector<std::shared_ptr<const SyntaxDefinition>> m_definitions;
    QStringList m_names;
    QStringList m_errors;
};

} // namespace velmora
