#include "folder/duplicates/duplicate_view.h"

#include "folder/duplicates/duplicate_tree.h"
#include "session/frame/notice_card.h"
#include "session/translate.h"

#include <QHeaderView>

#include <algorithm>

namespace velmora {

namespace {

constexpr int padding = 20; ///< beside the text of a column

} // namespace

DuplicateView::DuplicateView(TreeModel &model, QWidget *parent)
    : TreeView(model, parent), m_notice(new NoticeCard(viewport()))
{
    setObjectName(QStringLiteral("duplicateGroups"));
    setAccessibleName(Velmora::tr("Duplicates"));
    setTextElideMode(Qt::ElideMiddle);
    layOutColumns();
}

void DuplicateView::layOutColumns()
{
    const QFontMetrics metrics = fontMetrics();
    for (const auto &[column, text] : {std::pair(DuplicateTree::Size, QStringLiteral("1,023.9 MB")),
                                       std::pair(DuplicateTree::Modified, QStringLiteral("2000/10/20 20:00:00"))})
        horizontalHeader()->resizeSection(column, metrics.horizontalAdvance(text) + padding);
}

std::pair<int, int> DuplicateView::rowsInSight() const
{
    const int first = rowAtPoint({0, 0});
    const int last = rowAtPoint({0, viewport()->height() - 1});
    return {first, last < 0 && first >= 0 ? model()->rowCount() - 1 : last};
}

void DuplicateView::refreshTheme()
{
    m_notice->refresh();
    viewport()->update();
}

void DuplicateView::resizeEvent(QResizeEvent *event)
{
    TreeView::resizeEvent(event);
    // The digests give way first: paths are what one reads.
    const int whole = fontMetrics().horizontalAdvance(QString(32, u'8')) + padding;
    const int leastPath = 48 * fontMetrics().averageCharWidth();
    const int room = viewport()->width() - horizontalHeader()->sectionSize(DuplicateTree::Size) -
                     horizontalHeader()->sectionSize(DuplicateTree::Modified) - leastPath;
    horizontalHeader()->resizeSection(DuplicateTree::Digest, std::clamp(room, std::min(whole, 80), whole));
    m_notice->place();
}

} // namespace velmora
