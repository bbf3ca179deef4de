#include "folder/compare/time_shift_bar.h"

#include "session/translate.h"

#include <QLocale>

namespace velmora {

namespace {

constexpr int hour = 3600;
constexpr int rounding = 2;

} // namespace

TimeShiftBar::TimeShiftBar(QWidget *parent) : NoticeBar(QStringLiteral("timeShiftBar"), parent)
{
    setClosable(Velmora::tr("Hide this remark"));
    connect(this, &NoticeBar::actionWanted, this, [this] { Q_EMIT toleranceWanted(m_seconds); });
    connect(this, &NoticeBar::closed, this, [this] { m_dismissed = true; });
}

void TimeShiftBar::show(const TimeShifts &shifts, const FolderSessionOptions &options)
{
    const bool byRules = compareMethod(options.compareBasis) == CompareMethod::Rules;
    const bool hours = shifts.hour > shifts.twoSeconds;
    const qint64 count = hours ? shifts.hour : shifts.twoSeconds;
    m_seconds = hours ? hour : rounding;
    if (m_dismissed || !byRules || count == 0 || options.timeToleranceSec >= m_seconds) {
        clear();
        return;
    }
    const QString number = QLocale().toString(count);
    setAction(Velmora::tr("Treat as equal"),
              Velmora::tr("Sets the time tolerance of this session to %1 seconds: files of equal size whose "
                          "times are that close count as equal without being read")
                  .arg(m_seconds));
    tell(hours ? Velmora::tr("%1 files differ only by exactly 1 hour in their times").arg(number)
               : Velmora::tr("%1 files differ only by up to 2 seconds in their times").arg(number),
         Tone::Remark);
}

} // namespace velmora
