#include "folder/sync/sync_remarks.h"

#include "session/frame/notice_bar.h"
#include "session/translate.h"

#include <QBoxLayout>
#include <QLocale>

namespace velmora {

namespace {

void tell(NoticeBar &bar, qint64 count, const QString &text, NoticeBar::Tone tone)
{
    if (count > 0)
        bar.tell(text.arg(QLocale().toString(count)), tone);
    else
        bar.clear();
}

} // namespace

SyncRemarks::SyncRemarks(QWidget *parent)
    : QWidget(parent),
      m_conflicts(new NoticeBar(QStringLiteral("nameConflictsBar"))),
      m_moves(new NoticeBar(QStringLiteral("movesBar"))),
      m_hours(new NoticeBar(QStringLiteral("hoursBar")))
{
    m_conflicts->setAction(Velmora::tr("List them"), Velmora::tr("Writes the names into the log below the plan"));
    m_moves->setAction(Velmora::tr("Look for moved files"),
                       Velmora::tr("Reads them, and moves what has the same contents instead of copying and deleting"));
    m_hours->setAction(Velmora::tr("Ignore whole hours"),
                       Velmora::tr("Counts such times as equal: files of equal size are not read then, and neither "
                                   "of two files is newer"));
    connect(m_conflicts, &NoticeBar::actionWanted, this, &SyncRemarks::conflictsWanted);
    connect(m_moves, &NoticeBar::actionWanted, this, &SyncRemarks::movesWanted);
    connect(m_hours, &NoticeBar::actionWanted, this, &SyncRemarks::hoursIgnored);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    for (NoticeBar *bar : {m_conflicts, m_moves, m_hours}) {
        bar->setClosable(Velmora::tr("Hide this remark"));
        column->addWidget(bar);
    }
}

void SyncRemarks::show(const Facts &facts)
{
    tell(*m_conflicts, facts.conflicts, Velmora::tr("Names in conflict with others, or on other systems: %1"),
         NoticeBar::Tone::Warning);
    tell(*m_moves, facts.likelyMoves, Velmora::tr("Files that may only have been moved or renamed: %1"),
         NoticeBar::Tone::Remark);
    tell(*m_hours, facts.wholeHours, Velmora::tr("Files whose times are whole hours apart on the two sides: %1"),
         NoticeBar::Tone::Remark);
}

} // namespace velmora
