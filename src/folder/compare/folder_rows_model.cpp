#include "folder/compare/folder_rows_model.h"

#include "core/path_names.h"
#include "core/visible_name.h"
#include "folder/compare/folder_comparison.h"
#include "session/list/steps.h"
#include "session/plain_text.h"
#include "session/translate.h"

#include <QDir>
#include <QLocale>

namespace velmora {

namespace {

QString sizeText(const FolderTree &tree, qint32 node, Side side)
{
    const FolderDiffItem &item = tree.item(node);
    if (pathOn(item, side).isEmpty())
        return {};
    if (item.isDir) {
        // The total of a folder counts only once all of it is known.
        const FolderTree::Node &here = tree.node(node);
        const MarkSet marks = here.on(side);
        if (here.unloaded || marks.has(FolderMark::Unknown) || marks.has(FolderMark::Scanning))
            return {};
    }
    return QLocale().toString(sizeOn(item, side));
}

QString timeText(const QDateTime &time, QLocale::FormatType format)
{
    return time.isValid() ? QLocale().toString(time.toLocalTime(), format) : QString();
}

/// What a folder contains, in words, as the legend has them.
QString contentsWords(MarkSet marks)
{
    QStringList words;
    if (marks.has(FolderMark::Newer))
        words.append(Velmora::tr("newer or different files"));
    if (marks.has(FolderMark::Older))
        words.append(Velmora::tr("older files"));
    if (marks.has(FolderMark::Unique))
        words.append(Velmora::tr("unique files"));
    if (marks.has(FolderMark::Unknown) || marks.has(FolderMark::Scanning))
        words.append(Velmora::tr("files not compared yet"));
    return words.isEmpty() ? QString() : Velmora::tr("contains %1").arg(words.join(Velmora::tr(", ")));
}

} // namespace

QString sideName(const FolderDiffItem &item, Side side)
{
    return bareName(pathOn(item, side));
}

QString stateSign(const FolderTree &tree, qint32 node)
{
    constexpr QStringView signs = u"?…=←→≠-"; // by `RowState`
    static_assert(signs.size() == qsizetype(RowState::Filtered) + 1);
    return tree.isUnread(node) ? QStringLiteral("≈") : QString(signs[qsizetype(tree.state(node))]);
}

QString stateWords(const FolderTree &tree, qint32 node)
{
    const FolderDiffItem &item = tree.item(node);
    const FolderTree::Node &here = tree.node(node);
    switch (tree.state(node)) {
    case RowState::Unknown:
        if (here.unsure)
            return Velmora::tr("The folder on the other side could not be read");
        return item.isDir ? Velmora::tr("Unknown; open to scan") : Velmora::tr("Not compared yet");
    case RowState::Scanning:
        return item.isDir ? Velmora::tr("Unknown; scanning") : Velmora::tr("Being compared");
    case RowState::Same:
        if (tree.isUnread(node))
            return item.isDir ? Velmora::tr("Contains files of the same size and time that were not read")
                              : Velmora::tr("Same size and time, not read");
        return item.isDir ? Velmora::tr("Contains identical files only") : Velmora::tr("Same");
    case RowState::LeftOnly:
        return isPair(item) ? Velmora::tr("All that is in it is on the left only") : Velmora::tr("Left only");
    case RowState::RightOnly:
        return isPair(item) ? Velmora::tr("All that is in it is on the right only") : Velmora::tr("Right only");
    case RowState::Filtered:
        return Velmora::tr("Contains filtered files only");
    case RowState::Different:
        break;
    }
    if (item.isDir && here.end > node + 1) {
        return Velmora::tr("Different: left %1; right %2")
            .arg(here.left.isEmpty() ? QStringLiteral("-") : contentsWords(here.left),
                 here.right.isEmpty() ? QStringLiteral("-") : contentsWords(here.right));
    }
    if (here.left.has(FolderMark::Older))
        return Velmora::tr("Different; the right one is newer");
    if (here.right.has(FolderMark::Older))
        return Velmora::tr("Different; the left one is newer");
    return Velmora::tr("Different");
}

FolderRowsModel::FolderRowsModel(FolderComparison &comparison, QObject *parent)
    : QAbstractTableModel(parent), m_comparison(comparison)
{
    connect(&comparison, &FolderComparison::treeReplaced, this, &FolderRowsModel::rebuild);
    connect(&comparison, &FolderComparison::treeChanged, this,
            [this](const std::vector<qint32> &places) { update(&places); });
    connect(&comparison, &FolderComparison::statesChanged, this, [this] { update(); });
    connect(&comparison, &FolderComparison::filtered, this, [this] { update(); });
}

const FolderTree &FolderRowsModel::tree() const
{
    return m_comparison.tree();
}

int FolderRowsModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

int FolderRowsModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : folderColumnCount;
}

qint32 FolderRowsModel::nodeAt(int row) const
{
    return row >= 0 && row < rowCount() ? m_rows[std::size_t(row)].node : -1;
}

int FolderRowsModel::rowOf(qint32 node) const
{
    for (; node >= 0; node = tree().node(node).parent) {
        const auto at = std::lower_bound(m_rows.begin(), m_rows.end(), node,
                                         [](const FolderRow &row, qint32 wanted) { return row.node < wanted; });
        if (at != m_rows.end() && at->node == node)
            return int(at - m_rows.begin());
    }
    return -1;
}

// Texts ---------------------------------------------------------------------------------------------------------------

