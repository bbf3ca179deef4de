#include "app/window/edit_menu.h"

#include "app/window/session_tabs.h"
#include "session/session_widget.h"
#include "session/translate.h"

#include <QMenu>

namespace velmora {

EditMenu::EditMenu(QMenu *menu, SessionTabs *tabs) : QObject(menu)
{
    m_enable = menu->addAction(Velmora::tr("Enable editing"));
    m_enable->setCheckable(true);
    connect(m_enable, &QAction::triggered, this, [this](bool enabled) {
        if (m_session)
            m_session->setEditingEnabled(enabled);
        refresh();
    });
    menu->addSeparator();
    addCommand(menu, Velmora::tr("Undo"), QKeySequence::Undo, EditCommand::Undo);
    addCommand(menu, Velmora::tr("Redo"), QKeySequence::Redo, EditCommand::Redo);
    menu->addSeparator();
    addCommand(menu, Velmora::tr("Undo left"), QKeySequence(Qt::CTRL | Qt::ALT | Qt::Key_Z), EditCommand::UndoLeft);
    addCommand(menu, Velmora::tr("Redo left"), QKeySequence(Qt::CTRL | Qt::ALT | Qt::Key_Y), EditCommand::RedoLeft);
    addCommand(menu, Velmora::tr("Undo right"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::ALT | Qt::Key_Z),
               EditCommand::UndoRight);
    addCommand(menu, Velmora::tr("Redo right"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::ALT | Qt::Key_Y),
               EditCommand::RedoRight);

    connect(tabs, &SessionTabs::currentSessionChanged, this, &EditMenu::follow);
    follow(tabs->currentSession());
}

void EditMenu::addCommand(QMenu *menu, const QString &text, const QKeySequence &keys, EditCommand command)
{
    QAction *action = menu->addAction(text);
    action->setShortcut(keys);
    connect(action, &QAction::triggered, this, [this, command] {
        if (m_session)
            m_session->edit(command);
    });
    m_entries.append({action, command});
}

void EditMenu::follow(SessionWidget *session)
{
    if (m_session)
        m_session->disconnect(this);
    m_session = session;
    if (session)
        connect(session, &SessionWidget::editStateChanged, this, &EditMenu::refresh);
    refresh();
}

void EditMenu::refresh()
{
    m_enable->setEnabled(m_session && m_session->canEnableEditing());
    m_enable->setChecked(m_session && m_session->isEditingEnabled());
    for (const Entry &entry : std::as_const(m_entries))
        entry.action->setEnabled(m_session && m_session->canEdit(entry.command));
}

} // namespace velmora
