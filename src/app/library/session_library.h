#pragma once

#include "session/session_record.h"

#include <QObject>
#include <QPointer>
#include <QQueue>

#include <functional>
#include <optional>

class QWidget;

namespace velmora {

class SessionHistory;
class SessionTabs;
class SessionWidget;
class TabRestorer;
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
    /// For a file that is named from outside: when it leads to another machine, shows what would be opened before it
    /// is. Of several such files each has its turn.
    void openNamedSessionFile(const QString &path);
    void saveWorkspace();
    void chooseWorkspace();
    void openWorkspace(const QString &path);
    /// As with session files.
    void openNamedWorkspace(const QString &path);
    /// Leaves a workspace that is being restored at the tabs that are there.
    void stopRestoring();

    /// For the entry of the history with this number; one that is gone is passed over.
    void openEntry(quint64 id);
    void editEntry(quint64 id);
    void editNewestEntry();
    void saveEntry(quint64 id);
    void deleteEntry(quint64 id);

Q_SIGNALS:
    void recordOpened(const velmora::SessionRecord &record);
    /// A tab of a workspace is to be added behind the others without being shown or started.
    void recordRestored(const velmora::SessionRecord &record);
    void restoreProgressed(qsizetype done, qsizetype total);
    void restoreFinished();
    void statusMessage(const QString &message);

private:
    struct Question {
        QString title;
        QString text;
        std::function<void()> open;
    };

    void askAndSave(const SessionRecord &record);
    /// The session in a file; nothing, and a warning, when there is none.
    [[nodiscard]] std::optional<SessionRecord> readSession(const QString &path);
    /// The workspace in a file; nothing, and a word about it, when there is none.
    [[nodiscard]] std::optional<Workspace> readWorkspace(const QString &path);
    void askToOpen(const Question &question);
    void askNext();
    void openRead(const SessionRecord &record);
    void openRead(const Workspace &workspace, const QString &path);
    void writeWorkspace(const QString &path);
    void replaceHistory(const Workspace &workspace, const QString &path);
    void restoreTabs(const Workspace &workspace, const QString &path);
    void finishRestoring(const Workspace &workspace, const QString &path);
    void warn(const QString &title, const QString &text);

    SessionTabs &m_tabs;
    SessionHistory &m_history;
    QWidget *m_window;
    QQueue<Question> m_questions; ///< the first one is being asked
    QPointer<TabRestorer> m_restorer;
    QPointer<SessionWidget> m_front; ///< of the tabs restored so far, the one that was in front
};

} // namespace velmora
