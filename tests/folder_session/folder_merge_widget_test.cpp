#include "folder/actions/plan_preview_dialog.h"
#include "folder/merge/folder_merge_widget.h"
#include "support/files.h"
#include "support/recording_host.h"
#include "support/scripted_dialogs.h"
#include "support/test_main.h"

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeView>

using namespace velmora;
using namespace velmora::test;

namespace {

/// A merge of three folders: "kept" as it was, "mine" changed on the left, "gone" deleted on the right, "both" a
/// conflict.
class MergeFixture {
public:
    MergeFixture()
    {
        for (const char *folder : {"base/sub", "left/sub", "right/sub", "out"})
            QDir().mkpath(path(folder));
        for (const char *name : {"base/kept", "left/kept", "right/kept", "base/sub/mine", "right/sub/mine", "base/gone",
                                 "left/gone", "base/both"})
            write(name, "old");
        write("left/sub/mine", "new");
        write("left/both", "one");
        write("right/both", "two");
        session.resize(1000, 700);
        session.show();
    }

    void compare()
    {
        QSignalSpy read(&session, &SessionWidget::readingEnded);
        session.setPaths({path("left"), path("right"), path("base")});
        action("compareAction")->trigger();
        QTRY_COMPARE(read.count(), 1);
    }
    void merge()
    {
        dialogs.answerPath(path("out"));
        action("mergeToAction")->trigger();
    }
    void waitForIdle() { QTRY_VERIFY(!action("cancelAction")->isEnabled()); }

    void write(const char *name, const QByteArray &bytes) const { QVERIFY2(makeFile(path(name), bytes), name); }
    [[nodiscard]] QString path(const char *name) const { return folder.filePath(QLatin1String(name)); }
    [[nodiscard]] QAction *action(const char *name) { return session.findChild<QAction *>(QLatin1String(name)); }
    [[nodiscard]] QTreeView &view() { return *session.findChild<QTreeView *>(QStringLiteral("mergeFiles")); }
    [[nodiscard]] QString text(const char *label) { return session.findChild<QLabel *>(QLatin1String(label))->text(); }
    [[nodiscard]] QStringList rows()
    {
        QStringList lines;
        const QAbstractItemModel &model = *view().model();
        for (int row = 0; row < model.rowCount(); ++row) {
            QStringList cells;
            for (int column = 0; column < model.columnCount(); ++column)
                cells.append(model.index(row, column).data().toString());
            lines.append(cells.join(u'|'));
        }
        return lines;
    }
    [[nodiscard]] QStringList lastAsked() const { return {dialogs.asked().last().title, dialogs.asked().last().text}; }

    QTemporaryDir folder;
    ScriptedDialogs dialogs;
    RecordingHost host;
    FolderMergeWidget session{host};
};

} // namespace

class FolderMergeWidgetTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void comparesThreeFolders()
    {
        MergeFixture f;
        f.action("compareAction")->trigger();
        QCOMPARE(f.text("statusLabel"), word("Enter paths for all three folders"));
        f.action("mergeToAction")->trigger();
        QCOMPARE(f.lastAsked(), words("合并|请先执行比较"));
        QSignalSpy titles(&f.session, &SessionWidget::tabTitleChanged);
        f.compare();
        QCOMPARE(titles.value(0).value(0).toString(), word("Three-way merge: base"));
        QCOMPARE(f.text("statusLabel"), word("4 file(s), 3 changed, 1 conflict(s)"));
        QCOMPARE(f.rows().join(u'\n'), word("both|3 B|3 B|3 B|冲突|⚡ 手动解决\n"
                                            "gone|3 B|3 B||右侧删除|- 右侧删除\n"
                                            "kept|3 B|3 B|3 B|未变|→ 保持\n"
                                            "sub/mine|3 B|3 B|3 B|左侧修改|→ 取左侧"));
        const std::array<int, 5> shown{4, 1, 1, 0, 1};
        for (int view = 0; view < int(shown.size()); ++view) {
            f.session.findChild<QComboBox *>(word("filterBox"))->setCurrentIndex(view);
            QCOMPARE(f.rows().size(), shown[std::size_t(view)]);
        }
    }

    void writesWhatIsNoConflictAndTakesItBack()
    {
        MergeFixture f;
        f.compare();
        f.dialogs.answerPath(f.path("out"));
        f.dialogs.answerNumber(0);
        f.action("mergeToAction")->trigger();
        QCOMPARE(f.lastAsked(), words("合并|存在 1 个冲突，冲突文件将被跳过。\n是否继续？"));
        QCOMPARE(entriesOf(f.path("out")), QStringList());

        f.dialogs.answerPath(f.path("out"));
        f.dialogs.answerNumber(1);
        f.action("mergeToAction")->trigger();
        QTRY_COMPARE(f.lastAsked(), words("合并完成|已复制 2 个文件，跳过 1 个"));
        QCOMPARE(entriesOf(f.path("out")), words("kept|sub"));
        QCOMPARE(contentsOf(f.path("out/sub/mine")), "new");

        f.action("undoRunAction")->trigger();
        QTRY_VERIFY(f.session.findChild<PlanPreviewDialog *>());
        f.session.findChild<PlanPreviewDialog *>()->accept();
        QTRY_COMPARE(entriesOf(f.path("out")), QStringList());
        f.waitForIdle();
    }

    /// What a person has chosen is no conflict any more, and what the target holds is replaced only when it was seen.
    void takesWhatIsChosenByHand()
    {
        MergeFixture f;
        f.write("out/both", "of somebody else");
        f.compare();
        QCOMPARE(f.text("openConflictsLabel"), word("Open conflicts: 1"));
        f.view().setCurrentIndex(f.view().model()->index(0, 0));
        f.action("takeRightAction")->trigger();
        QCOMPARE(f.rows().first(), word("both|3 B|3 B|3 B|冲突|→ 取右侧"));
        QCOMPARE(f.text("openConflictsLabel"), word("Open conflicts: 0"));
        f.merge();
        QTRY_VERIFY(f.session.findChild<PlanPreviewDialog *>());
        QCOMPARE(contentsOf(f.path("out/both")), "of somebody else");
        f.session.findChild<PlanPreviewDialog *>()->accept();
        QTRY_COMPARE(f.lastAsked(), words("合并完成|已复制 3 个文件，跳过 0 个"));
        QCOMPARE(contentsOf(f.path("out/both")), "two");

        f.action("openMergeAction")->trigger();
        QCOMPARE(f.host.opened.size(), 1);
        QCOMPARE(f.host.opened.first().first, word("merge"));
        QCOMPARE(f.host.opened.first().second.base, f.path("base/both"));
    }

    /// Clean merges are offered; the others come back when they are saved elsewhere.
    void takesMergedTexts()
    {
        MergeFixture f;
        f.write("base/sub/text", "1\n2\n3\n");
        f.write("left/sub/text", "one\n2\n3\n");
        f.write("right/sub/text", "1\n2\nthree\n");
        f.compare();
        QCOMPARE(f.text("textsBarText"), word("Conflicts that merge cleanly line by line: 1"));
        QCOMPARE(f.text("openConflictsLabel"), word("Open conflicts: 2"));
        f.session.findChild<QPushButton *>(word("textsBarAction"))->click();
        QCOMPARE(f.text("openConflictsLabel"), word("Open conflicts: 1"));
        QCOMPARE(f.rows().last(), word("sub/text|6 B|8 B|10 B|冲突|✓ Merged text"));

        f.view().setCurrentIndex(f.view().model()->index(0, 0));
        f.action("openMergeAction")->trigger();
        QVERIFY(f.host.outputs.value(0).endsWith(word("/both")));
        QVERIFY(makeFile(f.host.outputs.first(), "by hand"));
        QTRY_COMPARE(f.rows().first(), word("both|3 B|3 B|3 B|冲突|✓ Merged text"));
        f.merge();
        QTRY_COMPARE(f.lastAsked(), words("合并完成|已复制 4 个文件，跳过 0 个"));
        QCOMPARE(contentsOf(f.path("out/sub/text")), "one\n2\nthree\n");
        QCOMPARE(contentsOf(f.path("out/both")), "by hand");
    }

    void takesWholeFolders()
    {
        MergeFixture f;
        for (const char *folder : {"left/sub/deep", "left/sub-"})
            QVERIFY(QDir().mkpath(f.path(folder)));
        f.write("left/sub/deep/a", "1");
        f.write("left/sub/deep/b", "1");
        f.write("left/sub-/c", "1");
        f.compare();
        const auto row = [&f](const char *path) {
            int at = 0;
            while (at < f.rows().size() && f.view().model()->index(at, 0).data().toString() != QLatin1String(path))
                ++at;
            return f.view().model()->index(at, 0);
        };
        f.view().setCurrentIndex(row("sub/deep/a"));
        for (const int selected : {2, 3, int(f.rows().size())}) {
            f.action("selectFolderAction")->trigger();
            QCOMPARE(f.view().selectionModel()->selectedRows().size(), selected);
        }
    }

    void refusesATargetWithinTheFolders()
    {
        MergeFixture f;
        f.compare();
        f.dialogs.answerPath(f.path("left/sub"));
        f.dialogs.answerNumber(1);
        f.action("mergeToAction")->trigger();
        f.waitForIdle();
        QTRY_COMPARE(f.lastAsked().first(), word("合并"));
        QCOMPARE(entriesOf(f.path("left/sub")), words("mine"));
    }
};

VELMORA_TEST(FolderMergeWidgetTest)
#include "folder_merge_widget_test.moc"
