#include "session/list/tree_view.h"

#include "session/list/tree_delegate.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QItemSelection>
#include <QKeyEvent>
#include <QScrollBar>

#include <algorithm>
#include <numeric>

namespace velmora {

namespace {

constexpr std::size_t mostKept = 1000; ///< nobody looks for more selected rows one by one

QList<int> allColumns(const TreeModel &model)
{
    QList<int> columns(model.columnCount());
    std::iota(columns.begin(), columns.end(), 0);
    return columns;
}

} // namespace

TreeView::TreeView(TreeModel &model, QWidget *parent)
    : TreeView(model, allColumns(model), new TreeDelegate(model), parent)
{
    keepHeadersOutOfSelection();
    sortByHeadings();
    keepPlaceOverResets();
}

TreeView::TreeView(TreeModel &model, const QList<int> &columns, TreeDelegate *delegate, QWidget *parent)
    : QTableView(parent), m_rows(model), m_columns(columns), m_delegate(delegate)
{
    delegate->setParent(this);
    setModel(&model);
    setItemDelegate(delegate);
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(NoEditTriggers);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setShowGrid(false);
    setTabKeyNavigation(false);
    setWordWrap(false);
    setCornerButtonEnabled(false);
    setFrameShape(NoFrame);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setSectionsClickable(false);
    horizontalHeader()->setMinimumSectionSize(30);
    for (int column = 0; column < model.columnCount(); ++column)
        setColumnHidden(column, !columns.contains(column));
    horizontalHeader()->setSectionResizeMode(columns.first(), QHeaderView::Stretch);
    takeRowHeight();
}

void TreeView::sortByHeadings()
{
    horizontalHeader()->setSectionsClickable(true);
    horizontalHeader()->setSortIndicatorClearable(true);
    horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
    setSortingEnabled(true);
}

void TreeView::keepPlaceOverResets()
{
    connect(&m_rows, &QAbstractItemModel::modelAboutToBeReset, this, [this] { m_kept = place(); });
    connect(&m_rows, &QAbstractItemModel::modelReset, this, [this] {
        setPlace(m_kept);
        // The keyboard needs a row to start from; nothing is selected by that.
        if (currentNode() < 0 && m_rows.rowCount() > 0)
            selectionModel()->setCurrentIndex(m_rows.index(0, firstColumn()), QItemSelectionModel::NoUpdate);
        Q_EMIT placeChanged();
    });
    connect(selectionModel(), &QItemSelectionModel::currentRowChanged, this, &TreeView::placeChanged);
    connect(selectionModel(), &QItemSelectionModel::selectionChanged, this, &TreeView::placeChanged);
}

void TreeView::keepHeadersOutOfSelection()
{
    for (QHeaderView *header : {horizontalHeader(), verticalHeader()})
        header->setSelectionModel(new QItemSelectionModel(&m_rows, header));
}

void TreeView::takeRowHeight()
{
    verticalHeader()->setDefaultSectionSize(TreeDelegate::rowHeight(fontMetrics()));
}

void TreeView::changeEvent(QEvent *event)
{
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        takeRowHeight();
}

// Places --------------------------------------------------------------------------------------------------------------

void TreeView::goToRow(int row)
{
    if (row < 0)
        return;
    const QModelIndex index = m_rows.index(row, firstColumn());
    selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    scrollTo(index);
}

void TreeView::goToNode(qint32 node)
{
    if (node < 0)
        return;
    m_rows.reveal(node);
    goToRow(m_rows.rowOf(node));
}

QList<qint32> TreeView::selectedNodes() const
{
    QList<qint32> nodes;
    // By range: a selection of everything is one.
    for (const QItemSelectionRange &range : selectionModel()->selection()) {
        for (int row = range.top(); row <= range.bottom(); ++row)
            nodes.append(m_rows.nodeAt(row));
    }
    std::sort(nodes.begin(), nodes.end());
    nodes.erase(std::unique(nodes.begin(), nodes.end()), nodes.end());
    if (!nodes.isEmpty() && nodes.first() < 0)
        nodes.removeFirst();
    return nodes;
}

void TreeView::selectRows(const std::vector<int> &rows)
{
    QItemSelection selection;
    for (std::size_t i = 0; i < rows.size();) {
        std::size_t end = i + 1;
        while (end < rows.size() && rows[end] == rows[end - 1] + 1)
            ++end;
        selection.select(m_rows.index(rows[i], 0), m_rows.index(rows[end - 1], m_rows.columnCount() - 1));
        i = end;
    }
    selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
}

TreePlace TreeView::place() const
{
    TreePlace place{m_rows.generation(), currentNode(), {}, verticalScrollBar()->value()};
    for (const qint32 node : selectedNodes()) {
        if (place.selected.size() < mostKept)
            place.selected.push_back(node);
    }
    return place;
}

void TreeView::setPlace(const TreePlace &place)
{
    if (place.generation != m_rows.generation())
        return;
    const int current = m_rows.rowOf(place.current);
    const QModelIndex index = m_rows.index(current, firstColumn());
    if (index.isValid())
        selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
    selectRows(m_rows.rowsOf(place.selected));
    verticalScrollBar()->setValue(place.scrolled);
    if (index.isValid())
        scrollTo(index);
}

// Keys ----------------------------------------------------------------------------------------------------------------

void TreeView::stepLeft()
{
    const qint32 node = currentNode();
    if (node < 0)
        return;
    const RowTree &tree = m_rows.rowTree();
    if (m_rows.isExpanded(node) && tree.isExpandable(node))
        setExpanded(false);
    else if (tree.parent(node) >= 0)
        goToRow(m_rows.rowOf(tree.parent(node)));
}

void TreeView::stepRight()
{
    const qint32 node = currentNode();
    if (node < 0 || !m_rows.rowTree().isExpandable(node))
        return;
    if (!m_rows.isExpanded(node)) {
        setExpanded(true);
        return;
    }
    const int row = currentIndex().row() + 1;
    const qint32 below = m_rows.nodeAt(row);
    if (below >= 0 && m_rows.rowTree().parent(below) == node)
        goToRow(row);
}

bool TreeView::takePlainKey(QKeyEvent *event)
{
    const QModelIndex current = currentIndex();
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (current.isValid())
            Q_EMIT openWanted(current);
        return current.isValid();
    case Qt::Key_Backspace:
        Q_EMIT upWanted();
        return true;
    case Qt::Key_Left:
        stepLeft();
        return true;
    case Qt::Key_Right:
        stepRight();
        return true;
    case Qt::Key_Plus:
        setExpanded(true);
        return true;
    case Qt::Key_Minus:
        setExpanded(false);
        return true;
    case Qt::Key_Asterisk:
        if (current.isValid())
            m_rows.setAllExpanded(currentNode(), true);
        return true;
    case Qt::Key_Home:
        goToRow(m_rows.rowCount() > 0 ? 0 : -1);
        return true;
    case Qt::Key_End:
        goToRow(m_rows.rowCount() - 1);
        return true;
    case Qt::Key_F6:
        Q_EMIT otherPaneWanted();
        return true;
    case Qt::Key_Space:
        if (!current.siblingAtColumn(firstColumn()).data(Qt::CheckStateRole).isValid())
            return false;
        toggleChecks(current, selectedNodes());
        return true;
    default:
        return false;
    }
}

