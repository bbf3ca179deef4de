#include "folder/git/git_view.h"

#include "folder/git/git_row_delegate.h"
#include "session/frame/notice_card.h"
#include "session/translate.h"

#include <QHeaderView>
#include <QList>

#include <algorithm>

namespace velmora {

namespace {

/// Columns of a fixed width, which is that of their longest text.
struct FixedColumn {
    int column;
    QString widest;
};

/// Those that go where room is short: both sizes first.
QList<QList<FixedColumn>> sparedColumns()
{
    const QString size = QStringLiteral("88,888,888");
    return {{{GitRowTree::LeftSize, size}, {GitRowTree::RightSize, size}},
            {{GitRowTree::Mode, Velmora::tr("File") + QStringLiteral(" → ") + Velmora::tr("Executable")}}};
}

QList<FixedColumn> keptColumns()
{
    const QString status = Velmora::tr("%1 (%2 % alike)").arg(Velmora::tr("Renamed")).arg(QStringLiteral("88"));
    return {{GitRowTree::Added, QStringLiteral("+88,888")},
            {GitRowTree::Removed, QStringLiteral("−88,888")},
            {GitRowTree::Status, status}};
}

} // namespace

GitView::GitView(TreeModel &model, QWidget *parent) : TreeView(model, parent), m_notice(new NoticeCard(this))
{
    setItemDelegate(new GitRowDelegate(model, this));
    setObjectName(QStringLiteral("gitTree"));
    setAccessibleName(Velmora::tr("Changed files"));
    horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    layOutColumns();
}

void GitView::refreshTheme()
{
    m_notice->refresh();
}

void GitView::resizeEvent(QResizeEvent *event)
{
    TreeView::resizeEvent(event);
    layOutColumns();
    m_notice->place();
}

void GitView::layOutColumns()
{
    constexpr int leastName = 200;
    constexpr int leastShown = 80;
    int left = viewport()->width();
    const QList<FixedColumn> kept = keptColumns();
    for (const FixedColumn &one : kept)
        left -= takeWidth(one.column, one.widest);
    const QList<QList<FixedColumn>> spared = sparedColumns();
    for (const QList<FixedColumn> &group : spared) {
        for (const FixedColumn &one : group)
            left -= takeWidth(one.column, one.widest);
    }
    for (const QList<FixedColumn> &group : spared) {
        const bool hides = left < 2 * leastName;
        for (const FixedColumn &one : group) {
            left += hides ? takeWidth(one.column, one.widest) : 0;
            setColumnHidden(one.column, hides);
        }
    }
    if (left < 2 * leastName) {
        // The tool tip tells how much is alike.
        left += columnWidth(GitRowTree::Status);
        left -= takeWidth(GitRowTree::Status, Velmora::tr("Renamed"));
    }
    const int name = std::max(leastShown, left / 2);
    horizontalHeader()->resizeSection(GitRowTree::LeftName, name);
    horizontalHeader()->resizeSection(GitRowTree::RightName, std::max(leastShown, left - name));
}

int GitView::takeWidth(int column, const QString &widest)
{
    constexpr int room = 16;
    const int width = fontMetrics().horizontalAdvance(widest) + room;
    horizontalHeader()->resizeSection(column, width);
    return width;
}

} // namespace velmora
