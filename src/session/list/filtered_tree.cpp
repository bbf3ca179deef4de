#include "session/list/filtered_tree.h"

#include "session/list/tree_view.h"
#include "session/translate.h"

#include <QBoxLayout>
#include <QEvent>
#include <QHeaderView>
#include <QLineEdit>

#include <algorithm>

namespace velmora {

FilteredTree::FilteredTree(TreeModel &rows, const QString &name, QWidget *parent)
    : QWidget(parent), m_rows(rows), m_filter(new QLineEdit), m_tree(new TreeView(rows))
{
    m_filter->setObjectName(name + QStringLiteral("Filter"));
    m_filter->setPlaceholderText(Velmora::tr("Words in names"));
    m_filter->setClearButtonEnabled(true);
    m_tree->setObjectName(name + QStringLiteral("Tree"));
    m_tree->setFrameShape(QFrame::StyledPanel);
    m_tree->installEventFilter(this);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(6);
    column->addWidget(m_filter);
    column->addWidget(m_tree, 1);
    setFocusProxy(m_tree);
    connect(m_filter, &QLineEdit::textChanged, &m_rows, &TreeModel::setFilter);
    connect(m_filter, &QLineEdit::returnPressed, m_tree, qOverload<>(&QWidget::setFocus));
    connect(m_tree, &TreeView::openWanted, this, [this](const QModelIndex &index) { open(index.row()); });
}

void FilteredTree::setFilterHint(const QString &hint)
{
    m_filter->setToolTip(hint);
}

void FilteredTree::focusFilter()
{
    m_filter->setFocus(Qt::ShortcutFocusReason);
    m_filter->selectAll();
}

void FilteredTree::setColumns(const QList<FittedColumn> &columns, int fewestLetters)
{
    constexpr int margins = 22; // of a cell, and a little air between two columns of numbers
    const auto width = [this](const QString &text) { return fontMetrics().horizontalAdvance(text) + margins; };
    m_fewestLetters = fewestLetters;
    m_columns.clear();
    for (const FittedColumn &fitted : columns) {
        const QString heading = m_rows.headerData(fitted.column, Qt::Horizontal, Qt::DisplayRole).toString();
        const Column column{fitted.column, std::max(width(fitted.widest), width(heading))};
        m_tree->horizontalHeader()->resizeSection(column.column, column.width);
        m_columns.append(column);
    }
    fitColumns();
}

void FilteredTree::setColumnUsed(int column, bool used)
{
    for (Column &one : m_columns) {
        if (one.column == column)
            one.isUsed = used;
    }
    fitColumns();
}

void FilteredTree::fitColumns()
{
    int room = m_tree->viewport()->width() - m_fewestLetters * fontMetrics().averageCharWidth();
    for (const Column &column : m_columns) {
        m_tree->setColumnHidden(column.column, !column.isUsed || room < column.width);
        room -= column.isUsed ? column.width : 0;
    }
}

void FilteredTree::open(int row)
{
    const qint32 node = m_rows.nodeAt(row);
    if (m_rows.rowTree().picture(node) == RowPicture::Folder)
        m_rows.setExpanded(row, !m_rows.isExpanded(node));
    else
        Q_EMIT fileOpened();
}

bool FilteredTree::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Resize && watched == m_tree)
        fitColumns();
    return QWidget::eventFilter(watched, event);
}

} // namespace velmora
