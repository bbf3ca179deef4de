#pragma once

#include "session/pane/text_appearance.h"

#include <QObject>

namespace velmora {

class PaneView;
class TextBar;

/// How the texts of a session are shown, remembered from one session to the next: text size, word wrap, syntax colours
/// and blanks.
///
/// A new session starts with what was chosen last in any; sessions that are open keep their own. Lives on the interface
/// thread.
class PaneOptions final : public QObject {
    Q_OBJECT
public:
    /// Connects the bar's actions to the view. Both outlive this object.
    PaneOptions(TextBar &bar, PaneView &view, QObject *parent);

    /// Takes up another font or tab width, when one was chosen for all sessions since the last time.
    void takeAppearance();
    [[nodiscard]] int tabWidth() const noexcept { return m_appearance.tabWidth; }

private:
    void restore();
    void remember() const;

    TextBar &m_bar;
    PaneView &m_view;
    TextAppearance m_appearance;
};

} // namespace velmora
