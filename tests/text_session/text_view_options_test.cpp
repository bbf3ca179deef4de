#include "core/settings_store.h"
#include "session_fixture.h"
#include "support/test_main.h"
#include "text/text_appearance.h"

#include <QAction>
#include <QClipboard>
#include <QFontInfo>
#include <QGuiApplication>

using namespace velmora;
using namespace velmora::test;

namespace {

QAction *actionOf(SessionFixture &f, const QString &name)
{
    return f.session.findChild<QAction *>(name);
}

} // namespace

class TextViewOptionsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { SessionSettings().clear(); } // for the other classes of the program

    void remembersHowTheTextsAreShown()
    {
        const QStringList names = {QStringLiteral("wrapLinesAction"), QStringLiteral("showBlanksAction"),
                                   QStringLiteral("lineDetailAction"), QStringLiteral("ignoreMinorAction")};
        QList<bool> before;
        {
            SessionFixture f;
            for (const QString &name : names) {
                before.append(actionOf(f, name)->isChecked());
                actionOf(f, name)->trigger();
            }
            f.session.view().zoomBy(3);
            f.session.view().setLeftShare(0.3);
            f.scene().setContextRows(10);
            actionOf(f, QStringLiteral("zoomInAction"))->trigger();
        }
        SessionFixture f;
        for (qsizetype k = 0; k < names.size(); ++k)
            QCOMPARE(actionOf(f, names.at(k))->isChecked(), !before.at(k));
        DiffView &view = f.session.view();
        QVERIFY(view.scene().wraps());
        QVERIFY(view.scene().countsMinor());
        QCOMPARE(view.scene().layout().context(), 10);
        QCOMPARE(view.fontPointSize(), 14.0);
        QVERIFY(std::abs(view.leftShare() - 0.3) < 0.05);
        for (const QString &name : names)
            actionOf(f, name)->trigger();
        view.setLeftShare(0.5);
        actionOf(f, QStringLiteral("resetZoomAction"))->trigger();
    }

    void takesUpWhatWasChosenForAllSessions()
    {
        SessionFixture f;
        f.compareTexts("\ta\n", "\tb\n");
        TextAppearance chosen = TextAppearance::load();
        chosen.points = 17;
        chosen.tabWidth = 8;
        chosen.family = QFontInfo(QFont()).family();
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
        QCOMPARE(f.position(), QStringLiteral("Diff 0/1"));
        f.session.onIgnoreMinor();
        QVERIFY(!actionOf(f, QStringLiteral("ignoreMinorAction"))->isChecked());
        QCOMPARE(f.position(), QStringLiteral("Diff 0/2"));
        f.session.onNextDiff();
        QCOMPARE(f.scene().caret().position.row, 0);
        f.session.onIgnoreMinor();
        QCOMPARE(f.position(), QStringLiteral("Diff 0/1"));
    }

    void copiesDifferencesAsAUnifiedDiff()
    {
        SessionFixture f;
        const QString left = f.file(QStringLiteral("a"), "1\n2\n3\n4\n");
        const QString right = f.file(QStringLiteral("b"), "1\nB\n3\nD\n");
        f.compare(left, right);
        const auto copied = [&f] {
            QGuiApplication::clipboard()->clear();
            actionOf(f, QStringLiteral("copyPatchAction"))->trigger();
            [] { QTRY_VERIFY(!QGuiApplication::clipboard()->text().isEmpty()); }();
            return QGuiApplication::clipboard()->text();
        };
        const QString names = QStringLiteral("--- %1\n+++ %2\n").arg(left, right);
        QCOMPARE(copied(), names + QStringLiteral("@@ -1,4 +1,4 @@\n 1\n-2\n+B\n 3\n-4\n+D\n"));

        // The selected lines only, as they have been edited.
        f.session.setEditingEnabled(true);
        DiffScene &scene = f.scene();
        const qsizetype last = scene.layout().count() - 1;
        scene.setCaret({Side::Right, {scene.layout().rowAt(last), 0}, {scene.layout().rowAt(last), 0}});
        QTest::keyClicks(&f.pane(Side::Right), QStringLiteral("x"));
        scene.setCaret({Side::Right, {scene.layout().rowAt(last), 0}, {scene.layout().rowAt(last), 2}});
        QVERIFY(copied().endsWith(QStringLiteral("+xD\n")));
        QVERIFY(!copied().contains(QStringLiteral("+B")));

        const QString same = f.file(QStringLiteral("c"), "1\n2\n3\n4\n");
        SessionFixture equal;
        equal.compare(left, same);
        actionOf(equal, QStringLiteral("copyPatchAction"))->trigger();
        QTRY_COMPARE(equal.status(), QStringLiteral("There is no difference to copy"));
    }

    void changesNothingThatIsNotShown()
    {
        SessionFixture f;
        f.compareTexts("1\n2\n3\n", "1\nB\n3\n");
        f.session.setEditingEnabled(true);
        f.session.onShowIdentical();
        DiffPane &pane = f.pane(Side::Left);
        pane.selectAll();
        QTest::keyClick(&pane, Qt::Key_Delete);
        QTest::keyClicks(&pane, QStringLiteral("x"));
        QVERIFY(!f.session.hasUnsavedChanges());
        QVERIFY2(f.status().contains(QStringLiteral("not shown")), qPrintable(f.status()));
        f.session.onShowAll();
        pane.selectAll();
        QTest::keyClick(&pane, Qt::Key_Delete);
        QVERIFY(f.session.hasUnsavedChanges());
    }
};

VELMORA_TEST(TextViewOptionsTest)
#include "text_view_options_test.moc"
