#include "folder/git/git_commit_list.h"
#include "folder/git/git_compare_widget.h"
#include "folder/git/git_state_box.h"
#include "folder/git/git_view.h"
#include "made_repository.h"
#include "session/list/tree_model.h"
#include "support/recording_host.h"
#include "support/scripted_dialogs.h"
#include "support/test_main.h"

#include <QAction>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>

using namespace velmora;
using namespace velmora::test;

namespace {

class SessionFixture {
public:
    SessionFixture() : session(host)
    {
        session.resize(1000, 700);
        session.show();
    }

    /// What is compared is told by the texts of all columns of a row, with "|" between them.
    QStringList compare(const QString &path, const char *left, const char *right)
    {
        session.setPaths({path, {}, {}});
        if (left)
            session.setOptions({{word("left"), word(left)}, {word("right"), word(right)}});
        QSignalSpy finished(&session, &SessionWidget::comparisonFinished);
        session.start();
        [&] { QTRY_VERIFY_WITH_TIMEOUT(!finished.isEmpty(), 20000); }();
        return rows();
    }

    QStringList rows()
    {
        // Lines come later than names.
        [this] { QTRY_VERIFY_WITH_TIMEOUT(!action("cancelAction")->isEnabled(), 20000); }();
        QStringList rows;
        const QAbstractItemModel &model = *view().model();
        for (int row = 0; row < model.rowCount(); ++row) {
            QStringList texts;
            for (const int column : {0, 2, 3, 5, 6, 7})
                texts.append(model.index(row, column).data().toString());
            rows.append(texts.join(u'|'));
        }
        return rows;
    }

    [[nodiscard]] GitView &view() const { return *session.findChild<GitView *>(); }
    [[nodiscard]] QAction *action(const char *name) const { return session.findChild<QAction *>(word(name)); }
    [[nodiscard]] QString text(const char *label) const { return session.findChild<QLabel *>(word(label))->text(); }

    ScriptedDialogs dialogs;
    RecordingHost host;
    GitCompareWidget session;
};

void makeHistory(const MadeRepository &repository)
{
    repository.write(word("src/a.txt"), lines(1, 20));
    repository.write(word("src/old.txt"), lines(2, 20));
    repository.write(word("kept"), "same\n");
    repository.commit(word("first"));
    repository.write(word("src/a.txt"), lines(1, 22));
    QVERIFY(QFile::rename(repository.path(word("src/old.txt")), repository.path(word("src/new.txt"))));
    repository.commit(word("second"));
    repository.write(word("src/a.txt"), lines(1, 23));
    QVERIFY(QFile::setPermissions(repository.path(word("kept")),
                                  QFile::permissions(repository.path(word("kept"))) | QFile::ExeOwner));
    repository.commit(word("third"));
}

} // namespace

class GitSessionTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { SKIP_WITHOUT_GIT(); }

    void showsBothSidesAndTheCommitsBetween()
    {
        const MadeRepository repository;
        makeHistory(repository);
        SessionFixture f;
        QSignalSpy titles(&f.session, &SessionWidget::tabTitleChanged);
        QCOMPARE(f.compare(repository.path(word("src")), "HEAD~2", "HEAD"),
                 (QStringList{word("src|2|src||+3|"), word("a.txt|Changed|a.txt||+3|"),
                              word("old.txt|Renamed|new.txt|||"), word("kept|Changed|kept|File → Executable||")}));
        QCOMPARE(titles.first().first().toString(), word("Git: ") + QFileInfo(repository.path()).fileName());
        QCOMPARE(f.text("gitCommitsTitle"), word("2 commits between the two sides"));

        // A click on a commit compares it with its parent, and there is a way back.
        auto *commits = f.session.findChild<TreeView *>(word("gitCommits"));
        QSignalSpy changed(f.view().model(), &QAbstractItemModel::modelReset);
        QTest::mouseClick(commits->viewport(), Qt::LeftButton, {},
                          commits->visualRect(commits->model()->index(0, 0)).center());
        QTRY_VERIFY(!changed.isEmpty());
        QCOMPARE(f.rows().size(), 3);
        QVERIFY(f.text("gitNoticeText").contains(word("third")));
        changed.clear();
        f.session.findChild<QPushButton *>(word("gitNoticeAction"))->click();
        QTRY_VERIFY(!changed.isEmpty());
        QCOMPARE(f.rows().size(), 4);

        // Filters: a status, then words.
        f.action("gitStatus1")->trigger();
        QCOMPARE(f.rows(), (QStringList{word("src|2|src||+3|"), word("old.txt|Renamed|new.txt|||")}));
        f.action("gitStatus1")->trigger();
        f.session.findChild<QLineEdit *>(word("gitFilter"))->setText(word("old"));
        QTRY_COMPARE(f.rows().size(), 2);
    }

    void opensTheFileOfTheWorkTreeItselfAndACopyOfTheRest()
    {
        const MadeRepository repository;
        makeHistory(repository);
        repository.write(word("kept"), "changed\n");
        QString copy;
        {
            SessionFixture f;
            QCOMPARE(f.compare(repository.path(), nullptr, nullptr),
                     QStringList{word("kept|Changed|kept|Executable|+1|−1")});
            QCOMPARE(f.session.options().value(word("right")).toString(), word(":worktree"));
            f.view().setFocus();
            QTest::keyClick(&f.view(), Qt::Key_Return);
            QTRY_COMPARE(f.host.opened.size(), 1);
            const auto &[kind, paths] = f.host.opened.first();
            QCOMPARE(kind, word("text"));
            QCOMPARE(QFileInfo(paths.right).canonicalFilePath(),
                     QFileInfo(repository.path(word("kept"))).canonicalFilePath());
            copy = paths.left;
            QCOMPARE(contentsOf(copy), QByteArray("same\n"));
            QVERIFY(!QFileInfo(copy).permissions().testFlag(QFile::WriteOwner));
        }
        QVERIFY2(!QFile::exists(copy), "copies go with the session");
    }

    void tellsWhatItCannotCompareAndKeepsWhatIsShown()
    {
        const MadeRepository repository;
        makeHistory(repository);
        SessionFixture f;
        const QStringList before = f.compare(repository.path(), "HEAD~1", "HEAD");
        auto *left = f.session.findChild<GitStateBox *>(word("gitLeft"));
        left->setEditText(word("nowhere"));
        QTest::keyClick(left->lineEdit(), Qt::Key_Return);
        QTRY_VERIFY(f.text("gitNoticeText").contains(word("nowhere")));
        QCOMPARE(f.rows(), before);
        // The states of the repository are offered, the recent ones first.
        QVERIFY(left->findText(word("main")) > left->findText(word("HEAD~1")));
        QVERIFY(left->findText(word("HEAD~1")) > 0);
        // A folder that is dropped on a side becomes that side.
        const QTemporaryDir folder;
        QVERIFY(makeFile(folder.filePath(word("kept")), "same\n"));
        auto *right = f.session.findChild<GitStateBox *>(word("gitRight"));
        left->setState(gitSideOf(word("HEAD~2")));
        QSignalSpy finished(&f.session, &SessionWidget::comparisonFinished);
        f.session.dropPaths({folder.path()}, right->mapTo(&f.session, right->rect().center()));
        QTRY_VERIFY(!finished.isEmpty());
        QCOMPARE(f.rows(),
                 (QStringList{word("src|2||||−40"), word("a.txt|Deleted||||−20"), word("old.txt|Deleted||||−20")}));
    }
};

VELMORA_TEST(GitSessionTest)
#include "git_session_test.moc"
