#pragma once

#include <QString>

#include <span>

namespace velmora {

struct TextSessionOptions;

/// One built-in set of importance rules for text comparisons.
struct TextPreset {
    const char *name;      ///< under which it is stored: "@preset/text/..."
    const char *shortName; ///< what scripts call it
    const char *menuText;  ///< source text in the context "Velmora", not yet translated

    bool importantWhitespace; ///< leading, embedded and trailing
    bool importantCharacterCase;
    bool compareLineEndings;
    bool ignoreBlankLines;
    bool forgetsOrphanRule; ///< clears `orphanLinesAlwaysImportant`, which the other presets leave as it is
};

/// The presets in the order of their menu.
[[nodiscard]] std::span<const TextPreset> textPresets();

/// Sets the importance rules and the alignment method of the preset `name`, which may be one of the names of earlier
/// versions. Paths, read-only flags, formats, skew tolerance and replacement rules stay. False, and nothing changed,
/// for an unknown name.
[[nodiscard]] bool applyTextPreset(const QString &name, TextSessionOptions &options);

/// The preset whose rules `options` hold, or null: the one that would change nothing.
[[nodiscard]] const TextPreset *matchingTextPreset(const TextSessionOptions &options);

} // namespace velmora
