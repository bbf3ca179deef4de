#include "filetypes/binary/hex_starts_bar.h"

#include "filetypes/binary/engine/byte_text.h"
#include "session/theme.h"
#include "session/translate.h"

#include <QBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QToolButton>

namespace velmora {

HexStartsBar::HexStartsBar(QWidget *parent)
    : QWidget(parent),
      m_fields{new QLineEdit(this), new QLineEdit(this)},
      m_reset(new QPushButton(Velmora::tr("Reset"), this)),
      m_close(new QToolButton(this))
{
    auto *compare = new QPushButton(Velmora::tr("Compare"), this);
    compare->setObjectName(QStringLiteral("startsCompare"));
    m_reset->setToolTip(Velmora::tr("Compare both sides from their beginnings"));
    m_reset->setObjectName(QStringLiteral("startsReset"));
    m_close->setObjectName(QStringLiteral("startsClose"));
    m_close->setAutoRaise(true);
    m_close->setToolTip(Velmora::tr("Close (Esc)"));
    m_close->setAccessibleName(m_close->toolTip());
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(6, 2, 6, 2);
    const Sides<QString> labels{Velmora::tr("Left from:"), Velmora::tr("Right from:")};
    for (const Side side : bothSides) {
        constexpr int fieldWidth = 150;
        auto *label = new QLabel(labels[side], this);
        label->setBuddy(m_fields[side]);
        m_fields[side]->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("0x0000000000")));
        m_fields[side]->setMaximumWidth(fieldWidth);
        m_fields[side]->setToolTip(Velmora::tr("1234, 0x4D2 or 4D2h"));
        row->addWidget(label);
        row->addWidget(m_fields[side], 1);
        connect(m_fields[side], &QLineEdit::returnPressed, this, &HexStartsBar::compareWanted);
    }
    m_fields.left->setObjectName(QStringLiteral("leftStart"));
    m_fields.right->setObjectName(QStringLiteral("rightStart"));
    row->addWidget(compare);
    row->addWidget(m_reset);
    row->addStretch(1);
    row->addWidget(m_close);
    setFocusProxy(m_fields.left);
    connect(compare, &QPushButton::clicked, this, &HexStartsBar::compareWanted);
    connect(m_reset, &QPushButton::clicked, this, [this] {
        setStarts({});
        Q_EMIT compareWanted();
    });
    connect(m_close, &QToolButton::clicked, this, [this] {
        hide();
        Q_EMIT closed();
    });
    setStarts({});
    refreshTheme();
    hide();
}

std::optional<Sides<qint64>> HexStartsBar::starts() const
{
    const std::optional<qint64> left = offsetFromText(m_fields.left->text(), 0);
    const std::optional<qint64> right = offsetFromText(m_fields.right->text(), 0);
    return left && right ? std::optional(Sides<qint64>{*left, *right}) : std::nullopt;
}

void HexStartsBar::setStarts(const Sides<qint64> &starts)
{
    for (const Side side : bothSides)
        m_fields[side]->setText(QStringLiteral("0x") + QString::number(starts[side], 16).toUpper());
}

void HexStartsBar::refreshTheme()
{
    m_close->setIcon(themedIcon(QStringLiteral("close.png")));
}

void HexStartsBar::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape)
        m_close->click();
    else
        QWidget::keyPressEvent(event);
}

} // namespace velmora
