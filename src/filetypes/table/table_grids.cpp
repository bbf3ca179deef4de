#include "filetypes/table/table_grids.h"

#include "filetypes/table/table_grid.h"
#include "filetypes/table/table_model.h"
#include "filetypes/table/table_scene.h"
#include "session/translate.h"

#include <QEvent>
#include <QHeaderView>
#include <QItemSelection>
#include <QScrollBar>

#include <algorithm>

namespace velmora {

TableGrids::TableGrids(TableScene &scene, QWidget *parent)
    : QSplitter(Qt::Horizontal, parent),
      m_scene(scene),
      m_models{new TableModel(scene, Side::Left, this), new TableModel(scene, Side::Right, this)},
      m_grids{new TableGrid(*m_models.left, QStringLiteral("leftGrid"), this),
              new TableGrid(*m_models.right, QStringLiteral("rightGrid"), this)}
{
    m_grids.left->setAccessibleName(Velmora::tr("Left table"));
    m_grids.right->setAccessibleName(Velmora::tr("Right table"));
    setChildrenCollapsible(false);
    for (const Side side : bothSides) {
        addWidget(m_grids[side]);
        setStretchFactor(indexOf(m_grids[side]), 1);
        connectGrid(side);
    }
    connect(&scene, &TableScene::aboutToChange, this, &TableGrids::keepWidths);
    connect(&scene, &TableScene::changed, this, &TableGrids::restoreWidths);
    connect(&scene, &TableScene::changed, this, &TableGrids::showCurrentRow);
}

void TableGrids::connectGrid(Side side)
{
    TableGrid *grid = m_grids[side];
    TableGrid *other = m_grids[otherSide(side)];
    grid->installEventFilter(this);
    connect(grid->verticalScrollBar(), &QScrollBar::valueChanged, other->verticalScrollBar(), &QScrollBar::setValue);
    connect(grid->horizontalScrollBar(), &QScrollBar::valueChanged, other->horizontalScrollBar(),
            &QScrollBar::setValue);
    connect(grid->horizontalHeader(), &QHeaderView::sectionResized, other, [other](int column, int, int width) {
        // The last one fills what room there is.
        if (column < other->horizontalHeader()->count() - 1)
            other->setColumnWidth(column, width);
    });
    connect(grid, &TableGrid::contextMenuWanted, this, &TableGrids::contextMenuWanted);
    connect(grid, &TableGrid::columnMenuWanted, this, [this, side](int place, QPoint position) {
        m_side = side;
        Q_EMIT columnMenuWanted(place, position);
    });
    connect(grid->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this, side] { mirrorSelection(side); });
    connect(grid->selectionModel(), &QItemSelectionModel::currentRowChanged, this, [this](const QModelIndex &current) {
        if (!current.isValid() || m_isMirroring)
            return;
        m_currentRow = m_scene.rowAt(current.row());
        Q_EMIT currentRowChanged();
    });
}

void TableGrids::mirrorSelection(Side from)
{
    if (std::exchange(m_isMirroring, true))
        return;
    TableGrid &to = *m_grids[otherSide(from)];
    QItemSelection rows;
    for (const QItemSelectionRange &range : m_grids[from]->selectionModel()->selection()) {
        rows.append(QItemSelectionRange(to.model()->index(range.top(), range.left()),
                                        to.model()->index(range.bottom(), range.right())));
    }
    to.selectionModel()->select(rows, QItemSelectionModel::ClearAndSelect);
    if (const QModelIndex current = m_grids[from]->currentIndex(); current.isValid())
        to.selectionModel()->setCurrentIndex(to.model()->index(current.row(), current.column()),
                                             QItemSelectionModel::NoUpdate);
    m_isMirroring = false;
}

void TableGrids::goToRow(qint32 row)
{
    m_currentRow = row;
    showCurrentRow();
    Q_EMIT currentRowChanged();
}

