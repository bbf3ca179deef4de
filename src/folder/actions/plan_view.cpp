#include "folder/actions/plan_view.h"

#include "session/frame/notice_card.h"

#include <QHeaderView>
#include <QStyle>

#include <algorithm>

namespace velmora {

PlanView::PlanView(const QString &name, QAbstractItemModel &model) : m_notice(new NoticeCard(viewport()))
{
    setObjectName(name);
    setModel(&model);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setAlternatingRowColors(true);
    setSelectionMode(ExtendedSelection);
    setFrameShape(NoFrame);
    setContextMenuPolicy(Qt::CustomContextMenu);
    header()->setStretchLastSection(false);
    connect(this, &QWidget::customContextMenuRequested, this,
            [this](QPoint at) { Q_EMIT menuWanted(viewport()->mapToGlobal(at)); });
}

void PlanView::fitFirstColumn()
{
    const int leastWidth = 24 * fontMetrics().averageCharWidth(); // names can still be told apart
    int others = 0;
    for (int column = 1; column < header()->count(); ++column)
        others += header()->sectionSize(column);
    // With room for a scroll bar that is still to come.
    const int room = width() - style()->pixelMetric(QStyle::PM_ScrollBarExtent) - 2;
    header()->resizeSection(0, std::max(leastWidth, room - others));
}

void PlanView::refreshTheme()
{
    m_notice->refresh();
    viewport()->update();
}

void PlanView::resizeEvent(QResizeEvent *event)
{
    QTreeView::resizeEvent(event);
    fitFirstColumn();
    m_notice->place();
}

} // namespace velmora
