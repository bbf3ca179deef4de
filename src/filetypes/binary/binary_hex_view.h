#pragma once

#include "filetypes/binary/hex_painter.h"

#include <QAbstractScrollArea>

namespace velmora {

/// One side of a comparison: offsets, bytes as digits and as characters. Reads what it paints from the file; bytes that
/// cannot be read are blank, and where the other side's cannot they differ.
///
/// The vertical scroll bar counts rows, as far as it can count: the rows beyond are reached by keys, the wheel and the
/// strip beside the views.
class BinaryHexView final : public QAbstractScrollArea {
    Q_OBJECT
public:
    static constexpr int usualPoints = 9;

    /// `scene` outlives the view.
    BinaryHexView(HexScene &scene, Side side, QWidget *parent = nullptr);

    [[nodiscard]] Side side() const { return m_side; }
    [[nodiscard]] const HexGeometry &geometryOfRows() const { return m_geometry; }
    /// The size of the letters in points, 6 to 36.
    void setPointSize(int points);

    /// The byte at a place of the viewport, or the nearest; -1 without rows.
    [[nodiscard]] qint64 offsetAt(QPoint position) const;

Q_SIGNALS:
    void contextMenuWanted(QPoint globalPosition);

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;
    bool event(QEvent *event) override;

private:
    void updateGeometryOfRows();
    void updateBars();
    void takeBar(int value);
    void describe();
    [[nodiscard]] qint64 offsetRows(qint64 rows) const;

    HexScene &m_scene;
    Side m_side;
    HexGeometry m_geometry;
    int m_wheel = 0;           ///< what the wheel has turned beyond whole rows
    bool m_showsScene = false; ///< the bar is being moved to where the scene is
};

} // namespace velmora
