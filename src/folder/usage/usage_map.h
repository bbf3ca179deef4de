#pragma once

#include "folder/usage/usage_colours.h"
#include "folder/usage/usage_map_layout.h"
#include "folder/usage/usage_rows.h"

#include <QColor>
#include <QList>
#include <QPixmap>
#include <QPoint>
#include <QString>
#include <QWidget>

namespace velmora {

/// The space of a folder as rectangles, each as large as what it stands for.
///
/// Arrow keys walk: left and right to the neighbours by size, up to what is around, down to the largest in it. Return
/// or a double click shows a folder alone, Backspace what is around it.
class UsageMap final : public QWidget {
    Q_OBJECT
public:
    explicit UsageMap(QWidget *parent = nullptr);

    /// Shows another scan, or none.
    void setResult(SharedUsage result);
    void setColouring(UsageColouring colouring);
    [[nodiscard]] UsageColouring colouring() const noexcept { return m_colouring; }

    /// The node that is marked, -1 for none.
    [[nodiscard]] qint32 currentNode() const noexcept { return m_current; }
    /// Marks a node, with what is around it in sight; does not tell.
    void setCurrentNode(qint32 node);
    /// The folder that fills the map.
    [[nodiscard]] qint32 shownFolder() const noexcept { return m_shown; }
    /// Fills the map with a folder, or with the one around a file.
    void showFolder(qint32 node);

    /// The rectangle of a node or, where that is too small, of the nearest one around it.
    [[nodiscard]] QRect rectOf(qint32 node) const;

    void refreshTheme() { redraw(); }

    [[nodiscard]] QSize sizeHint() const override { return {420, 420}; }
    [[nodiscard]] QSize minimumSizeHint() const override { return {120, 100}; }

Q_SIGNALS:
    /// A person has marked another node.
    void currentChanged(qint32 node);
    void contextMenuWanted(QPoint global);

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    bool event(QEvent *event) override;

private:
    [[nodiscard]] const UsageTree &tree() const { return m_result->usage.tree; }
    [[nodiscard]] qint32 nodeAt(QPoint place) const;
    [[nodiscard]] const UsageTile *tileOf(qint32 node) const;
    [[nodiscard]] QColor colourOf(qint32 node) const;
    /// A colour of the legend.
    struct Mark {
        QPoint place;
        QString text;
        QColor colour;
    };
    [[nodiscard]] QList<Mark> legendMarks() const;
    [[nodiscard]] QRect mapRoom() const;
    void mark(qint32 node);
    void step(int key);
    void redraw();
    void draw();
    void drawTile(QPainter &painter, const UsageTile &tile) const;
    void drawLegend(QPainter &painter) const;

    SharedUsage m_result;
    UsageColouring m_colouring = UsageColouring::Kind;
    qint32 m_shown = 0;
    qint32 m_current = -1;
    std::vector<UsageTile> m_tiles;
    QPixmap m_drawn; ///< the tiles; empty when they are to be drawn anew
};

} // namespace velmora
