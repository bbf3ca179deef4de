#pragma once

namespace velmora {

struct TextSessionOptions;

/// The options that a new text comparison starts with: those stored last over the built-in ones. Paths and description
/// are never stored, so they are empty. Whatever is missing or damaged in the store has its built-in value.
[[nodiscard]] TextSessionOptions loadDefaultTextOptions();

/// Stores `options` for the comparisons to come.
void saveDefaultTextOptions(const TextSessionOptions &options);

} // namespace velmora
