#include "session/frame/notice_card.h"

#include "session/diff_colours.h"

#include <QBoxLayout>
#include <QEvent>
#include <QLabel>
#include <QPainter>
#include <QPushButton>

namespace velmora {

namespace {

constexpr int margin = 24;
constexpr int textWidth = 280; // fits into half of a small window
constexpr qreal corner = 6;

QLabel *makeLabel(QWidget *parent)
{
    auto *label = new QLabel(parent);
    label->setAlignment(Qt::AlignCenter);
    label->setWordWrap(true);
    label->setTextFormat(Qt::PlainText); // a file may be called "<b>"
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

} // namespace

NoticeCard::NoticeCard(QWidget *parent) : QWidget(parent), m_title(makeLabel(this)), m_text(makeLabel(this))
{
    setCursor(Qt::ArrowCursor);
    QFont strong = m_title->font();
    strong.setPointSizeF(strong.pointSizeF() * 1.25);
    strong.setBold(true);
    m_title->setFont(strong);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(margin, margin, margin, margin);
    column->setSpacing(8);
    column->addWidget(m_title);
    column->addWidget(m_text);
    m_buttons = new QHBoxLayout;
    column->addLayout(m_buttons);
    refresh();
}

void NoticeCard::tell(const Notice &notice)
{
    QStringList words{notice.title, notice.text};
    for (const Notice::Button &button : notice.buttons)
        words.append(button.text);
    // Told anew after each refresh, it must not take the focus from the button that a person is at.
    if (words != m_told) {
        setTexts(notice.title, notice.text);
        setButtons(notice.buttons);
        m_told = words;
    }
    place();
    show();
    raise();
}

void NoticeCard::clear()
{
    hide();
    setTexts({}, {});
    setButtons({});
    m_told.clear();
}

void NoticeCard::setTexts(const QString &title, const QString &text)
{
    m_title->setText(title);
    m_title->setVisible(!title.isEmpty());
    m_text->setText(text);
    m_text->setVisible(!text.isEmpty());
    setAccessibleName(title.isEmpty() || text.isEmpty() ? title + text : title + QStringLiteral(". ") + text);
}

void NoticeCard::setButtons(const std::vector<Notice::Button> &buttons)
{
    while (QLayoutItem *item = m_buttons->takeAt(0)) {
        if (QWidget *button = item->widget()) {
            button->hide();
            button->deleteLater(); // it may be what was pressed
        }
        delete item;
    }
    m_buttons->setContentsMargins(0, buttons.empty() ? 0 : 8, 0, 0);
    for (const Notice::Button &wanted : buttons) {
        auto *button = new QPushButton(wanted.text, this);
        connect(button, &QPushButton::clicked, this, [pressed = wanted.pressed] { pressed(); });
        m_buttons->addWidget(button, 0, Qt::AlignCenter);
    }
}

QString NoticeCard::title() const
{
    return m_title->text();
}

QSize NoticeCard::sizeHint() const
{
    const int width = std::max(textWidth + 2 * margin, minimumSizeHint().width());
    return {width, layout()->totalHeightForWidth(width)};
}

QRect NoticeCard::room() const
{
    return m_room.isValid() ? m_room : parentWidget()->rect();
}

void NoticeCard::setRoom(const QRect &room)
{
    m_room = room;
    place();
}

void NoticeCard::place()
{
    constexpr int wide = 700; // where longer lines read better than more of them
    const QRect room = this->room();
    const int wanted = room.width() < wide ? sizeHint().width() : sizeHint().width() * 3 / 2;
    const int width = std::min(wanted, room.width() - 16);
    const int height = layout()->totalHeightForWidth(width);
    setGeometry(room.x() + (room.width() - width) / 2, room.y() + std::max((room.height() - height) * 2 / 5, 8), width,
                height);
}

bool NoticeCard::event(QEvent *event)
{
    if (event->type() == QEvent::LayoutRequest)
        place();
    return QWidget::event(event);
}

void NoticeCard::refresh()
{
    const auto colourLabel = [](QLabel *label, DiffColour role) {
        QPalette palette = label->palette();
        palette.setColor(QPalette::WindowText, diffColour(role));
        label->setPalette(palette);
    };
    colourLabel(m_title, DiffColour::Text);
    colourLabel(m_text, DiffColour::MutedText);
    update();
}

void NoticeCard::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(diffColour(DiffColour::Rule));
    painter.setBrush(diffColour(DiffColour::Background));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), corner, corner);
}

} // namespace velmora
