#include "text/view/pane_notice.h"

#include "session/diff_colours.h"

#include <QBoxLayout>
#include <QEvent>
#include <QLabel>
#include <QPainter>
#include <QPushButton>

namespace velmora {

namespace {

constexpr int margin = 24;
constexpr int textWidth = 280;
constexpr qreal corner = 6;

QLabel *makeLabel(QWidget *parent)
{
    auto *label = new QLabel(parent);
    label->setAlignment(Qt::AlignCenter);
    label->setWordWrap(true);
    return label;
}

} // namespace

PaneNotice::PaneNotice(QWidget *parent) : QWidget(parent), m_title(makeLabel(this)), m_text(makeLabel(this))
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

void PaneNotice::setTexts(const QString &title, const QString &text)
{
    m_title->setText(title);
    m_text->setText(text);
    m_text->setVisible(!text.isEmpty());
    setAccessibleName(text.isEmpty() ? title : title + QStringLiteral(". ") + text);
    while (QLayoutItem *item = m_buttons->takeAt(0)) {
        if (QWidget *button = item->widget()) {
            button->hide();
            button->deleteLater();
        }
        delete item;
    }
    m_buttons->setContentsMargins(0, 0, 0, 0);
}

void PaneNotice::addButton(const QString &text, std::function<void()> pressed)
{
    auto *button = new QPushButton(text, this);
    connect(button, &QPushButton::clicked, this, [pressed = std::move(pressed)] { pressed(); });
    m_buttons->setContentsMargins(0, 8, 0, 0);
    m_buttons->addWidget(button, 0, Qt::AlignCenter);
}

QString PaneNotice::title() const
{
    return m_title->text();
}

QSize PaneNotice::sizeHint() const
{
    const int width = std::max(textWidth + 2 * margin, minimumSizeHint().width());
    return {width, layout()->totalHeightForWidth(width)};
}

void PaneNotice::place()
{
    const QRect pane = parentWidget()->rect();
    const int width = std::min(sizeHint().width(), pane.width() - 16);
    const int height = layout()->totalHeightForWidth(width);
    setGeometry((pane.width() - width) / 2, std::max((pane.height() - height) * 2 / 5, 8), width, height);
}

bool PaneNotice::event(QEvent *event)
{
    if (event->type() == QEvent::LayoutRequest)
        place();
    return QWidget::event(event);
}

void PaneNotice::refresh()
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

void PaneNotice::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(diffColour(DiffColour::Rule));
    painter.setBrush(diffColour(DiffColour::Background));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), corner, corner);
}

} // namespace velmora
