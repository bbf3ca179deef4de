#pragma once

#include "session/list/tree_model.h"

#include <QElapsedTimer>
#include <QList>
#include <QTableView>

#include <vector>

namespace velmora {

class TreeDelegate;

/// What is current and selected in a view of a tree, and how far it is scrolled.
struct TreePlace {
    quint64 generation = 0; ///< of the model
    qint32 current = -1;
    std::vector<qint32> selected; ///< the first thousand
    int scrolled = 0;
};

/// Some columns of a tree's rows, drawn as a tree with its lines.
///
/// A table view, since the rows are one flat list and all of one height, which costs nothing however many there are. It
/// adds the keys and clicks of a tree and finds rows by typing their names. Keys: left and right close, open and walk
/// the levels, plus and minus open and close, an asterisk opens everything in the current node, Home and End go to the
/// first and the last row, Space ticks.
class TreeView : public QTableView {
    Q_OBJECT
public:
    /// All columns of `model`, which outlives the view. A click on a heading sorts; what is current and selected stays
    /// over a change of what is shown.
    explicit TreeView(TreeModel &model, QWidget *parent = nullptr);
    /// Only these columns, of which the first has the tree and takes the room that is left, drawn by `delegate`, which
    /// becomes the view's. For panes that share their rows and selection: nothing is sorted or kept.
    TreeView(TreeModel &model, const QList<int> &columns, TreeDelegate *delegate, QWidget *parent);

    [[nodiscard]] int firstColumn() const { return m_columns.first(); }

    /// Makes the row the current one and shows it; the selection follows. Nothing for -1.
    void goToRow(int row);
    /// The same for a node, opening what is around it.
    void goToNode(qint32 node);
    [[nodiscard]] qint32 currentNode() const { return m_rows.nodeAt(currentIndex().row()); }
    /// In ascending order.
    [[nodiscard]] QList<qint32> selectedNodes() const;
    /// Selects exactly these rows, which ascend.
    void selectRows(const std::vector<int> &rows);

    [[nodiscard]] TreePlace place() const;
    /// Does nothing when the numbers of the place are those of another tree.
    void setPlace(const TreePlace &place);

    /// The row at a place of the viewport, -1 for none.
    [[nodiscard]] int rowAtPoint(QPoint place) const { return rowAt(place.y()); }

    /// Gives the headers a selection of their own, which stays empty: painting them, they would ask of each row whether
    /// it is selected. To be called again when another selection model has been set.
    void keepHeadersOutOfSelection();

    void keyboardSearch(const QString &search) override;

Q_SIGNALS:
    /// Return was pressed, or the row clicked twice.
    void openWanted(const QModelIndex &index);
    void upWanted();
    /// The index is none beside the rows.
    void contextMenuWanted(const QModelIndex &index, QPoint global);
    /// What is selected is to be copied.
    void copyWanted();
    /// A tick was clicked, or Space pressed: the selected nodes are to have this state.
    void checkWanted(const QList<qint32> &nodes, bool checked);
    /// The keyboard is to go to another pane.
    void otherPaneWanted();
    /// The current row or the selection is another one, also after the rows were made anew.
    void placeChanged();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void sortByHeadings();
    void keepPlaceOverResets();
    void takeRowHeight();
    void setExpanded(bool expanded) { m_rows.setExpanded(currentIndex().row(), expanded); }
    /// Left: closes the node, or goes to the one around; right: opens it, or goes into it.
    void stepLeft();
    void stepRight();
    /// True when it was one of the plain keys.
    bool takePlainKey(QKeyEvent *event);
    void toggleChecks(const QModelIndex &index, const QList<qint32> &nodes);
    /// Whether the left button came down on a sign or a tick, which has been followed then.
    bool pressOnSign(QPoint place);

    TreeModel &m_rows;
    QList<int> m_columns;
    TreeDelegate *m_delegate;
    TreePlace m_kept;
    QString m_search;
    QElapsedTimer m_sinceSearch;
};

} // namespace velmora
