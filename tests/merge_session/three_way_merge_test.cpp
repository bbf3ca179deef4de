#include "core/recovery_store.h"
#include "merge/change_list.h"
#include "merge/left_out_list.h"
#include "merge/merge_editing.h"
#include "merge/three_way_merge_widget.h"
#include "session/list/list_model.h"
#include "session/list/list_view.h"
#include "session/pane/text_pane.h"
#include "support/recording_host.h"
#include "support/scripted_dialogs.h"
#include "support/test_main.h"

#include <QAction>
#include <QDir>
#include <QFile>
#include <QJsonObject>
#include <QLabel>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

using namespace velmora;
using namespace velmora::test;

namespace {

QString word(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

QByteArray contentsOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("cannot be read");
}

class MergeFixture {
public:
    explicit MergeFixture(RecoveryStore *store = nullptr) : host(store), session(host)
    {
        session.resize(1200, 800);
        session.show();
        QVERIFY(QTest::qWaitForWindowExposed(&session));
    }

    [[nodiscard]] QString file(const char *name, const QByteArray &bytes) const
    {
        const QString path = folder.filePath(word(name));
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("cannot write %s", name);
        return path;
    }

    void merge(const QByteArray &left, const QByteArray &base, const QByteArray &right, const QByteArray &output)
    {
        session.setPaths({file("left.txt", left), file("right.txt", right), file("base.txt", base)});
        out = file("out.txt", output);
        QVERIFY(session.setOutput(out));
        session.start();
        wait();
    }
    void wait() { QTRY_VERIFY_WITH_TIMEOUT(!session.isReading() && session.view().document(), 30000); }

    void key(int code, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(&session.view().pane(paneOfResult), Qt::Key(code), modifiers);
    }
    void trigger(const char *action) { session.findChild<QAction *>(word(action))->trigger(); }
    [[nodiscard]] qsizetype open() const { return session.editing().parts().openConflicts(); }
    [[nodiscard]] QStringList choices() const
    {
        const ListModel &rows = session.findChild<ChangeList *>()->rows();
        QStringList all;
        for (int row = 0; row < rows.rowCount(); ++row)
            all.append(rows.index(row, 2).data().toString());
        return all;
    }
    /// The letters in the margin of the result.
    [[nodiscard]] QString letters()
    {
        QString all;
        const auto *document = session.view().document();
        for (qsizetype row = 0; row < document->rowCount(); ++row) {
            if (document->lineNumber(row, paneOfResult) >= 1)
                all.append(document->look(row, paneOfResult).sign);
        }
        return all;
    }
    void saved() { QTRY_VERIFY_WITH_TIMEOUT(!session.hasUnsavedChanges(), 30000); }

    QTemporaryDir folder;
    RecordingHost host;
    ScriptedDialogs dialogs;
    ThreeWayMergeWidget session;
    QString out;
};

} // namespace

