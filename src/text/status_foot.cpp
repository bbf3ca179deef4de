#include "text/status_foot.h"

#include "core/visible_name.h"
#include "session/translate.h"
#include "text/elided_label.h"

#include <QBoxLayout>
#include <QLabel>

namespace velmora {

namespace {

constexpr int roomForBoth = 110; // characters

} // namespace

StatusFoot::StatusFoot(QWidget *parent)
    : QWidget(parent),
      m_message(new ElidedLabel),
      m_place(new QLabel),
      m_blocks(new QLabel),
      m_format(new ElidedLabel),
      m_layout(new QBoxLayout(QBoxLayout::LeftToRight, this))
{
    m_message->setObjectName(QStringLiteral("statusLabel"));
    m_format->setObjectName(QStringLiteral("formatLabel"));
    m_layout->setContentsMargins(8, 3, 8, 3);
    m_layout->setSpacing(2);
    m_place->setObjectName(QStringLiteral("placeLabel"));
    m_blocks->setObjectName(QStringLiteral("blocksLabel"));
    m_blocks->setToolTip(
        Velmora::tr("A block is a run of rows that differ; the bar above counts and steps through blocks"));
    auto *facts = new QHBoxLayout;
    facts->setSpacing(16);
    facts->addWidget(m_blocks);
    facts->addWidget(m_place);
    facts->addWidget(m_format, 1);
    m_layout->addWidget(m_message, 1);
    m_layout->addLayout(facts);
}

QString StatusFoot::message() const
{
    return m_message->text();
}

void StatusFoot::showMessage(const QString &message)
{
    m_message->setText(visibleName(message));
}

void StatusFoot::showPlace(const QString &place)
{
    m_place->setText(place);
}

void StatusFoot::showFormat(const QString &format)
{
    m_format->setText(format);
}

void StatusFoot::showBlocks(qsizetype rows, qsizetype blocks)
{
    m_blocks->setText(blocks > 0 ? Velmora::tr("%1 rows in %2 blocks").arg(rows).arg(blocks) : QString());
    m_blocks->setVisible(blocks > 0);
}

void StatusFoot::resizeEvent(QResizeEvent * /*event*/)
{
    // Whatever they say: the texts above must not move with each message.
    const bool isNarrow = width() < roomForBoth * fontMetrics().averageCharWidth();
    m_layout->setDirection(isNarrow ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
    m_layout->setSpacing(isNarrow ? 2 : 16);
}

} // namespace velmora
