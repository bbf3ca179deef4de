#include "session/frame/notice_bar.h"

#include "session/diff_colours.h"
#include "session/theme.h"

#include <QBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QToolButton>

namespace velmora {

namespace {

QColor backgroundOf(NoticeBar::Tone tone, const QPalette &palette)
{
    switch (tone) {
    case NoticeBar::Tone::Verdict:
        return diffColour(DiffColour::Unimportant);
    case NoticeBar::Tone::Warning:
        return diffColour(DiffColour::Modified);
    case NoticeBar::Tone::Remark:
        break;
    }
    return palette.color(QPalette::AlternateBase);
}

} // namespace

NoticeBar::NoticeBar(const QString &objectName, QWidget *parent)
    : QWidget(parent), m_text(new QLabel(this)), m_action(new QPushButton(this)), m_close(new QToolButton(this))
{
    setObjectName(objectName);
    setAutoFillBackground(true);
    m_text->setObjectName(objectName + QStringLiteral("Text"));
    m_text->setTextFormat(Qt::PlainText); // a file may be called "<b>"
    m_text->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_text->setWordWrap(true);
    m_action->setObjectName(objectName + QStringLiteral("Action"));
    m_action->setFocusPolicy(Qt::TabFocus);
    m_action->hide();
    m_close->setObjectName(objectName + QStringLiteral("Close"));
    m_close->setAutoRaise(true);
    m_close->setFocusPolicy(Qt::TabFocus);
    m_close->hide();

    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(8, 4, 6, 4);
    row->setSpacing(10);
    row->addWidget(m_text, 1);
    row->addWidget(m_action);
    row->addWidget(m_close);
    connect(m_action, &QPushButton::clicked, this, &NoticeBar::actionWanted);
    connect(m_close, &QToolButton::clicked, this, [this] {
        hide();
        Q_EMIT closed();
    });
    hide();
    refreshTheme();
}

void NoticeBar::setAction(const QString &text, const QString &toolTip)
{
    m_action->setText(text);
    m_action->setToolTip(toolTip);
    m_action->setVisible(!text.isEmpty());
}

void NoticeBar::setClosable(const QString &toolTip)
{
    m_close->setToolTip(toolTip);
    m_close->setAccessibleName(toolTip);
    m_close->show();
}

void NoticeBar::tell(const QString &text, Tone tone)
{
    m_text->setText(text);
    m_text->setAlignment(tone == Tone::Verdict ? Qt::AlignCenter : Qt::AlignLeft | Qt::AlignVCenter);
    m_tone = tone;
    refreshTheme();
    setVisible(!text.isEmpty());
}

void NoticeBar::refreshTheme()
{
    QPalette colours;
    colours.setColor(QPalette::Window, backgroundOf(m_tone, colours));
    colours.setColor(QPalette::WindowText, diffColour(DiffColour::Text));
    setPalette(colours);
    m_close->setIcon(themedIcon(QStringLiteral("close.png")));
}

} // namespace velmora
