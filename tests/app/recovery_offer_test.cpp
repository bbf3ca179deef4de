#include "app/library/recovery_offer.h"
#include "app/probe_session.h"
#include "app/session_kinds.h"
#include "app/window/session_tabs.h"
#include "app/window/tarnwick.h"
#include "core/recovery_store.h"
#include "support/files.h"
#include "support/recording_host.h"
#include "support/scripted_dialogs.h"
#include "support/test_main.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QJsonArray>
#include <QStandardPaths>
#include <QTemporaryDir>

using namespace velmora;
using velmora::test::word;
using velmora::test::words;

namespace {

enum Answer { Later, Restore, Discard };

RecoveryRecord recordOf(const QString &left, const QString &right, const QByteArray &leftText)
{
    const QJsonObject side{{word("pane"), 0},     {word("path"), left},  {word("charset"), word("UTF-8")},
                           {word("mark"), false}, {word("fileSize"), 4}, {word("fileModified"), 0}};
    return {
        {{word("kind"), word("text")}, {word("left"), left}, {word("right"), right}, {word("texts"), QJsonArray{side}}},
        {leftText}};
}

/// A folder with two left records, one of an unknown kind, and a damaged file.
struct Remains {
    Remains()
    {
        const QString left = folder.filePath(word("run/"));
        whole = {left + word("a.unsaved"), left + word("b.unsaved")};
        for (const QString &file : whole) {
            if (!QDir().mkpath(left) || !writeRecoveryRecord(file, recordOf(file, {}, "text\n")).ok())
                qFatal("cannot write");
        }
    }

    void offer()
    {
        RecoveryStore store(folder.path());
        offerRecovery(store, nullptr, [this](const SessionKindRow &kind, const SessionPaths &paths) {
            opened.append(kind.id + u' ' + paths.left);
            sessions.push_back(std::make_unique<ProbeSession>(host));
            return sessions.back().get();
        });
    }

    QTemporaryDir folder;
    QStringList whole;
    QStringList opened;
    test::RecordingHost host;
    std::vector<std::unique_ptr<ProbeSession>> sessions;
    test::ScriptedDialogs dialogs;
};

} // namespace

class RecoveryOfferTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void nothingLeftNothingAsked()
    {
        const QTemporaryDir folder;
        test::ScriptedDialogs dialogs;
        RecoveryStore store(folder.path());
        offerRecovery(store, nullptr, [](const SessionKindRow &, const SessionPaths &) { return nullptr; });
        QVERIFY(dialogs.asked().isEmpty());
    }

    void keepsWhatNobodyDecidesAbout()
    {
        Remains r;
        r.offer();
        r.dialogs.answerNumber(Later);
        r.offer();
        QCOMPARE(r.dialogs.asked().size(), 2);
        QVERIFY(r.opened.isEmpty());
        r.dialogs.answerNumber(Discard);
        r.offer();
        for (const QString &file : r.whole)
            QVERIFY(!QFileInfo::exists(file));
        r.offer();
        QCOMPARE(r.dialogs.asked().size(), 3);
        QVERIFY(r.opened.isEmpty());
    }

    void restoredWorkStaysUntilItIsKeptAnew()
    {
        Remains r;
        r.dialogs.answerNumber(Restore);
        r.offer();
        QCOMPARE(r.opened, (QStringList{word("text ") + r.whole[0], word("text ") + r.whole[1]}));
        QCOMPARE(r.sessions[0]->recovered, recordOf(r.whole[0], {}, "text\n"));
        QVERIFY(QFileInfo::exists(r.whole[0]));
        r.sessions[0]->recoveredIsKept();
        QVERIFY(!QFileInfo::exists(r.whole[0]));
        QVERIFY2(QFileInfo::exists(r.whole[1]), "its session could not show it");
    }

    void saysWhatIsDamagedAndLeavesWhatItDoesNotKnow()
    {
        Remains r;
        const QString unknown = r.folder.filePath(word("run/c.unsaved"));
        QVERIFY(writeRecoveryRecord(unknown, {{{word("kind"), word("later")}}, {}}).ok());
        QFile half(r.whole[1]);
        QVERIFY(half.resize(half.size() - 1));
        r.dialogs.answerNumber(Discard);
        r.offer();
        QCOMPARE(r.dialogs.asked().size(), 2);
        const QString aside = r.folder.filePath(word("b.damaged"));
        QVERIFY(r.dialogs.asked().first().text.contains(QDir::toNativeSeparators(aside)));
        QVERIFY(QFileInfo::exists(aside));
        QVERIFY(!QFileInfo::exists(r.whole[0]));
        QVERIFY(QFileInfo::exists(unknown));
        r.offer();
        QCOMPARE(r.dialogs.asked().size(), 2); // each told once
    }

    void aMergeIsAskedAboutByTheNameOfItsResult()
    {
        Remains r;
        RecoveryRecord record = recordOf(word("/a_LOCAL_1.txt"), word("/a_REMOTE_1.txt"), "text\n");
        record.description.insert(word("options"), QJsonObject{{word("output"), word("/project/a.txt")}});
        QVERIFY(writeRecoveryRecord(r.whole[0], record).ok());
        r.offer();
        QVERIFY(r.dialogs.asked().first().text.contains(word("Merge: a.txt\n")));
        QVERIFY(!r.dialogs.asked().first().text.contains(word("LOCAL")));
    }

    void whatIsSavedByNowIsNotOffered()
    {
        Remains r;
        QVERIFY(test::makeFile(r.folder.filePath(word("saved.txt")), "text\n"));
        for (const QString &file : r.whole)
            QVERIFY(writeRecoveryRecord(file, recordOf(r.folder.filePath(word("saved.txt")), {}, "text\n")).ok());
        r.offer();
        QVERIFY(r.dialogs.asked().isEmpty());
        QVERIFY(!QFileInfo::exists(r.whole[0]) && !QFileInfo::exists(r.whole[1]));
    }

    void theWindowBringsBackEditedTexts()
    {
        const QTemporaryDir folder;
        const QString left = folder.filePath(word("left.txt"));
        const QString right = folder.filePath(word("right.txt"));
        QVERIFY(test::makeFile(left, "old\n") && test::makeFile(right, "right\n"));
        const QString root = QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation) + word("/recovery");
        const QString kept = root + word("/run/a.unsaved");
        QVERIFY(QDir().mkpath(root + word("/run")));
        QVERIFY(writeRecoveryRecord(kept, recordOf(left, right, "edited\r\nlines")).ok());
        const auto files = [&root] {
            QStringList names;
            QDirIterator all(root, {word("*.unsaved")}, QDir::Files, QDirIterator::Subdirectories);
            while (all.hasNext())
                names.append(all.next());
            return names;
        };

        test::ScriptedDialogs dialogs;
        {
            Tarnwick window;
            dialogs.answerNumber(Restore);
            window.offerRecovery();
            SessionWidget *session = window.findChild<SessionTabs *>()->currentSession();
            QVERIFY(session);
            QCOMPARE(session->paths(), (SessionPaths{left, right, {}}));
            QTRY_VERIFY(!QFileInfo::exists(kept));
            QVERIFY(session->hasUnsavedChanges());
            QCOMPARE(files().size(), 1); // kept anew
            QCOMPARE(test::contentsOf(left), QByteArray("old\n"));

            // The file is not as it was when the text was read from it.
            dialogs.answerNumber(1); // save
            dialogs.answerNumber(1); // over it
            std::optional<bool> mayClose;
            session->confirmClose([&mayClose](bool may) { mayClose = may; });
            QTRY_COMPARE(mayClose, true);
            QCOMPARE(dialogs.titles().mid(1), words("Unsaved changes|External file changed"));
            QCOMPARE(test::contentsOf(left), QByteArray("edited\r\nlines"));
            QTRY_COMPARE(files(), QStringList());
        }
    }
};

VELMORA_TEST(RecoveryOfferTest)
#include "recovery_offer_test.moc"
