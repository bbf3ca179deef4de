#pragma once

#include "session/pane/pane_view.h"
#include "text/view/diff_document.h"

namespace velmora {

class MergeSplitter;
class OverviewStrip;

/// The two texts of a comparison side by side: their panes, a splitter between them with arrows for merging, and the
/// overview of all differences. Shows no documents but `DiffDocument`.
class DiffView final : public PaneView {
    Q_OBJECT
public:
    explicit DiffView(QWidget *parent = nullptr);

    /// Null for none.
    [[nodiscard]] const DiffDocument *document() { return diffIn(scene()); }
    [[nodiscard]] Side activeSide() const { return sideOf(activePane()); }

    /// What is between the panes.
    [[nodiscard]] MergeSplitter &splitter() { return *m_splitter; }

    /// The part of both panes' width that the left one has, between 0 and 1.
    [[nodiscard]] double leftShare() const;
    void setLeftShare(double share);

    void refreshTheme() override;

protected:
    void changeEvent(QEvent *event) override;

private:
    MergeSplitter *m_splitter;
    OverviewStrip *m_overview;
};

} // namespace velmora
