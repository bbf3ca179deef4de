#include "session/frame/status_line.h"

#include "session/frame/progress_strip.h"

#include <QBoxLayout>
#include <QLabel>

namespace velmora {

StatusLine::StatusLine(QWidget *parent) : QWidget(parent), m_strip(new ProgressStrip(this)), m_message(new QLabel(this))
{
    m_message->setObjectName(QStringLiteral("statusLabel"));
    m_message->setTextFormat(Qt::PlainText); // a file may be called "<b>"
    m_message->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_message->setContentsMargins(8, 3, 8, 3);
    // A long message must not make the window wider.
    m_message->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_strip);
    column->addWidget(m_message);
}

void StatusLine::showMessage(const QString &message)
{
    m_message->setText(message);
    m_message->setToolTip(message);
}

void StatusLine::setBusy(bool busy)
{
    if (busy)
        m_strip->showBusy();
    else
        m_strip->clear();
}

void StatusLine::showProgress(const ProgressState &state, const QString &message)
{
    if (state.total > 0)
        m_strip->showFraction(double(state.done) / double(state.total));
    showMessage(message);
}

} // namespace velmora