class ThreeWayMergeTest final : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void conflictsAreDecidedByKeysAndSavedWhole()
    {
        MergeFixture f;
        f.merge("1\nl\n3\n4\nL\n6\n7\nl7\n", "1\n2\n3\n4\n5\n6\n7\n", "1\nr\n3\n4\n5\n6\n7\nr7\n", "old\n");
        QCOMPARE(f.choices(), (QStringList{word("open"), word("taken from the left"), word("open")}));
        QCOMPARE(f.session.waitStatus(), 1);
        f.key(Qt::Key_F8); // a merge begins at its first conflict
        f.key(Qt::Key_F8);
        QCOMPARE(f.session.findChild<QLabel *>(word("statusLabel"))->text(),
                 word("No further conflict; still open above: 1"));
        f.key(Qt::Key_F8, Qt::ShiftModifier);
        f.key(Qt::Key_3, Qt::ControlModifier);
        f.key(Qt::Key_F8);
        f.key(Qt::Key_4, Qt::ControlModifier);
        QCOMPARE(f.choices(),
                 (QStringList{word("taken from the right"), word("taken from the left"), word("left, then right")}));
        f.session.onSave();
        f.saved();
        QCOMPARE(contentsOf(f.out), QByteArray("1\nr\n3\n4\nL\n6\n7\nl7\nr7\n"));
        QCOMPARE(f.session.waitStatus(), 0);
        f.key(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(f.open(), 1);
        QVERIFY(f.session.hasUnsavedChanges());
        QVERIFY(f.dialogs.asked().isEmpty());
    }

    void openConflictsAreNeverSavedInSilence()
    {
        enum Answer { Cancel, Marked, Without };
        MergeFixture f;
        f.merge("1\nl\n", "1\n2\n", "1\nr\n", "old\n");
        f.dialogs.answerNumber(Cancel);
        f.session.onSave();
        QCOMPARE(f.dialogs.titles(), QStringList{word("Open conflicts")});
        QCOMPARE(contentsOf(f.out), QByteArray("old\n"));

        f.dialogs.answerNumber(Marked);
        f.session.onSave();
        const QByteArray marked = "1\n<<<<<<< left.txt\nl\n||||||| base.txt\n2\n=======\nr\n>>>>>>> right.txt\n";
        QTRY_COMPARE(contentsOf(f.out), marked);
        QCOMPARE(f.session.waitStatus(), 1);

        f.dialogs.answerNumber(Without);
        f.session.onSave();
        QTRY_COMPARE(contentsOf(f.out), QByteArray("1\n"));
        QCOMPARE(f.session.waitStatus(), 1);
    }

    void encodingMarkAndLineEndsStayAsTheyWere()
    {
        MergeFixture f;
        const auto utf16 = [](const char *text) {
            const QString units = word(text);
            QByteArray bytes("\xff\xfe");
            for (const QChar unit : units) {
                bytes += char(unit.unicode() & 0xff);
                bytes += char(unit.unicode() >> 8);
            }
            return bytes;
        };
        f.merge(utf16("1\r\nä\n3\r\n4"), utf16("1\r\n2\n3\r\n4"), utf16("1\r\n2\n3\r\nз"), utf16("old"));
        f.session.onSave();
        f.saved();
        QCOMPARE(contentsOf(f.out), utf16("1\r\nä\n3\r\nз"));
        QCOMPARE(f.session.waitStatus(), 0);
    }

    void aVersionWithOtherLineEndsIsNoConflictThroughout()
    {
        MergeFixture f;
        f.merge("1\r\n2\r\nl\r\n", "1\n2\n3\n", "r\n2\n3\n", "old\n");
        QCOMPARE(f.choices(), (QStringList{word("taken from the right"), word("taken from the left")}));
        f.session.onSave();
        f.saved();
        QCOMPARE(contentsOf(f.out), QByteArray("r\r\n2\r\nl\r\n"));
    }

    void droppedFilesAreLeftRightAndBase()
    {
        MergeFixture f;
        const QString left = f.file("l", "1\nl\n");
        const QString right = f.file("r", "1\nr\n");
        f.session.dropPaths({left, right, f.file("b", "1\n2\n")}, {});
        f.wait();
        QCOMPARE(f.open(), 1);
        // Without a base all that differs is open.
        MergeFixture g;
        g.session.dropPaths({left, right}, {});
        g.session.start();
        g.wait();
        QCOMPARE(g.choices(), QStringList{word("open")});
        QCOMPARE(g.session.waitStatus(), 1);
    }

    void aFileThatSomebodyElseHasWrittenIsNotWrittenOver()
    {
        MergeFixture f;
        f.merge("1\nl\n", "1\n2\n", "1\n2\n", "old\n");
        QCOMPARE(f.file("out.txt", "somebody else's\n"), f.out);
        f.dialogs.answerNumber(0); // no
        f.session.onSave();
        QTRY_VERIFY(f.dialogs.titles().contains(word("External file changed")));
        QCOMPARE(contentsOf(f.out), QByteArray("somebody else's\n"));
        QCOMPARE(f.session.waitStatus(), 1);
    }

    void aFileWithMarkersOpensAlone()
    {
        MergeFixture f;
        const QString path = f.file("marked.txt", "1\n<<<<<<< a\nl\n=======\nr\n>>>>>>> b\n3\n");
        f.session.setPaths({path, {}, {}});
        f.session.start();
        f.wait();
        QCOMPARE(f.open(), 1);
        f.key(Qt::Key_1, Qt::ControlModifier);
        f.session.onSave();
        f.saved();
        QCOMPARE(contentsOf(path), QByteArray("1\nl\n3\n"));
        QCOMPARE(f.session.waitStatus(), 0);
    }

    void linesLeftOutAreListedAndPutIn()
    {
        MergeFixture f;
        auto *list = f.session.findChild<LeftOutList *>();
        QVERIFY(!list->isVisible());
        f.merge("1\ntwo left\nthree\nown\n", "1\ntwo\nthree\n", "1\ntwo\nthree right\nnew\n", "old\n");
        f.key(Qt::Key_6, Qt::ControlModifier);
        QVERIFY(list->isVisible());
        auto *rows = list->findChild<ListView *>();
        const auto shown = [rows] {
            QStringList all;
            for (int row = 0; row < rows->model()->rowCount(); ++row)
                all.append(rows->model()->index(row, 2).data().toString());
            return all;
        };
        QCOMPARE(shown(), (QStringList{word("own"), word("new")}));
        rows->goToRow(1);
        rows->setFocus();
        QTest::keyClick(rows, Qt::Key_Return);
        QCOMPARE(shown(), QStringList{word("own")});
        f.session.findChild<QPushButton *>(word("putInButton"))->click();
        QVERIFY(!list->isVisible());
        f.session.onSave();
        f.saved();
        QCOMPARE(contentsOf(f.out), QByteArray("1\ntwo left\nthree right\nown\nnew\n"));
        f.session.edit(EditCommand::Undo);
        QCOMPARE(shown(), QStringList{word("own")});
    }

    void touchingChangesAreSettledWhenAskedFor()
    {
        MergeFixture f;
        f.merge("1\nl\n3\n", "1\n2\n3\n", "1\n2\nr\n", "old\n");
        QCOMPARE(f.open(), 1);
        f.trigger("settleTouchingAction");
        f.wait();
        QCOMPARE(f.choices(), (QStringList{word("taken from the left"), word("taken from the right")}));
        QVERIFY(f.session.options().value(word("settleTouching")).toBool());
        f.key(Qt::Key_Down, Qt::ControlModifier | Qt::AltModifier);
        f.key(Qt::Key_2, Qt::ControlModifier);
        f.dialogs.answerNumber(0); // decisions are not given up
        f.trigger("settleTouchingAction");
        QVERIFY(f.session.options().value(word("settleTouching")).toBool());
    }

    void closingAsksForWhatWasDecided()
    {
        MergeFixture f;
        f.merge("1\nl\n3\n4\nx\n", "1\n2\n3\n4\n5\n", "1\nr\n3\n4\ny\n", "old\n");
        bool mayClose = false;
        f.session.confirmClose([&mayClose](bool may) { mayClose = may; });
        QVERIFY(mayClose); // nothing was decided yet
        f.key(Qt::Key_1, Qt::ControlModifier);
        f.dialogs.answerNumber(0); // cancel
        f.session.confirmClose([&mayClose](bool may) { mayClose = may; });
        QVERIFY(!mayClose);
        QCOMPARE(contentsOf(f.out), QByteArray("old\n"));
    }

    void aMergeComesBackAfterACrashWithoutItsFiles()
    {
        QTemporaryDir kept;
        RecoveryStore store(kept.path());
        std::optional<RecoveryRecord> record;
        {
            MergeFixture f(&store);
            f.merge("an Apple\na pear\n1\nl\n3\n4\nx\n", "an apple\na pear\n1\n2\n3\n4\n5\n",
                    "an apple\na Pear\n1\nr\n3\n4\ny\n", "old\n");
            f.trigger("takeLineByLineAction");
            f.key(Qt::Key_F8);
            f.key(Qt::Key_3, Qt::ControlModifier);
            f.key(Qt::Key_End, Qt::ControlModifier);
            f.key(Qt::Key_Up); // from the open conflict to a line that is the same in all texts
            f.key(Qt::Key_End);
            QTest::keyClicks(&f.session.view().pane(paneOfResult), word("!"));
            QVERIFY(QTest::qWaitFor(
                [&] {
                    for (const QString &one : QDir(kept.path()).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
                        const QDir own(kept.filePath(one));
                        for (const QString &name : own.entryList(QDir::Files)) {
                            const auto read = readRecoveryRecord(own.filePath(name));
                            if (read && read->texts.value(0).contains('!'))
                                record = read;
                        }
                    }
                    return record.has_value();
                },
                30000));
            QCOMPARE(f.letters(), word("LRBRBH"));
        }
        MergeFixture later;
        bool isKept = false;
        later.session.recover(*record, [&isKept] { isKept = true; });
        later.wait();
        QCOMPARE(later.choices(), (QStringList{word("line by line"), word("taken from the right"),
                                               word("taken by hand"), word("open")}));
        QCOMPARE(later.letters(), word("LRBRBH"));
        QVERIFY(later.session.hasUnsavedChanges());
        QCOMPARE(later.session.view().document()->text(5, paneOfResult), word("4!"));
    }

    void theBaseIsFoldedAwayAndComesBack()
    {
        MergeFixture f;
        f.merge("1\nl\n", "1\n2\n", "1\nr\n", "old\n");
        TextPane &base = f.session.view().pane(paneOf(MergeSource::Base));
        f.trigger("showBaseAction");
        QVERIFY(!base.isVisible());
        f.trigger("showBaseAction");
        QVERIFY(base.isVisible());
    }
};

VELMORA_TEST(ThreeWayMergeTest)
#include "three_way_merge_test.moc"
