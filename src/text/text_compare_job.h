#pragma once

#include "core/progress.h"
#include "core/text_file.h"
#include "settings/options/text_session_options.h"
#include "text/editing/file_stamp.h"
#include "text/engine/line_diff_engine.h"
#include "text/line_pairs.h"
#include "text/view/diff_document.h"

#include <QString>

#include <memory>
#include <optional>

namespace velmora {

class EditSnapshot;

/// One side's text as it was read.
struct LoadedSide {
    DecodedText text;
    FileStamp stamp;     ///< of the file, taken before it was read
    bool missing = true; ///< there was no file: `text` is empty
    /// What an editor showed when the comparison began, where `text` is the same.
    std::shared_ptr<const EditSnapshot> shown;
};

/// Where a side's text comes from.
struct SideInput {
    QString path;                               ///< of an existing file; empty for a missing side
    TextEncoding encoding;                      ///< by which the file is read
    std::optional<LoadedSide> loaded;           ///< what is compared instead of reading `path`
    std::shared_ptr<const EditSnapshot> shown;  ///< what an editor shows of this side, if any does
    std::shared_ptr<const EditSnapshot> edited; ///< whose lines stand in for those of `loaded`, if any do
};

/// All that a comparison reads, copied before it starts.
struct TextCompareInput {
    SideInput left;
    SideInput right;
    TextSessionOptions options;
    LinePairs pairs;  ///< lines that belong together
    int tabWidth = 4; ///< columns from one tab stop to the next
};

/// What a comparison hands over. Line numbers of the rows refer to the texts as they were read, also where replacement
/// rules changed what was compared.
struct TextCompareResult {
    std::optional<Side> unreadable; ///< the side whose file could not be opened; everything else is empty then
    LoadedSide left;
    LoadedSide right;
    std::shared_ptr<const DiffDocument> document; ///< null when unreadable or cancelled
    CompareRemarks remarks;
    std::optional<Side> multiplied; ///< the side whose replacement rules make too long a text; no document then
};

/// Reads, decodes and compares. Runs on a worker. Progress phases: 0 reading the files (not counted), 1 to 3 the phases
/// of `compareTexts`.
[[nodiscard]] TextCompareResult runTextCompare(const TextCompareInput &input, const CancelFlag &cancel,
                                               Progress &progress);

} // namespace velmora
