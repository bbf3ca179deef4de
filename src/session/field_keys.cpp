#include "session/field_keys.h"

#include <QAbstractSpinBox>
#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextEdit>

namespace velmora {

namespace {

bool isTextField(const QObject *target)
{
    return qobject_cast<const QLineEdit *>(target) || qobject_cast<const QAbstractSpinBox *>(target) ||
           qobject_cast<const QTextEdit *>(target) || qobject_cast<const QPlainTextEdit *>(target);
}

} // namespace

FieldKeys::FieldKeys(QWidget *session) : QObject(session), m_session(session)
{
    QCoreApplication::instance()->installEventFilter(this);
}

bool FieldKeys::eventFilter(QObject *target, QEvent *event)
{
    if (event->type() != QEvent::ShortcutOverride || !m_session->isVisible() || !isTextField(target))
        return false;
    const bool isOutside = !m_session->isAncestorOf(static_cast<QWidget *>(target));
    if (!isOutside || !isKeyOfSession(*static_cast<QKeyEvent *>(event)))
        return false;
    event->accept();
    return true;
}

bool FieldKeys::isKeyOfSession(const QKeyEvent &event) const
{
    const QKeySequence pressed(event.keyCombination());
    const QList<QAction *> actions = m_session->actions();
    return std::any_of(actions.begin(), actions.end(),
                       [&pressed](const QAction *action) { return action->shortcuts().contains(pressed); });
}

} // namespace velmora
