#pragma once

#include <QStyledItemDelegate>

namespace velmora {

class TreeModel;

/// Draws the cells of a tree: in its first column lines, signs that open and close, ticks and pictures before the text.
/// A session that draws more derives from it, and may use its parts.
class TreeDelegate : public QStyledItemDelegate {
    Q_OBJECT
public:
    explicit TreeDelegate(const TreeModel &model, QObject *parent = nullptr);

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

    /// Where the sign that opens and closes a node is, and where its tick is, for the rectangle of a cell of the view;
    /// empty for a cell without one.
    [[nodiscard]] QRect toggleRect(const QRect &cell, const QModelIndex &index) const;
    [[nodiscard]] QRect checkRect(const QRect &cell, const QModelIndex &index) const;

    /// The height of a row for a font.
    [[nodiscard]] static int rowHeight(const QFontMetrics &metrics);

protected:
    static constexpr int margin = 6; ///< beside a text
    static constexpr int picture = 16;
    static constexpr int gap = 5; ///< between a picture and its text

    /// Whether the tree is drawn in a column.
    [[nodiscard]] virtual bool hasTree(int column) const { return column == 0; }
    /// What is in the cell, over its background.
    virtual void paintCell(QPainter &painter, const QStyleOptionViewItem &option, const QModelIndex &index) const;

    /// Base colour, or that of a selected row laid over it; it is the background of the painter from then on.
    static void paintBackground(QPainter &painter, const QStyleOptionViewItem &option, const QColor &base);
    /// The lines that pass a row, and what of the row itself hangs on them with its sign.
    void paintLines(QPainter &painter, const QRect &cell, int row) const;
    void paintBranch(QPainter &painter, const QRect &cell, int row) const;
    /// The text of the index within a box, elided.
    static void paintText(QPainter &painter, const QRect &box, const QModelIndex &index, Qt::TextElideMode elide);
    /// From the left edge of a cell that is `width` wide to where the picture of its node begins.
    [[nodiscard]] int indentOf(qint32 node, int width) const;

private:
    void paintTreeCell(QPainter &painter, const QStyleOptionViewItem &option, const QModelIndex &index) const;
    void paintPicture(QPainter &painter, const QRect &box, qint32 node) const;
    /// How many levels a node is indented by in a cell that is `width` wide.
    [[nodiscard]] int levelOf(qint32 node, int width) const;

    const TreeModel &m_model;
};

} // namespace velmora
