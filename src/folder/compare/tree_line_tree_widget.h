#pragma once

#include "folder/compare/folder_rows_model.h"

#include <QElapsedTimer>
#include <QTableView>

namespace velmora {

class FolderRowDelegate;

/// One pane of a folder comparison: some columns of the rows, drawn as a tree with its lines.
///
/// A table view, since the rows are one flat list and all of one height, which costs nothing however many there are. It
/// adds the keys and clicks of a tree and finds rows by typing their names.
class TreeLineTreeWidget final : public QTableView {
    Q_OBJECT
public:
    /// Shows `columns` of `model`, which outlives it.
    TreeLineTreeWidget(FolderRowsModel &model, const QList<FolderColumn> &columns, QWidget *parent = nullptr);

    /// Makes the row the current one and shows it; the selection follows.
    void goToRow(int row);

    /// The row at a place of the viewport, -1 for none.
    [[nodiscard]] int rowAtPoint(QPoint place) const { return rowAt(place.y()); }

    /// Gives the headers a selection of their own, which stays empty: painting them, they would ask of each row whether
    /// it is selected. To be called when the selection model has been set.
    void keepHeadersOutOfSelection();

    [[nodiscard]] FolderColumn firstColumn() const { return m_columns.first(); }

    void keyboardSearch(const QString &search) override;

Q_SIGNALS:
    /// A person wants to open or to close what is at the index.
    void expandWanted(const QModelIndex &index);
    void collapseWanted(const QModelIndex &index);
    /// Return was pressed, or the row clicked twice.
    void openWanted(const QModelIndex &index);
    void upWanted();
    void contextMenuWanted(const QModelIndex &index, QPoint global);
    /// The paths of what is selected are to be copied.
    void pathsWanted();
    /// The keyboard is to go to the other pane.
    void otherPaneWanted();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void toggle(const QModelIndex &index, bool expand);
    /// Left: closes the folder, or goes to the one around; right: opens it, or goes into it.
    void stepLeft();
    void stepRight();
    void takeRowHeight();
    [[nodiscard]] bool clickedToggle(QPoint place);

    FolderRowsModel &m_rows;
    QList<FolderColumn> m_columns;
    FolderRowDelegate *m_delegate;
    QString m_search;
    QElapsedTimer m_sinceSearch;
};

} // namespace velmora
