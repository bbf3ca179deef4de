#pragma once

#include "core/sides.h"

#include <QSplitter>

#include <unordered_map>
#include <vector>

class QItemSelection;

namespace velmora {

class TableGrid;
class TableModel;
class TableScene;

/// The grids of both sides beside each other: they scroll together, and have the same rows selected and the same widths
/// of columns.
class TableGrids final : public QSplitter {
    Q_OBJECT
public:
    explicit TableGrids(TableScene &scene, QWidget *parent = nullptr);

    [[nodiscard]] TableGrid &at(Side side) { return *m_grids[side]; }
    /// The side that has the keyboard, or had it last.
    [[nodiscard]] Side side() const noexcept { return m_side; }
    void focusOn(Side side);
    [[nodiscard]] bool hasKeyboard() const;

    /// Selects a row of the result on both sides and puts it in the middle. One that is hidden is selected as soon as
    /// it is shown.
    void goToRow(qint32 row);
    /// The same, with the keyboard and the sight on one of its cells.
    void goToCell(qint32 row, qint32 column);
    /// The row that was gone to or chosen last, -1 for none.
    [[nodiscard]] qint32 currentRow() const noexcept { return m_currentRow; }
    /// The places of the selected rows, rising.
    [[nodiscard]] std::vector<qint32> selectedPlaces() const;

    /// What is said in place of rows.
    void setNotice(const QString &notice);
    /// Gives each column the width of what is in it.
    void fitColumns();
    /// The same for one, by its place.
    void fitColumn(int place);
    /// Takes up a changed theme.
    void refreshTheme();

Q_SIGNALS:
    void currentRowChanged();
    void contextMenuWanted(QPoint globalPosition);
    /// `place`: that of the column.
    void columnMenuWanted(int place, QPoint globalPosition);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void connectGrid(Side side);
    void showCurrentRow();
    void mirrorSelection(Side from);
    void keepWidths();
    void restoreWidths();
    void fitHeaders();

    TableScene &m_scene;
    Sides<TableModel *> m_models;
    Sides<TableGrid *> m_grids;
    Side m_side = Side::Left;
    qint32 m_currentRow = -1;
    bool m_isMirroring = false;
    std::unordered_map<qint32, int> m_widths; ///< by column, of those that were shown
};

} // namespace velmora
