#include "app/window/session_tabs.h"

#include "app/session_kinds.h"
#include "app/window/tab_menu.h"
#include "app/window/tab_names.h"
#include "session/plain_text.h"
#include "session/session_widget.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QEvent>
#include <QStyle>
#include <QStyleOption>
#include <QTabBar>

namespace velmora {

namespace {

constexpr int widestTab = 280;
// In mean widths of a letter.
constexpr int narrowestText = 18;
constexpr int shortestName = 8; ///< before the part that tells it from others

/// Keeps tabs with long titles from pushing the others out of sight, lets them scroll before nothing can be read on
/// them, leaves out the last what tells equal titles apart, and closes a tab by its middle button.
class SessionTabBar final : public QTabBar {
public:
    using QTabBar::QTabBar;

    std::function<void()> beforeToolTip;
    std::function<void(int index, const QPoint &place)> menuWanted;

protected:
    [[nodiscard]] QSize tabSizeHint(int index) const override
    {
        const QSize hint = QTabBar::tabSizeHint(index);
        return {std::min(hint.width(), widestTab), hint.height()};
    }

    [[nodiscard]] QSize minimumTabSizeHint(int index) const override
    {
        const QSize usual = tabSizeHint(index);
        const int beside = QTabBar::tabSizeHint(index).width() - widthOf(tabText(index));
        const int letter = fontMetrics().averageCharWidth();
        const int readable = std::max(narrowestText * letter, shortestName * letter + widthOf(partOf(tabText(index))));
        return {std::min(usual.width(), beside + readable), usual.height()};
    }

    void initStyleOption(QStyleOptionTab *option, int index) const override
    {
        QTabBar::initStyleOption(option, index);
        const QString text = tabText(index);
        const QString part = partOf(text);
        const int room = style()->subElementRect(QStyle::SE_TabBarTabText, option, this).width() - widthOf(part);
        if (option->text != text && !part.isEmpty() && room > 3 * fontMetrics().averageCharWidth()) {
            option->text =
                fontMetrics().elidedText(text.chopped(part.size()), elideMode(), room, Qt::TextShowMnemonic) + part;
        }
    }

    bool event(QEvent *event) override
    {
        if (event->type() == QEvent::ToolTip && beforeToolTip)
            beforeToolTip();
        return QTabBar::event(event);
    }

    void contextMenuEvent(QContextMenuEvent *event) override
    {
        const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
        const int index = byKey ? currentIndex() : tabAt(event->pos());
        if (index >= 0)
            menuWanted(index, byKey ? mapToGlobal(tabRect(index).center()) : event->globalPos());
    }

    void mousePressEvent(QMouseEvent *event) override
    {
        if (event->button() == Qt::MiddleButton)
            m_middlePressed = tabAt(event->position().toPoint());
        else
            QTabBar::mousePressEvent(event);
    }

    void mouseReleaseEvent(QMouseEvent *event) override
    {
        if (event->button() != Qt::MiddleButton) {
            QTabBar::mouseReleaseEvent(event);
            return;
        }
        const int index = tabAt(event->position().toPoint());
        if (index >= 0 && index == std::exchange(m_middlePressed, -1))
            Q_EMIT tabCloseRequested(index);
    }

private:
    [[nodiscard]] int widthOf(const QString &text) const
    {
        return fontMetrics().size(Qt::TextShowMnemonic, text).width();
    }

