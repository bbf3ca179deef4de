#include "folder/compare/folder_rows_model.h"

#include "core/path_names.h"
#include "core/visible_name.h"
#include "folder/compare/folder_comparison.h"
#include "folder/engine/folder_rows.h"
#include "session/list/steps.h"
#include "session/shown_path.h"
#include "session/translate.h"

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

/// Where times do not count they may be far apart.
QString unreadWords(const FolderDiffItem &item)
{
    constexpr qint64 roundedMs = 2'000;
    if (item.isDir)
        return Velmora::tr("Contains files of the same size and time that were not read");
    return std::abs(item.leftTime.msecsTo(item.rightTime)) > roundedMs ? Velmora::tr("Same size, not read")
                                                                       : Velmora::tr("Same size and time, not read");
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
            return unreadWords(item);
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

const FolderTree &FolderRowTree::tree() const
{
    return m_comparison.tree();
}

void FolderRowTree::setExpanded(qint32 node, bool expanded)
{
    m_comparison.setExpanded(node, expanded);
}

void FolderRowTree::setAllExpanded(qint32 node, bool expanded)
{
    if (node < 0)
        m_comparison.setAllExpanded(expanded);
    else
        RowTree::setAllExpanded(node, expanded);
}

bool FolderRowTree::isShown(qint32 node) const
{
    return !tree().node(node).hidden && isInView(tree(), node, m_view);
}

NodePlace FolderRowTree::place(qint32 node) const
{
    const FolderTree &all = tree();
    const FolderTree::Node &here = all.node(node);
    const bool isShown = !here.hidden && (m_view == RowsView::All || isInView(all, node, m_view));
    return {here.end, here.depth, here.expanded, isShown};
}

// Texts ---------------------------------------------------------------------------------------------------------------

QStringList FolderRowTree::headings() const
{
    const QStringList side{Velmora::tr("Name"), Velmora::tr("Size"), Velmora::tr("Modified"),
                           Velmora::tr("File version")};
    return side + QStringList(QString()) + side;
}

QString FolderRowTree::text(qint32 node, int number) const
{
    const auto column = FolderColumn(number);
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
    case FolderColumn::LeftVersion:
    case FolderColumn::RightVersion:
        return versionText(node, sideOf(column));
    case FolderColumn::Sign:
        return stateSign(tree(), node);
    }
    return {};
}

QString FolderRowTree::versionText(qint32 node, Side side) const
{
    const FolderDiffItem &item = tree().item(node);
    if (item.isDir || pathOn(item, side).isEmpty())
        return {};
    return m_versions->of({m_comparison.spec().roots[side].source, pathOn(item, side), sizeOn(item, side),
                           timeOn(item, side).toMSecsSinceEpoch()});
}

QString FolderRowTree::hint(qint32 node, int number) const
{
    const auto column = FolderColumn(number);
    const QString words = stateWords(tree(), node);
    if (column == FolderColumn::Sign)
        return words;
    const FolderDiffItem &item = tree().item(node);
    const Side side = sideOf(column);
    const QString &path = pathOn(item, side);
    if (path.isEmpty())
        return words;
    QStringList lines{shownPath(path), words};
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

Qt::Alignment FolderRowTree::alignment(int number) const
{
    const auto column = FolderColumn(number);
    if (column == FolderColumn::Sign)
        return Qt::AlignCenter;
    const bool isSize = column == FolderColumn::LeftSize || column == FolderColumn::RightSize;
    return (isSize ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter;
}

QVariant FolderRowTree::data(qint32 node, int column, int role) const
{
    const bool isSign = role == Qt::AccessibleTextRole && FolderColumn(column) == FolderColumn::Sign;
    return isSign ? QVariant(stateWords(tree(), node)) : QVariant();
}

// Model ---------------------------------------------------------------------------------------------------------------

FolderRowsModel::FolderRowsModel(FolderComparison &comparison, QObject *parent)
    : FolderRowsModel(new FolderRowTree(comparison), comparison, parent)
{}

FolderRowsModel::FolderRowsModel(FolderRowTree *shown, FolderComparison &comparison, QObject *parent)
    : TreeModel(std::unique_ptr<RowTree>(shown), parent), m_shown(*shown)
{
    connect(&comparison, &FolderComparison::treeReplaced, this, &FolderRowsModel::rebuild);
    connect(&comparison, &FolderComparison::treeChanged, this,
            [this](const std::vector<qint32> &places) { update(&places); });
    connect(&comparison, &FolderComparison::statesChanged, this, [this] { update(); });
    connect(&comparison, &FolderComparison::filtered, this, [this] { update(); });
    connect(&m_shown.versions(), &FileVersions::read, this, &FolderRowsModel::refresh);
}

void FolderRowsModel::setView(RowsView view)
{
    if (m_shown.view() == view)
        return;
    m_shown.setView(view);
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
