#pragma once

#include "session/pane/pane_scene.h"

#include <QPixmap>
#include <QWidget>

namespace velmora {

/// The whole comparison at a glance: a mark for every difference at its place in the file, removed and modified ones in
/// the left half, added and modified ones in the right half, and a frame around what is in sight. Pressing or dragging
/// shows that place.
///
/// The marks are painted once for each document, filter and size; that takes a few look-ups for each pixel of height.
class OverviewStrip final : public QWidget {
    Q_OBJECT
public:
    /// `scene` outlives the strip.
    explicit OverviewStrip(PaneScene &scene, QWidget *parent = nullptr);

    /// Takes up a changed theme.
    void refresh();

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    /// The rows that the height of the strip stands for: all that are shown, but no fewer than a view has room for.
    [[nodiscard]] qsizetype scale() const;
    [[nodiscard]] QRect frame() const;
    void paintMarks();
    void showPlace(int y);

    PaneScene &m_scene;
    QPixmap m_marks; ///< null when they have to be painted
};

} // namespace velmora