void TreeView::keyPressEvent(QKeyEvent *event)
{
    const bool plain = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    const bool isSign = event->text() == QLatin1String("+") || event->text() == QLatin1String("*");
    if ((plain || isSign) && takePlainKey(event)) {
        event->accept();
        return;
    }
    if (event->matches(QKeySequence::Copy)) {
        Q_EMIT copyWanted();
        event->accept();
        return;
    }
    // Keys with Ctrl or Alt belong to the session's commands, except for those that select.
    const bool isCommand = event->modifiers() == Qt::ControlModifier || event->modifiers() == Qt::AltModifier;
    if (isCommand && (event->key() == Qt::Key_Left || event->key() == Qt::Key_Right)) {
        event->ignore();
        return;
    }
    QTableView::keyPressEvent(event);
}

void TreeView::keyboardSearch(const QString &search)
{
    const bool goesOn = m_sinceSearch.isValid() && m_sinceSearch.elapsed() < QApplication::keyboardInputInterval();
    m_sinceSearch.start();
    m_search = goesOn ? m_search + search : search;
    // The same letter again and again goes from one name to the next.
    const bool repeats = m_search.count(m_search.at(0)) == m_search.size();
    const QString wanted = repeats ? m_search.left(1) : m_search;
    const int count = m_rows.rowCount();
    const int start = std::max(currentIndex().row(), 0) + (goesOn && !repeats ? 0 : 1);
    for (int i = 0; i < count; ++i) {
        const int row = (start + i) % count;
        if (m_rows.rowTree().text(m_rows.nodeAt(row), firstColumn()).startsWith(wanted, Qt::CaseInsensitive))
            return goToRow(row);
    }
}

// Mouse ---------------------------------------------------------------------------------------------------------------

void TreeView::toggleChecks(const QModelIndex &index, const QList<qint32> &nodes)
{
    const int state = index.siblingAtColumn(firstColumn()).data(Qt::CheckStateRole).toInt();
    Q_EMIT checkWanted(nodes, state != Qt::Checked);
}

bool TreeView::pressOnSign(QPoint place)
{
    const QModelIndex index = indexAt(place);
    if (!index.isValid() || index.column() != firstColumn())
        return false;
    const QRect cell = visualRect(index);
    const qint32 node = m_rows.nodeAt(index.row());
    if (m_delegate->toggleRect(cell, index).contains(place)) {
        m_rows.setExpanded(index.row(), !m_rows.isExpanded(node));
        return true;
    }
    if (!m_delegate->checkRect(cell, index).contains(place))
        return false;
    toggleChecks(index, {node});
    return true;
}

void TreeView::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || !pressOnSign(event->pos()))
        QTableView::mousePressEvent(event);
}

void TreeView::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || pressOnSign(event->pos()))
        return;
    if (const QModelIndex index = indexAt(event->pos()); index.isValid())
        Q_EMIT openWanted(index);
}

void TreeView::contextMenuEvent(QContextMenuEvent *event)
{
    QPoint place = event->pos();
    QModelIndex index = indexAt(place);
    if (event->reason() == QContextMenuEvent::Keyboard && currentIndex().isValid()) {
        index = currentIndex();
        place = visualRect(index.siblingAtColumn(firstColumn())).center();
    }
    Q_EMIT contextMenuWanted(index, viewport()->mapToGlobal(place));
}

} // namespace velmora
