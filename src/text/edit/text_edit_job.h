#pragma once

#include "core/progress.h"
#include "session/document/loaded_text.h"
#include "session/pane/pane_document.h"

#include <memory>
#include <optional>

namespace velmora {

/// A text that was read to be shown.
struct TextEditResult {
    std::optional<LoadedText> loaded; ///< nothing when the file could not be read
    std::shared_ptr<const PlainDocument> document;
};

/// Reads and decodes a text and measures its lines. Runs on a worker; nothing of it is counted.
[[nodiscard]] TextEditResult readText(const TextOrigin &origin, int tabWidth, const CancelFlag &cancel,
                                      Progress &progress);

/// The document of a text that is in memory.
[[nodiscard]] std::shared_ptr<const PlainDocument> plainDocumentOf(const LoadedText &loaded, int tabWidth);

} // namespace velmora
