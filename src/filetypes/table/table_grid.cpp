#include "filetypes/table/table_grid.h"

#include "filetypes/table/frozen_columns.h"
#include "filetypes/table/table_colours.h"
#include "filetypes/table/table_model.h"
#include "session/diff_colours.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>

#include <algorithm>

namespace velmora {

namespace {

constexpr int usualRowHeight = 24;
constexpr int textMargin = 6;
constexpr int noticeWidth = 420;

/// Selection is a frame along the rows, so that the colours of the cells stay in sight; a changed cell has a corner
/// that shows without colour.
class CellDelegate final : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        const QRect &rect = option.rect;
        painter->fillRect(rect, tableColour(TableColour(index.data(TableModel::ColourRole).toInt())));
        if (index.data(TableModel::ChangedRole).toBool())
            paintCorner(*painter, rect);
        painter->setPen(
            diffColour(index.data(TableModel::LeftOutRole).toBool() ? DiffColour::MutedText : DiffColour::Text));
        const QRect room = rect.adjusted(textMargin, 0, -textMargin, 0);
        const QString text = index.data(Qt::DisplayRole).toString();
        painter->drawText(room, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine,
                          option.fontMetrics.elidedText(text, Qt::ElideRight, room.width()));
        if (option.state.testFlag(QStyle::State_Selected))
            paintSelection(*painter, rect);
        if (index == qobject_cast<const QAbstractItemView *>(parent())->currentIndex())
            paintCurrent(*painter, rect);
    }

private:
    static void paintCorner(QPainter &painter, const QRect &rect)
    {
        constexpr int size = 7;
        const QPoint corner = rect.topRight() + QPoint(1, 0);
        const QPolygon triangle({corner, corner - QPoint(size, 0), corner + QPoint(0, size)});
        painter.setPen(Qt::NoPen);
        painter.setBrush(diffColour(DiffColour::Text));
        painter.drawPolygon(triangle);
    }

    /// The cell that the keyboard is at, or that was found.
    static void paintCurrent(QPainter &painter, const QRect &rect)
    {
        painter.setPen(diffColour(DiffColour::Accent));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(rect.adjusted(0, 0, -1, -1));
    }

    static void paintSelection(QPainter &painter, const QRect &rect)
    {
        constexpr int thickness = 2;
        const QColor colour = diffColour(DiffColour::Accent);
        painter.fillRect(rect.left(), rect.top(), rect.width(), thickness, colour);
        painter.fillRect(rect.left(), rect.bottom() - thickness + 1, rect.width(), thickness, colour);
    }
};

} // namespace

TableGrid::TableGrid(TableModel &rows, const QString &objectName, QWidget *parent) : QTableView(parent)
{
    setObjectName(objectName);
    setModel(&rows);
    setItemDelegate(new CellDelegate(this));
    setEditTriggers(NoEditTriggers);
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setAlternatingRowColors(false);
    setTabKeyNavigation(false);
    setHorizontalScrollMode(ScrollPerPixel);
    setVerticalScrollMode(ScrollPerItem);
    // On both sides or on none, or the last rows would not stand beside each other.
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setWordWrap(false);
    setCornerButtonEnabled(false);
    setAcceptDrops(false);
    horizontalHeader()->setStretchLastSection(true);
    horizontalHeader()->setHighlightSections(false);
    verticalHeader()->setHighlightSections(false);
    horizontalHeader()->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(horizontalHeader(), &QHeaderView::customContextMenuRequested, this, [this](QPoint position) {
        const int column = horizontalHeader()->logicalIndexAt(position);
        if (column >= 0)
            Q_EMIT columnMenuWanted(column, horizontalHeader()->viewport()->mapToGlobal(position));
    });
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    fitRows();
    m_frozen = new FrozenColumns(*this);
    connect(m_frozen, &FrozenColumns::columnMenuWanted, this, &TableGrid::columnMenuWanted);
    connect(horizontalHeader(), &QHeaderView::sectionResized, this, [this](int column) {
        if (column < m_frozenCount)
            m_frozen->cover(m_frozenCount);
    });
}

void TableGrid::freeze(int columns)
{
    m_frozenCount = columns;
    m_frozen->cover(columns);
}

void TableGrid::updateGeometries()
{
    QTableView::updateGeometries();
    if (m_frozen)
        m_frozen->cover(m_frozenCount);
}

void TableGrid::scrollTo(const QModelIndex &index, ScrollHint hint)
{
    const int before = horizontalScrollBar()->value();
    QTableView::scrollTo(index, hint);
    if (m_frozenCount == 0 || !index.isValid())
        return;
    if (index.column() < m_frozenCount) {
        horizontalScrollBar()->setValue(before);
        return;
    }
    const int hidden = m_frozen->width() - columnViewportPosition(index.column());
    if (hidden > 0)
        horizontalScrollBar()->setValue(horizontalScrollBar()->value() - hidden);
}

void TableGrid::setNotice(const QString &notice)
{
    m_notice = notice;
    viewport()->update();
}

int TableGrid::wantedWidth(int column) const
{
    constexpr int rowsLookedAt = 40;
    constexpr int headerRoom = 16;
    constexpr int narrowest = 50;
    constexpr int widest = 300;
    const QString name = model()->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
    int width = horizontalHeader()->fontMetrics().horizontalAdvance(name) + headerRoom;
    const int first = std::max(0, rowAt(0));
    const int end = std::min(first + rowsLookedAt, model()->rowCount());
    for (int row = first; row < end && width < widest; ++row) {
        const QString text = model()->index(row, column).data().toString();
        width = std::max(width, fontMetrics().horizontalAdvance(text) + 2 * textMargin + 4);
    }
    return std::clamp(width, narrowest, widest);
}

/// Of the usual height as long as letters fit in.
void TableGrid::fitRows()
{
    const int height = std::max(usualRowHeight, fontMetrics().height() + 6);
    verticalHeader()->setMinimumSectionSize(height);
    verticalHeader()->setDefaultSectionSize(height);
    const int sign = std::max(10, fontMetrics().height() * 2 / 3);
    verticalHeader()->setIconSize({sign, sign});
}

void TableGrid::changeEvent(QEvent *event)
{
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange && itemDelegate())
        fitRows();
}

void TableGrid::contextMenuEvent(QContextMenuEvent *event)
{
    Q_EMIT contextMenuWanted(event->globalPos());
}

void TableGrid::paintEvent(QPaintEvent *event)
{
    QTableView::paintEvent(event);
    if (model()->rowCount() > 0 || m_notice.isEmpty())
        return;
    QPainter painter(viewport());
    painter.setPen(diffColour(DiffColour::MutedText));
    QRect room = viewport()->rect().adjusted(20, 0, -20, 0);
    const int spare = std::max(0, room.width() - noticeWidth) / 2;
    room.adjust(spare, 0, -spare, -room.height() / 4);
    painter.drawText(room, Qt::AlignCenter | Qt::TextWordWrap, m_notice);
}

} // namespace velmora
