#include "folder/git/git_view.h"

#include "folder/git/git_row_delegate.h"
#include "session/frame/notice_card.h"
#include "session/translate.h"

#include <QHeaderView>

#include <algorithm>

namespace velmora {

namespace {

/// The columns of a fixed width, those first that go first where room is short, with the longest text that they hold.
struct FixedColumn {
    int column;
    QString widest;
};

QList<FixedColumn> fixedColumns()
{
    return {{GitRowTree::LeftSize, QStringLiteral("88,888,888")},
            {GitRowTree::RightSize, QStringLiteral("88,888,888")},
            {GitRowTree::Mode, Velmora::tr("File") + QStringLiteral(" → ") + Velmora::tr("Executable")},
            {GitRowTree::Added, QStringLiteral("+88,888")},
            {GitRowTree::Removed, QStringLiteral("−88,888")},
            {GitRowTree::Status, Velmora::tr("%1 (%2 % alike)").arg(Velmora::tr("Renamed")).arg(QStringLiteral("88"))}};
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
    constexpr int room = 16;
    constexpr int leastName = 200;
    int left = viewport()->width();
    const QList<FixedColumn> columns = fixedColumns();
    for (const FixedColumn &one : columns) {
        const int width = fontMetrics().horizontalAdvance(one.widest) + room;
        horizontalHeader()->resizeSection(one.column, width);
        left -= width;
    }
    for (const FixedColumn &one : columns) {
        const bool hides = left < 2 * leastName && one.column != GitRowTree::Status &&
                           one.column != GitRowTree::Added && one.column != GitRowTree::Removed;
        setColumnHidden(one.column, hides);
        if (hides)
            left += fontMetrics().horizontalAdvance(one.widest) + room;
    }
    constexpr int leastShown = 80;
    const int name = std::max(leastShown, left / 2);
    horizontalHeader()->resizeSection(GitRowTree::LeftName, name);
    horizontalHeader()->resizeSection(GitRowTree::RightName, std::max(leastShown, left - name));
}

} // namespace velmora
