#include "core/settings_store.h"
#include "folder/actions/advanced_filters_dialog.h"
#include "folder/compare/folder_compare_side_pane.h"
#include "folder/compare/time_shift_bar.h"
#include "folder_session_fixture.h"
#include "session/frame/notice_card.h"
#include "session/frame/path_edit.h"
#include "settings/dialogs/folder_session_settings_dialog.h"
#include "support/made_program.h"
#include "support/test_main.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QHeaderView>
#include <QJsonArray>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QSpinBox>

using namespace velmora;
using namespace velmora::test;

class FolderCompareWidgetTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { SessionSettings().clear(); }

    void showsTheLevelWithFoldersFilledIn()
    {
        Filled f;
        QCOMPARE(f.rows(), words("docs = docs|src ≠ src| → file9|file10 ← "));
        QVERIFY(f.session.logText().contains(word(" load dirs: ")));
        QCOMPARE(f.session.status(), word("Files compared: 5, differences: 3"));
        for (const char *name : {"folderSideLeft", "folderSideCenter", "folderSideRight"})
            QVERIFY(f.session.findChild<TreeLineTreeWidget *>(QLatin1String(name)));
    }

    void keysOpenCloseAndMove()
    {
        Filled f;
        f.goTo(word("src"));
        f.key(Qt::Key_Right);
        QCOMPARE(f.rows().mid(1, 3), words("src ≠ src|main.cpp ≠ main.cpp|same.h = same.h"));
        f.key(Qt::Key_Right);
        QCOMPARE(f.current(), word("src/main.cpp"));
        f.key(Qt::Key_Left);
        QCOMPARE(f.current(), word("src"));
        f.key(Qt::Key_Left);
        QCOMPARE(f.rows().size(), 4);
        f.key(Qt::Key_Plus);
        QCOMPARE(f.rows().size(), 6);
        f.key(Qt::Key_Minus);
        QCOMPARE(f.rows().size(), 4);
        QTest::keyClicks(&f.session.view().activePane(), word("file1"));
        QCOMPARE(f.current(), word("file10"));
        QVERIFY(f.session.logText().contains(word(" expand: src (2 items)")));
    }

    void foldersOpenInPlaceAndUpComesBack()
    {
        Filled f;
        f.goTo(word("src"));
        f.key(Qt::Key_Return);
        f.wait();
        QCOMPARE(f.rows(), words("main.cpp ≠ main.cpp|same.h = same.h"));
        QCOMPARE(f.session.paths().left, f.disk.left() + word("/src"));
        QVERIFY(f.session.logText().contains(word(" navigate: ")));
        f.key(Qt::Key_Backspace);
        f.wait();
        QCOMPARE(f.session.paths().right, f.disk.right());
        QCOMPARE(f.current(), word("src"));
    }

    void filesOpenInTheSessionThatSuitsThem()
    {
        Filled f;
        f.disk.file(word("left/data"), QByteArray("\0\1\2", 3));
        f.disk.file(word("right/data"), QByteArray("\0\1\3", 3));
        f.compare();
        QSignalSpy text(&f.session, &FolderCompareWidget::openTextCompare);
        f.goTo(word("src/main.cpp"));
        f.key(Qt::Key_Return);
        QTRY_COMPARE(text.size(), 1);
        QCOMPARE(text.first().at(1).toString(), f.disk.right() + word("/src/main.cpp"));
        QCOMPARE(f.host.opened.last().first, word("text"));
        f.goTo(word("data"));
        f.key(Qt::Key_Return);
        QTRY_COMPARE(f.host.opened.size(), 2);
        QCOMPARE(f.host.opened.last().first, word("binary"));
    }

    void viewsAndDifferences()
    {
        Filled f;
        f.session.onExpandAll();
        QCOMPARE(f.rows().size(), 7);
        QVERIFY(f.session.logText().contains(word(" expand all subfolders recursively")));
        f.action("showDifferencesAction")->trigger();
        QCOMPARE(f.rows(), words("src ≠ src|main.cpp ≠ main.cpp| → file9|file10 ← "));
        f.session.onShowIdentical();
        QCOMPARE(f.rows(), words("docs = docs|guide.txt = guide.txt|src ≠ src|same.h = same.h"));
        f.session.onShowAll();
        f.session.onCollapseAll();
        QCOMPARE(f.rows().size(), 4);
        f.session.view().leftPane().clearSelection();
        f.goTo(word("docs"));
        QStringList visited;
        for (int i = 0; i < 4; ++i) {
            f.action("nextAction")->trigger();
            visited.append(f.current());
        }
        QCOMPARE(visited, words("src/main.cpp|file9|file10|file10"));
        QCOMPARE(f.session.status(), word("No further difference"));
        f.action("previousAction")->trigger();
        QCOMPARE(f.current(), word("file9"));
    }

    void selectionAndPlaceSurviveAChangeOfViewAndARefresh()
    {
        Filled f;
        f.session.onExpandAll();
        f.goTo(word("src/main.cpp"));
        f.action("showDifferencesAction")->trigger();
        QCOMPARE(f.current(), word("src/main.cpp"));
        f.session.onShowAll();
        QCOMPARE(f.current(), word("src/main.cpp"));
        QCOMPARE(f.session.view().selectedNodes().size(), 1);
        f.session.onRefresh();
        f.wait();
        QCOMPARE(f.rows().size(), 7);
        QCOMPARE(f.session.view().currentNode(), f.session.comparison().tree().find(word("src/main.cpp")));
    }

    void filterBarHidesAtOnce()
    {
        Filled f;
        f.session.onExpandAll();
        auto *masks = f.session.findChild<QComboBox *>(word("nameFilter"));
        QCOMPARE(masks->count(), 5);
        masks->setCurrentIndex(1);
        Q_EMIT masks->activated(1);
        QCOMPARE(masks->currentText(), word("*.cpp;*.hpp;*.c;*.h;*.cc"));
        QTRY_COMPARE(f.rows(), words("docs - docs|src ≠ src|main.cpp ≠ main.cpp|same.h = same.h"));
        QVERIFY(f.session.logText().endsWith(word("3 hidden by filters")));
        masks->setEditText(word("*.nothing"));
        QTRY_COMPARE(f.session.comparison().tree().counts().hidden, 5);
        masks->setEditText(word("*.*"));
        QTRY_COMPARE(f.rows().size(), 7);
    }

    void sizeLimitsComeFromTheirDialogAndAreCleared()
    {
        Filled f;
        f.disk.file(word("left/large"), QByteArray(5000, 'x'));
        f.compare();
        const auto answer = [&f](auto &&change) {
            f.action("advancedFiltersAction")->trigger();
            auto *dialog = f.session.findChild<AdvancedFiltersDialog *>();
            change(*dialog);
            dialog->accept();
            QCoreApplication::sendPostedEvents(dialog, QEvent::DeferredDelete);
        };
        answer([](QDialog &dialog) { dialog.findChild<QSpinBox *>(word("minimumSize"))->setValue(2); });
        QTRY_COMPARE(f.rows(), words("docs - docs|src - src|large ← "));
        QVERIFY(f.session.logText().contains(word(" filters updated: size[2-Any KB] date[Any ~ Any]")));
        QVERIFY(f.session.findChild<QLabel *>(word("filterEffect"))->text().startsWith(word("size or date limits")));
        // Masks of the bar hold beside it.
        f.session.findChild<QComboBox *>(word("nameFilter"))->setEditText(word("*.h"));
        QTRY_COMPARE(f.rows().size(), 2);
        answer([](QDialog &dialog) { dialog.findChild<QPushButton *>(word("clearLimits"))->click(); });
        f.session.onExpandAll();
        QTRY_VERIFY(f.rows().contains(word("same.h = same.h")));
    }

    void settingsAndPresetsCompareAnewWhereTheyMust()
    {
        FolderSessionFixture f;
        f.disk.file(word("left/a"), "1", 7);
        f.disk.file(word("right/a"), "2", 7);
        f.disk.file(word("left/b.log"), "1", 7);
        f.compare();
        QCOMPARE(f.rows(), words("a ≈ a|b.log ← "));
        const quint64 generation = f.session.comparison().generation();
        const auto settings = [&f](auto &&change) {
            f.session.onSessionSettings(0);
            auto *dialog = f.session.findChild<FolderSessionSettingsDialog *>();
            change(*dialog);
            dialog->accept();
            QCoreApplication::sendPostedEvents(dialog, QEvent::DeferredDelete);
        };
        settings([](QDialog &dialog) { dialog.findChild<QLineEdit *>(word("excludeFiles"))->setText(word("*.log")); });
        QTRY_COMPARE(f.rows(), words("a ≈ a"));
        QCOMPARE(f.session.comparison().generation(), generation); // without the disk
        settings([](QDialog &dialog) { dialog.findChild<QComboBox *>(word("compareBasis"))->setCurrentIndex(2); });
        f.wait();
        QCOMPARE(f.rows(), words("a ≠ a"));

        QMenu *presets = f.action("presetAction")->menu();
        Q_EMIT presets->aboutToShow();
        QCOMPARE(presets->actions().first()->text(), word("Date and size (rules)"));
        QVERIFY(!presets->actions().at(0)->isChecked() && presets->actions().at(2)->isChecked());
        presets->actions().first()->trigger();
        f.wait();
        QCOMPARE(f.rows(), words("a ≈ a"));
        QCOMPARE(f.session.options().value(word("timeToleranceSec")).toInt(), 2);
#ifdef Q_OS_UNIX // where names hide
        f.disk.file(word("left/.hidden"), "1");
        settings([](QDialog &dialog) { dialog.findChild<QCheckBox *>(word("showHidden"))->click(); });
        f.wait();
        QCOMPARE(f.rows(), words(".hidden ← |a ≈ a"));
        QVERIFY(f.session.options().value(word("showHidden")).toBool());
#endif
    }

    void swapsSides()
    {
        Filled f;
        f.session.onSwapSides();
        f.wait();
        QCOMPARE(f.session.paths().left, f.disk.right());
        QCOMPARE(f.rows().mid(2), words("file9 ← | → file10"));
    }

    void dropsFillTheSides()
    {
        FolderSessionFixture f;
        f.disk.file(word("left/a"), "a");
        f.session.show();
        QCOMPARE(f.session.status(), word("Folder compare ready: drag folders from Explorer to the left/right pane."));
        f.session.dropPaths({f.disk.left()}, QPoint(20, 300));
        QCOMPARE(f.session.paths().left, f.disk.left());
        QCOMPARE(f.session.status(), word("Waiting for other side (only left set)"));
        QVERIFY(f.session.logText().contains(word("Wrote left side path: ")));
        f.session.dropPaths({f.disk.path(word("left/a"))}, QPoint(1000, 300));
        QVERIFY(f.session.status().startsWith(word("Only folders can be compared here")));
        QVERIFY(f.session.paths().right.isEmpty());
        f.session.dropPaths({f.disk.right()}, QPoint(1000, 300));
        f.wait();
        QCOMPARE(f.rows(), words("a ← "));
        QVERIFY(f.session.logText().contains(word("\nBoth paths set; loading directories\n")));
        f.session.dropPaths({f.disk.right(), f.disk.left()}, QPoint(20, 300));
        f.wait();
        QCOMPARE(f.rows(), words(" → a"));
        QCOMPARE(f.session.logText().count(word("Wrote right side path: ")), 2);
    }

    void nothingToShowIsExplained()
    {
        FolderSessionFixture f;
        f.session.onCompare();
        QCOMPARE(f.session.status(), word("Select two folders to compare"));
        f.compare();
        QCOMPARE(f.session.view().notice().accessibleName(), word("Both folders are empty."));
        f.disk.file(word("left/a"), "a");
        f.disk.file(word("right/a"), "a");
        f.compare();
        QVERIFY(f.session.view().notice().accessibleName().isEmpty());
        f.session.onShowDifferences();
        QCOMPARE(f.session.view().notice().accessibleName(), word("There are no differences."));
        f.session.view().notice().findChild<QPushButton *>()->click();
        QCOMPARE(f.rows().size(), 1);
        QVERIFY(QDir(f.disk.right()).removeRecursively());
        f.session.onRefresh();
        QTRY_VERIFY(f.session.view().notice().accessibleName().startsWith(word("Folder not found: ")));
    }

    void cancelSaysSo()
    {
        Filled f;
        f.session.onRefresh();
        f.session.onCancelCompare();
        QCOMPARE(f.session.status(), word("Cancelling..."));
        QTRY_COMPARE(f.session.status(), word("Compare cancelled"));
        QVERIFY(f.session.logText().endsWith(word(" compare cancelled")));
        QCOMPARE(f.session.logText().count(word(" compare cancelled")), 1);
        QVERIFY(!f.rows().isEmpty());
    }

    /// However often, and whatever the runs before have come to.
    void cancelledAndStartedAgainItEndsAsIfNothingWas()
    {
        Filled f;
        for (int i = 0; i < 20; ++i) {
            f.session.onRefresh();
            if (i % 3 == 0)
                QCoreApplication::processEvents();
            f.session.onCancelCompare();
            if (i % 2 == 0)
                f.wait();
        }
        f.session.onRefresh();
        f.wait();
        QCOMPARE(f.rows().size(), 4);
        QCOMPARE(f.session.status(), word("Files compared: 5, differences: 3"));
        f.session.onRefresh(); // and gone with the tab while it runs
    }

    void aFolderThatIsGoneIsToldAndLeft()
    {
        Filled f;
        QVERIFY(QDir(f.disk.path(word("right/src"))).removeRecursively());
        f.goTo(word("src"));
        f.key(Qt::Key_Return);
        QTRY_VERIFY(f.session.view().notice().accessibleName().startsWith(word("Folder not found: ")));
        QVERIFY(f.session.view().notice().accessibleName().endsWith(word("src")));
        f.key(Qt::Key_Backspace);
        f.wait();
        QVERIFY(f.session.view().notice().accessibleName().isEmpty());
        QCOMPARE(f.rows().at(1), word("src ← "));
    }

    void staleFinishIsDropped()
    {
        Filled f;
        QSignalSpy finished(&f.session, &SessionWidget::comparisonFinished);
        f.session.onFolderCompareFinished(f.session.comparison().generation() - 1, {}, true);
        QVERIFY(finished.isEmpty());
        QCOMPARE(f.session.status(), word("Files compared: 5, differences: 3"));
    }

    void optionsTravelAsJson()
    {
        FolderSessionFixture f;
        QJsonObject options;
        options.insert(word("compareBasis"), 2);
        options.insert(word("leftReadOnly"), true);
        options.insert(word("excludedNames"), QJsonArray{word("gone")});
        options.insert(word("ignoredNames"), QJsonArray{word("noise")});
        f.session.setOptions(options);
        for (const QString &key : options.keys())
            QCOMPARE(f.session.options().value(key), options.value(key));
        f.disk.file(word("left/gone"), "a");
        f.disk.file(word("left/noise"), "a");
        f.compare();
        QCOMPARE(f.rows(), words("noise ← "));
        f.session.onShowDifferences();
        QVERIFY(f.rows().isEmpty());
        const QJsonObject kept = f.session.options();
        f.session.setOptions(options);
        QVERIFY(f.action("showAllAction")->isChecked() && f.rows().size() == 1);
        f.session.setOptions(kept);
        QVERIFY(f.action("showDifferencesAction")->isChecked() && f.rows().isEmpty());
    }

    void timesOneHourApartAreOfferedAsEqual()
    {
        FolderSessionFixture f;
        f.disk.file(word("left/a"), "a", 3600);
        f.disk.file(word("right/a"), "a", 0);
        f.compare();
        auto *bar = f.session.findChild<TimeShiftBar *>();
        QVERIFY(!bar->isHidden());
        QVERIFY(bar->findChild<QLabel *>()->text().startsWith(word("1 ")));
        bar->findChild<QPushButton *>(word("timeShiftBarAction"))->click();
        f.wait();
        QVERIFY(bar->isHidden());
        QCOMPARE(f.session.options().value(word("timeToleranceSec")).toInt(), 3600);
        QCOMPARE(f.rows(), words("a ≈ a"));
    }

    void reportsAreWritten()
    {
        FolderSessionFixture f;
        f.session.onExportHtml();
        QCOMPARE(f.dialogs.asked().last().title, word("Export"));
        QCOMPARE(f.dialogs.asked().last().text, word("No comparison result to export"));
        f.disk.file(word("left/sub/a&1"), "a");
        f.disk.file(word("right/sub/b"), "b");
        const QString pending = f.disk.path(word("pending.html"));
        QVERIFY(f.session.setPendingReport(pending));
        f.compare();
        QTRY_VERIFY(
            contentsOf(pending).contains("Total: 3 items | Same: 0 | Different: 1 | Left only: 1 | Right only: 1"));
        QVERIFY(contentsOf(pending).contains("sub/a&amp;1"));
        const QString chosen = f.disk.path(word("chosen.html"));
        f.dialogs.answerPath(chosen);
        f.session.onExportHtml();
        QTRY_VERIFY(contentsOf(chosen).contains("status-rightonly"));
        QCOMPARE(f.dialogs.asked().last().start, f.disk.path(word("folder_diff_report.html")));
    }

    void columnWidthsAreSharedAndRemembered()
    {
        {
            Filled f;
            f.session.show();
            f.session.view().leftPane().horizontalHeader()->resizeSection(int(FolderColumn::LeftSize), 77);
            QCOMPARE(f.session.view().rightPane().columnWidth(int(FolderColumn::RightSize)), 77);
        }
        Filled f;
        QCOMPARE(f.session.view().leftPane().columnWidth(int(FolderColumn::LeftSize)), 77);
    }

    void fileVersionsAreShownOnRequestAndRememberedSo()
    {
        FolderSessionFixture f;
        MadeProgram newer;
        ++newer.version;
        QVERIFY(makeFile(f.disk.left() + word("/a.dll"), madeProgram()));
        QVERIFY(makeFile(f.disk.right() + word("/a.dll"), madeProgram(newer)));
        QVERIFY(makeFile(f.disk.right() + word("/b.txt"), "MZ no program"));
        f.session.show();
        f.compare();
        const auto version = [&f](int row, FolderColumn column) {
            const FolderRowsModel &model = f.session.view().rows();
            return model.index(row, int(column)).data().toString();
        };
        QVERIFY(f.session.view().leftPane().isColumnHidden(int(FolderColumn::LeftVersion)));
        f.action("showVersionsAction")->trigger();
        QVERIFY(!f.session.view().leftPane().isColumnHidden(int(FolderColumn::LeftVersion)));
        QTRY_COMPARE(version(0, FolderColumn::LeftVersion), word("1.2.3.4"));
        QTRY_COMPARE(version(0, FolderColumn::RightVersion), word("1.2.3.5"));
        QCOMPARE(version(1, FolderColumn::RightVersion), QString());
        QVERIFY(makeFile(f.disk.left() + word("/a.dll"), madeProgram(newer) + "more"));
        f.compare();
        QTRY_COMPARE(version(0, FolderColumn::LeftVersion), word("1.2.3.5"));
        const FolderSessionFixture later;
        QVERIFY(later.session.findChild<QAction *>(word("showVersionsAction"))->isChecked());
    }

    void namesKeepTheirRoomInANarrowWindow()
    {
        Filled f;
        f.session.show();
        const auto shown = [&f](FolderColumn left, FolderColumn right) {
            const bool isShown = !f.session.view().leftPane().isColumnHidden(int(left));
            return isShown != f.session.view().rightPane().isColumnHidden(int(right)) ? int(isShown) : -1;
        };
        const auto sizes = [&] { return shown(FolderColumn::LeftSize, FolderColumn::RightSize); };
        const auto times = [&] { return shown(FolderColumn::LeftTime, FolderColumn::RightTime); };
        TreeLineTreeWidget &left = f.session.view().leftPane();
        const int name = 20 * left.fontMetrics().averageCharWidth();
        // Wider than the bars, so that the window can be made too narrow for a column whatever the font.
        const int column = f.session.minimumSizeHint().width();
        // The column of signs stands between the panes, a scroll bar beside them.
        const auto resizePanes = [&f](int width) { f.session.resize(2 * width + 80, 500); };
        resizePanes(name + 3 * column);
        for (const FolderColumn sized : {FolderColumn::LeftSize, FolderColumn::LeftTime})
            left.horizontalHeader()->resizeSection(int(sized), column);
        QTRY_COMPARE(std::pair(sizes(), times()), std::pair(1, 1));
        resizePanes(name + column + column / 2);
        QTRY_COMPARE(std::pair(sizes(), times()), std::pair(1, 0));
        resizePanes(name + column / 2);
        QTRY_COMPARE(std::pair(sizes(), times()), std::pair(0, 0));
        resizePanes(name + 3 * column);
        QTRY_COMPARE(std::pair(sizes(), times()), std::pair(1, 1));
        QCOMPARE(f.session.view().rightPane().columnWidth(int(FolderColumn::RightTime)), column);
    }

    void theKeyboardGoesFromThePathsToTheRows()
    {
        Filled f;
        QList<QWidget *> stops;
        QWidget *const first = &f.session.view().leftSide().edit().lineEdit();
        for (QWidget *widget = first; stops.isEmpty() || widget != first; widget = widget->nextInFocusChain()) {
            if (qobject_cast<QLineEdit *>(widget) || qobject_cast<TreeLineTreeWidget *>(widget))
                stops.append(widget);
        }
        stops.removeOne(f.session.findChild<TreeLineTreeWidget *>(word("folderSideCenter")));
        const QList<QWidget *> expected{first, &f.session.view().rightSide().edit().lineEdit(),
                                        &f.session.view().leftPane(), &f.session.view().rightPane()};
        QCOMPARE(stops.mid(0, 4), expected);
    }

    void panesScrollTogether()
    {
        FolderSessionFixture f;
        for (int i = 0; i < 200; ++i)
            f.disk.file(word("left/f%1").arg(i), "a");
        f.session.show();
        f.compare();
        f.session.view().leftPane().goToRow(199);
        auto *centre = f.session.findChild<TreeLineTreeWidget *>(word("folderSideCenter"));
        const int value = f.session.view().leftPane().verticalScrollBar()->value();
        QVERIFY(value > 0);
        QCOMPARE(centre->verticalScrollBar()->value(), value);
        QCOMPARE(f.session.view().rightPane().verticalScrollBar()->value(), value);
    }
};

VELMORA_TEST(FolderCompareWidgetTest)
#include "folder_compare_widget_test.moc"
