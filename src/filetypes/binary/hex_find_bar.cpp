#include "filetypes/binary/hex_find_bar.h"

#include "filetypes/binary/engine/byte_text.h"
#include "session/frame/elided_label.h"
#include "session/theme.h"
#include "session/translate.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QStringEncoder>
#include <QToolButton>

namespace velmora {

namespace {

enum Form { HexForm, Utf8Form, Utf16Form };

} // namespace

HexFindBar::HexFindBar(QWidget *parent)
    : QWidget(parent),
      m_form(new QComboBox(this)),
      m_text(new QLineEdit(this)),
      m_previous(addButton("findPrevious", Velmora::tr("Previous match (Shift+F3)"))),
      m_next(addButton("findNext", Velmora::tr("Next match (F3)"))),
      m_close(addButton("findClose", Velmora::tr("Close (Esc)"))),
      m_message(new ElidedLabel(QString(), this))
{
    constexpr int textWidth = 320;
    m_form->setObjectName(QStringLiteral("findForm"));
    m_form->addItems({Velmora::tr("Hex bytes"), Velmora::tr("Text (UTF-8)"), Velmora::tr("Text (UTF-16)")});
    m_form->setToolTip(Velmora::tr("How the bytes that are looked for are written"));
    m_text->setObjectName(QStringLiteral("findText"));
    m_text->setPlaceholderText(Velmora::tr("Find in this side"));
    m_text->setAccessibleName(m_text->placeholderText());
    m_text->setClearButtonEnabled(true);
    m_text->setMaximumWidth(textWidth);
    m_message->setObjectName(QStringLiteral("findMessage"));

    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(6, 2, 6, 2);
    row->addWidget(m_form);
    row->addWidget(m_text, 1);
    row->addWidget(m_previous);
    row->addWidget(m_next);
    row->addWidget(m_message, 1);
    row->addWidget(m_close);
    setFocusProxy(m_text);
    connect(m_previous, &QToolButton::clicked, this, &HexFindBar::previousWanted);
    connect(m_next, &QToolButton::clicked, this, &HexFindBar::nextWanted);
    connect(m_close, &QToolButton::clicked, this, [this] {
        hide();
        Q_EMIT closed();
    });
    connect(m_text, &QLineEdit::textChanged, this, [this] { m_message->clear(); });
    refreshTheme();
    hide();
}

QToolButton *HexFindBar::addButton(const char *name, const QString &hint)
{
    auto *button = new QToolButton(this);
    button->setObjectName(QLatin1String(name));
    button->setAutoRaise(true);
    button->setToolTip(hint);
    button->setAccessibleName(hint);
    button->setFocusPolicy(Qt::TabFocus);
    return button;
}

void HexFindBar::open()
{
    show();
    m_text->setFocus();
    m_text->selectAll();
}

std::optional<QByteArray> HexFindBar::pattern()
{
    constexpr qsizetype limit = 64 * 1024;
    const QString text = m_text->text();
    std::optional<QByteArray> bytes;
    if (m_form->currentIndex() == HexForm)
        bytes = bytesFromHex(text);
    else if (m_form->currentIndex() == Utf8Form)
        bytes = text.toUtf8();
    else
        bytes = QByteArray(QStringEncoder(QStringEncoder::Utf16LE)(text));
    if (bytes && !bytes->isEmpty() && bytes->size() <= limit)
        return bytes;
    tell(m_form->currentIndex() == HexForm ? Velmora::tr("Pairs of hexadecimal digits are needed, as in \"4D 5A\"")
                                           : Velmora::tr("Nothing to look for"));
    return std::nullopt;
}

void HexFindBar::tell(const QString &message)
{
    m_message->setText(message);
}

void HexFindBar::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape)
        m_close->click();
    else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        (event->modifiers().testFlag(Qt::ShiftModifier) ? m_previous : m_next)->click();
    else
        QWidget::keyPressEvent(event);
}

void HexFindBar::refreshTheme()
{
    m_previous->setIcon(themedIcon(QStringLiteral("chevron_up.png")));
    m_next->setIcon(themedIcon(QStringLiteral("chevron_down.png")));
    m_close->setIcon(themedIcon(QStringLiteral("close.png")));
}

} // namespace velmora
