#include "session/field_keys.h"

#include <QAbstractSpinBox>
#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextEdit>

#include <algorithm>

namespace velmora {

namespace {

bool isTextField(const QObject *target)
{
    return qobject_cast<const QLineEdit *>(target) || qobject_cast<const QAbstractSpinBox *>(target) ||
           qobject_cast<const QTextEdit *>(target) || qobject_cast<const QPlainTextEdit *>(target);
}

bool isForText(int key)
{
    return key == Qt::Key_A || key == Qt::Key_C || key == Qt::Key_V || key == Qt::Key_X || key == Qt::Key_Y ||
           key == Qt::Key_Z;
}

/// Whether an action of `session` that is as asked for has the key that was pressed.
template <typename Condition>
bool hasKey(const QWidget &session, const QKeyEvent &event, Condition isAsked)
{
    const QKeySequence pressed(event.keyCombination());
    const QList<QAction *> actions = session.actions();
    return std::any_of(actions.begin(), actions.end(), [&](const QAction *action) {
        return isAsked(*action) && action->shortcuts().contains(pressed);
    });
}

} // namespace

FieldKeys::FieldKeys(QWidget *session) : QObject(session), m_session(session)
{
    QCoreApplication::instance()->installEventFilter(this);
}

bool FieldKeys::eventFilter(QObject *target, QEvent *event)
{
    if (event->type() != QEvent::ShortcutOverride || !isTextField(target))
        return false;
    const auto &pressed = *static_cast<const QKeyEvent *>(event);
    if (m_session->isAncestorOf(static_cast<QWidget *>(target))) {
        if (!qobject_cast<QLineEdit *>(target) || !isCommandInLine(pressed))
            return false;
        event->ignore();
        return true;
    }
    if (!m_session->isVisible() || !isKeyOfWindow(pressed))
        return false;
    event->accept();
    return true;
}

bool FieldKeys::isKeyOfWindow(const QKeyEvent &event) const
{
    return hasKey(*m_session, event,
                  [](const QAction &action) { return action.shortcutContext() == Qt::WindowShortcut; });
}

bool FieldKeys::isCommandInLine(const QKeyEvent &event) const
{
    const bool isLetter = event.key() >= Qt::Key_A && event.key() <= Qt::Key_Z;
    return isLetter && !isForText(event.key()) && event.modifiers().testFlag(Qt::ControlModifier) &&
           hasKey(*m_session, event, [](const QAction &action) { return action.isEnabled(); });
}

} // namespace velmora
