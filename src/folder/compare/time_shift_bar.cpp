#include "folder/compare/time_shift_bar.h"

#include "session/translate.h"

#include <QBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QToolButton>

namespace velmora {

namespace {

constexpr int hour = 3600;
constexpr int rounding = 2;

} // namespace

TimeShiftBar::TimeShiftBar(QWidget *parent)
    : QFrame(parent), m_text(new QLabel(this)), m_accept(new QPushButton(Velmora::tr("Treat as equal"), this))
{
    setObjectName(QStringLiteral("timeShiftBar"));
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::AlternateBase);
    m_accept->setObjectName(QStringLiteral("treatAsEqual"));
    auto *close = new QToolButton(this);
    close->setAutoRaise(true);
    close->setText(QStringLiteral("✕"));
    close->setToolTip(Velmora::tr("Hide this remark"));
    close->setAccessibleName(close->toolTip());
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(10, 3, 6, 3);
    row->setSpacing(10);
    row->addWidget(m_text);
    row->addWidget(m_accept);
    row->addStretch(1);
    row->addWidget(close);
    connect(m_accept, &QPushButton::clicked, this, [this] { Q_EMIT toleranceWanted(m_seconds); });
    connect(close, &QToolButton::clicked, this, [this] {
        m_dismissed = true;
        hide();
    });
    hide();
}

void TimeShiftBar::show(const TimeShifts &shifts, const FolderSessionOptions &options)
{
    const bool byRules = compareMethod(options.compareBasis) == CompareMethod::Rules;
    const bool hours = shifts.hour > shifts.twoSeconds;
    const qint64 count = hours ? shifts.hour : shifts.twoSeconds;
    m_seconds = hours ? hour : rounding;
    if (m_dismissed || !byRules || count == 0 || options.timeToleranceSec >= m_seconds) {
        hide();
        return;
    }
    const QString number = QLocale().toString(count);
    m_text->setText(hours ? Velmora::tr("%1 files differ only by exactly 1 hour in their times").arg(number)
                          : Velmora::tr("%1 files differ only by up to 2 seconds in their times").arg(number));
    m_accept->setToolTip(Velmora::tr("Sets the time tolerance of this session to %1 seconds: files of equal size whose "
                                     "times are that close count as equal without being read")
                             .arg(m_seconds));
    QFrame::show();
}

} // namespace velmora
