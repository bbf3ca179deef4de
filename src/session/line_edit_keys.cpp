#include "session/line_edit_keys.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>

#include <algorithm>

namespace velmora {

namespace {

bool isForText(int key)
{
    return key == Qt::Key_A || key == Qt::Key_C || key == Qt::Key_V || key == Qt::Key_X || key == Qt::Key_Y ||
           key == Qt::Key_Z;
}

} // namespace

LineEditKeys::LineEditKeys(QWidget *session) : QObject(session), m_session(session)
{
    QCoreApplication::instance()->installEventFilter(this);
}

bool LineEditKeys::eventFilter(QObject *target, QEvent *event)
{
    if (event->type() != QEvent::ShortcutOverride)
        return false;
    const auto *line = qobject_cast<QLineEdit *>(target);
    if (!line || !m_session->isAncestorOf(line) || !isCommand(*static_cast<QKeyEvent *>(event)))
        return false;
    event->ignore();
    return true;
}

bool LineEditKeys::isCommand(const QKeyEvent &event) const
{
    const bool isLetter = event.key() >= Qt::Key_A && event.key() <= Qt::Key_Z;
    if (!isLetter || isForText(event.key()) || !event.modifiers().testFlag(Qt::ControlModifier))
        return false;
    const QKeySequence pressed(event.keyCombination());
    const QList<QAction *> actions = m_session->actions();
    return std::any_of(actions.begin(), actions.end(), [&pressed](const QAction *action) {
        return action->isEnabled() && action->shortcuts().contains(pressed);
    });
}

} // namespace velmora
