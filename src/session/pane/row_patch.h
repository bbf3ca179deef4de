#pragma once

#include "session/pane/edit_buffer.h"
#include "session/pane/pane_document.h"

#include <functional>
#include <memory>
#include <vector>

namespace velmora {

/// The texts of all panes after an edit of one of them.
using PaneTexts = std::vector<std::shared_ptr<const EditSnapshot>>;

/// Makes the document that `before` becomes by `change` of the text of `pane`. Called on the interface thread with each
/// character that is typed: what takes longer than a frame is left to a later comparison.
using RowPatcher = std::function<std::shared_ptr<const PaneDocument>(const PaneDocument &before, const PaneTexts &texts,
                                                                     PaneIndex pane, const LineChange &change)>;

/// That for a `PlainDocument`.
[[nodiscard]] std::shared_ptr<const PaneDocument> patchPlainDocument(const PaneDocument &before, const PaneTexts &texts,
                                                                     PaneIndex pane, const LineChange &change);

// What any patcher needs ----------------------------------------------------------------------------------------------

/// Beyond so many bytes, looking at each character of lines would be felt while somebody types.
inline constexpr std::size_t bytesLookedAt = 1'000'000;

/// The rows of `before` that `change` concerns: those of the changed lines, and where lines come or go, the unequal
/// rows around them, a hundred at most on each side.
[[nodiscard]] RowRange touchedRows(const PaneDocument &before, PaneIndex pane, const LineChange &change);

/// Consecutive lines [first, first + count), 0-based.
struct PaneLines {
    qsizetype first = 0;
    qsizetype count = 0;
};
/// The lines that `pane` has in `rows`.
[[nodiscard]] PaneLines linesIn(const PaneDocument &document, RowRange rows, PaneIndex pane);

/// Columns of the widest line after `change`, or some more where measuring would be felt.
[[nodiscard]] qint64 patchedWidth(const PaneDocument &before, const PaneTexts &texts, PaneIndex pane,
                                  const LineChange &change);

} // namespace velmora
