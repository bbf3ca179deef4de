#include "folder/actions/advanced_filters_dialog.h"

#include "folder/actions/action_words.h"
#include "session/translate.h"
#include "settings/dialogs/confirm_buttons.h"

#include <QCheckBox>
#include <QDateTimeEdit>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

#include <limits>

namespace velmora {

namespace {

constexpr qint64 kilobyte = 1024;
const QString timeFormat = QStringLiteral("yyyy/MM/dd HH:mm");

/// Rounded up, so that a limit never becomes none.
int inKilobytes(qint64 bytes)
{
    const qint64 number = bytes <= 0 ? 0 : (bytes - 1) / kilobyte + 1;
    return int(qMin<qint64>(number, std::numeric_limits<int>::max()));
}

qint64 chosenSize(const QSpinBox &box, qint64 before)
{
    return box.value() == inKilobytes(before) ? before : box.value() * kilobyte;
}

QDateTime wholeMinute(const QDateTime &time)
{
    const QTime clock = time.time();
    return QDateTime(time.date(), QTime(clock.hour(), clock.minute()));
}

} // namespace

AdvancedFiltersDialog::AdvancedFiltersDialog(const FolderViewLimits &limits, QWidget *parent)
    : QDialog(parent),
      m_limits(limits),
      m_minimum(makeSize(QStringLiteral("minimumSize"), limits.minimumSize)),
      m_maximum(makeSize(QStringLiteral("maximumSize"), limits.maximumSize)),
      m_verdict(new QLabel)
{
    setWindowTitle(Velmora::tr("Advanced filters"));
    setModal(true);
    const QDateTime today = QDateTime(QDate::currentDate(), QTime(0, 0));
    m_from = makeTime(QStringLiteral("fromTime"), limits.from, today.addMonths(-1));
    m_to = makeTime(QStringLiteral("toTime"), limits.to, QDateTime(QDate::currentDate(), QTime(23, 59)));
    m_verdict->setObjectName(QStringLiteral("limitsVerdict"));

    auto *clear = new QPushButton(Velmora::tr("Clear filters"));
    clear->setObjectName(QStringLiteral("clearLimits"));
    clear->setAutoDefault(false);
    connect(clear, &QPushButton::clicked, this, &AdvancedFiltersDialog::clear);
    QHBoxLayout *buttons = makeConfirmButtons(*this);
    buttons->insertWidget(0, clear);
    m_ok = findChild<QPushButton *>(QStringLiteral("settingsOk"));

    auto *whole = new QVBoxLayout(this);
    whole->setSpacing(10);
    whole->addWidget(makeSizes());
    whole->addWidget(makeTimes());
    whole->addWidget(m_verdict);
    whole->addStretch(1);
    whole->addLayout(buttons);
    judge();
    resize(sizeHint().expandedTo({400, 0}));
}

FolderViewLimits AdvancedFiltersDialog::limits() const
{
    FolderViewLimits limits = m_limits;
    limits.minimumSize = chosenSize(*m_minimum, m_limits.minimumSize);
    limits.maximumSize = chosenSize(*m_maximum, m_limits.maximumSize);
    const auto chosen = [](const TimeLimit &limit, const QDateTime &before, int secondsToEnd) {
        if (!limit.enabled->isChecked())
            return QDateTime();
        const QDateTime time = wholeMinute(limit.time->dateTime());
        const bool untouched = before.isValid() && wholeMinute(before.toLocalTime()) == time;
        return untouched ? before : time.addSecs(secondsToEnd);
    };
    limits.from = chosen(m_from, m_limits.from, 0);
    limits.to = chosen(m_to, m_limits.to, 59);
    if (limits.to.isValid() && limits.to != m_limits.to)
        limits.to = limits.to.addMSecs(999);
    return limits;
}

QWidget *AdvancedFiltersDialog::makeSizes()
{
    auto *group = new QGroupBox(Velmora::tr("File size range"));
    auto *form = new QFormLayout(group);
    form->setFieldGrowthPolicy(QFormLayout::FieldsStayAtSizeHint);
    form->addRow(Velmora::tr("Min:"), m_minimum);
    form->addRow(Velmora::tr("Max:"), m_maximum);
    return group;
}

QWidget *AdvancedFiltersDialog::makeTimes()
{
    auto *group = new QGroupBox(Velmora::tr("Modified date range"));
    auto *grid = new QGridLayout(group);
    grid->setHorizontalSpacing(10);
    const auto add = [grid](int row, const QString &text, const TimeLimit &limit) {
        auto *label = new QLabel(text);
        label->setBuddy(limit.time);
        grid->addWidget(label, row, 0);
        grid->addWidget(limit.enabled, row, 1);
        grid->addWidget(limit.time, row, 2);
    };
    add(0, Velmora::tr("From:"), m_from);
    add(1, Velmora::tr("To:"), m_to);
    grid->setColumnStretch(3, 1);
    return group;
}

QSpinBox *AdvancedFiltersDialog::makeSize(const QString &name, qint64 bytes)
{
    auto *box = new QSpinBox;
    box->setObjectName(name);
    box->setRange(0, std::numeric_limits<int>::max());
    box->setSuffix(Velmora::tr(" KB"));
    box->setSpecialValueText(Velmora::tr("Any"));
    box->setGroupSeparatorShown(true);
    box->setStepType(QAbstractSpinBox::AdaptiveDecimalStepType);
    box->setValue(inKilobytes(bytes));
    // Room for usual sizes; the widest number would make the window too wide.
    box->setMinimumWidth(box->fontMetrics().horizontalAdvance(QStringLiteral("2,000,000,000 KB")) + 40);
    connect(box, &QSpinBox::valueChanged, this, &AdvancedFiltersDialog::judge);
    return box;
}

AdvancedFiltersDialog::TimeLimit AdvancedFiltersDialog::makeTime(const QString &name, const QDateTime &value,
                                                                 const QDateTime &proposal)
{
    const TimeLimit limit{new QCheckBox(Velmora::tr("Enable")), new QDateTimeEdit};
    limit.enabled->setObjectName(name + QLatin1String("Enabled"));
    limit.enabled->setChecked(value.isValid());
    limit.time->setObjectName(name);
    limit.time->setDisplayFormat(timeFormat);
    limit.time->setCalendarPopup(true);
    limit.time->setDateTime(value.isValid() ? value.toLocalTime() : proposal);
    limit.time->setEnabled(value.isValid());
    connect(limit.enabled, &QCheckBox::toggled, limit.time, &QWidget::setEnabled);
    connect(limit.enabled, &QCheckBox::toggled, this, &AdvancedFiltersDialog::judge);
    connect(limit.time, &QDateTimeEdit::dateTimeChanged, this, &AdvancedFiltersDialog::judge);
    return limit;
}

void AdvancedFiltersDialog::clear()
{
    m_minimum->setValue(0);
    m_maximum->setValue(0);
    m_from.enabled->setChecked(false);
    m_to.enabled->setChecked(false);
}

void AdvancedFiltersDialog::judge()
{
    if (!m_ok)
        return; // while the controls are made
    const FolderViewLimits chosen = limits();
    QString problem;
    if (chosen.maximumSize > 0 && chosen.minimumSize > chosen.maximumSize)
        problem = Velmora::tr("The smallest size is above the largest: no file would be shown");
    else if (chosen.from.isValid() && chosen.to.isValid() && chosen.from > chosen.to)
        problem = Velmora::tr("The first date is after the last: no file would be shown");
    m_verdict->setText(problem.isEmpty() ? QString() : QStringLiteral("⚠ ") + problem);
    m_ok->setEnabled(problem.isEmpty());
}

QString advancedFiltersLogLine(const FolderViewLimits &limits, const QTime &time)
{
    const auto size = [](qint64 bytes) { return bytes > 0 ? QString::number(inKilobytes(bytes)) : Velmora::tr("Any"); };
    const auto date = [](const QDateTime &limit) {
        return limit.isValid() ? limit.toLocalTime().toString(timeFormat) : Velmora::tr("Any");
    };
    return Velmora::tr("%1 filters updated: size[%2-%3 KB] date[%4 ~ %5]")
        .arg(logTime(time), size(limits.minimumSize), size(limits.maximumSize), date(limits.from), date(limits.to));
}

} // namespace velmora