QString FolderRowsModel::text(qint32 node, FolderColumn column) const
{
    const FolderDiffItem &item = tree().item(node);
    switch (column) {
    case FolderColumn::LeftName:
    case FolderColumn::RightName:
        return visibleName(sideName(item, sideOf(column)));
    case FolderColumn::LeftSize:
    case FolderColumn::RightSize:
        return sizeText(tree(), node, sideOf(column));
    case FolderColumn::LeftTime:
        return timeText(item.leftTime, QLocale::ShortFormat);
    case FolderColumn::RightTime:
        return timeText(item.rightTime, QLocale::ShortFormat);
    case FolderColumn::Sign:
        return stateSign(tree(), node);
    }
    return {};
}

QString FolderRowsModel::hint(qint32 node, FolderColumn column) const
{
    const QString words = stateWords(tree(), node);
    if (column == FolderColumn::Sign)
        return words;
    const FolderDiffItem &item = tree().item(node);
    const Side side = sideOf(column);
    const QString &path = pathOn(item, side);
    if (path.isEmpty())
        return words;
    QStringList lines{visibleName(QDir::toNativeSeparators(path)), words};
    if (tree().node(node).unreadable)
        lines.append(Velmora::tr("Could not be read, or not to its end"));
    if (tree().node(node).ignored)
        lines.append(Velmora::tr("Ignored: counts as no difference"));
    const QString size = sizeText(tree(), node, side);
    if (!size.isEmpty())
        lines.append(Velmora::tr("Size: %1 bytes").arg(size));
    lines.append(Velmora::tr("Modified: %1").arg(timeText(timeOn(item, side), QLocale::LongFormat)));
    return lines.join(u'\n');
}

QVariant FolderRowsModel::data(const QModelIndex &index, int role) const
{
    const qint32 node = nodeAt(index.row());
    if (node < 0)
        return {};
    const auto column = FolderColumn(index.column());
    switch (role) {
    case Qt::DisplayRole:
        return text(node, column);
    case Qt::ToolTipRole:
        return plainToolTip(hint(node, column));
    case Qt::AccessibleTextRole:
        return column == FolderColumn::Sign ? stateWords(tree(), node) : text(node, column);
    case Qt::TextAlignmentRole:
        if (column == FolderColumn::Sign)
            return int(Qt::AlignCenter);
        if (column == FolderColumn::LeftSize || column == FolderColumn::RightSize)
            return int(Qt::AlignRight | Qt::AlignVCenter);
        return int(Qt::AlignLeft | Qt::AlignVCenter);
    default:
        return {};
    }
}

QVariant FolderRowsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal)
        return {};
    const auto column = FolderColumn(section);
    if (role == Qt::TextAlignmentRole) {
        const bool size = column == FolderColumn::LeftSize || column == FolderColumn::RightSize;
        return int((size ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    }
    if (role != Qt::DisplayRole)
        return {};
    if (column == FolderColumn::Sign)
        return QString();
    const QString names[] = {Velmora::tr("Name"), Velmora::tr("Size"), Velmora::tr("Modified")};
    return names[column < FolderColumn::Sign ? section : section - int(FolderColumn::RightName)];
}

// Changes -------------------------------------------------------------------------------------------------------------

void FolderRowsModel::rebuild()
{
    beginResetModel();
    m_rows = visibleRows(tree(), m_view);
    endResetModel();
}

void FolderRowsModel::update(const std::vector<qint32> *places)
{
    std::vector<FolderRow> next = visibleRows(tree(), m_view);
    if (places) {
        for (FolderRow &row : m_rows)
            row.node = row.node < 0 ? -1 : (*places)[std::size_t(row.node)];
    }
    const auto sameNode = [](const FolderRow &a, const FolderRow &b) { return a.node == b.node; };
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

void FolderRowsModel::refresh()
{
    if (!m_rows.empty())
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, folderColumnCount - 1));
}

void FolderRowsModel::setView(RowsView view)
{
    if (m_view == view)
        return;
    m_view = view;
    update();
}

void FolderRowsModel::setExpanded(int row, bool expanded)
{
    const qint32 node = nodeAt(row);
    if (node < 0 || !tree().isExpandable(node) || tree().node(node).expanded == expanded)
        return;
    m_comparison.setExpanded(node, expanded);
    update();
}

void FolderRowsModel::setAllExpanded(bool expanded)
{
    m_comparison.setAllExpanded(expanded);
    update();
}

void FolderRowsModel::reveal(qint32 node)
{
    bool any = false;
    for (qint32 folder = node < 0 ? -1 : tree().node(node).parent; folder >= 0; folder = tree().node(folder).parent) {
        if (!tree().node(folder).expanded) {
            m_comparison.setExpanded(folder, true);
            any = true;
        }
    }
    if (any)
        update();
}

qint32 FolderRowsModel::nextDifference(qint32 node, bool forward) const
{
    const FolderTree &all = tree();
    const auto isOne = [&all](qint32 at) {
        const FolderDiffItem &item = all.item(at);
        if (all.node(at).ignored)
            return false;
        if (all.node(at).unsure)
            return false;
        if (!isPair(item)) // all in a folder that is on one side is one difference
            return all.node(at).parent < 0 || isPair(all.item(all.node(at).parent));
        return all.state(at) == RowState::Different && (!item.isDir || all.node(at).end == at + 1);
    };
    const auto isHidden = [&all](qint32 at) {
        for (; at >= 0; at = all.node(at).parent) {
            if (all.node(at).hidden)
                return true;
        }
        return false;
    };
    return stepTo(node, all.size(), forward, [&](qint32 at) { return isOne(at) && !isHidden(at); });
}

} // namespace velmora
