#include "session/list/tree_model.h"

#include "session/plain_text.h"

#include <algorithm>

namespace velmora {

TreeModel::TreeModel(std::unique_ptr<RowTree> tree, QObject *parent)
    : QAbstractTableModel(parent), m_tree(std::move(tree)), m_headings(m_tree->headings()), m_rows(madeRows())
{
    m_turns.setInterval(0);
    connect(&m_turns, &QTimer::timeout, this, &TreeModel::proceedFilter);
}

void TreeModel::setTree(std::unique_ptr<RowTree> tree)
{
    m_tree.swap(tree); // the old one lives until the rows are the new one's
    m_headings = m_tree->headings();
    rebuild();
}

void TreeModel::rebuild()
{
    beginResetModel();
    ++m_generation;
    m_filter = {};
    m_rows = madeRows();
    endResetModel();
    if (!m_words.isEmpty())
        restartFilter();
}

// Rows ----------------------------------------------------------------------------------------------------------------

int TreeModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

int TreeModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_headings.size());
}

qint32 TreeModel::nodeAt(int row) const
{
    return row >= 0 && row < rowCount() ? m_rows[std::size_t(row)].node : -1;
}

int TreeModel::exactRowOf(qint32 node) const
{
    const auto isSought = [node](const TreeRow &row) { return row.node == node; };
    const auto at = m_order.column < 0
                        ? std::lower_bound(m_rows.begin(), m_rows.end(), node,
                                           [](const TreeRow &row, qint32 wanted) { return row.node < wanted; })
                        : std::find_if(m_rows.begin(), m_rows.end(), isSought);
    return at != m_rows.end() && isSought(*at) ? int(at - m_rows.begin()) : -1;
}

int TreeModel::rowOf(qint32 node) const
{
    for (; node >= 0; node = m_tree->parent(node)) {
        if (const int row = exactRowOf(node); row >= 0)
            return row;
    }
    return -1;
}

std::vector<int> TreeModel::rowsOf(std::vector<qint32> nodes) const
{
    std::sort(nodes.begin(), nodes.end());
    std::vector<int> rows;
    for (int row = 0; row < rowCount() && rows.size() < nodes.size(); ++row) {
        if (std::binary_search(nodes.begin(), nodes.end(), m_rows[std::size_t(row)].node))
            rows.push_back(row);
    }
    return rows;
}

QVariant TreeModel::data(const QModelIndex &index, int role) const
{
    const qint32 node = nodeAt(index.row());
    if (node < 0)
        return {};
    switch (role) {
    case Qt::DisplayRole:
        return m_tree->text(node, index.column());
    case Qt::ToolTipRole:
        return plainToolTip(m_tree->hint(node, index.column()));
    case Qt::TextAlignmentRole:
        return int(m_tree->alignment(index.column()));
    default:
        return m_tree->data(node, index.column(), role);
    }
}

QVariant TreeModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal)
        return {};
    if (role == Qt::TextAlignmentRole)
        return int(m_tree->alignment(section));
    if (role == Qt::InitialSortOrderRole) // of numbers, the largest are what one looks for
        return int(m_tree->alignment(section) & Qt::AlignRight ? Qt::DescendingOrder : Qt::AscendingOrder);
    return role == Qt::DisplayRole ? QVariant(m_headings.value(section)) : QVariant();
}

void TreeModel::sort(int column, Qt::SortOrder order)
{
    beginResetModel();
    m_order = {column, order};
    m_rows = madeRows();
    endResetModel();
}

// Changes -------------------------------------------------------------------------------------------------------------

void TreeModel::renumber(const std::vector<qint32> &places)
{
    for (TreeRow &row : m_rows)
        row.node = row.node < 0 ? -1 : places[std::size_t(row.node)];
    if (!m_words.isEmpty()) {
        m_filter = {}; // its marks are those of the old numbers
        restartFilter();
    }
}

void TreeModel::update(const std::vector<qint32> *places)
{
    if (places)
        renumber(*places);
    std::vector<TreeRow> next = madeRows();
    const auto sameNode = [](const TreeRow &a, const TreeRow &b) { return a.node == b.node; };
    const std::size_t both = std::min(m_rows.size(), next.size());
    const auto prefix = std::size_t(
        std::mismatch(m_rows.begin(), m_rows.begin() + qsizetype(both), next.begin(), sameNode).first - m_rows.begin());
    const auto suffix = std::size_t(
        std::mismatch(m_rows.rbegin(), m_rows.rbegin() + qsizetype(both - prefix), next.rbegin(), sameNode).first -
        m_rows.rbegin());
    const std::size_t gone = m_rows.size() - prefix - suffix;
    const std::size_t come = next.size() - prefix - suffix;
    if (gone > 0 && come > 0) {
        beginResetModel();
        m_rows = std::move(next);
        endResetModel();
        return;
    }
    if (gone > 0)
        beginRemoveRows({}, int(prefix), int(prefix + gone) - 1);
    else if (come > 0)
        beginInsertRows({}, int(prefix), int(prefix + come) - 1);
    m_rows = std::move(next);
    if (gone > 0)
        endRemoveRows();
    else if (come > 0)
        endInsertRows();
    refresh();
}

void TreeModel::refresh()
{
    if (!m_rows.empty())
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
}

// Opening -------------------------------------------------------------------------------------------------------------

bool TreeModel::isExpanded(qint32 node) const
{
    return m_filter.isActive() ? m_filter.isExpanded(node) : m_tree->isExpanded(node);
}

void TreeModel::setOneExpanded(qint32 node, bool expanded)
{
    if (m_filter.isActive())
        m_filter.setExpanded(node, expanded);
    else
        m_tree->setExpanded(node, expanded);
}

void TreeModel::setExpanded(int row, bool expanded)
{
    const qint32 node = nodeAt(row);
    if (node < 0 || !m_tree->isExpandable(node) || isExpanded(node) == expanded)
        return;
    setOneExpanded(node, expanded);
    update();
    Q_EMIT expandedChanged(node, expanded);
}

void TreeModel::setAllExpanded(qint32 node, bool expanded)
{
    if (m_filter.isActive()) {
        const qint32 end = node < 0 ? m_tree->count() : m_tree->end(node);
        for (qint32 at = std::max(node, 0); at < end; ++at)
            m_filter.setExpanded(at, expanded);
    } else {
        m_tree->setAllExpanded(node, expanded);
    }
    update();
}

void TreeModel::reveal(qint32 node)
{
    bool any = false;
    for (qint32 around = node < 0 ? -1 : m_tree->parent(node); around >= 0; around = m_tree->parent(around)) {
        if (!isExpanded(around)) {
            setOneExpanded(around, true);
            any = true;
        }
    }
    if (any)
        update();
}

// Filter --------------------------------------------------------------------------------------------------------------

void TreeModel::setFilter(const QString &words)
{
    m_words = words.trimmed();
    restartFilter();
}

void TreeModel::restartFilter()
{
    m_pending.emplace(m_words, m_tree->count());
    proceedFilter();
}

void TreeModel::proceedFilter()
{
    constexpr int turn = 15; // milliseconds, after which the window has its turn
    if (!m_pending->proceed(*m_tree, turn)) {
        m_turns.start();
        return;
    }
    m_turns.stop();
    m_filter = std::move(*m_pending);
    m_pending.reset();
    update();
    Q_EMIT filtered();
}

} // namespace velmora
