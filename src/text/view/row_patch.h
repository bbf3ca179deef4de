#pragma once

#include "session/pane/row_patch.h"
#include "text/view/diff_document.h"

#include <memory>

namespace velmora {

struct TextSessionOptions;

/// The document that `before` becomes by `change` of `side`: the rows around the edit are compared again under
/// `options`, all others keep their kinds and move along.
///
/// Shares the rows of `before` when none of them changes, so that typing into a changed line costs nothing for the
/// others. Otherwise takes a step for each row. An edit of thousands of lines is not compared here: its lines become
/// one-sided rows until somebody compares the whole. Lines of a megabyte and more are only looked at byte by byte.
[[nodiscard]] std::shared_ptr<const DiffDocument> patchDocument(const DiffDocument &before, const PaneTexts &texts,
                                                                Side side, const LineChange &change,
                                                                const TextSessionOptions &options);

/// The same for an editor of the two texts.
[[nodiscard]] RowPatcher diffPatcher(const TextSessionOptions &options);

} // namespace velmora