void TableGrids::goToCell(qint32 row, qint32 column)
{
    goToRow(row);
    const qint32 place = m_scene.placeOf(row);
    const qint32 columnPlace = m_scene.placeOfColumn(column);
    if (place < 0 || columnPlace < 0)
        return;
    m_isMirroring = true;
    for (TableGrid *grid : {m_grids.left, m_grids.right}) {
        const QModelIndex cell = grid->model()->index(place, columnPlace);
        grid->selectionModel()->setCurrentIndex(cell, QItemSelectionModel::NoUpdate);
        grid->scrollTo(cell, QAbstractItemView::EnsureVisible);
    }
    m_isMirroring = false;
}

void TableGrids::showCurrentRow()
{
    if (m_currentRow >= 0 &&
        (!m_scene.document() || std::size_t(m_currentRow) >= m_scene.document()->alignment.rows.size()))
        m_currentRow = -1;
    const qint32 place = m_currentRow < 0 ? -1 : m_scene.placeOf(m_currentRow);
    m_isMirroring = true;
    for (TableGrid *grid : {m_grids.left, m_grids.right}) {
        if (place < 0) {
            grid->clearSelection();
            continue;
        }
        const int column = std::max(0, grid->currentIndex().column());
        grid->selectionModel()->setCurrentIndex(grid->model()->index(place, column),
                                                QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
        grid->scrollTo(grid->model()->index(place, 0), QAbstractItemView::PositionAtCenter);
    }
    m_isMirroring = false;
}

std::vector<qint32> TableGrids::selectedPlaces() const
{
    std::vector<qint32> places;
    for (const QItemSelectionRange &range : m_grids.left->selectionModel()->selection()) {
        for (int place = range.top(); place <= range.bottom(); ++place)
            places.push_back(place);
    }
    std::sort(places.begin(), places.end());
    places.erase(std::unique(places.begin(), places.end()), places.end());
    return places;
}

void TableGrids::focusOn(Side side)
{
    m_grids[side]->setFocus();
}

bool TableGrids::hasKeyboard() const
{
    return m_grids.left->hasFocus() || m_grids.right->hasFocus();
}

bool TableGrids::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FocusIn)
        m_side = watched == m_grids.right ? Side::Right : Side::Left;
    return QSplitter::eventFilter(watched, event);
}

void TableGrids::setNotice(const QString &notice)
{
    for (const Side side : bothSides)
        m_grids[side]->setNotice(notice);
}

void TableGrids::fitColumns()
{
    constexpr int columnsInSight = 200;
    for (int place = 0; place < std::min(columnsInSight, m_scene.columnPlaces()); ++place)
        fitColumn(place);
    fitHeaders();
}

void TableGrids::fitColumn(int place)
{
    const int width = std::max(m_grids.left->wantedWidth(place), m_grids.right->wantedWidth(place));
    for (const Side side : bothSides)
        m_grids[side]->setColumnWidth(place, width);
}

/// The numbers of rows have as much room on both sides, or the same columns would not have the same.
void TableGrids::fitHeaders()
{
    int headerWidth = 0;
    for (const Side side : bothSides) {
        m_grids[side]->verticalHeader()->setMinimumWidth(0);
        headerWidth = std::max(headerWidth, m_grids[side]->verticalHeader()->sizeHint().width());
    }
    for (const Side side : bothSides)
        m_grids[side]->verticalHeader()->setMinimumWidth(headerWidth);
}

void TableGrids::keepWidths()
{
    // The last one on the screen fills what room there is, and has no width of its own.
    for (int place = 0; place + 1 < m_scene.columnPlaces(); ++place)
        m_widths[m_scene.columnAt(place)] = m_grids.left->columnWidth(place);
}

void TableGrids::restoreWidths()
{
    for (int place = 0; place < m_scene.columnPlaces(); ++place) {
        const auto width = m_widths.find(m_scene.columnAt(place));
        for (const Side side : bothSides) {
            if (width != m_widths.end())
                m_grids[side]->setColumnWidth(place, width->second);
        }
    }
    for (const Side side : bothSides)
        m_grids[side]->freeze(m_scene.arrangement().frozen);
}

void TableGrids::refreshTheme()
{
    for (const Side side : bothSides) {
        m_models[side]->refreshTheme();
        m_grids[side]->verticalHeader()->viewport()->update();
        m_grids[side]->viewport()->update();
    }
}

} // namespace velmora
