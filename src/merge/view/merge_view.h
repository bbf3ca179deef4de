#pragma once

#include "merge/view/merge_document.h"
#include "session/pane/pane_view.h"

#include <array>

class QSplitter;

namespace velmora {

/// The four texts of a merge: left, base and right above, the result below with room for a list beside it, all over one
/// scroll position. The base can be folded away. Shows no documents but `MergeDocument`.
class MergeView final : public PaneView {
    Q_OBJECT
public:
    /// `heads` stand above their panes, by number, and `list` beside the result.
    MergeView(const std::array<QWidget *, mergePaneCount> &heads, QWidget *list, QWidget *parent);

    /// Null for none.
    [[nodiscard]] const MergeDocument *document() { return static_cast<const MergeDocument *>(scene().document()); }

    void setBaseShown(bool shown);
    [[nodiscard]] bool isBaseShown() const;

private:
    [[nodiscard]] QWidget *boxed(PaneIndex pane, QWidget *head);

    QWidget *m_base = nullptr; ///< the pane with its head
};

} // namespace velmora
