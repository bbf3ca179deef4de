#include "folder/actions/past_operations_dialog.h"
#include "folder/operations/operation_journal.h"
#include "folder_actions/actions_fixture.h"
#include "support/test_main.h"

#include <QPushButton>
#include <QStackedWidget>

using namespace velmora;
using velmora::test::ActionsFixture;
using velmora::test::lines;
using velmora::test::ScriptedLayer;
using Command = FolderCommand;

namespace {

/// The dialog on the journal of a fixture.
class Past {
public:
    explicit Past(const ActionsFixture &f) : m_dialog(FileLayer::native(), f.files.journalFolder()), m_fixture(f)
    {
        m_dialog.show();
    }

    [[nodiscard]] PastOperationsDialog &dialog() { return m_dialog; }

    /// The rows of one of its lists, columns side by side without the time, groups of steps with their entries.
    [[nodiscard]] QStringList rows(const char *list) const
    {
        QStringList texts;
        const QAbstractItemModel *model = m_dialog.findChild<QTreeView *>(QLatin1String(list))->model();
        for (int row = 0; model && row < model->rowCount(); ++row) {
            const QModelIndex index = model->index(row, 0);
            const QString state = model->index(row, 2).data().toString();
            texts.append(m_fixture.without(index.data().toString()) +
                         (state.isEmpty() ? QString() : QStringLiteral(" | ") + state));
            for (int inner = 0; inner < model->rowCount(index); ++inner)
                texts.append(QStringLiteral("  ") + model->index(inner, 0, index).data().toString());
        }
        return texts;
    }

    void select(int row)
    {
        auto *list = m_dialog.findChild<QTreeView *>(QStringLiteral("pastList"));
        list->setCurrentIndex(list->model()->index(row, 0));
    }

    [[nodiscard]] QPushButton *button(const char *name) const
    {
        return m_dialog.findChild<QPushButton *>(QLatin1String(name));
    }

    /// Clicks a button and agrees to the plan that is shown then.
    void agree(const char *name)
    {
        button(name)->click();
        QPushButton *start = nullptr;
        QTRY_VERIFY((start = m_dialog.findChild<QPushButton *>(QStringLiteral("planStart"))));
        start->click();
    }

private:
    PastOperationsDialog m_dialog;
    const ActionsFixture &m_fixture;
};

} // namespace

class PastOperationsTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void operationsAreListedLookedAtAndUndone()
    {
        ActionsFixture f;
        f.make("right/b=old left/a=1 left/b=2");
        const QString before = f.picture("right");
        f.carryOut(Command::CopyToRight, lines("a"));
        f.compare();
        f.carryOut(Command::CopyToRight, lines("b"));
        Past past(f);
        QTRY_COMPARE(past.rows("pastList"),
                     QStringList({QStringLiteral("Copy: b | Done"), QStringLiteral("Copy: a | Done")}));
        QTRY_COMPARE(past.rows("pastSteps").value(1), QStringLiteral("  b"));
        QVERIFY(past.rows("pastSteps")[0].startsWith(QLatin1String("Replaced: 1")));
        QVERIFY(past.button("pastUndo")->isEnabled() && !past.button("pastContinue")->isEnabled());

        past.select(1); // the older of the two: nobody has touched its file since
        QTRY_COMPARE(past.rows("pastSteps").value(1), QStringLiteral("  a"));
        past.agree("pastUndo");
        QTRY_COMPARE(past.rows("pastList"),
                     QStringList({QStringLiteral("Undo: Copy: a | Done"), QStringLiteral("Copy: b | Done"),
                                  QStringLiteral("Copy: a | Undone")}));
        QCOMPARE(f.picture("right"), QStringLiteral("b=2"));
        past.select(2);
        QVERIFY(!past.button("pastUndo")->isEnabled());
        past.select(1);
        past.agree("pastUndo");
        QTRY_COMPARE(f.picture("right"), before);
    }

    void nothingYetIsSaid()
    {
        const ActionsFixture f;
        Past past(f);
        QTRY_VERIFY(!past.button("pastUndo")->isEnabled());
        QVERIFY(past.dialog().findChild<QLabel *>(QStringLiteral("pastNothing"))->isVisible());
    }

    void aRunThatACrashEndedIsToldOfAndGoneOnWith()
    {
        ActionsFixture f;
        f.make("left/a=1 left/b=2 left/c=3");
        ScriptedLayer dying([copies = 0, isDead = false](int, QLatin1String call) mutable {
            isDead = isDead || (call == QLatin1String("sink.copyFrom") && ++copies == 2);
            return isDead ? FileError{FileErrorKind::Other, {}} : FileError();
        });
        OperationJournal journal(dying, f.files.journalFolder());
        journal.setNext(QStringLiteral("Update"));
        (void)velmora::test::OperationFixture::execute(planUpdate(f.files.input(), Side::Left), {false, &journal},
                                                       dying);
        const QStringList ids = PastOperationsDialog::interruptedRuns(FileLayer::native(), f.files.journalFolder());
        QCOMPARE(ids.size(), 1);
        OperationJournal(FileLayer::native(), f.files.journalFolder()).markTold(ids[0]);
        QVERIFY(PastOperationsDialog::interruptedRuns(FileLayer::native(), f.files.journalFolder()).isEmpty());

        Past past(f);
        past.dialog().tellInterrupted(ids[0]);
        QVERIFY(!past.dialog().isModal());
        QTRY_COMPARE(past.rows("pastList"), QStringList(QStringLiteral("Update | Interrupted")));
        QVERIFY(past.button("pastContinue")->isEnabled());
        past.agree("pastContinue");
        QTRY_COMPARE(f.picture("right"), QStringLiteral("a=1 b=2 c=3"));
        QTRY_COMPARE(past.rows("pastList").value(1), QStringLiteral("Update | Continued"));
        QVERIFY(!past.button("pastContinue")->isEnabled());
    }
};

VELMORA_TEST(PastOperationsTest)
#include "past_operations_test.moc"
