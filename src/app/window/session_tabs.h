#pragma once

#include <QPointer>
#include <QSet>
#include <QTabWidget>

#include <functional>

namespace velmora {

class SessionWidget;

/// The tab host: the home page and one tab for each session.
///
/// Owns the sessions, which are destroyed with their tabs. The home page's tab cannot be closed.
class SessionTabs final : public QTabWidget {
    Q_OBJECT
public:
    explicit SessionTabs(QWidget *parent = nullptr);

    /// The home page's object name must be "homePage".
    void addHome(QWidget *page, const QIcon &icon, const QString &title);
    [[nodiscard]] int homeIndex() const;
    void showHome();

    /// Adds a session behind the other tabs and makes it current. From then on its `tabTitleChanged` retitles the tab.
    void addSession(SessionWidget *session, const QIcon &icon, const QString &title);

    /// The same, but the current tab stays and the session is started when its tab first becomes current.
    void addWaitingSession(SessionWidget *session, const QIcon &icon, const QString &title);

    /// The session of a tab; null for the home page or when there is no such tab.
    [[nodiscard]] SessionWidget *sessionAt(int index) const;
    [[nodiscard]] SessionWidget *currentSession() const { return sessionAt(currentIndex()); }
    [[nodiscard]] QList<SessionWidget *> sessions() const;

    /// The title of a tab as it was set; on the tab it may be shortened.
    [[nodiscard]] QString titleAt(int index) const;

    /// Closes a session's tab when the session agrees, which asks first when something would be lost.
    void closeTab(int index);
    /// Closes the sessions beside `kept`, which may be null, once all of them agree.
    void closeOthers(const SessionWidget *kept);

    /// Looks again at what the tabs show of their sessions' paths.
    void refreshNames();

    [[nodiscard]] bool hasUnsavedChanges() const;
    /// Lets the sessions with unsaved changes ask, one after the other and each in front, and calls `go` when all of
    /// them may be closed. Closes none.
    void confirmCloseAll(std::function<void()> go);

    void refreshTheme();

Q_SIGNALS:
    /// Another tab is current; null when it is no session.
    void currentSessionChanged(velmora::SessionWidget *session);
    /// The session is about to be destroyed with its tab; it is still whole.
    void sessionClosing(velmora::SessionWidget *session);

private:
    int append(SessionWidget *session, const QIcon &icon, const QString &title);
    void startWaiting(SessionWidget *session);
    void refreshToolTips();
    void confirmClose(QList<QPointer<SessionWidget>> sessions, std::function<void()> go);
    void removeSession(SessionWidget *session);

    QSet<SessionWidget *> m_waiting; ///< sessions that have not been started yet
};

} // namespace velmora
