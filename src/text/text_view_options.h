#pragma once

#include "session/pane/pane_options.h"

#include <QObject>

namespace velmora {

class DiffView;
class LineDetail;
class TextCompareBar;

/// How a comparison is shown, remembered from one session to the next: what `PaneOptions` has, the place of the
/// splitter, line details, the context of differences, and whether unimportant differences count. Lives on the
/// interface thread.
class TextViewOptions final : public QObject {
    Q_OBJECT
public:
    /// Connects the bar's actions to the view. All outlive this object.
    TextViewOptions(TextCompareBar &bar, DiffView &view, LineDetail &detail, QObject *parent);

    /// Takes up another font or tab width, when one was chosen for all sessions since the last time.
    void takeAppearance() { m_panes.takeAppearance(); }
    [[nodiscard]] int tabWidth() const noexcept { return m_panes.tabWidth(); }

    /// Counts unimportant differences as equal when they count, and the other way round.
    void toggleMinor();

private:
    void restore();
    void remember() const;

    TextCompareBar &m_bar;
    DiffView &m_view;
    LineDetail &m_detail;
    PaneOptions m_panes;
};

} // namespace velmora
