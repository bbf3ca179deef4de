#pragma once

#include "core/progress.h"
#include "core/side.h"
#include "session/document/loaded_text.h"
#include "settings/options/text_session_options.h"
#include "text/engine/line_diff_engine.h"
#include "text/line_pairs.h"
#include "text/view/diff_document.h"

#include <QString>

#include <memory>
#include <optional>

namespace velmora {

/// All that a comparison reads, copied before it starts.
struct TextCompareInput {
    TextOrigin left;
    TextOrigin right;
    TextSessionOptions options;
    LinePairs pairs;  ///< lines that belong together
    int tabWidth = 4; ///< columns from one tab stop to the next
};

/// What a comparison hands over. Line numbers of the rows refer to the texts as they were read, also where replacement
/// rules changed what was compared.
struct TextCompareResult {
    std::optional<Side> unreadable; ///< the side whose file could not be opened; everything else is empty then
    LoadedText left;
    LoadedText right;
    std::shared_ptr<const DiffDocument> document; ///< null when unreadable or cancelled
    CompareRemarks remarks;
    std::optional<Side> multiplied; ///< the side whose replacement rules make too long a text; no document then
};

/// Reads, decodes and compares. Runs on a worker. Progress phases: 0 reading the files (not counted), 1 to 3 the phases
/// of `compareTexts`.
[[nodiscard]] TextCompareResult runTextCompare(const TextCompareInput &input, const CancelFlag &cancel,
                                               Progress &progress);

} // namespace velmora
