#include "system/snapshot_status_bar.h"

#include "session/theme.h"
#include "session/translate.h"

#include <QBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QProgressBar>

namespace velmora {

SnapshotStatusBar::SnapshotStatusBar(QWidget *parent)
    : QFrame(parent),
      m_sign(new QLabel(this)),
      m_message(new QLabel(this)),
      m_detail(new QLabel(this)),
      m_progress(new QProgressBar(this)),
      m_counts(new QLabel(this))
{
    constexpr int progressWidth = 140;
    m_message->setObjectName(QStringLiteral("statusLabel"));
    m_detail->setObjectName(QStringLiteral("statusDetail"));
    m_counts->setObjectName(QStringLiteral("countsLabel"));
    for (QLabel *label : {m_message, m_detail, m_counts}) {
        label->setTextFormat(Qt::PlainText); // a file may be called "<b>"
        label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    }
    m_detail->setForegroundRole(QPalette::PlaceholderText);
    // A long message must not make the window wider.
    m_detail->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_message->setMinimumWidth(80);
    m_progress->setTextVisible(false);
    m_progress->setFixedSize(progressWidth, fontMetrics().height() - 2);

    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(8, 3, 8, 3);
    row->setSpacing(8);
    row->addWidget(m_sign);
    row->addWidget(m_message);
    row->addWidget(m_detail, 1);
    row->addWidget(m_progress);
    row->addWidget(m_counts);
    m_sign->hide();
    clearProgress();
    refreshTheme();
}

void SnapshotStatusBar::showMessage(const QString &message, const QString &detail)
{
    m_sign->hide();
    m_message->setText(message);
    m_detail->setText(detail);
    for (QLabel *label : {m_message, m_detail})
        label->setToolTip(detail);
}

void SnapshotStatusBar::showFailure(const QString &message, const QString &detail)
{
    showMessage(message, detail);
    m_sign->show();
}

QString SnapshotStatusBar::message() const
{
    return m_message->text();
}

QString SnapshotStatusBar::detail() const
{
    return m_detail->text();
}

void SnapshotStatusBar::showProgress(const QString &text, const ProgressState &state)
{
    showMessage(text);
    m_progress->setRange(0, int(state.total));
    m_progress->setValue(int(state.done));
    m_progress->show();
}

void SnapshotStatusBar::clearProgress()
{
    m_progress->hide();
}

void SnapshotStatusBar::showCounts(const SnapshotCounts &counts, qsizetype shown)
{
    const QLocale locale;
    const auto number = [&locale](qsizetype value) { return locale.toString(qint64(value)); };
    const qsizetype all = counts.same + counts.differences();
    QStringList parts{Velmora::tr("Same: %1").arg(number(counts.same)),
                      Velmora::tr("Changed: %1").arg(number(counts.changed)),
                      Velmora::tr("Left only: %1").arg(number(counts.leftOnly)),
                      Velmora::tr("Right only: %1").arg(number(counts.rightOnly))};
    if (shown < all)
        parts.append(Velmora::tr("Hidden: %1").arg(number(all - shown)));
    m_counts->setText(parts.join(QStringLiteral("   ")));
}

void SnapshotStatusBar::refreshTheme()
{
    m_sign->setPixmap(themedIcon(QStringLiteral("warning.png")).pixmap(16));
}

} // namespace velmora
