#include "folder/compare/tree_line_tree_widget.h"

#include "folder/compare/folder_row_delegate.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>

namespace velmora {

TreeLineTreeWidget::TreeLineTreeWidget(FolderRowsModel &model, const QList<FolderColumn> &columns, QWidget *parent)
    : QTableView(parent), m_rows(model), m_columns(columns), m_delegate(new FolderRowDelegate(model, this))
{
    setModel(&model);
    setItemDelegate(m_delegate);
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
    for (int column = 0; column < folderColumnCount; ++column)
        setColumnHidden(column, !columns.contains(FolderColumn(column)));
    horizontalHeader()->setSectionResizeMode(int(columns.first()), QHeaderView::Stretch);
    takeRowHeight();
}

void TreeLineTreeWidget::keepHeadersOutOfSelection()
{
    for (QHeaderView *header : {horizontalHeader(), verticalHeader()})
        header->setSelectionModel(new QItemSelectionModel(&m_rows, header));
}

void TreeLineTreeWidget::takeRowHeight()
{
    verticalHeader()->setDefaultSectionSize(FolderRowDelegate::rowHeight(fontMetrics()));
}

void TreeLineTreeWidget::changeEvent(QEvent *event)
{
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        takeRowHeight();
}

void TreeLineTreeWidget::goToRow(int row)
{
    if (row < 0)
        return;
    const QModelIndex index = m_rows.index(row, int(m_columns.first()));
    selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    scrollTo(index);
}

// Keys ----------------------------------------------------------------------------------------------------------------

void TreeLineTreeWidget::toggle(const QModelIndex &index, bool expand)
{
    if (expand)
        Q_EMIT expandWanted(index);
    else
        Q_EMIT collapseWanted(index);
}

void TreeLineTreeWidget::stepLeft()
{
    const qint32 node = m_rows.nodeAt(currentIndex().row());
    if (node < 0)
        return;
    const FolderTree::Node &here = m_rows.tree().node(node);
    if (here.expanded && m_rows.tree().isExpandable(node))
        Q_EMIT collapseWanted(currentIndex());
    else if (here.parent >= 0)
        goToRow(m_rows.rowOf(here.parent));
}

void TreeLineTreeWidget::stepRight()
{
    const qint32 node = m_rows.nodeAt(currentIndex().row());
    if (node < 0 || !m_rows.tree().isExpandable(node))
        return;
    if (!m_rows.tree().node(node).expanded) {
        Q_EMIT expandWanted(currentIndex());
        return;
    }
    const qint32 below = m_rows.nodeAt(currentIndex().row() + 1);
    if (below >= 0 && m_rows.tree().node(below).parent == node)
        goToRow(currentIndex().row() + 1);
}

void TreeLineTreeWidget::keyPressEvent(QKeyEvent *event)
{
    const bool plain = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    const auto take = [event](auto &&action) {
        action();
        event->accept();
    };
    if (plain || event->text() == QLatin1String("+")) {
        switch (event->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            if (currentIndex().isValid())
                take([this] { Q_EMIT openWanted(currentIndex()); });
            return;
        case Qt::Key_Backspace:
            return take([this] { Q_EMIT upWanted(); });
        case Qt::Key_Left:
            return take([this] { stepLeft(); });
        case Qt::Key_Right:
            return take([this] { stepRight(); });
        case Qt::Key_Plus:
            return take([this] { toggle(currentIndex(), true); });
        case Qt::Key_Minus:
            return take([this] { toggle(currentIndex(), false); });
        case Qt::Key_F6:
            return take([this] { Q_EMIT otherPaneWanted(); });
        default:
            break;
        }
    }
    if (event->matches(QKeySequence::Copy))
        return take([this] { Q_EMIT pathsWanted(); });
    // Keys with Ctrl or Alt belong to the session's commands, except for those that select.
    const bool isCommand = event->modifiers() == Qt::ControlModifier || event->modifiers() == Qt::AltModifier;
    if (isCommand && (event->key() == Qt::Key_Left || event->key() == Qt::Key_Right)) {
        event->ignore();
        return;
    }
    QTableView::keyPressEvent(event);
}

void TreeLineTreeWidget::keyboardSearch(const QString &search)
{
    const bool goesOn = m_sinceSearch.isValid() && m_sinceSearch.elapsed() < QApplication::keyboardInputInterval();
    m_sinceSearch.start();
    m_search = goesOn ? m_search + search : search;
    // The same letter again and again goes from one name to the next.
    const bool repeats = m_search.count(m_search.at(0)) == m_search.size();
    const QString wanted = repeats ? m_search.left(1) : m_search;
    const Side side = m_columns.first() == FolderColumn::RightName ? Side::Right : Side::Left;
    const int count = m_rows.rowCount();
    const int start = std::max(currentIndex().row(), 0) + (goesOn && !repeats ? 0 : 1);
    for (int i = 0; i < count; ++i) {
        const int row = (start + i) % count;
        const FolderDiffItem &item = m_rows.tree().item(m_rows.nodeAt(row));
        const QString &path = pathOn(item, side);
        if (!path.isEmpty() &&
            QStringView(path).mid(path.lastIndexOf(u'/') + 1).startsWith(wanted, Qt::CaseInsensitive))
            return goToRow(row);
    }
}

// Mouse ---------------------------------------------------------------------------------------------------------------

bool TreeLineTreeWidget::clickedToggle(QPoint place)
{
    const QModelIndex index = indexAt(place);
    return index.isValid() && FolderColumn(index.column()) == m_columns.first() &&
           m_columns.first() != FolderColumn::Sign &&
           m_delegate->toggleRect(visualRect(index), index.row()).contains(place);
}

void TreeLineTreeWidget::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton && clickedToggle(event->pos())) {
        const QModelIndex index = indexAt(event->pos());
        toggle(index, !m_rows.tree().node(m_rows.nodeAt(index.row())).expanded);
        return;
    }
    QTableView::mousePressEvent(event);
}

void TreeLineTreeWidget::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (clickedToggle(event->pos())) {
        mousePressEvent(event);
        return;
    }
    const QModelIndex index = indexAt(event->pos());
    if (event->button() == Qt::LeftButton && index.isValid())
        Q_EMIT openWanted(index);
}

void TreeLineTreeWidget::contextMenuEvent(QContextMenuEvent *event)
{
    QPoint place = event->pos();
    QModelIndex index = indexAt(place);
    if (event->reason() == QContextMenuEvent::Keyboard && currentIndex().isValid()) {
        index = currentIndex();
        place = visualRect(index.siblingAtColumn(int(m_columns.first()))).center();
    }
    Q_EMIT contextMenuWanted(index, viewport()->mapToGlobal(place));
}

} // namespace velmora
