#pragma once

#include "text/view/diff_document.h"
#include "text/view/shown_rows.h"

#include <vector>

namespace velmora {

/// Which equal rows of `document` count as differences, for `ShownRows`; empty for none.
///
/// Where lines begin to end differently, the run of equal rows from there on is a difference of line ends. Behind a
/// difference of the texts it is not begun anew while the ends stay the same two, so that two versions of a file with
/// different line ends all through have one such difference and not one after each change.
[[nodiscard]] std::vector<RowMark> rowMarks(const DiffDocument &document, bool countsMinor);

} // namespace velmora
