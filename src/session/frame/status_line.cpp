#include "session/frame/status_line.h"

#include "core/visible_name.h"
#include "session/frame/elided_label.h"
#include "session/theme.h"

#include <QBoxLayout>
#include <QProgressBar>

namespace velmora {

namespace {

constexpr int roomForBoth = 130; // characters: a usual message beside usual facts
constexpr int progressWidth = 140;
constexpr auto moment = std::chrono::milliseconds(200);
constexpr int spacing = 16;

} // namespace

StatusLine::StatusLine(QWidget *parent)
    : QWidget(parent),
      m_sign(new QLabel),
      m_message(new ElidedLabel),
      m_detail(new ElidedLabel),
      m_progressText(new ElidedLabel),
      m_progress(new QProgressBar),
      m_rows(new QBoxLayout(QBoxLayout::LeftToRight, this)),
      m_facts(new QHBoxLayout)
{
    m_message->setObjectName(QStringLiteral("statusLabel"));
    m_detail->setObjectName(QStringLiteral("statusDetail"));
    m_detail->setForegroundRole(QPalette::PlaceholderText);
    m_progressText->setObjectName(QStringLiteral("progressLabel"));
    m_progress->setTextVisible(false);
    m_progress->setFixedSize(progressWidth, fontMetrics().height() - 2);

    // A long message gives way to the facts, which are shorter and belong to what is in sight.
    auto *said = new QWidget;
    said->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    auto *message = new QHBoxLayout(said);
    message->setContentsMargins(0, 0, 0, 0);
    message->setSpacing(spacing / 2);
    message->addWidget(m_sign);
    message->addWidget(m_message);
    message->addWidget(m_detail, 1);
    m_facts->setSpacing(spacing);
    m_facts->addWidget(m_progressText);
    m_facts->addWidget(m_progress);
    m_facts->addStretch(1);
    m_rows->setContentsMargins(8, 3, 8, 3);
    m_rows->addWidget(said, 1);
    m_rows->addLayout(m_facts);

    m_appearance.setSingleShot(true);
    m_appearance.setInterval(moment);
    connect(&m_appearance, &QTimer::timeout, this, &StatusLine::showProgressParts);
    m_sign->hide();
    clearProgress();
    refreshTheme();
}

QLabel *StatusLine::addFact(const QString &objectName)
{
    auto *fact = new ElidedLabel;
    fact->setObjectName(objectName);
    addPart(fact);
    return fact;
}

void StatusLine::addPart(QWidget *part)
{
    m_facts->insertWidget(m_facts->count() - 1, part);
}

void StatusLine::showMessage(const QString &message, const QString &detail)
{
    m_sign->hide();
    m_message->setText(visibleName(message));
    m_detail->setText(visibleName(detail));
}

void StatusLine::showFailure(const QString &message, const QString &detail)
{
    showMessage(message, detail);
    m_sign->show();
}

void StatusLine::showProgress(const ProgressState &state, const QString &text)
{
    constexpr int steps = 1000; // a bar counts in int, files are larger
    m_progressText->setText(text);
    m_progress->setRange(0, state.total > 0 ? steps : 0);
    if (state.total > 0)
        m_progress->setValue(int(double(std::min(state.done, state.total)) / double(state.total) * steps));
    if (!m_progress->isHidden())
        showProgressParts();
    else if (!m_appearance.isActive())
        m_appearance.start();
}

void StatusLine::showProgressParts()
{
    m_progressText->setVisible(!m_progressText->text().isEmpty());
    m_progress->show();
}

void StatusLine::clearProgress()
{
    m_appearance.stop();
    m_progressText->hide();
    m_progress->hide();
}

void StatusLine::refreshTheme()
{
    m_sign->setPixmap(themedIcon(QStringLiteral("warning.png")).pixmap(16));
}

void StatusLine::resizeEvent(QResizeEvent * /*event*/)
{
    // Whatever they say: what is above must not move with each message.
    const bool isNarrow = width() < roomForBoth * fontMetrics().averageCharWidth();
    m_rows->setDirection(isNarrow ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
    m_rows->setSpacing(isNarrow ? 2 : spacing);
}

} // namespace velmora
