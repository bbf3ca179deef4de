#include "app/window/drop_router.h"

#include "app/window/dropped_paths.h"
#include "app/window/session_tabs.h"
#include "session/session_widget.h"

#include <QApplication>
#include <QDropEvent>

namespace velmora {

DropRouter::DropRouter(SessionTabs &tabs, QObject *parent) : QObject(parent), m_tabs(tabs)
{
    qApp->installEventFilter(this);
}

bool DropRouter::eventFilter(QObject *watched, QEvent *event)
{
    const QEvent::Type type = event->type();
    if (type != QEvent::DragEnter && type != QEvent::DragMove && type != QEvent::Drop)
        return false;
    const auto *widget = qobject_cast<QWidget *>(watched);
    SessionWidget *session = m_tabs.currentSession();
    if (!widget || !session || !session->acceptsDroppedPaths() || widget->window() != session->window())
        return false;
    auto *drop = static_cast<QDropEvent *>(event);
    // The event comes to whichever widget takes drops, which may as well be the window around the session.
    const QPoint inWindow = widget->mapTo(widget->window(), drop->position().toPoint());
    const QPoint inSession = session->mapFrom(session->window(), inWindow);
    if (!session->rect().contains(inSession))
        return false;

    const QStringList paths = droppedPaths(drop->mimeData());
    if (paths.isEmpty()) {
        if (widget->property("takesDroppedText").toBool())
            return false; // text is the widget's own affair
        drop->ignore();
        return true;
    }
    drop->setDropAction(Qt::CopyAction);
    drop->accept();
    if (type == QEvent::Drop)
        session->dropPaths(paths, inSession);
    return true;
}

} // namespace velmora
