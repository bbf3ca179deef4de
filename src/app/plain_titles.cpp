#include "app/plain_titles.h"

#include <QApplication>
#include <QEvent>
#include <QWidget>
#include <QWindow>

namespace velmora {

PlainTitles::PlainTitles(QObject *parent) : QObject(parent)
{
    qApp->installEventFilter(this);
}

bool PlainTitles::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::Show && event->type() != QEvent::WindowTitleChange)
        return false;
    const auto *widget = qobject_cast<const QWidget *>(watched);
    QWindow *window = widget && widget->isWindow() ? widget->windowHandle() : nullptr;
    if (!window || window->title().isEmpty())
        return false;
    // The name is put there while the window system is told the title, and there is no switch for it.
    const QString name = QGuiApplication::applicationDisplayName();
    QGuiApplication::setApplicationDisplayName(QStringLiteral(""));
    window->setTitle(window->title());
    QGuiApplication::setApplicationDisplayName(name);
    return false;
}

} // namespace velmora
