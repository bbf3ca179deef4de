#pragma once

#include "filetypes/binary/hex_scene.h"

#include <QPixmap>
#include <QWidget>

namespace velmora {

/// All rows at a glance: a mark where any differ, grey where differences are no longer listed, and a frame around those
/// in sight. Pressing or dragging goes there, however many rows there are.
class HexOverview final : public QWidget {
    Q_OBJECT
public:
    /// `scene` outlives the strip.
    explicit HexOverview(HexScene &scene, QWidget *parent = nullptr);

    /// Takes up a changed theme.
    void refresh();

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;

private:
    [[nodiscard]] qint64 scale() const { return std::max(m_scene.rowCount(), m_scene.visibleRows()); }
    [[nodiscard]] int yOf(qint64 row) const;
    void paintMarks();
    void goTo(int y);

    HexScene &m_scene;
    QPixmap m_marks; ///< null when they have to be painted
};

} // namespace velmora
