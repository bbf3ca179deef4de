#include "folder/actions/plan_preview_dialog.h"
#include "folder/duplicates/duplicate_finder_widget.h"
#include "folder/duplicates/duplicate_view.h"
#include "folder/duplicates/keep_folders_dialog.h"
#include "folder_engine/test_tree.h"
#include "support/recording_host.h"
#include "support/scripted_dialogs.h"
#include "support/test_main.h"

#include <QAction>
#include <QJsonArray>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>

using namespace velmora;
using namespace velmora::test;

namespace {

constexpr int yes = 1;

/// A duplicate finder on folders of its own.
class Finder {
public:
    Finder()
    {
        session.resize(1000, 700);
        session.show();
    }

    void scan()
    {
        QSignalSpy read(&session, &SessionWidget::readingEnded);
        action("scanAction")->trigger();
        QTRY_COMPARE(read.count(), 1);
    }
    void press(const char *button)
    {
        QTest::mouseClick(session.findChild<QPushButton *>(QLatin1String(button)), Qt::LeftButton);
    }
    void rule(int number)
    {
        session.findChild<QToolButton *>(QStringLiteral("rulesButton"))->menu()->actions().at(number)->trigger();
    }
    /// Space on the row of that number.
    void tick(int row)
    {
        view().goToRow(row);
        QTest::keyClick(&view(), Qt::Key_Space);
    }

    [[nodiscard]] QAction *action(const char *name) { return session.findChild<QAction *>(QLatin1String(name)); }
    [[nodiscard]] DuplicateView &view() { return *session.findChild<DuplicateView *>(); }
    [[nodiscard]] QString text(const char *label) { return session.findChild<QLabel *>(QLatin1String(label))->text(); }
    [[nodiscard]] QString cell(int row, int column) { return view().model()->index(row, column).data().toString(); }
    /// The first column, ticked rows with "*"; paths without the folder of the test.
    [[nodiscard]] QStringList rows()
    {
        QStringList lines;
        for (int row = 0; row < view().model()->rowCount(); ++row) {
            const QModelIndex at = view().model()->index(row, 0);
            const bool ticked = at.data(Qt::CheckStateRole).toInt() == Qt::Checked;
            lines.append((ticked ? word("*") : QString()) +
                         QDir::fromNativeSeparators(at.data().toString()).remove(disk.path(QString())));
        }
        return lines;
    }

    TestTree disk;
    ScriptedDialogs dialogs;
    RecordingHost host;
    DuplicateFinderWidget session{host};
};

} // namespace

class DuplicateFinderTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void saysWhatItFoundAndComputesDigestsInSight()
    {
        Finder f;
        f.scan();
        QCOMPARE(f.text("statusLabel"), word("Select a valid folder"));
        for (const char *name : {"left/a", "left/in/b", "left/c"})
            f.disk.file(word(name), "same", 7);
        f.disk.file(word("left/empty"), "");
        f.disk.file(word("left/empty2"), "");
        f.disk.file(word("left/other"), "more");
        f.session.setPaths({f.disk.left(), {}, {}});
        QSignalSpy titles(&f.session, &SessionWidget::tabTitleChanged);
        f.scan();
        QCOMPARE(f.text("statusLabel"), word("6 files, 1 duplicate groups (3 files involved)"));
        QCOMPARE(f.text("countLabel"), word("Duplicates: 1"));
        QCOMPARE(titles.last().first().toString(), word("Duplicates: left"));
        QCOMPARE(f.rows(), words("Duplicate group (3 copies)|left/a|left/c|left/in/b"));
        const QString time = TestTree::moment(7).toLocalTime().toString(word("yyyy/M/d h:mm:ss"));
        QCOMPARE(f.cell(1, 2), time);
        QTRY_COMPARE(f.cell(3, 3), word("51037a4a37730f52c8732586d3aaa316"));

        auto *filter = f.session.findChild<QLineEdit *>(word("filterBox"));
        filter->setText(word("in/b"));
        QCOMPARE(f.rows().size(), 4);
        filter->setText(word("in/x"));
        QCOMPARE(f.rows().size(), 0);
    }

    void keepsOneOfEachGroupAndDeletesTheRest()
    {
        Finder f;
        for (const char *name : {"left/a", "left/b", "right/c"})
            f.disk.file(word(name), "same");
        f.disk.file(word("left/n1"), "newest", 1);
        f.disk.file(word("left/n2"), "newest", 2);
        f.session.setPaths({f.disk.left(), {}, {}});
        f.session.setOptions({{word("references"), QJsonArray{f.disk.right()}}});
        QCOMPARE(f.session.options().value(word("references")).toArray().size(), 1);
        f.scan();
        QCOMPARE(f.rows(), words("Duplicate group (3 copies)|left/a|left/b|right/c (reference)|Duplicate group (2 "
                                 "copies)|left/n1|left/n2"));
        f.tick(1); // no ticks are shown yet
        QVERIFY(!f.rows().contains(word("*left/a")));
        f.action("deleteExtraAction")->trigger();
        QCOMPARE(f.text("tickHint"), word("Check copies to delete (keep one per group)."));
        f.tick(3);
        f.tick(5);
        f.tick(6);
        QCOMPARE(f.rows().at(4), word("Duplicate group (2 copies) – none would stay"));
        QCOMPARE(f.rows().at(3), word("right/c (reference)"));
        f.press("deleteButton");
        QCOMPARE(f.dialogs.asked().last().text, word("Keep at least one unchecked copy per group."));
        QVERIFY(QFile::exists(f.disk.path(word("left/n1"))));

        f.rule(0);
        QCOMPARE(f.rows(), words("Duplicate group (3 copies)|*left/a|*left/b|right/c (reference)|Duplicate group (2 "
                                 "copies)|*left/n1|left/n2"));
        QVERIFY2(f.text("tickSum").startsWith(word("3 to delete (14 bytes), 2 ")), qPrintable(f.text("tickSum")));
        f.dialogs.answerNumber(0);
        f.press("deleteButton");
        QCOMPARE(f.dialogs.asked().last().title, word("Confirm delete"));
        QCOMPARE(f.dialogs.asked().last().text, word("Permanently delete 3 file(s)?"));
        QVERIFY(QFile::exists(f.disk.path(word("left/a"))));

        QVERIFY(makeFile(f.disk.path(word("left/b")), "SAME"));
        f.dialogs.answerNumber(yes);
        f.press("deleteButton");
        QTRY_COMPARE(f.text("statusLabel"), word("Delete done: 2 ok, 1 failed"));
        QCOMPARE(entriesOf(f.disk.left()), words("b|n2"));
        QCOMPARE(f.rows(), words("Duplicate group (2 copies)|*left/b|right/c (reference)"));

        f.action("undoRunAction")->trigger();
        QTRY_VERIFY(f.session.findChild<PlanPreviewDialog *>());
        f.session.findChild<PlanPreviewDialog *>()->accept();
        QTRY_COMPARE(f.rows().size(), 6);
        QCOMPARE(contentsOf(f.disk.path(word("left/a"))), "same");
        QCOMPARE(entriesOf(f.disk.left()), words("a|b|n1|n2"));
    }

    void keepsThoseInSeveralFolders()
    {
        Finder f;
        for (const char *name : {"left/1/a", "left/2/a", "left/3/a", "left/3/b"})
            f.disk.file(word(name), "same");
        for (const char *name : {"left/3/c", "left/3/d"})
            f.disk.file(word(name), "elsewhere");
        f.session.setPaths({f.disk.left(), {}, {}});
        f.scan();
        f.action("deleteExtraAction")->trigger();
        const auto dialog = [&f] {
            f.rule(3);
            return f.session.findChild<KeepFoldersDialog *>();
        };
        KeepFoldersDialog *first = dialog();
        const auto button = [&first](const char *name) { return first->findChild<QPushButton *>(QLatin1String(name)); };
        QVERIFY(!button("settingsOk")->isEnabled());
        for (const char *folder : {"left/1", "left/3", "left/2", "left/1"}) {
            f.dialogs.answerPath(f.disk.path(word(folder)));
            button("addKeepFolder")->click();
        }
        QCOMPARE(first->folders().size(), 3);
        first->findChild<QListWidget *>()->setCurrentRow(1, QItemSelectionModel::ClearAndSelect);
        button("removeKeepFolder")->click();
        button("settingsOk")->click();
        QStringList rows = f.rows();
        rows.removeIf([](const QString &row) { return !row.contains(word("left/")); });
        QCOMPARE(rows, words("left/1|left/2|left/1/a|left/2/a|*left/3/a|*left/3/b|left/3/c|left/3/d"));
        QTRY_VERIFY(!f.session.findChild<KeepFoldersDialog *>());
        QCOMPARE(dialog()->folders(), QStringList({f.disk.path(word("left/1")), f.disk.path(word("left/2"))}));
    }

    void walksGroupsAndComparesTwo()
    {
        Finder f;
        for (const char *name : {"left/x/a", "left/y/a"})
            f.disk.file(word(name), "same");
        for (const char *name : {"left/1", "left/2"})
            f.disk.file(word(name), "1");
        f.session.setPaths({f.disk.left(), {}, {}});
        f.scan();
        QCOMPARE(f.rows().first(), word("Same folder (2 copies, 1 file(s) each)"));
        f.view().goToRow(0);
        f.action("nextAction")->trigger();
        f.action("nextAction")->trigger();
        QCOMPARE(f.view().currentIndex().row(), 6);
        f.view().goToRow(8);
        f.action("compareEntriesAction")->trigger();
        QCOMPARE(f.host.opened.last().second.left, f.disk.path(word("left/1")));
        QCOMPARE(f.host.opened.last().second.right, f.disk.path(word("left/2")));
    }
};

VELMORA_TEST(DuplicateFinderTest)

#include "duplicate_finder_test.moc"
