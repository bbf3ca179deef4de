#pragma once

#include "core/progress.h"
#include "merge/merge_recovery.h"
#include "merge/model/marked_result.h"
#include "merge/view/merge_document.h"
#include "session/document/loaded_text.h"

#include <array>

namespace velmora {

/// A merge as it was left, with what was decided and the text of its result.
struct KeptMerge {
    std::vector<MergePart> parts;
    TextLines result;
    std::vector<ResultRun> runs; ///< where its lines come from
};

/// All that a merge reads, copied before it starts.
struct MergeRequest {
    std::array<TextOrigin, mergeSourceCount> sources; ///< by `MergeSource`
    TextOrigin output;             ///< the file that the result goes to, as it is now; without a path there is none yet
    bool isMarked = false;         ///< the left text is a file with conflict markers, and all there is
    std::optional<KeptMerge> kept; ///< what is shown instead of a fresh merge of the same texts
    ChunkMergeOptions options;
    int tabWidth = 4;
};

struct MergeResult {
    enum class End {
        Merged,
        Unreadable, ///< the file of `failed` could not be read
        TooLarge,   ///< that of `failed`
        NoMarkers,  ///< the marked file has no complete conflict markers
    };
    End end = End::Merged;
    MergeSource failed = MergeSource::Left;
    std::array<LoadedText, mergeSourceCount> sources;
    LoadedText output; ///< how the result is to be encoded, and what its file holds
    std::shared_ptr<const MergeDocument> document;
    MergeParts parts;
    EditBuffer result;
    MarkerLabels labels; ///< those that a marked file has
    std::optional<LineEndStyle>
        lineEnds; ///< set where the texts ended their lines differently: all are shown with these
};

/// Reads, decodes and merges. Runs on a worker. Progress phases: 0 reading the files (not counted), from 1 on those of
/// `mergeChunks`.
[[nodiscard]] MergeResult runMerge(const MergeRequest &request, const CancelFlag &cancel, Progress &progress);

} // namespace velmora
