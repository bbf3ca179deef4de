#include "folder/actions/plan_preview_model.h"

#include "folder/actions/action_words.h"
#include "session/shown_path.h"
#include "session/translate.h"

#include <QFont>
#include <QLocale>

#include <algorithm>

namespace velmora {

namespace {

/// What marks an index as that of a group; entries carry the number of their group.
constexpr quintptr groupMark = ~quintptr(0);

const Place &placeOf(const OperationStep &step)
{
    return step.to.isSet() ? step.to : step.from;
}

} // namespace

PlanPreviewModel::PlanPreviewModel(OperationPlan plan, QObject *parent)
    : QAbstractItemModel(parent), m_plan(std::move(plan))
{
    // What can lose something comes first.
    for (const Kind kind : {Kind::Delete, Kind::Replace, Kind::Move, Kind::Write, Kind::MakeFolder, Kind::LeftAlone})
        m_groups.push_back({kind, {}, {}});
    for (qsizetype i = 0; i < m_plan.steps.size(); ++i) {
        const Kind kind = kindOf(m_plan.steps[i]);
        Group &group = m_groups[std::size_t(kind)];
        group.entries.push_back(qint32(i));
        group.totals.add(m_plan.steps[i]);
    }
    for (qsizetype i = 0; i < m_plan.leftOut.size(); ++i)
        m_groups[std::size_t(Kind::LeftAlone)].entries.push_back(qint32(i));
    std::erase_if(m_groups, [](const Group &group) { return group.entries.empty(); });
}

QModelIndex PlanPreviewModel::index(int row, int column, const QModelIndex &parent) const
{
    if (!hasIndex(row, column, parent))
        return {};
    return createIndex(row, column, parent.isValid() ? quintptr(parent.row()) : groupMark);
}

QModelIndex PlanPreviewModel::parent(const QModelIndex &index) const
{
    if (!index.isValid() || index.internalId() == groupMark)
        return {};
    return createIndex(int(index.internalId()), 0, groupMark);
}

int PlanPreviewModel::rowCount(const QModelIndex &parent) const
{
    if (!parent.isValid())
        return int(m_groups.size());
    const bool isGroup = parent.internalId() == groupMark && parent.column() == 0;
    return isGroup ? int(m_groups[std::size_t(parent.row())].entries.size()) : 0;
}

int PlanPreviewModel::columnCount(const QModelIndex &) const
{
    return ColumnCount;
}

QVariant PlanPreviewModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    if (index.internalId() == groupMark) {
        const Group &group = m_groups[std::size_t(index.row())];
        if (role == Qt::FontRole) {
            QFont bold;
            bold.setBold(true);
            return bold;
        }
        if (role != Qt::DisplayRole)
            return {};
        return index.column() == Name ? QVariant(title(group)) : QVariant();
    }
    if (role == Qt::TextAlignmentRole && index.column() == Size)
        return int(Qt::AlignTrailing | Qt::AlignVCenter);
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole)
        return {};
    const Group &group = m_groups[index.internalId()];
    const qint32 entry = group.entries[std::size_t(index.row())];
    if (role == Qt::ToolTipRole)
        return toolTipText(index.column() == Details ? details(group.kind, entry) : shownPath(path(group.kind, entry)));
    switch (index.column()) {
    case Name:
        return shownPath(name(group.kind, entry));
    case Size:
        return sizeWords(group.kind, entry);
    default:
        return details(group.kind, entry);
    }
}

QVariant PlanPreviewModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && role == Qt::TextAlignmentRole && section == Size)
        return int(Qt::AlignTrailing | Qt::AlignVCenter);
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return section == Name ? Velmora::tr("Name") : section == Size ? Velmora::tr("Size") : Velmora::tr("Details");
}

void PlanPreviewModel::sort(int column, Qt::SortOrder order)
{
    Q_EMIT layoutAboutToBeChanged({}, VerticalSortHint);
    for (Group &group : m_groups) {
        const Kind kind = group.kind;
        // Steps are in the order of their names where the plan was made, so their numbers decide among equals.
        const auto lessBy = [order](auto keyOf) {
            return [order, keyOf](qint32 left, qint32 right) {
                const auto &leftKey = keyOf(left);
                const auto &rightKey = keyOf(right);
                return order == Qt::AscendingOrder ? leftKey < rightKey : rightKey < leftKey;
            };
        };
        std::sort(group.entries.begin(), group.entries.end());
        const auto sortBy = [&](auto keyOf) {
            std::stable_sort(group.entries.begin(), group.entries.end(), lessBy(keyOf));
        };
        if (column == Size)
            sortBy([this, kind](qint32 entry) { return size(kind, entry); });
        else if (column == Name)
            sortBy([this, kind](qint32 entry) { return name(kind, entry); });
        else if (column == Details)
            sortBy([this, kind](qint32 entry) { return details(kind, entry); });
    }
    Q_EMIT layoutChanged({}, VerticalSortHint);
}

