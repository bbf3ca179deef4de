#pragma once

#include "core/sides.h"
#include "session/pane/pane_scene.h"

#include <QWidget>

namespace velmora {

/// The two lines of the caret's row one above the other, over the whole width, with their changed characters and with
/// blanks and tabs made visible. Scrolls sideways with the panes.
class LineDetail final : public QWidget {
    Q_OBJECT
public:
    /// `scene` outlives the detail.
    explicit LineDetail(PaneScene &scene, QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void takeDocument();
    void takeFont();
    void paintSide(QPainter &painter, qsizetype row, Side side, const RowChanges *changes);
    [[nodiscard]] QRect lineArea(Side side) const;

    PaneScene &m_scene;
    Sides<LineRenderer> m_renderers;
};

} // namespace velmora
