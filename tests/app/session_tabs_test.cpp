#include "app/probe_session.h"
#include "app/window/drop_router.h"
#include "app/window/edit_menu.h"
#include "app/window/session_tabs.h"
#include "app/window/tab_names.h"
#include "session/session_host.h"
#include "support/files.h"
#include "support/recording_host.h"
#include "support/test_main.h"

#include <QClipboard>
#include <QFontDatabase>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QMimeData>
#include <QPainter>
#include <QProxyStyle>
#include <QStyleOption>
#include <QTabBar>

using namespace velmora;
using velmora::test::word;
using velmora::test::words;

namespace {

/// Tabs with a home page and one session in front, in a window.
struct Desk {
    Desk()
    {
        auto *home = new QWidget;
        home->setObjectName(word("homePage"));
        tabs->addHome(home, {}, word("Home"));
        session = add(word("First"));
        window.setCentralWidget(tabs);
        window.resize(800, 600);
        window.show();
    }

    ProbeSession *add(const QString &title)
    {
        auto *made = new ProbeSession(host);
        tabs->addSession(made, {}, title);
        return made;
    }

    void middleClick(int index)
    {
        QTest::mouseClick(tabs->tabBar(), Qt::MiddleButton, Qt::NoModifier, tabs->tabBar()->tabRect(index).center());
    }

    test::RecordingHost host;
    QMainWindow window;
    SessionTabs *tabs = new SessionTabs;
    ProbeSession *session;
};

/// Collects what is written on tabs.
class DrawnTexts final : public QProxyStyle {
public:
    void drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                     const QWidget *widget) const override
    {
        if (const auto *tab = qstyleoption_cast<const QStyleOptionTab *>(option); tab && element == CE_TabBarTabLabel)
            texts.append(tab->text);
        QProxyStyle::drawControl(element, option, painter, widget);
    }

    mutable QStringList texts;
};

} // namespace

class SessionTabsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void followsTitles()
    {
        Desk desk;
        QCOMPARE(desk.tabs->currentSession(), desk.session);
        Q_EMIT desk.session->tabTitleChanged(word("R&D <-> x"));
        QCOMPARE(desk.tabs->titleAt(1), word("R&D <-> x"));
        QCOMPARE(desk.tabs->tabText(1), word("R&&D <-> x"));

        // Moved tabs are found by their session, not by where they were.
        ProbeSession *second = desk.add(word("Second"));
        desk.tabs->tabBar()->moveTab(2, 0);
        Q_EMIT second->tabTitleChanged(word("moved"));
        QCOMPARE(desk.tabs->titleAt(0), word("moved"));
        QCOMPARE(desk.tabs->homeIndex(), 1);
    }

    void closesSessionsButNotHome()
    {
        Desk desk;
        connect(desk.tabs, &QTabWidget::tabCloseRequested, desk.tabs, &SessionTabs::closeTab);
        const QPointer<ProbeSession> second = desk.add(word("Second"));
        QVERIFY(!desk.tabs->tabBar()->tabButton(0, QTabBar::RightSide));
        desk.tabs->closeTab(0);
        desk.tabs->closeTab(-1);
        desk.tabs->closeTab(7);
        desk.middleClick(0);
        QCOMPARE(desk.tabs->count(), 3);

        desk.middleClick(2);
        QCOMPARE(desk.tabs->count(), 2);
        QTRY_VERIFY(second.isNull());
        QCOMPARE(desk.tabs->currentSession(), desk.session);
        desk.tabs->showHome();
        QVERIFY(!desk.tabs->currentSession());
    }

    void aSessionDecidesWhetherItMayGo()
    {
        Desk desk;
        ProbeSession *second = desk.add(word("Second"));
        desk.session->unsaved = true;
        const QPointer<ProbeSession> session = desk.session;
        desk.tabs->closeTab(1);
        QCOMPARE(desk.tabs->currentSession(), desk.session); // it asks about what is seen
        QCOMPARE(desk.tabs->count(), 3);
        desk.session->takeAnswer()(false);
        QCOMPARE(desk.tabs->count(), 3);

        desk.tabs->closeTab(1);
        desk.tabs->closeTab(2); // while the first one is still asking
        QCOMPARE(desk.tabs->sessions(), QList<SessionWidget *>{desk.session});
        desk.session->takeAnswer()(true);
        QTRY_VERIFY(session.isNull());
        Q_UNUSED(second);
    }

    void tabsOfOneNameAreToldApartByTheirFolders()
    {
        const auto texts = [](const QString &title, const QStringList &pairs) {
            QList<NamedPaths> sessions;
            for (const QString &pair : pairs)
                sessions.append({title, {pair.section(u'|', 0, 0), pair.section(u'|', 1), {}}});
            QStringList parts = tabTexts(sessions);
            for (QString &text : parts)
                text = text.section(word(" — "), 1);
            return parts.join(u'|');
        };
        const QString same = word("a.c <-> a.c");
        QCOMPARE(texts(same, {word("/p/v1/a.c|/p/v2/a.c")}), QString());
        QCOMPARE(texts(same, {word("/v1/a.c|/v9/a.c"), word("/v2/a.c|/v9/a.c")}), word("v1|v2"));
        QCOMPARE(texts(same, {word("/v1/a.c|/v3/a.c"), word("/v2/a.c|/v4/a.c")}), word("v1 <-> v3|v2 <-> v4"));
        QCOMPARE(texts(same, {word("/x/src/a.c|/y/a.c"), word("/z/src/a.c|/y/a.c")}), word("x/…|z/…"));
        QCOMPARE(texts(same, {word("/x/s/a.c|/y/a.c"), word("/z/s/a.c|/y/a.c"), word("/z/t/a.c|/y/a.c")}),
                 word("x/s|z/s|z/t"));
        QCOMPARE(texts(same, {word("/a.c|/a.c"), word("/a.c|/a.c")}), word("|"));
        QCOMPARE(tabTexts({{word("a\nb"), {}}}), words("a[LF]b"));
    }

    void manyTabsStayReadableAndSayTheirPaths()
    {
        if (QFontDatabase::families().isEmpty())
            QSKIP("without fonts no width of a text means anything");
        Desk desk;
        for (int i = 0; i < 20; ++i)
            desk.add(word("a rather long title of a session"));
        QVERIFY(desk.tabs->tabBar()->tabRect(5).width() > 18 * desk.tabs->fontMetrics().averageCharWidth());
        desk.session->sides = {word("/early/x"), word("/later/x"), {}};
        Q_EMIT desk.session->tabTitleChanged(desk.tabs->titleAt(2));
        desk.tabs->setCurrentIndex(1);
        DrawnTexts drawn;
        desk.tabs->tabBar()->setStyle(&drawn);
        desk.tabs->tabBar()->grab();
        QCOMPARE(drawn.texts.filter(word("…")).filter(word(" — early <-> later")).size(), 1);
        desk.session->sides = {word("/<b>/x"), word("/y"), {}};
        Q_EMIT desk.session->tabTitleChanged(word("<i>"));
        QCOMPARE(desk.tabs->tabToolTip(1),
                 word("<p style='white-space:pre'>&lt;i&gt;\n%1\n%2</p>")
                     .arg(QDir::toNativeSeparators(word("/&lt;b&gt;/x")), QDir::toNativeSeparators(word("/y"))));
    }

    void theMenuOfATabClosesTheOthersAndKnowsThePaths()
    {
        Desk desk;
        const QPointer<ProbeSession> second = desk.add(word("Second"));
        const QPointer<ProbeSession> third = desk.add(word("Third"));
        desk.session->sides = {word("/x"), word("/y"), {}};
        const auto choose = [&desk](int tab, const char *text) {
            const QPoint place = desk.tabs->tabBar()->tabRect(tab).center();
            QContextMenuEvent event(QContextMenuEvent::Mouse, place, desk.tabs->tabBar()->mapToGlobal(place));
            QApplication::sendEvent(desk.tabs->tabBar(), &event);
            auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
            bool chosen = false;
            for (QAction *action : menu ? menu->actions() : QList<QAction *>()) {
                if (action->text() == QLatin1String(text) && action->isEnabled()) {
                    action->trigger();
                    chosen = true;
                }
            }
            delete menu;
            return chosen;
        };
        QVERIFY(choose(1, "Copy paths"));
        QCOMPARE(QGuiApplication::clipboard()->text(), QDir::toNativeSeparators(word("/x\n/y")));
        QVERIFY(!choose(2, "Copy paths")); // it has none
        third->unsaved = true;
        QVERIFY(choose(1, "Close other tabs"));
        QCOMPARE(desk.tabs->currentSession(), third); // it asks
        QCOMPARE(desk.tabs->count(), 4);
        third->takeAnswer()(true);
        QCOMPARE(desk.tabs->sessions(), QList<SessionWidget *>{desk.session});
        QTRY_VERIFY(!second && !third);
        QVERIFY(!choose(1, "Close other tabs"));
        QVERIFY(choose(0, "Close all tabs"));
        QCOMPARE(desk.tabs->count(), 1);
    }

    void asksAllSessionsWithUnsavedChangesInTurn()
    {
        Desk desk;
        ProbeSession *saved = desk.add(word("Saved"));
        ProbeSession *third = desk.add(word("Third"));
        QVERIFY(!desk.tabs->hasUnsavedChanges());
        int done = 0;
        desk.tabs->confirmCloseAll([&done] { ++done; });
        QCOMPARE(done, 1);

        desk.session->unsaved = third->unsaved = true;
        QVERIFY(desk.tabs->hasUnsavedChanges());
        desk.tabs->confirmCloseAll([&done] { ++done; });
        QCOMPARE(desk.tabs->currentSession(), desk.session);
        QVERIFY(!third->answer);
        desk.session->takeAnswer()(true);
        QVERIFY(!saved->answer);
        QCOMPARE(desk.tabs->currentSession(), third);
        third->takeAnswer()(false);
        QCOMPARE(done, 1);
        QCOMPARE(desk.tabs->count(), 4);

        desk.tabs->confirmCloseAll([&done] { ++done; });
        const auto answer = desk.session->takeAnswer();
        delete third; // meanwhile
        answer(true);
        QCOMPARE(done, 2);
    }

    void theEditMenuActsOnTheSessionInFront()
    {
        Desk desk;
        QMenu menu;
        const EditMenu edit(&menu, desk.tabs);
        const auto entry = [&menu](const char *text) {
            const QList<QAction *> actions = menu.actions();
            return *std::find_if(actions.begin(), actions.end(),
                                 [text](const QAction *action) { return action->text() == QLatin1String(text); });
        };
        QVERIFY(entry("Enable editing")->isEnabled());
        QVERIFY(!entry("Undo")->isEnabled());
        desk.session->editable = {EditCommand::Undo, EditCommand::RedoRight};
        Q_EMIT desk.session->editStateChanged();
        QVERIFY(entry("Undo")->isEnabled());
        QVERIFY(!entry("Redo")->isEnabled());
        entry("Redo right")->trigger();
        entry("Undo")->trigger();
        QCOMPARE(desk.session->log, words("edit 5|edit 0"));

        entry("Enable editing")->trigger();
        QVERIFY(desk.session->unlocked);
        desk.tabs->showHome();
        QVERIFY(!entry("Enable editing")->isEnabled());
        QVERIFY(!entry("Enable editing")->isChecked());
        QVERIFY(!entry("Undo")->isEnabled());
        desk.tabs->setCurrentWidget(desk.session);
        QVERIFY(entry("Enable editing")->isChecked());
        delete desk.session; // elsewhere
        QCOMPARE(desk.tabs->count(), 1);
        QVERIFY(!entry("Enable editing")->isEnabled());
    }

    void routesDropsToTheSessionInFront()
    {
        Desk desk;
        QVERIFY(QTest::qWaitForWindowExposed(&desk.window));
        const DropRouter router(*desk.tabs);
        desk.window.setAcceptDrops(true);
        auto *child = new QLineEdit(desk.session);
        child->setGeometry(100, 50, 200, 30);
        child->show();
        QMimeData files;
        files.setUrls({QUrl::fromLocalFile(word("/a")), QUrl::fromLocalFile(word("/b"))});
        const auto sent = [](QWidget *to, QPoint at, const QMimeData &data) {
            QDragEnterEvent enter(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
            enter.ignore();
            QApplication::sendEvent(to, &enter);
            QDropEvent drop(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
            drop.ignore();
            QApplication::sendEvent(to, &drop);
            return enter.isAccepted() && drop.isAccepted();
        };

        QVERIFY(sent(child, {5, 6}, files));
        QVERIFY(sent(&desk.window, desk.session->mapTo(&desk.window, QPoint(7, 8)), files));
        QCOMPARE(desk.session->log, words("drop /a /b at 105,56|drop /a /b at 7,8"));

        // Beside the session, without files, in another window, and when the session does not want them.
        desk.session->log.clear();
        QVERIFY(!sent(&desk.window, {2, 2}, files));
        QMimeData text;
        text.setText(word("text"));
        QVERIFY(!sent(child, {5, 6}, text));
        QWidget other;
        QVERIFY(!sent(&other, {5, 6}, files));
        desk.session->takesDrops = false;
        QVERIFY(!sent(&desk.window, desk.session->mapTo(&desk.window, QPoint(7, 8)), files));
        QCOMPARE(desk.session->log, QStringList());
    }
};

VELMORA_TEST(SessionTabsTest)
#include "session_tabs_test.moc"
