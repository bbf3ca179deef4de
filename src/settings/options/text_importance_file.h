#pragma once

#include <QString>

namespace velmora {

struct TextSessionOptions;

/// The value of "schema" in an importance-rules file.
inline constexpr const char *textImportanceSchema = "Tarnwick.TextImportance/1";

/// What kept an importance-rules file from being read or written.
struct ImportanceFileError {
    enum class Kind : quint8 {
        None,
        Unreadable,
        Unwritable,
        InvalidJson,
        OtherSchema, ///< the file names a schema, and not this one
        Empty,       ///< valid JSON without an object that holds anything
    };

    Kind kind = Kind::None;
    QString detail; ///< the system's or the JSON parser's own words, or the schema that was found

    [[nodiscard]] bool ok() const noexcept { return kind == Kind::None; }
};

/// Writes the importance rules of `options`, and nothing else of them, to the file `path`.
[[nodiscard]] ImportanceFileError exportImportanceRules(const QString &path, const TextSessionOptions &options);

/// Reads the rules in the file `path` over those of `options`, where a missing or mistyped key leaves its field alone,
/// and derives the legacy switches. With an error `options` are unchanged.
[[nodiscard]] ImportanceFileError importImportanceRules(const QString &path, TextSessionOptions &options);

} // namespace velmora
