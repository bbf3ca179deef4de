#include "folder/compare/folder_notice.h"

#include <QBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace velmora {

FolderNotice::FolderNotice(QWidget *parent) : QFrame(parent), m_text(new QLabel(this)), m_button(new QPushButton(this))
{
    setObjectName(QStringLiteral("folderNotice"));
    m_text->setAlignment(Qt::AlignCenter);
    m_text->setWordWrap(true);
    m_text->setTextInteractionFlags(Qt::TextSelectableByMouse);
    QFont font = m_text->font();
    font.setPointSizeF(font.pointSizeF() * 1.15);
    m_text->setFont(font);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(24, 20, 24, 20);
    column->setSpacing(14);
    column->addWidget(m_text);
    column->addWidget(m_button, 0, Qt::AlignHCenter);
    connect(m_button, &QPushButton::clicked, this, [this] {
        // The action may change the notice, and with it what is called here.
        if (const std::function<void()> action = m_action)
            action();
    });
    hide();
}

void FolderNotice::tell(const QString &text, const QString &button, std::function<void()> action)
{
    m_text->setText(text);
    m_button->setText(button);
    m_button->setVisible(!button.isEmpty());
    m_action = std::move(action);
    place();
    show();
    raise();
}

void FolderNotice::clear()
{
    m_text->clear();
    hide();
}

QString FolderNotice::text() const
{
    return m_text->text();
}

void FolderNotice::setRoom(const QRect &room)
{
    m_room = room;
    place();
}

void FolderNotice::place()
{
    const int width = std::min(560, m_room.width() - 40);
    if (width <= 0)
        return;
    layout()->activate();
    QSize size(width, layout()->hasHeightForWidth() ? layout()->totalHeightForWidth(width) : sizeHint().height());
    QRect box(QPoint(), size);
    box.moveCenter(m_room.center());
    box.moveTop(std::max(m_room.top(), m_room.top() + (m_room.height() - size.height()) / 3));
    setGeometry(box);
}

} // namespace velmora
