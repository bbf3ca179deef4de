#pragma once

#include "core/cancel_flag.h"
#include "core/progress.h"
#include "settings/options/text_session_options.h"
#include "text/engine/diff_line.h"
#include "text/engine/line_source.h"

#include <QList>

namespace velmora {

struct CompareRemarks;

/// The steps that a `Progress` counts.
enum ComparisonPhase : int {
    ReadingLines = 0,  ///< lines of both sides
    MatchingLines = 1, ///< left lines that have found their equal
    LeavingOut = 2,    ///< no step: the item is an expression of the unimportant text that counts no more
};

/// The rows of two texts under `options`, in display order; see `compareTexts`. Empty when cancelled.
template <typename Source>
[[nodiscard]] QList<AlignedRow> compareSources(const Source &left, const Source &right,
                                               const TextSessionOptions &options, const CancelFlag &cancel,
                                               Progress &progress, CompareRemarks &remarks);

extern template QList<AlignedRow> compareSources(const Utf8Lines &, const Utf8Lines &, const TextSessionOptions &,
                                                 const CancelFlag &, Progress &, CompareRemarks &);
extern template QList<AlignedRow> compareSources(const Utf16Lines &, const Utf16Lines &, const TextSessionOptions &,
                                                 const CancelFlag &, Progress &, CompareRemarks &);

} // namespace velmora