    int m_middlePressed = -1;
};

} // namespace

SessionTabs::SessionTabs(QWidget *parent) : QTabWidget(parent)
{
    setObjectName(QStringLiteral("tabHost"));
    auto *bar = new SessionTabBar(this);
    bar->beforeToolTip = [this] { refreshToolTips(); };
    bar->menuWanted = [this](int index, const QPoint &place) { openTabMenu(*this, index, place); };
    setTabBar(bar);
    setTabsClosable(true);
    setMovable(true);
    setDocumentMode(true);
    setElideMode(Qt::ElideMiddle); // names that go on in numbers or in their kinds of files are told by their ends
    connect(this, &QTabWidget::currentChanged, this, [this] {
        startWaiting(currentSession());
        Q_EMIT currentSessionChanged(currentSession());
    });
}

void SessionTabs::addHome(QWidget *page, const QIcon &icon, const QString &title)
{
    addTab(page, icon, title);
    const int index = homeIndex();
    tabBar()->setTabButton(index, QTabBar::LeftSide, nullptr);
    tabBar()->setTabButton(index, QTabBar::RightSide, nullptr);
}

int SessionTabs::homeIndex() const
{
    for (int i = 0; i < count(); ++i) {
        if (widget(i)->objectName() == QLatin1String("homePage"))
            return i;
    }
    return -1;
}

void SessionTabs::showHome()
{
    setCurrentIndex(homeIndex());
}

void SessionTabs::addSession(SessionWidget *session, const QIcon &icon, const QString &title)
{
    setCurrentIndex(append(session, icon, title));
    // Its shortcuts answer at once, without a click into it.
    session->setFocus();
}

void SessionTabs::addWaitingSession(SessionWidget *session, const QIcon &icon, const QString &title)
{
    m_waiting.insert(session);
    append(session, icon, title);
}

int SessionTabs::append(SessionWidget *session, const QIcon &icon, const QString &title)
{
    const int index = addTab(session, icon, {});
    tabBar()->setTabData(index, title);
    refreshNames();
    connect(session, &SessionWidget::tabTitleChanged, this, [this, session](const QString &changed) {
        const int at = indexOf(session);
        if (at < 0)
            return;
        tabBar()->setTabData(at, changed);
        refreshNames();
    });
    connect(session, &SessionWidget::comparisonFinished, this, &SessionTabs::refreshNames);
    return index;
}

void SessionTabs::startWaiting(SessionWidget *session)
{
    if (m_waiting.remove(session))
        session->start();
}

SessionWidget *SessionTabs::sessionAt(int index) const
{
    return qobject_cast<SessionWidget *>(widget(index));
}

QList<SessionWidget *> SessionTabs::sessions() const
{
    QList<SessionWidget *> result;
    for (int i = 0; i < count(); ++i) {
        if (SessionWidget *session = sessionAt(i))
            result.append(session);
    }
    return result;
}

QString SessionTabs::titleAt(int index) const
{
    return tabBar()->tabData(index).toString();
}

void SessionTabs::closeTab(int index)
{
    SessionWidget *session = sessionAt(index);
    if (!session)
        return;
    // What the session asks is about what is seen then.
    if (session->hasUnsavedChanges())
        setCurrentIndex(index);
    session->confirmClose([this, session = QPointer(session)](bool mayClose) {
        if (mayClose && session)
            removeSession(session);
    });
}

void SessionTabs::closeOthers(const SessionWidget *kept)
{
    QList<QPointer<SessionWidget>> others;
    for (SessionWidget *session : sessions()) {
        if (session != kept)
            others.append(session);
    }
    confirmClose(others, [this, others] {
        for (const QPointer<SessionWidget> &session : others) {
            if (session)
                removeSession(session);
        }
    });
}

bool SessionTabs::hasUnsavedChanges() const
{
    const QList<SessionWidget *> all = sessions();
    return std::any_of(all.begin(), all.end(),
                       [](const SessionWidget *session) { return session->hasUnsavedChanges(); });
}

void SessionTabs::confirmCloseAll(std::function<void()> go)
{
    QList<QPointer<SessionWidget>> unsaved;
    for (SessionWidget *session : sessions()) {
        if (session->hasUnsavedChanges())
            unsaved.append(session);
    }
    confirmClose(unsaved, std::move(go));
}

void SessionTabs::confirmClose(QList<QPointer<SessionWidget>> sessions, std::function<void()> go)
{
    while (!sessions.isEmpty() && !sessions.first())
        sessions.removeFirst();
    if (sessions.isEmpty()) {
        go();
        return;
    }
    SessionWidget *session = sessions.takeFirst();
    if (session->hasUnsavedChanges())
        setCurrentWidget(session);
    session->confirmClose([this, sessions, go = std::move(go)](bool mayClose) {
        if (mayClose)
            confirmClose(sessions, go);
    });
}

void SessionTabs::refreshTheme()
{
    for (int i = 0; i < count(); ++i) {
        if (SessionWidget *session = sessionAt(i)) {
            setTabIcon(i, sessionKindIcon(session->kind()));
            session->refreshTheme();
        }
    }
}

void SessionTabs::refreshNames()
{
    QList<NamedPaths> names;
    for (int i = 0; i < count(); ++i) {
        if (const SessionWidget *session = sessionAt(i))
            names.append({titleAt(i), session->paths()});
    }
    const QStringList texts = tabTexts(names);
    for (int i = 0, session = 0; i < count(); ++i) {
        // In a tab's text an ampersand marks the key of the next letter; in a file name it is a letter.
        if (sessionAt(i))
            setTabText(i, QString(texts[session++]).replace(u'&', QLatin1String("&&")));
    }
    refreshToolTips();
}

void SessionTabs::refreshToolTips()
{
    for (int i = 0; i < count(); ++i) {
        if (const SessionWidget *session = sessionAt(i))
            setTabToolTip(i, plainToolTip(sessionToolTip({titleAt(i), session->paths()})));
    }
}

void SessionTabs::removeSession(SessionWidget *session)
{
    const int index = indexOf(session);
    if (index < 0)
        return;
    Q_EMIT sessionClosing(session);
    m_waiting.remove(session); // whose address may come to be that of another
    const bool hadFocus = session->isAncestorOf(QApplication::focusWidget());
    removeTab(index);
    refreshNames();
    if (SessionWidget *next = currentSession(); next && hadFocus)
        (next->focusWidget() ? next->focusWidget() : next)->setFocus(); // as where tabs are switched
    // It may be in the middle of a signal that led here.
    session->hide();
    session->disconnect(this);
    session->deleteLater();
}

} // namespace velmora
