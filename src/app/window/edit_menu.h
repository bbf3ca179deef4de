#pragma once

#include <QList>
#include <QObject>
#include <QPointer>

class QAction;
class QMenu;

namespace velmora {

enum class EditCommand;
class SessionTabs;
class SessionWidget;

/// The Edit menu: its commands go to the session in front, and are enabled while that session can carry them out.
class EditMenu final : public QObject {
    Q_OBJECT
public:
    /// Fills `menu`, which becomes the owner's parent.
    EditMenu(QMenu *menu, SessionTabs *tabs);

private:
    void addCommand(QMenu *menu, const QString &text, const QKeySequence &keys, EditCommand command);
    void follow(SessionWidget *session);
    void refresh();

    struct Entry {
        QAction *action;
        EditCommand command;
    };

    QPointer<SessionWidget> m_session;
    QAction *m_enable;
    QList<Entry> m_entries;
};

} // namespace velmora
