#include "text/status_foot.h"

#include "text/elided_label.h"

#include <QBoxLayout>

namespace velmora {

StatusFoot::StatusFoot(QWidget *parent)
    : QWidget(parent),
      m_message(new ElidedLabel),
      m_format(new ElidedLabel),
      m_layout(new QBoxLayout(QBoxLayout::LeftToRight, this))
{
    m_message->setObjectName(QStringLiteral("statusLabel"));
    m_format->setObjectName(QStringLiteral("formatLabel"));
    m_layout->setContentsMargins(8, 3, 8, 3);
    m_layout->setSpacing(2);
    m_layout->addWidget(m_message, 1);
    m_layout->addWidget(m_format);
}

QString StatusFoot::message() const
{
    return m_message->text();
}

void StatusFoot::showMessage(const QString &message)
{
    m_message->setText(message);
}

void StatusFoot::showFormat(const QString &format)
{
    m_format->setText(format);
    arrange();
}

void StatusFoot::resizeEvent(QResizeEvent * /*event*/)
{
    arrange();
}

void StatusFoot::arrange()
{
    // Messages come and go, and the texts above must not move with each: the formats alone decide.
    const bool isNarrow = width() < 3 * m_format->sizeHint().width();
    m_layout->setDirection(isNarrow ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
    m_layout->setSpacing(isNarrow ? 2 : 16);
}

} // namespace velmora