bool PlanPreviewModel::isFromKept(const OperationStep &step) const
{
    return step.from.isSet() && m_plan.roots[step.from.root].isKept;
}

PlanPreviewModel::Kind PlanPreviewModel::kindOf(const OperationStep &step) const
{
    switch (step.kind) {
    case OperationKind::MakeFolder:
        return Kind::MakeFolder;
    case OperationKind::Copy:
    case OperationKind::Restore:
        return Kind::Write;
    case OperationKind::Replace:
        return Kind::Replace;
    case OperationKind::Move:
        if (step.toSeen.isPresent())
            return Kind::Replace;
        return isFromKept(step) ? Kind::Write : Kind::Move;
    case OperationKind::Recycle:
    case OperationKind::Delete:
        return Kind::Delete;
    }
    return Kind::LeftAlone;
}

QString PlanPreviewModel::title(const Group &group) const
{
    const QLocale locale;
    if (group.kind == Kind::LeftAlone)
        return Velmora::tr("Left alone: %1").arg(locale.toString(qint64(group.entries.size())));
    if (group.kind == Kind::Move)
        return Velmora::tr("Moved: %1 (%2)")
            .arg(locale.toString(qint64(group.entries.size())), sizeText(group.totals.writtenBytes));
    return totalsText(group.totals);
}

QString PlanPreviewModel::summary() const
{
    QStringList titles;
    for (const Group &group : m_groups) {
        if (group.kind != Kind::LeftAlone)
            titles.append(title(group));
    }
    return titles.join(totalsSeparator);
}

QString PlanPreviewModel::path(Kind kind, qint32 entry) const
{
    return kind == Kind::LeftAlone ? m_plan.leftOut[entry].path : m_plan.pathOf(placeOf(m_plan.steps[entry]));
}

QString PlanPreviewModel::name(Kind kind, qint32 entry) const
{
    return kind == Kind::LeftAlone ? m_plan.leftOut[entry].path : placeOf(m_plan.steps[entry]).relative;
}

qint64 PlanPreviewModel::size(Kind kind, qint32 entry) const
{
    if (kind == Kind::LeftAlone || kind == Kind::MakeFolder)
        return -1;
    const SeenEntry &content = m_plan.steps[entry].fromSeen;
    const bool isEmptyFolder = content.kind == NodeKind::Folder && content.size == 0;
    return isEmptyFolder ? -1 : content.size;
}

QString PlanPreviewModel::sizeWords(Kind kind, qint32 entry) const
{
    if (kind == Kind::LeftAlone)
        return {};
    const qint64 bytes = size(kind, entry);
    return bytes < 0 ? Velmora::tr("<folder>") : sizeText(bytes);
}

QString PlanPreviewModel::details(Kind kind, qint32 entry) const
{
    if (kind == Kind::LeftAlone)
        return leftOutText(m_plan.leftOut[entry]);
    const OperationStep &step = m_plan.steps[entry];
    const QString root = shownPath(m_plan.roots[placeOf(step).root].path);
    switch (step.kind) {
    case OperationKind::Recycle:
        return step.fromSeen.kind == NodeKind::Folder
                   ? Velmora::tr("with everything in it from %1 to the recycle bin").arg(root)
                   : Velmora::tr("from %1 to the recycle bin").arg(root);
    case OperationKind::Delete:
        return Velmora::tr("for good from %1").arg(root);
    case OperationKind::Restore:
        return Velmora::tr("from the recycle bin to %1").arg(root);
    case OperationKind::Copy:
    case OperationKind::Replace:
    case OperationKind::Move:
        if (isFromKept(step))
            return Velmora::tr("the old contents, to %1").arg(root);
        if (step.replacesProtected)
            return Velmora::tr("to %1, over a read-only file").arg(root);
        return step.from.relative == step.to.relative
                   ? Velmora::tr("to %1").arg(root)
                   : Velmora::tr("from %1 to %2").arg(shownPath(m_plan.pathOf(step.from)), root);
    case OperationKind::MakeFolder:
        return Velmora::tr("in %1").arg(root);
    }
    return {};
}

} // namespace velmora
