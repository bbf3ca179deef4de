#include "session/list/list_view.h"

#include "session/diff_colours.h"
#include "session/list/row_ground.h"
#include "session/translate.h"

#include <QHeaderView>
#include <QPainter>
#include <QScopedValueRollback>
#include <QStyledItemDelegate>

#include <algorithm>

namespace velmora {

namespace {

constexpr int noticeWidth = 520;

/// Rows have room to breathe, a thin line to be told apart by, and keep their colours when they are selected.
class RowDelegate final : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        constexpr int room = 7;
        return {QStyledItemDelegate::sizeHint(option, index).width(), option.fontMetrics.height() + room};
    }

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::paint(painter, option, index);
        painter->setPen(blendedRule());
        painter->drawLine(option.rect.bottomLeft(), option.rect.bottomRight());
    }

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        const auto *rows = qobject_cast<const ListModel *>(index.model());
        if (rows && index.column() == RowSource::Key && rows->source().hasPathKeys())
            option->textElideMode = Qt::ElideLeft;
        if (!option->state.testFlag(QStyle::State_Selected))
            return;
        const bool isColoured = option->backgroundBrush.style() != Qt::NoBrush;
        option->backgroundBrush =
            rowGround(*option, isColoured ? option->backgroundBrush.color() : option->palette.color(QPalette::Base));
        option->state.setFlag(QStyle::State_Selected, false); // or the style would lay its own colours over them
    }

private:
    static QColor blendedRule()
    {
        QColor rule = diffColour(DiffColour::Rule);
        rule.setAlphaF(0.55F);
        return rule;
    }
};

} // namespace

ListView::ListView(ListModel &rows, QWidget *parent) : QTreeView(parent), m_rows(rows)
{
    setObjectName(QStringLiteral("listRows"));
    setAccessibleName(Velmora::tr("Result of the comparison"));
    setModel(&rows);
    setItemDelegate(new RowDelegate(this));
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setSelectionMode(ExtendedSelection);
    setVerticalScrollMode(ScrollPerPixel);
    setTextElideMode(Qt::ElideRight);
    setFrameShape(NoFrame);
    setContextMenuPolicy(Qt::CustomContextMenu);
    header()->setSortIndicator(-1, Qt::AscendingOrder);
    header()->setSortIndicatorClearable(true);
    setSortingEnabled(true);
    header()->setSectionsMovable(false);
    header()->setStretchLastSection(true);
    connect(header(), &QHeaderView::sectionResized, this, [this](int section) {
        m_hasOwnWidths = m_hasOwnWidths || (!m_isFitting && section < header()->count() - 1);
    });

    connect(&rows, &QAbstractItemModel::modelAboutToBeReset, this, &ListView::keepPlace);
    connect(&rows, &QAbstractItemModel::modelReset, this, &ListView::restorePlace);
    connect(selectionModel(), &QItemSelectionModel::currentRowChanged, this, &ListView::currentRowChanged);
    connect(selectionModel(), &QItemSelectionModel::selectionChanged, this, &ListView::selectedRowsChanged);
}

void ListView::setNumberColumns(const QList<int> &columns)
{
    m_rows.setNumberColumns(columns);
    fitColumns();
}

void ListView::setNotice(const QString &notice)
{
    m_notice = notice;
    viewport()->update();
}

void ListView::goToRow(int row)
{
    if (row < 0)
        return;
    const QModelIndex index = m_rows.index(row, RowSource::Key);
    selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    scrollTo(m_rows.index(row, 0));
}

std::vector<int> ListView::selectedRows() const
{
    std::vector<int> rows;
    for (const QModelIndex &index : selectionModel()->selectedRows())
        rows.push_back(index.row());
    std::sort(rows.begin(), rows.end());
    return rows;
}

void ListView::keepPlace()
{
    if (currentIndex().isValid())
        m_keptKey = m_rows.rowAt(currentIndex().row()).key;
    m_keptKeys.clear();
    const std::vector<int> selected = selectedRows();
    for (const int row : selected.size() > 1 ? selected : std::vector<int>())
        m_keptKeys.insert(m_rows.rowAt(row).key);
}

void ListView::selectKept()
{
    QItemSelection kept;
    for (int row = 0; !m_keptKeys.isEmpty() && row < m_rows.rowCount(); ++row) {
        if (m_keptKeys.contains(m_rows.rowAt(row).key))
            kept.select(m_rows.index(row, 0), m_rows.index(row, 0));
    }
    if (!kept.isEmpty())
        selectionModel()->select(kept, QItemSelectionModel::Select | QItemSelectionModel::Rows);
}

void ListView::restorePlace()
{
    const int row = m_rows.find(m_keptKey);
    if (row >= 0)
        goToRow(row);
    else if (m_rows.rowCount() > 0) // the keyboard needs a row to start from
        selectionModel()->setCurrentIndex(m_rows.index(0, RowSource::Key), QItemSelectionModel::NoUpdate);
    selectKept();
    Q_EMIT currentRowChanged();
    Q_EMIT selectedRowsChanged();
}

void ListView::resizeEvent(QResizeEvent *event)
{
    QTreeView::resizeEvent(event);
    if (!m_hasOwnWidths)
        fitColumns();
}

void ListView::fitColumns()
{
    const QScopedValueRollback fitting(m_isFitting, true);
    const QFontMetrics metrics = header()->fontMetrics();
    int widest = 0;
    for (int status = int(PairStatus::Same); status <= int(PairStatus::RightOnly); ++status)
        widest = std::max(widest, metrics.horizontalAdvance(statusText(PairStatus(status))));
    constexpr int statusRoom = 36;
    const int statusWidth = widest + statusRoom;
    header()->resizeSection(0, statusWidth);
    const auto share = [this](int column) {
        const bool isWide = m_rows.source().side(column) || (column == RowSource::Key && m_rows.source().hasPathKeys());
        return isWide ? 38 : 24;
    };
    const auto numberWidth = [&](int column) {
        const QString heading = m_rows.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
        constexpr int room = 16;
        const int numbers = metrics.horizontalAdvance(QStringLiteral("88,888,888"));
        return std::max(numbers, metrics.horizontalAdvance(heading) + room) + room;
    };
    int shares = 0;
    int rest = viewport()->width() - statusWidth;
    for (int column = RowSource::Key; column < header()->count(); ++column) {
        if (m_rows.hasNumbers(column))
            rest -= numberWidth(column);
        else
            shares += share(column);
    }
    rest = std::max(240, rest);
    for (int column = RowSource::Key; column < header()->count(); ++column) // the last one shrinks only when told to
        header()->resizeSection(column,
                                m_rows.hasNumbers(column) ? numberWidth(column) : rest * share(column) / shares);
}

void ListView::paintEvent(QPaintEvent *event)
{
    QTreeView::paintEvent(event);
    if (m_rows.rowCount() > 0 || m_notice.isEmpty())
        return;
    QPainter painter(viewport());
    painter.setPen(diffColour(DiffColour::MutedText));
    QFont font = painter.font();
    font.setPointSizeF(font.pointSizeF() * 1.15);
    painter.setFont(font);
    QRect room = viewport()->rect().adjusted(20, 0, -20, 0);
    const int spare = std::max(0, room.width() - noticeWidth) / 2;
    room.adjust(spare, 0, -spare, -room.height() / 4);
    painter.drawText(room, Qt::AlignCenter | Qt::TextWordWrap, m_notice);
}

} // namespace velmora
