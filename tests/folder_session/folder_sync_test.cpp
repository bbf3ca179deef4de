#include "folder/actions/action_words.h"
#include "folder/actions/folder_log_panel.h"
#include "folder/actions/plan_preview_dialog.h"
#include "folder/sync/folder_sync_widget.h"
#include "folder/sync/sync_drop_line_edit.h"
#include "folder/sync/sync_tally.h"
#include "folder/sync/sync_words.h"
#include "folder_engine/test_tree.h"
#include "session/shown_path.h"
#include "support/recording_host.h"
#include "support/scripted_dialogs.h"
#include "support/test_main.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDropEvent>
#include <QJsonObject>
#include <QLabel>
#include <QMimeData>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTreeView>
#include <QUrl>

using namespace velmora;
using namespace velmora::test;

namespace {

/// A sync session on two folders of its own.
class SyncFixture {
public:
    SyncFixture()
    {
        session.resize(1000, 700);
        session.show();
    }

    void analyse()
    {
        QSignalSpy read(&session, &SessionWidget::readingEnded);
        session.setPaths({disk.left(), disk.right(), {}});
        action("analyzeAction")->trigger();
        QTRY_COMPARE(read.count(), 1);
    }
    void sync()
    {
        action("syncNowAction")->trigger();
        QTRY_VERIFY(action("analyzeAction")->isEnabled() && !action("cancelAction")->isEnabled());
    }

    [[nodiscard]] QAction *action(const char *name) { return session.findChild<QAction *>(QLatin1String(name)); }
    [[nodiscard]] QTreeView &view() { return *session.findChild<QTreeView *>(QStringLiteral("syncPlan")); }
    [[nodiscard]] QString text(const char *label) { return session.findChild<QLabel *>(QLatin1String(label))->text(); }
    [[nodiscard]] QString log() { return session.findChild<FolderLogPanel *>()->text(); }

    /// "name: action" of all rows, those within folders after them.
    [[nodiscard]] QStringList rows()
    {
        QStringList lines;
        const QAbstractItemModel &model = *view().model();
        for (QModelIndex at = model.index(0, 0); at.isValid(); at = view().indexBelow(at))
            lines.append(at.data().toString() + QLatin1String(": ") + at.siblingAtColumn(1).data().toString());
        return lines;
    }
    void select(int row)
    {
        QModelIndex at = view().model()->index(0, 0);
        while (row-- > 0)
            at = view().indexBelow(at);
        view().setCurrentIndex(at);
    }

    TestTree disk;
    ScriptedDialogs dialogs;
    RecordingHost host;
    FolderSyncWidget session{host};
};

} // namespace

class FolderSyncTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void asksForTwoFoldersThatExist()
    {
        SyncFixture f;
        f.action("analyzeAction")->trigger();
        QCOMPARE(f.text("statusLabel"), word("Enter folder paths on both sides."));
        f.session.setPaths({f.disk.left(), f.disk.path(word("none")), {}});
        f.action("analyzeAction")->trigger();
        QVERIFY(f.text("statusLabel").startsWith(word("Right folder does not exist: ")));
        QVERIFY(!f.action("syncNowAction")->isEnabled());
    }

    void plansRunsAndTakesBack()
    {
        SyncFixture f;
        f.disk.file(word("left/a/new"), "1", 0);
        f.disk.file(word("left/both/changed"), "left", 5);
        f.disk.file(word("right/both/changed"), "other", 9);
        f.disk.file(word("right/gone"), "22", 0);
        f.disk.file(word("right/kept"), "3", 0);
        f.disk.file(word("left/kept"), "3", 0);
        const auto all = [&f] { return entriesOf(f.disk.left()) + entriesOf(f.disk.right()); };
        const QStringList before = all();
        QSignalSpy titles(&f.session, &SessionWidget::tabTitleChanged);
        f.analyse();
        QCOMPARE(titles.value(0).value(0).toString(), word("Sync left <-> right"));
        QCOMPARE(f.text("statusLabel"), word("Scan complete. 5 item(s) to sync."));
        QCOMPARE(f.rows().join(u'|'),
                 word("a: → Copy to right|new: → Copy to right|both: → Copy to right|changed: → Copy to right|gone: × "
                      "Delete right"));
        QCOMPARE(f.text("summaryLabel"), word("Copy right: 4 | Copy left: 0 | Delete: 1 | Skip: 0 | Total: 5"));

        f.session.findChild<QComboBox *>(word("directionBox"))->setCurrentIndex(3); // planned anew without a scan
        QCOMPARE(f.rows().mid(3).join(u'|'), word("changed: ← Copy to left|gone: ← Copy to left"));
        f.session.findChild<QComboBox *>(word("directionBox"))->setCurrentIndex(0);

        f.dialogs.answerNumber(0);
        f.action("syncNowAction")->trigger();
        QCOMPARE(f.dialogs.asked().last().title, word("Confirm sync"));
        QCOMPARE(f.dialogs.asked().last().text,
                 word("About to run 5 sync action(s). Continue?\n\nDeletions among them: 1"));
        QCOMPARE(all(), before);

        f.dialogs.answerNumber(1);
        f.sync();
        QTRY_COMPARE(f.text("statusLabel"), word("Sync complete. Success: 5, failed: 0"));
        QVERIFY(f.log().contains(word("  × Deleted on right: ")));
        QCOMPARE(contentsOf(f.disk.path(word("right/both/changed"))), "left");
        QCOMPARE(entriesOf(f.disk.right()), entriesOf(f.disk.left()));
        QCOMPARE(f.rows(), QStringList());
        QVERIFY(!f.action("syncNowAction")->isEnabled());

        f.action("undoRunAction")->trigger();
        QTRY_VERIFY(f.session.findChild<PlanPreviewDialog *>());
        f.session.findChild<PlanPreviewDialog *>()->accept();
#ifdef Q_OS_WIN
        QTRY_VERIFY(f.rows().size() >= 3);
        if (!QFile::exists(f.disk.path(word("right/gone"))))
            QSKIP("this bin does not tell where things are that went there");
#endif
        QTRY_COMPARE(f.rows().size(), 5);
        QCOMPARE(all(), before);
        QCOMPARE(contentsOf(f.disk.path(word("right/both/changed"))), "other");
    }

    /// Asked and told in the same unit: entries, however few steps they take.
    void whatWasAskedForIsWhatIsCounted()
    {
        SyncFixture f;
        f.disk.file(word("left/new/.hidden"), "1", 0);
        f.disk.file(word("left/new/file"), "1", 0);
        f.disk.file(word("right/gone/within/one"), "2", 0);
        f.disk.file(word("right/gone/two"), "2", 0);
        f.disk.file(word("right/stays"), "2", 0);
        f.disk.file(word("left/stays"), "2", 0);
        for (const QString &name : {word("/more"), word("/even"), word("/further")}) {
            f.disk.file(word("left") + name, "2", 0);
            f.disk.file(word("right") + name, "2", 0);
        }
        f.analyse();
        f.dialogs.answerNumber(1);
        f.sync();
        QCOMPARE(f.dialogs.asked().first().text,
                 word("About to run 6 sync action(s). Continue?\n\nDeletions among them: 4"));
        QTRY_COMPARE(f.text("statusLabel"), word("Sync complete. Success: 6, failed: 0"));
        QCOMPARE(entriesOf(f.disk.right()), entriesOf(f.disk.left()));
    }

    void aFolderThatCouldNotGoFailsWithAllInIt()
    {
        const Sides<QString> folders{word("/l"), word("/r")};
        QList<SyncPlanItem> plan;
        for (const QString &name : {word("d"), word("d/one"), word("d/two"), word("other")}) {
            SyncPlanItem item;
            item.name = name;
            item.rightPath = word("/r/") + name;
            item.isDir = name == word("d");
            item.action = qint32(SyncAction::DeleteRight);
            plan.append(item);
        }
        PlanRunResult result;
        result.isWhole = true;
        result.lines = {{shownPath(word("/r/d")), word("in use"), false}, {shownPath(word("/r/other")), {}, true}};
        QCOMPARE(tallySync(plan, folders, result), (SyncTally{1, 3}));
        result.lines.append({shownPath(word("/r/d/one")), {}, true});
        QCOMPARE(tallySync(plan, folders, result), (SyncTally{2, 2}));
        result.lines.append({shownPath(word("/elsewhere")), word("refused"), false});
        QCOMPARE(tallySync(plan, folders, result), (SyncTally{2, 3}));
    }

    /// Each number and each folder stands where the sentence has it, whatever the paths look like.
    void aLossNamesBothSides()
    {
        const Sides<QString> folders{word("/l%1"), word("/r%2")};
        const auto native = [](const char *text) { return QDir::toNativeSeparators(word(text)); };
        QCOMPARE(syncLossText({{}, {5, 7, true}}, folders),
                 native("/l%1 has nothing in it, so that all 7 entries of /r%2 would be deleted. Is a drive missing?"));
        QCOMPARE(syncLossText({{5, 7, false}, {1, 7, false}}, folders),
                 native("5 of the 7 entries of /l%1 would be deleted."));
    }

    /// What is chosen by hand for a folder holds for all in it, as far as it can; the filter leaves out the rest.
    void runsWhatIsChosenAndShown()
    {
        SyncFixture f;
        f.disk.file(word("left/d/one.txt"), "1", 0);
        f.disk.file(word("left/d/two.cpp"), "2", 0);
        f.disk.file(word("right/d/three.txt"), "3", 0);
        f.analyse();
        f.select(0);
        f.action("skipAction")->trigger();
        f.action("syncNowAction")->trigger();
        QCOMPARE(f.text("statusLabel"), word("No sync actions to run."));
        f.action("copyToLeftAction")->trigger();
        QCOMPARE(f.rows().join(u'|'),
                 word("d: ← Copy to left|one.txt: — Skip|three.txt: ← Copy to left|two.cpp: — Skip"));
        f.action("asPlannedAction")->trigger();
        f.session.findChild<QComboBox *>(word("filterBox"))->setCurrentText(word("*.txt"));
        QCOMPARE(f.rows().size(), 3);
        f.dialogs.answerNumber(1);
        f.dialogs.answerNumber(1); // all that the right side has goes
        f.sync();
        QTRY_VERIFY(f.text("statusLabel").startsWith(word("Sync complete")));
        QCOMPARE(entriesOf(f.disk.path(word("right/d"))), words("one.txt"));
        QVERIFY(f.rows().isEmpty());
        QCOMPARE(f.session.options().value(word("filter")).toString(), word("*.txt"));
    }

    /// The next run must not do what a person has taken out of the last one.
    void keepsWhatIsChosenByHandAfterARun()
    {
        SyncFixture f;
        for (const char *name : {"left/a", "left/b", "left/c", "right/mine", "right/a", "right/b"})
            f.disk.file(word(name), "1", 0);
        f.analyse();
        QCOMPARE(f.rows().join(u'|'), word("c: → Copy to right|mine: × Delete right"));
        f.select(1);
        f.action("skipAction")->trigger();
        f.dialogs.answerNumber(1);
        f.sync();
        QTRY_COMPARE(f.rows(), words("mine: — Skip"));
        QVERIFY(QFile::exists(f.disk.path(word("right/mine"))));
    }

    /// One item in the place of a copy and a deletion, once a person has asked for it; taken back as any other.
    void movesWhatHasMoved()
    {
        SyncFixture f;
        f.disk.file(word("left/new/name.txt"), "the same", 4);
        f.disk.file(word("right/old.txt"), "the same", 4);
        f.disk.file(word("left/other"), "1", 4);
        const QStringList before = entriesOf(f.disk.right());
        f.analyse();
        QCOMPARE(f.rows().join(u'|'), word("new: → Copy to right|name.txt: → Copy to right|old.txt: × Delete right|"
                                           "other: → Copy to right"));
        QCOMPARE(f.text("movesBarText"), word("Files that may only have been moved or renamed: 1"));
        QSignalSpy read(&f.session, &SessionWidget::readingEnded);
        f.session.findChild<QPushButton *>(word("movesBarAction"))->click();
        QTRY_COMPARE(read.count(), 1);
        QCOMPARE(f.rows().join(u'|'),
                 word("new: → Copy to right|name.txt (from old.txt): ↷ Move on right|other: → Copy to right"));
        QVERIFY(f.text("summaryLabel").endsWith(word(" | Move: 1")));
        QVERIFY(f.session.options().value(word("findMoves")).toBool());

        f.dialogs.answerNumber(1);
        f.sync();
        QTRY_COMPARE(f.text("statusLabel"), word("Sync complete. Success: 3, failed: 0"));
        QVERIFY(f.log().contains(word("  ↷ Moved on right: ")));
        QCOMPARE(entriesOf(f.disk.right()), entriesOf(f.disk.left()));
        f.action("undoRunAction")->trigger();
        QTRY_VERIFY(f.session.findChild<PlanPreviewDialog *>());
        f.session.findChild<PlanPreviewDialog *>()->accept();
        QTRY_COMPARE(f.rows().size(), 3);
        QCOMPARE(entriesOf(f.disk.right()), before);
    }

    /// On the line itself: a folder, or that of a file; several are for the session behind it.
    void takesFoldersThatAreDroppedOnItsLines()
    {
        SyncFixture f;
        f.disk.file(word("left/sub/file"), "1", 0);
        f.disk.folder(word("right"));
        const auto drop = [&f](int line, const QStringList &paths) {
            QMimeData data;
            QList<QUrl> urls;
            for (const QString &path : paths)
                urls.append(QUrl::fromLocalFile(path));
            data.setUrls(urls);
            SyncDropLineEdit *const edit = f.session.findChildren<SyncDropLineEdit *>().at(line);
            QDragEnterEvent entering(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
            QApplication::sendEvent(edit, &entering);
            if (!entering.isAccepted())
                return false;
            QDropEvent event(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
            QApplication::sendEvent(edit, &event);
            return event.isAccepted();
        };
        QVERIFY(!drop(0, {f.disk.left(), f.disk.right()}));
        QVERIFY(drop(1, {f.disk.right()}));
        QVERIFY(!f.session.isReading());
        QVERIFY(drop(0, {f.disk.path(word("left/sub/file"))}));
        QTRY_COMPARE(f.rows(), words("file: → Copy to right"));
        QCOMPARE(f.session.paths().left, f.disk.path(word("left/sub")));
    }

    void warnsOfNamesBeforeARun()
    {
#ifdef Q_OS_WIN
        QSKIP("such names cannot be made here");
#endif
        SyncFixture f;
        f.disk.file(word("left/Readme"), "1", 0);
        f.disk.file(word("left/README"), "2", 0);
        f.disk.file(word("left/what?"), "3", 0);
        f.analyse();
        QCOMPARE(f.text("nameConflictsBarText"), word("Names in conflict with others, or on other systems: 3"));
        f.session.findChild<QPushButton *>(word("nameConflictsBarAction"))->click();
        QVERIFY(f.log().contains(word("what? has a name that Windows cannot hold")));
        f.dialogs.answerNumber(0);
        f.action("syncNowAction")->trigger();
        QVERIFY(f.dialogs.asked().last().text.contains(word("Names in conflict with others, or on other systems: 3")));
    }

    void asksTwiceWhenADriveIsMissing()
    {
        SyncFixture f;
        f.disk.folder(word("left"));
        for (const char *name : {"right/a", "right/b"})
            f.disk.file(word(name), "1", 0);
        f.analyse();
        f.dialogs.answerNumber(1);
        f.dialogs.answerNumber(0);
        f.action("syncNowAction")->trigger();
        QVERIFY(f.dialogs.asked().last().text.contains(word("so that all 2 entries of ")));
        QCOMPARE(entriesOf(f.disk.right()), words("a|b"));
    }
};

VELMORA_TEST(FolderSyncTest)
#include "folder_sync_test.moc"
