#include "filetypes/table/frozen_columns.h"

#include "session/diff_colours.h"

#include <QAbstractItemModel>
#include <QApplication>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QHelpEvent>
#include <QItemSelectionModel>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyle>
#include <QStyleOptionViewItem>
#include <QTableView>
#include <QWheelEvent>

#include <algorithm>

namespace velmora {

FrozenColumns::FrozenColumns(QTableView &grid)
    : QWidget(&grid), m_grid(grid), m_header(new QHeaderView(Qt::Horizontal, this))
{
    setObjectName(grid.objectName() + QStringLiteral("Frozen"));
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMouseTracking(true);
    connectHeader();
    const auto repaint = [this] { update(); };
    connect(grid.verticalScrollBar(), &QScrollBar::valueChanged, this, repaint);
    connect(grid.selectionModel(), &QItemSelectionModel::selectionChanged, this, repaint);
    connect(grid.selectionModel(), &QItemSelectionModel::currentChanged, this, repaint);
    connect(grid.model(), &QAbstractItemModel::modelReset, this, repaint);
    hide();
}

void FrozenColumns::connectHeader()
{
    m_header->setModel(m_grid.model());
    m_header->setSectionsClickable(false);
    m_header->setHighlightSections(false);
    m_header->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(m_header, &QHeaderView::sectionResized, &m_grid,
            [this](int column, int, int width) { m_grid.setColumnWidth(column, width); });
    connect(m_header, &QHeaderView::customContextMenuRequested, this, [this](QPoint position) {
        const int column = m_header->logicalIndexAt(position);
        if (column >= 0)
            Q_EMIT columnMenuWanted(column, m_header->viewport()->mapToGlobal(position));
    });
}

void FrozenColumns::cover(int count)
{
    m_count = std::min(count, m_grid.model()->columnCount());
    int width = 0;
    for (int column = 0; column < m_count; ++column) {
        m_header->resizeSection(column, m_grid.columnWidth(column));
        width += m_grid.columnWidth(column);
    }
    // So much is left for what scrolls that it can be read.
    width = std::min(width, m_grid.viewport()->width() * 2 / 3);
    setVisible(width > 0);
    if (width == 0)
        return;
    const QRect rows = m_grid.viewport()->geometry();
    const int top = m_grid.horizontalHeader()->geometry().top();
    setGeometry(rows.left(), top, width, rows.bottom() + 1 - top);
    m_header->setGeometry(0, 0, width, m_grid.horizontalHeader()->height());
    raise();
    update();
}

void FrozenColumns::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    painter.fillRect(rect(), m_grid.palette().base());
    painter.setClipRect(rect().adjusted(0, m_header->height(), 0, 0));
    painter.translate(0, m_header->height());
    const int first = m_grid.rowAt(0);
    const int bottom = height() - m_header->height();
    for (int row = first; row >= 0 && row < m_grid.model()->rowCount(); ++row) {
        if (m_grid.rowViewportPosition(row) >= bottom)
            break;
        paintRow(painter, row);
    }
    painter.fillRect(width() - 1, 0, 1, bottom, diffColour(DiffColour::MutedText));
}

void FrozenColumns::paintRow(QPainter &painter, int row) const
{
    QStyleOptionViewItem option;
    option.initFrom(&m_grid);
    option.widget = &m_grid;
    const auto line = static_cast<QRgb>(m_grid.style()->styleHint(QStyle::SH_Table_GridLineColor, &option, &m_grid));
    const bool isSelected = m_grid.selectionModel()->isRowSelected(row, {});
    option.state.setFlag(QStyle::State_Selected, isSelected);
    const int top = m_grid.rowViewportPosition(row);
    int left = 0;
    for (int column = 0; column < m_count; ++column) {
        const QRect cell(left, top, m_grid.columnWidth(column), m_grid.rowHeight(row));
        option.rect = cell.adjusted(0, 0, -1, -1);
        m_grid.itemDelegate()->paint(&painter, option, m_grid.model()->index(row, column));
        painter.setPen(QColor::fromRgba(line));
        painter.drawLine(cell.bottomLeft(), cell.bottomRight());
        painter.drawLine(cell.topRight(), cell.bottomRight());
        left += cell.width();
    }
}

QPointF FrozenColumns::inGrid(QPointF here) const
{
    const int column = std::max(0, m_header->logicalIndexAt(int(here.x())));
    return {here.x() - m_header->sectionViewportPosition(column) + m_grid.columnViewportPosition(column),
            here.y() - m_header->height()};
}

bool FrozenColumns::event(QEvent *event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove: {
        const auto &mouse = static_cast<const QMouseEvent &>(*event);
        QMouseEvent moved(mouse.type(), inGrid(mouse.position()), mouse.globalPosition(), mouse.button(),
                          mouse.buttons(), mouse.modifiers());
        if (event->type() == QEvent::MouseButtonPress)
            m_grid.setFocus(Qt::MouseFocusReason);
        return QApplication::sendEvent(m_grid.viewport(), &moved);
    }
    case QEvent::ToolTip: {
        const auto &help = static_cast<const QHelpEvent &>(*event);
        QHelpEvent moved(QEvent::ToolTip, inGrid(help.pos()).toPoint(), help.globalPos());
        return QApplication::sendEvent(m_grid.viewport(), &moved);
    }
    case QEvent::Wheel:
        return QApplication::sendEvent(m_grid.viewport(), event);
    default:
        return QWidget::event(event);
    }
}

void FrozenColumns::contextMenuEvent(QContextMenuEvent *event)
{
    QApplication::sendEvent(&m_grid, event);
}

} // namespace velmora
