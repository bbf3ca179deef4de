#include "text/change_bar.h"

#include "session/diff_colours.h"
#include "session/theme.h"
#include "session/translate.h"

#include <QBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QToolButton>

namespace velmora {

ChangeBar::ChangeBar(QWidget *parent)
    : QWidget(parent),
      m_text(new QLabel(this)),
      m_reload(new QPushButton(Velmora::tr("&Reload"), this)),
      m_dismiss(new QToolButton(this))
{
    setObjectName(QStringLiteral("changeBar"));
    setAutoFillBackground(true);
    m_text->setObjectName(QStringLiteral("changeText"));
    m_text->setTextFormat(Qt::PlainText);
    m_text->setWordWrap(true);
    m_reload->setObjectName(QStringLiteral("changeReload"));
    m_reload->setFocusPolicy(Qt::TabFocus);
    m_dismiss->setObjectName(QStringLiteral("changeDismiss"));
    m_dismiss->setAutoRaise(true);
    m_dismiss->setFocusPolicy(Qt::TabFocus);
    m_dismiss->setToolTip(Velmora::tr("Keep the text that is shown"));
    m_dismiss->setAccessibleName(m_dismiss->toolTip());

    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(8, 4, 6, 4);
    row->setSpacing(8);
    row->addWidget(m_text, 1);
    row->addWidget(m_reload);
    row->addWidget(m_dismiss);
    connect(m_reload, &QPushButton::clicked, this, &ChangeBar::reloadWanted);
    connect(m_dismiss, &QToolButton::clicked, this, &ChangeBar::dismissed);
    hide();
    refreshTheme();
}

void ChangeBar::say(const QString &text, bool canReload)
{
    m_text->setText(text);
    m_reload->setVisible(canReload);
    setVisible(!text.isEmpty());
}

void ChangeBar::refreshTheme()
{
    QPalette colours = palette();
    colours.setColor(QPalette::Window, diffColour(DiffColour::Modified));
    colours.setColor(QPalette::WindowText, diffColour(DiffColour::Text));
    setPalette(colours);
    m_dismiss->setIcon(themedIcon(QStringLiteral("close.png")));
}

} // namespace velmora
