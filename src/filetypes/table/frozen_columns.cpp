#include "filetypes/table/frozen_columns.h"

#include "session/diff_colours.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>

#include <algorithm>

namespace velmora {

FrozenColumns::FrozenColumns(QTableView &grid) : QTableView(&grid), m_grid(grid)
{
    setObjectName(grid.objectName() + QStringLiteral("Frozen"));
    setModel(grid.model());
    setSelectionModel(grid.selectionModel());
    setItemDelegate(grid.itemDelegate());
    setSelectionBehavior(grid.selectionBehavior());
    setSelectionMode(grid.selectionMode());
    setEditTriggers(NoEditTriggers);
    setFocusProxy(&grid);
    setFrameShape(QFrame::NoFrame);
    setWordWrap(false);
    setAutoScroll(false);
    setHorizontalScrollMode(ScrollPerPixel);
    setVerticalScrollMode(ScrollPerItem);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setContextMenuPolicy(Qt::CustomContextMenu);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    connect(grid.verticalScrollBar(), &QScrollBar::valueChanged, verticalScrollBar(), &QScrollBar::setValue);
    connect(horizontalHeader(), &QHeaderView::sectionResized, &grid,
            [this](int column, int, int width) { m_grid.setColumnWidth(column, width); });
    connect(horizontalHeader(), &QHeaderView::customContextMenuRequested, &grid, [this](QPoint position) {
        QHeaderView *header = m_grid.horizontalHeader();
        Q_EMIT header->customContextMenuRequested(
            header->viewport()->mapFromGlobal(horizontalHeader()->viewport()->mapToGlobal(position)));
    });
    hide();
}

void FrozenColumns::cover(int count)
{
    int width = 0;
    for (int column = 0; column < std::min(count, model()->columnCount()); ++column) {
        setColumnWidth(column, m_grid.columnWidth(column));
        width += columnWidth(column);
    }
    // So much is left for what scrolls that it can be read.
    width = std::min(width, m_grid.viewport()->width() * 2 / 3);
    setVisible(width > 0);
    if (width == 0)
        return;
    verticalHeader()->setMinimumSectionSize(m_grid.verticalHeader()->minimumSectionSize());
    verticalHeader()->setDefaultSectionSize(m_grid.verticalHeader()->defaultSectionSize());
    horizontalHeader()->setFixedHeight(m_grid.horizontalHeader()->height());
    const QRect rows = m_grid.viewport()->geometry();
    setGeometry(rows.left(), m_grid.horizontalHeader()->geometry().top(), width,
                rows.bottom() + 1 - m_grid.horizontalHeader()->geometry().top());
    verticalScrollBar()->setValue(m_grid.verticalScrollBar()->value());
    horizontalScrollBar()->setValue(0);
    raise();
}

void FrozenColumns::scrollTo(const QModelIndex & /*index*/, ScrollHint /*hint*/) {}

void FrozenColumns::paintEvent(QPaintEvent *event)
{
    QTableView::paintEvent(event);
    QPainter painter(viewport());
    painter.fillRect(viewport()->width() - 1, 0, 1, viewport()->height(), diffColour(DiffColour::MutedText));
}

void FrozenColumns::wheelEvent(QWheelEvent *event)
{
    QApplication::sendEvent(m_grid.viewport(), event);
}

void FrozenColumns::contextMenuEvent(QContextMenuEvent *event)
{
    QApplication::sendEvent(&m_grid, event);
}

} // namespace velmora
