#include "folder/sync/sync_plan_model.h"

#include "core/path_names.h"
#include "core/visible_name.h"
#include "folder/actions/action_words.h"
#include "folder/sync/sync_words.h"
#include "session/diff_colours.h"
#include "session/folder_colours.h"
#include "session/translate.h"

#include <QApplication>
#include <QHash>
#include <QLocale>
#include <QStyle>

namespace velmora {

namespace {

QColor actionColour(const SyncPlanItem &item)
{
    switch (isStep(item) ? item.syncAction() : SyncAction::Skip) {
    case SyncAction::Skip:
        return diffColour(DiffColour::MutedText);
    case SyncAction::DeleteLeft:
    case SyncAction::DeleteRight:
        return folderMarkColour(FolderMark::Newer); // the ink of what wants a look
    case SyncAction::CopyToLeft:
    case SyncAction::CopyToRight:
    case SyncAction::MoveOnLeft:
    case SyncAction::MoveOnRight:
        break;
    }
    return diffColour(DiffColour::Text);
}

QString timeText(const QDateTime &time)
{
    return time.isValid() ? time.toLocalTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")) : QString();
}

/// Numbers stand under each other, and times in the middle of their column, apart from the sizes beside them.
Qt::Alignment alignmentOf(int column)
{
    switch (column) {
    case SyncPlanModel::LeftSize:
    case SyncPlanModel::RightSize:
        return Qt::AlignRight | Qt::AlignVCenter;
    case SyncPlanModel::LeftTime:
    case SyncPlanModel::RightTime:
        return Qt::AlignCenter;
    default:
        return Qt::AlignLeft | Qt::AlignVCenter;
    }
}

} // namespace

SyncPlanModel::SyncPlanModel(QObject *parent)
    : QAbstractItemModel(parent),
      m_folder(QApplication::style()->standardIcon(QStyle::SP_DirIcon)),
      m_file(QApplication::style()->standardIcon(QStyle::SP_FileIcon))
{}

void SyncPlanModel::setPlan(QList<SyncPlanItem> plan)
{
    beginResetModel();
    m_plan = std::move(plan);
    m_planned.clear();
    for (const SyncPlanItem &item : std::as_const(m_plan))
        m_planned.push_back(item.action);
    findParents();
    buildTree();
    endResetModel();
}

void SyncPlanModel::setRest(QList<SyncPlanItem> plan)
{
    QHash<QString, qint32> chosen;
    for (qsizetype i = 0; i < m_plan.size(); ++i) {
        if (m_plan.at(i).action != m_planned[std::size_t(i)])
            chosen.insert(m_plan.at(i).name, m_plan.at(i).action);
    }
    setPlan(std::move(plan));
    for (SyncPlanItem &item : m_plan) {
        const auto action = chosen.constFind(item.name);
        if (action != chosen.constEnd() && isPossible(item, SyncAction(*action)))
            item.action = *action;
    }
}

void SyncPlanModel::setFilter(const QStringList &masks)
{
    beginResetModel();
    m_masks = WildcardList(masks);
    buildTree();
    endResetModel();
}

QList<SyncPlanItem> SyncPlanModel::shownPlan() const
{
    QList<SyncPlanItem> shown;
    for (qsizetype i = 0; i < m_plan.size(); ++i) {
        if (m_nodes[std::size_t(i)].row >= 0)
            shown.append(m_plan.at(i));
    }
    return shown;
}

SyncCounts SyncPlanModel::shownCounts() const
{
    SyncCounts counts;
    for (qsizetype i = 0; i < m_plan.size(); ++i) {
        if (m_nodes[std::size_t(i)].row >= 0)
            addTo(counts, m_plan.at(i));
    }
    return counts;
}

// The tree -----------------------------------------------------------------------------------------------------------

void SyncPlanModel::findParents()
{
    QHash<QString, qint32> folders;
    m_nodes.assign(std::size_t(m_plan.size()), {});
    for (qint32 i = 0; i < m_plan.size(); ++i) {
        const SyncPlanItem &item = m_plan.at(i);
        m_nodes[std::size_t(i)].parent = folders.value(parentPath(item.name), -1);
        if (item.isDir)
            folders.insert(item.name, i);
    }
}

std::vector<char> SyncPlanModel::shownItems() const
{
    std::vector<char> shown(m_nodes.size(), 0);
    for (std::size_t i = m_nodes.size(); i-- > 0;) {
        const SyncPlanItem &item = m_plan.at(qsizetype(i));
        // Folders come before what is in them, so that by now it is known what that is.
        if (m_masks.isEmpty() || (!item.isDir && showsFile(item)))
            shown[i] = 1;
        if (shown[i] != 0 && m_nodes[i].parent >= 0)
            shown[std::size_t(m_nodes[i].parent)] = 1;
    }
    return shown;
}

bool SyncPlanModel::showsFile(const SyncPlanItem &file) const
{
    return m_masks.matches(bareName(file.name)) &&
           (file.movedFrom.isEmpty() || m_masks.matches(bareName(file.movedFrom)));
}

void SyncPlanModel::buildTree()
{
    const std::vector<char> shown = shownItems();
    m_top.clear();
    for (Node &node : m_nodes)
        node.children.clear();
    for (std::size_t i = 0; i < m_nodes.size(); ++i) {
        Node &node = m_nodes[i];
        node.row = -1;
        if (shown[i] == 0)
            continue;
        std::vector<qint32> &siblings = node.parent < 0 ? m_top : m_nodes[std::size_t(node.parent)].children;
        node.row = qint32(siblings.size());
        siblings.push_back(qint32(i));
    }
}

const std::vector<qint32> &SyncPlanModel::childrenOf(qint32 node) const
{
    return node < 0 ? m_top : m_nodes[std::size_t(node)].children;
}

// Actions ------------------------------------------------------------------------------------------------------------

template <typename Choose>
void SyncPlanModel::change(const QModelIndexList &rows, Choose choose)
{
    std::vector<qint32> open;
    for (const QModelIndex &row : rows)
        open.push_back(nodeOf(row));
    while (!open.empty()) {
        const qint32 node = open.back();
        open.pop_back();
        SyncPlanItem &item = m_plan[node];
        const SyncAction action = choose(item, node);
        if (isPossible(item, action))
            item.action = qint32(action);
        const std::vector<qint32> &children = childrenOf(node);
        open.insert(open.end(), children.begin(), children.end());
    }
    // What is below a row changes with it, so that only the view knows what has to be painted.
    Q_EMIT dataChanged(index(0, Action), index(rowCount() - 1, Action));
    Q_EMIT actionsChanged();
}

void SyncPlanModel::setAction(const QModelIndexList &rows, SyncAction action)
{
    change(rows, [action](const SyncPlanItem &, qint32) { return action; });
}

void SyncPlanModel::setDeleted(const QModelIndexList &rows)
{
    change(rows, [](const SyncPlanItem &item, qint32) {
        return item.leftPath.isEmpty() ? SyncAction::DeleteRight : SyncAction::DeleteLeft;
    });
}

void SyncPlanModel::restoreActions(const QModelIndexList &rows)
{
    change(rows, [this](const SyncPlanItem &, qint32 node) { return SyncAction(m_planned[std::size_t(node)]); });
}

// The model ----------------------------------------------------------------------------------------------------------

QModelIndex SyncPlanModel::index(int row, int column, const QModelIndex &parent) const
{
    const std::vector<qint32> &rows = childrenOf(parent.isValid() ? nodeOf(parent) : -1);
    if (row < 0 || row >= int(rows.size()) || column < 0 || column >= ColumnCount)
        return {};
    return createIndex(row, column, quintptr(rows[std::size_t(row)]));
}

QModelIndex SyncPlanModel::parent(const QModelIndex &index) const
{
    const qint32 parent = index.isValid() ? m_nodes[std::size_t(nodeOf(index))].parent : -1;
    return parent < 0 ? QModelIndex() : createIndex(m_nodes[std::size_t(parent)].row, 0, quintptr(parent));
}

int SyncPlanModel::rowCount(const QModelIndex &parent) const
{
    return parent.column() > 0 ? 0 : int(childrenOf(parent.isValid() ? nodeOf(parent) : -1).size());
}

int SyncPlanModel::columnCount(const QModelIndex & /*parent*/) const
{
    return ColumnCount;
}

QVariant SyncPlanModel::textAt(const SyncPlanItem &item, int column) const
{
    switch (column) {
    case Name:
        return isMove(item)
                   ? Velmora::tr("%1 (from %2)").arg(visibleName(bareName(item.name)), visibleName(item.movedFrom))
                   : visibleName(bareName(item.name));
    case Action:
        return syncActionText(item.syncAction());
    case LeftSize:
        return item.isDir || item.leftPath.isEmpty() ? QString() : sizeText(item.leftSize);
    case RightSize:
        return item.isDir || item.rightPath.isEmpty() ? QString() : sizeText(item.rightSize);
    case LeftTime:
        return timeText(item.leftTime);
    default:
        return timeText(item.rightTime);
    }
}

QString SyncPlanModel::hintAt(const SyncPlanItem &item, int column)
{
    if (column == Name)
        return visibleName(item.name);
    if (column == Action && item.isDir && item.syncAction() != SyncAction::Skip && !isStep(item))
        return Velmora::tr("Both sides have this folder, so that it stays; what is in it has rows of its own.");
    return {};
}

QVariant SyncPlanModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const SyncPlanItem &item = itemAt(index);
    switch (role) {
    case Qt::DisplayRole:
        return textAt(item, index.column());
    case Qt::ToolTipRole: {
        const QString hint = hintAt(item, index.column());
        return hint.isEmpty() ? QVariant() : QVariant(toolTipText(hint));
    }
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(alignmentOf(index.column()));
    case Qt::ForegroundRole:
        return index.column() == Action ? QVariant(actionColour(item)) : QVariant();
    case Qt::DecorationRole:
        if (index.column() != Name)
            return {};
        return item.isDir ? m_folder : m_file;
    default:
        return {};
    }
}

QVariant SyncPlanModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal)
        return {};
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(alignmentOf(section));
    if (role != Qt::DisplayRole)
        return {};
    switch (section) {
    case Name:
        return Velmora::tr("File name");
    case Action:
        return Velmora::tr("Action");
    case LeftSize:
        return Velmora::tr("Left size");
    case LeftTime:
        return Velmora::tr("Left time");
    case RightSize:
        return Velmora::tr("Right size");
    default:
        return Velmora::tr("Right time");
    }
}

} // namespace velmora
