#include "core/workers.h"
#include "edit_fixture.h"
#include "session/frame/notice_card.h"
#include "settings/dialogs/text_session_settings_dialog.h"
#include "support/test_main.h"
#include "text/editing/external_change.h"

#include <QAction>
#include <QCheckBox>
#include <QClipboard>
#include <QFileInfo>
#include <QGuiApplication>
#include <QJsonArray>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QSignalSpy>

using namespace velmora;
using namespace velmora::test;

/// What goes into a comparison, how one runs, and what is asked before it. What it shows: `TextResultsTest`.
class TextCompareWidgetTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // Starting --------------------------------------------------------------------------------------------------------

    void refusesInputsThatCannotBeCompared()
    {
        SessionFixture f;
        f.session.onCompare();
        QCOMPARE(f.status(), word("Select at least one file to compare"));
        for (const QString &left : {f.path("no such file"), f.folder.path()}) { // a folder is no file
            f.compare(left, QString());
            QCOMPARE(f.status(), word("Neither file exists"));
        }
    }

    void comparesAFileOfTheLimitAndRefusesOneByteMore()
    {
        SessionFixture f;
        const QString small = f.file("small", "x\n");
        const QString large = f.file("large", {});
        QVERIFY(QFile::resize(large, 52'428'800));
        f.compare(small, large);
        QVERIFY2(f.diffs() >= 0, qPrintable(f.status()));

        QVERIFY(QFile::resize(large, 52'428'801));
        for (const auto &[left, right] : {std::pair(small, large), std::pair(large, f.path("missing"))}) {
            f.compare(left, right);
            QCOMPARE(f.status(), word("File too large (limit 50 MB). Use folder compare or split the file first."));
        }
        QVERIFY(f.dialogs.asked().isEmpty()); // the size is looked at before the changed file is asked about
    }

    void announcesBinaryContent()
    {
        SessionFixture f;
        const QString text = f.file("a", "text\n");
        const QString binary = f.file("b", QByteArray("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16));
        f.compare(text, binary);
        DiffView &view = f.session.view();
        QVERIFY(view.scene().document() == nullptr);
        QCOMPARE(view.notice(Side::Right).title(), word("Binary content"));
        const auto buttons = view.notice(Side::Right).findChildren<QPushButton *>();
        QCOMPARE(buttons.size(), 2);
        buttons.first()->click();
        QCOMPARE(f.host.opened, (QList<std::pair<QString, SessionPaths>>{{word("binary"), {text, binary, {}}}}));
        buttons.last()->click();
        QVERIFY(view.scene().document() != nullptr);
        QVERIFY(view.notice(Side::Right).isHidden());

        f.compare(text, text);
        f.compare(text, binary); // announced again
        QVERIFY(view.scene().document() == nullptr);
    }

    // Runs ------------------------------------------------------------------------------------------------------------

    void cancelsOnASecondPress()
    {
        SessionFixture f;
        const QString small = f.file("small", "1\n");
        f.compare(small, small);
        const QString large = f.file("large", numberedLines(400'000));
        f.session.setPaths({large, f.file("other", numberedLines(400'000, "LINE ")), {}});
        f.session.onCompare();
        QVERIFY(f.session.isComparing());
        f.session.onCompare();
        QCOMPARE(f.status(), word("Cancelling..."));
        f.wait();
        QCOMPARE(f.status(), word("Compare cancelled"));
        QCOMPARE(f.scene().document()->rowCount(), 1); // the result before stays
        f.session.onExportHtml();
        QVERIFY(f.status() != word("No comparison result to export"));
    }

    void startingAnewDropsTheRunBefore()
    {
        auto f = std::make_unique<SessionFixture>();
        QSignalSpy finished(&f->session, &SessionWidget::comparisonFinished);
        const QString large = f->file("large", numberedLines(300'000));
        const QString small = f->file("small", "1\n");
        f->session.setPaths({large, large, {}});
        f->session.start();
        f->session.setPaths({small, small, {}});
        f->session.start();
        f->wait();
        QCOMPARE(finished.size(), 1);
        QCOMPARE(finished.first().first().toString(), small);

        // As from a run before.
        f->session.onTextCompareFinished(0, nullptr, word("stale"), {}, {}, true, {}, {});
        QVERIFY(f->diffs() == 0 && f->format() != word("stale"));

        f->session.setPaths({large, large, {}});
        f->session.onCompare();
        f.reset(); // while it compares
    }

    void reportsAFileThatCannotBeOpened()
    {
        SessionFixture f;
        const QString file = f.file("a", "1\n");
        const QString locked = word("/proc/self/mem"); // is there, and its start is not, whoever asks
        if (!QFileInfo::exists(locked))
            QSKIP("no such file here");
        f.compare(file, file);
        f.compare(locked, file);
        QCOMPARE(f.status(), word("Cannot open left file: %1").arg(QDir::toNativeSeparators(locked)));
        f.compare(file, locked);
        QCOMPARE(f.status(), word("Cannot open right file: %1").arg(QDir::toNativeSeparators(locked)));
        QVERIFY(f.scene().document() != nullptr);
    }

    // Files that change -----------------------------------------------------------------------------------------------

    void asksAboutFilesChangedByOthers()
    {
        SessionFixture f;
        const QString left = f.file("a", "1\n");
        const QString right = f.file("b\u202Etxt", "1\n");
        f.compare(left, right);
        f.session.onCompare();
        f.wait();
        QVERIFY(f.dialogs.asked().isEmpty()); // nothing has changed

        const auto outcome = [&f](ExternalChangeAnswer answer) {
            QSignalSpy finished(&f.session, &SessionWidget::comparisonFinished);
            f.dialogs.answerNumber(int(answer));
            f.session.onCompare();
            f.wait();
            return finished.isEmpty() ? -1 : f.diffs();
        };
        f.file("a", "1\n2\n");
        QCOMPARE(outcome(ExternalChangeAnswer::Cancel), -1);
        QCOMPARE(f.dialogs.asked().last().title, word("External file changed"));
        QCOMPARE(f.question(), word("Files on disk were modified externally:\n  · Left: %1\n\n"
                                    "Reload from disk before comparing?")
                                   .arg(QDir::toNativeSeparators(left)));
        QCOMPARE(outcome(ExternalChangeAnswer::KeepLoaded), 0);
        QCOMPARE(outcome(ExternalChangeAnswer::Reload), 1);

        QFile::remove(right);
        f.file("a", "1\n2\n3\n");
        QCOMPARE(outcome(ExternalChangeAnswer::Cancel), -1);
        QVERIFY(f.question().contains(word("  · Left: %1\n  · Right: %2\n")
                                          .arg(QDir::toNativeSeparators(left),
                                               QDir::toNativeSeparators(right).replace(u'\u202E', word("[RLO]")))));
    }

    void reloadingForgetsTheEditsOfTheFileThatChanged()
    {
        EditFixture f("a\n", "b\n");
        for (const Side side : {Side::Left, Side::Right})
            f.typeAt(side, 1, word("x"));
        f.file("left.txt", "theirs\n");
        f.dialogs.answerNumber(int(ExternalChangeAnswer::Reload));
        f.session.onCompare();
        f.wait();
        QCOMPARE(f.picture(), word("-theirs|-,+-|xb"));
        QVERIFY(!f.session.canEdit(EditCommand::UndoLeft) && f.session.canEdit(EditCommand::UndoRight));
    }

    void comparesTheClipboard()
    {
        SessionFixture f;
        f.session.show();
        QGuiApplication::clipboard()->setText(word("1\n2\n"));
        QTest::keyClick(&f.pane(Side::Right), Qt::Key_V, Qt::ControlModifier); // into nothing
        f.wait();
        QCOMPARE(f.session.paths(), (SessionPaths{QString(), word("[Clipboard]"), QString()}));
        QVERIFY2(f.status().startsWith(word("Compare done: 2 diffs (added 2")), qPrintable(f.status()));

        QGuiApplication::clipboard()->setText(word("1\nzwei\n"));
        f.session.useClipboardText(Side::Left);
        f.wait();
        QCOMPARE(f.session.paths().left, word("[Clipboard]"));
        QCOMPARE(f.diffs(), 2);
        QGuiApplication::clipboard()->setText(word("something else"));
        f.session.setEditingEnabled(true);
        QTest::keyClicks(&f.pane(Side::Left), word("x"));
        f.session.onReloadBoth(); // what was taken stays, as it has been edited
        f.wait();
        QCOMPARE(f.text(Side::Left, 0), word("x1"));
        QVERIFY(f.session.hasUnsavedChanges());
        QVERIFY(f.dialogs.asked().isEmpty());
    }

    // Inputs ----------------------------------------------------------------------------------------------------------

    void browsesForFiles()
    {
        SessionFixture f;
        f.dialogs.answerPath(word("/some/left.txt"));
        f.dialogs.answerNothing();
        f.session.onBrowseLeft();
        f.session.onBrowseRight();
        QCOMPARE(f.dialogs.titles(), words("Select left file|Select right file"));
        QCOMPARE(f.session.paths(), (SessionPaths{word("/some/left.txt"), QString(), QString()}));
        QVERIFY(!f.session.isComparing());
    }

    void takesDroppedFiles()
    {
        SessionFixture f;
        const QString a = f.file("a", "1\n");
        const QString b = f.file("b", "2\n");
        f.session.show();
        f.session.dropPaths({f.folder.path()}, QPoint(10, 300));
        QCOMPARE(f.status(), word("Folders are not supported here — use the Folder compare tab."));
        struct Drop {
            QStringList paths;
            int x;
            SessionPaths expected;
            bool compares; ///< the pair is complete, and not perhaps the first of two drops
        };
        for (const Drop &drop : {Drop{{a}, 900, {QString(), a, {}}, false}, Drop{{b}, 10, {b, a, {}}, true},
                                 Drop{{a, b}, 900, {a, b, {}}, true}, Drop{{b}, 10, {b, b, {}}, false}}) {
            f.session.dropPaths(drop.paths, QPoint(drop.x, 300));
            QCOMPARE(f.session.paths(), drop.expected);
            QCOMPARE(f.session.isComparing(), drop.compares);
            f.wait();
        }
    }

    void swapsSides()
    {
        SessionFixture f;
        const QString a = f.file("a", "1\n2\n");
        const QString b = f.file("b", "1\n");
        f.setOptions(R"({"leftReplaceFind": ["2"], "leftReadOnly": true})");
        const auto locked = [&f] {
            return std::pair(f.child<QLineEdit>("leftPathEdit")->isReadOnly(),
                             f.child<QLineEdit>("rightPathEdit")->isReadOnly());
        };
        QCOMPARE(locked(), std::pair(true, false));
        f.compare(a, b);
        QSignalSpy titles(&f.session, &SessionWidget::tabTitleChanged);
        f.session.onSwapSides();
        f.wait();
        QCOMPARE(f.session.paths(), (SessionPaths{b, a, QString()}));
        QVERIFY(f.status().startsWith(word("Compare done: 1 diffs (added 1,")));
        QCOMPARE(titles.last().first().toString(), word("b <-> a"));
        QCOMPARE(f.session.options().value(word("rightReplaceFind")).toArray().size(), 1);
        QCOMPARE(locked(), std::pair(false, true));
        QVERIFY(f.dialogs.asked().isEmpty());
    }

    void comparesAnewUnderOtherRules()
    {
        SessionFixture f;
        f.compareTexts("x y\nZ\n", "x  y\nz\n");
        QCOMPARE(f.diffs(), 2);
        f.session.onSessionSettings(TextSessionSettingsDialog::Importance);
        auto *dialog = f.session.findChild<TextSessionSettingsDialog *>();
        dialog->findChild<QCheckBox *>(word("importantCharacterCase"))->setChecked(false);
        dialog->accept();
        QTRY_COMPARE(f.diffs(), 0);
        QVERIFY(f.session.options().value(word("ignoreCase")).toBool());

        auto *menu = f.child<QAction>("settingsAction")->menu();
        QVERIFY(menu);
        const auto pick = [&](const char *text) {
            for (QAction *action : menu->actions()) {
                if (action->text() == QLatin1String(text))
                    action->trigger();
            }
            f.wait();
            return f.diffs();
        };
        QCOMPARE(pick("Strict (all significant)"), 3);
        QCOMPARE(pick("Relaxed (ws, case, EOL, blank lines)"), 0);
        QCOMPARE(f.session.paths().left, f.path("a"));
        Q_EMIT menu->aboutToShow();
        QVERIFY(menu->actions().last()->isChecked() && !menu->actions().first()->isChecked());
    }

    // Reports ---------------------------------------------------------------------------------------------------------

    void exportsReports()
    {
        SessionFixture f;
        f.session.onExportHtml();
        QCOMPARE(f.status(), word("No comparison result to export"));
        QVERIFY(f.dialogs.asked().isEmpty());

        f.compareTexts("one\n", "one\n<two>\n");
        const QString report = f.path("report.html");
        f.dialogs.answerPath(report);
        f.session.onExportHtml();
        const ScriptedDialogs::Asked asked = f.dialogs.asked().last();
        QCOMPARE((QStringList{asked.title, asked.start, asked.text}),
                 (QStringList{word("Export diff report"), f.path("diff_report.html"), word("HTML (*.html)")}));
        QTRY_VERIFY(QFileInfo::exists(report));
        const QByteArray page = contentsOf(report);
        for (const char *part : {"&lt;two&gt;", "Diff summary: 1 total (added 1, removed 0, modified 0)",
                                 "<title>Velmora — diff report</title>"})
            QVERIFY2(page.contains(part), part);

        const QString nowhere = f.path("no such folder/report.html");
        f.dialogs.answerPath(nowhere);
        f.session.onExportHtml();
        const QString failure = word("Cannot write file: %1\n").arg(QDir::toNativeSeparators(nowhere));
        QTRY_VERIFY(f.question().startsWith(failure)); // and then why, as the system says it
        QVERIFY(f.question().size() > failure.size());
    }

    void writesAPendingReportOnce()
    {
        SessionFixture f;
        const QString file = f.file("a", "one\n");
        const QString report = f.path("report.html");
        QVERIFY(f.session.setPendingReport(report));
        f.compare(f.path("x"), f.path("y")); // fails: the report still waits
        f.compare(file, file);
        QTRY_VERIFY(QFileInfo::exists(report));
        QTRY_COMPARE(f.host.messages, QStringList{word("Report written: %1").arg(QDir::toNativeSeparators(report))});
        QVERIFY(QFile::remove(report));
        f.compare(file, file);
        QCOMPARE(f.diffs(), 0);
        QVERIFY(joinWorkers(workersPatience));
        QVERIFY(!QFileInfo::exists(report));
    }
};

VELMORA_TEST(TextCompareWidgetTest)
#include "text_compare_widget_test.moc"
