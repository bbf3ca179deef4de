#pragma once

#include "session/session_record.h"

#include <QObject>

#include <functional>

class QWidget;

namespace velmora {

class SessionHistory;
class SessionTabs;
struct Workspace;

/// Saves and opens sessions as files and as workspaces, and lets the entries of the history be opened, changed, saved
/// and deleted: what the menus and the sessions panel offer, with its questions and messages.
class SessionLibrary final : public QObject {
    Q_OBJECT
public:
    /// `tabs` and `history` outlive the library; `window` stands behind its dialogs.
    SessionLibrary(SessionTabs &tabs, SessionHistory &history, QWidget *window);

    /// Saves the session in front, after a look at what will be saved.
    void saveSession();
    void chooseSession();
    void openSessionFile(const QString &path);
    void saveWorkspace();
    void chooseWorkspace();

    /// For the entry of the history with this number; one that is gone is passed over.
    void openEntry(quint64 id);
    void editEntry(quint64 id);
    void editNewestEntry();
    void saveEntry(quint64 id);
    void deleteEntry(quint64 id);

Q_SIGNALS:
    void recordOpened(const velmora::SessionRecord &record);
    void statusMessage(const QString &message);

private:
    void askAndSave(const SessionRecord &record);
    void writeWorkspace(const QString &path);
    void openWorkspace(const QString &path);
    void replaceHistory(const Workspace &workspace, const QString &path);
    void restoreTabs(const Workspace &workspace);
    void warn(const QString &title, const QString &text);

    SessionTabs &m_tabs;
    SessionHistory &m_history;
    QWidget *m_window;
};

} // namespace velmora
