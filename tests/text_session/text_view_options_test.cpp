#include "core/settings_store.h"
#include "session/pane/text_appearance.h"
#include "session_fixture.h"
#include "support/test_main.h"

#include <QAction>
#include <QClipboard>
#include <QFontInfo>
#include <QGuiApplication>

using namespace velmora;
using namespace velmora::test;

class TextViewOptionsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { SessionSettings().clear(); } // for the other classes of the program

    void remembersHowTheTextsAreShown()
    {
        const auto names = {"wrapLinesAction", "showBlanksAction", "lineDetailAction", "ignoreMinorAction"};
        QList<bool> before;
        {
            SessionFixture f;
            for (const char *name : names) {
                before.append(f.child<QAction>(name)->isChecked());
                f.child<QAction>(name)->trigger();
            }
            f.session.view().zoomBy(3);
            f.session.view().setLeftShare(0.3);
            f.scene().setContextRows(10);
            f.child<QAction>("zoomInAction")->trigger();
        }
        SessionFixture f;
        for (const char *name : names)
            QCOMPARE(f.child<QAction>(name)->isChecked(), !before.takeFirst());
        DiffView &view = f.session.view();
        QVERIFY(view.scene().wraps());
        QVERIFY(view.scene().countsMinor());
        QCOMPARE(view.scene().layout().context(), 10);
        QCOMPARE(view.fontPointSize(), 14.0);
        QVERIFY(std::abs(view.leftShare() - 0.3) < 0.05);
        for (const char *name : names)
            f.child<QAction>(name)->trigger();
        view.setLeftShare(0.5);
        f.child<QAction>("resetZoomAction")->trigger();
    }

    void takesUpWhatWasChosenForAllSessions()
    {
        SessionFixture f;
        f.compareTexts("\ta\n", "\tb\n");
        TextAppearance chosen = TextAppearance::load();
        chosen.points = 17;
        chosen.tabWidth = 8;
        chosen.family = word("Courier New"); // whether it is there or not
        chosen.save();
        f.session.refreshTheme();
        QCOMPARE(f.session.view().fontPointSize(), 17.0);
        QCOMPARE(f.scene().font().family(), chosen.family);
        const auto tabCells = [&f] {
            LineRenderer &renderer = f.scene().renderer(Side::Left);
            return qRound(renderer.xOf(0, 1) / renderer.cellWidth());
        };
        QCOMPARE(tabCells(), 8);
        f.session.start();
        f.wait();
        QCOMPARE(tabCells(), 8);
        SessionFixture next;
        QCOMPARE(next.session.view().fontPointSize(), 17.0);
    }

    void passesOverUnimportantDifferencesUnlessToldOtherwise()
    {
        SessionFixture f;
        f.compareTexts("one\ntwo\nthree\n", "one \ntwo\n3\n");
        QCOMPARE(f.position(), word("Diff 0/1"));
        f.session.onIgnoreMinor();
        QVERIFY(!f.child<QAction>("ignoreMinorAction")->isChecked());
        QCOMPARE(f.position(), word("Diff 0/2"));
        f.session.onNextDiff();
        QCOMPARE(f.scene().caret().position.row, 0);
        f.session.onIgnoreMinor();
        QCOMPARE(f.position(), word("Diff 0/1"));
    }

    void copiesDifferencesAsAUnifiedDiff()
    {
        SessionFixture f;
        f.compareTexts("1\n2\n3\n4\n", "1\nB\n3\nD\n");
        const auto copied = [&f] {
            QGuiApplication::clipboard()->clear();
            f.child<QAction>("copyPatchAction")->trigger();
            [] { QTRY_VERIFY(!QGuiApplication::clipboard()->text().isEmpty()); }();
            return QGuiApplication::clipboard()->text();
        };
        const QString names = word("--- %1\n+++ %2\n").arg(f.path("a"), f.path("b"));
        QCOMPARE(copied(), names + word("@@ -1,4 +1,4 @@\n 1\n-2\n+B\n 3\n-4\n+D\n"));

        // The selected lines only, as they have been edited.
        f.session.setEditingEnabled(true);
        PaneScene &scene = f.scene();
        const qsizetype last = scene.layout().count() - 1;
        scene.setCaret({Side::Right, {scene.layout().rowAt(last), 0}, {scene.layout().rowAt(last), 0}});
        QTest::keyClicks(&f.pane(Side::Right), word("x"));
        scene.setCaret({Side::Right, {scene.layout().rowAt(last), 0}, {scene.layout().rowAt(last), 2}});
        QVERIFY(copied().endsWith(word("+xD\n")));
        QVERIFY(!copied().contains(word("+B")));

        SessionFixture equal;
        equal.compareTexts("1\n", "1\n");
        equal.child<QAction>("copyPatchAction")->trigger();
        QTRY_COMPARE(equal.status(), word("There is no difference to copy"));
    }

    void changesNothingThatIsNotShown()
    {
        SessionFixture f;
        f.compareTexts("1\n2\n3\n", "1\nB\n3\n");
        f.session.setEditingEnabled(true);
        f.session.onShowIdentical();
        TextPane &pane = f.pane(Side::Left);
        pane.selectAll();
        QTest::keyClick(&pane, Qt::Key_Delete);
        QTest::keyClicks(&pane, word("x"));
        QVERIFY(!f.session.hasUnsavedChanges());
        QVERIFY2(f.status().contains(word("not shown")), qPrintable(f.status()));
        f.session.onShowAll();
        pane.selectAll();
        QTest::keyClick(&pane, Qt::Key_Delete);
        QVERIFY(f.session.hasUnsavedChanges());
    }
};

VELMORA_TEST(TextViewOptionsTest)
#include "text_view_options_test.moc"
