#include "core/recovery_store.h"
#include "core/text_encode.h"
#include "session/pane/pane_view.h"
#include "session/pane/text_pane.h"
#include "session/session_record.h"
#include "support/files.h"
#include "support/recording_host.h"
#include "support/scripted_dialogs.h"
#include "support/test_main.h"
#include "text/edit/text_edit_widget.h"

#include <QAction>
#include <QDirIterator>
#include <QJsonObject>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace velmora;
using namespace velmora::test;

namespace {

/// A text edit session with a folder of its own and scripted answers.
struct Edited {
    explicit Edited(RecoveryStore *store = nullptr) : host(store)
    {
        session.resize(900, 500);
        session.show();
    }

    QString open(const QByteArray &bytes)
    {
        const QString path = folder.filePath(word("a.txt"));
        [&] { QVERIFY(makeFile(path, bytes)); }();
        session.setPaths({path, {}, {}});
        session.start();
        wait();
        return path;
    }
    void wait()
    {
        QVERIFY(QTest::qWaitFor([this] { return !session.isReading(); }, 30000));
    }

    TextPane &pane() { return session.view().pane(0); }
    void typeAt(qsizetype row, const QString &text)
    {
        session.view().scene().setCaret({0, {row, 0}, {row, 0}});
        QTest::keyClicks(&pane(), text);
    }
    void save()
    {
        session.onSave();
        QVERIFY(QTest::qWaitFor([this] { return !session.hasUnsavedChanges(); }, 30000));
    }
    void press(const char *keys)
    {
        for (const QString &key : words(keys)) {
            const QKeyCombination pressed = QKeySequence(key)[0];
            QTest::keyClick(&pane(), pressed.key(), pressed.keyboardModifiers());
        }
    }
    void choose(const char *key, const char *value)
    {
        QJsonObject options = session.options();
        options[QLatin1String(key)] = word(value);
        session.setOptions(options);
    }
    [[nodiscard]] QString label(const char *name) const { return session.findChild<QLabel *>(word(name))->text(); }

    QTemporaryDir folder;
    ScriptedDialogs dialogs;
    RecordingHost host;
    TextEditWidget session{host};
};

QStringList filesIn(const QString &folder)
{
    QStringList files;
    QDirIterator all(folder, {word("*.unsaved")}, QDir::Files, QDirIterator::Subdirectories);
    while (all.hasNext())
        files.append(all.next());
    return files;
}

} // namespace

class TextEditTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aFileWithConflictMarkersIsOfferedAsAMerge()
    {
        Edited e;
        auto *notice = e.session.findChild<QWidget *>(word("conflictBar"));
        e.open("<<<<<<<\nno more\n");
        QVERIFY(!notice->isVisible());
        const QString path = e.open("<<<<<<< a\nl\n=======\nr\n>>>>>>> b\n");
        QVERIFY(notice->isVisible());
        e.session.findChild<QPushButton *>(word("conflictBarAction"))->click();
        QCOMPARE(e.host.opened, (QList<std::pair<QString, SessionPaths>>{{word("merge"), {path, {}, {}}}}));
    }

    void keepsEveryByteOfLinesThatWereNotEdited()
    {
        const struct {
            const char *encoding;
            const char *read; ///< chosen in the session
            const char *text;
        } cases[] = {
            {"UTF-8", "auto", "café\r\n中\nend"},
            {"UTF-8 BOM", "auto", "a\nb\r\n"},
            {"UTF-16 LE", "auto", "a\r\n中文\nlast"},
            {"UTF-16 BE", "auto", "a\n\n\r\n"},
            {"GB18030", "GB18030", "中文\r\n許功 ß\n\n€ z"},
            {"Shift-JIS", "Shift-JIS", "表ｱｲ\nポ\r\nz"},
        };
        for (const auto &row : cases) {
            Edited f;
            const TextEncoding encoding = TextEncoding::fromName(word(row.encoding));
            const QByteArray text(row.text);
            f.choose("encoding", row.read);
            const QString path = f.open(encodeText({text.constData(), std::size_t(text.size())}, encoding).bytes);
            f.typeAt(1, word("xy"));
            QVERIFY(f.session.hasUnsavedChanges());
            f.save();
            QByteArray expected = text;
            expected.insert(text.indexOf('\n') + 1, "xy");
            const auto bytes = encodeText({expected.constData(), std::size_t(expected.size())}, encoding).bytes;
            QVERIFY2(contentsOf(path) == bytes, row.encoding);
        }
    }

    void addsAndRemovesTheLastLineEnd()
    {
        Edited f;
        const QString path = f.open("a\nb");
        f.press("Ctrl+End|Return");
        f.save();
        QCOMPARE(contentsOf(path), QByteArray("a\nb\n"));
        f.press("Ctrl+End|Backspace");
        f.save();
        QCOMPARE(contentsOf(path), QByteArray("a\nb"));
        f.press("Ctrl+Home|Shift+Down|Delete|Ctrl+A|Delete|Return|c");
        f.save();
        QCOMPARE(contentsOf(path), QByteArray("\nc"));
        f.press("Ctrl+Z|Ctrl+Z|Ctrl+Z|Ctrl+Z");
        f.save();
        QCOMPARE(contentsOf(path), QByteArray("a\nb"));
    }

    void convertsEncodingAndLineEndsWhenAsked()
    {
        Edited f;
        const QString path = f.open("caf\xe9\nb");
        f.choose("savedEncoding", "UTF-8 BOM");
        f.choose("savedLineEnds", "CRLF");
        QVERIFY(f.session.hasUnsavedChanges()); // closing asks
        f.save();
        QCOMPARE(contentsOf(path), QByteArray("\xef\xbb\xbf"
                                              "caf\xc3\xa9\r\nb"));
        f.typeAt(1, word("x"));
        f.save();
        QCOMPARE(contentsOf(path), QByteArray("\xef\xbb\xbf"
                                              "caf\xc3\xa9\r\nxb"));
        f.choose("savedEncoding", "ASCII");
        f.session.onSave();
        QTRY_COMPARE(f.dialogs.titles(), words("Save failed"));
        QVERIFY(f.dialogs.asked().first().text.contains(word("U+00E9")));
        QVERIFY(f.session.hasUnsavedChanges());
        QVERIFY(contentsOf(path).endsWith("\r\nxb"));
    }

    void beginsANewTextAndAsksForItsName()
    {
        Edited f;
        QSignalSpy titles(&f.session, &SessionWidget::tabTitleChanged);
        f.press("n|Return|w");
        QCOMPARE(titles.last().first().toString(), word("*New text"));
        const QString path = f.folder.filePath(word("new.cpp"));
        QSignalSpy remembered(&f.session, &SessionWidget::comparisonFinished);
        f.dialogs.answerPath(path);
        f.save();
        QTRY_COMPARE(remembered.size(), 1); // under the name that the tab has by then
        QCOMPARE(contentsOf(path), QByteArray("n\nw"));
        QCOMPARE(titles.last().first().toString(), word("new.cpp"));
        QCOMPARE(f.session.paths(), (SessionPaths{path, {}, {}}));
        f.session.dropPaths({f.folder.filePath(word("other"))}, {});
        QCOMPARE(f.host.opened.last(),
                 (std::pair(word("textedit"), SessionPaths{f.folder.filePath(word("other")), {}, {}})));
    }

    void tellsOfChangesByOthersAndNeverWritesOverThemUnasked()
    {
        Edited f;
        const QString path = f.open("a\n");
        QVERIFY(makeFile(path, "changed\n"));
        QTRY_VERIFY(f.label("changeBarText").startsWith(word("The file has changed on disk: ")));
        f.typeAt(0, word("x"));
        f.session.onSave(); // nobody answers
        QTRY_COMPARE(f.dialogs.titles(), words("External file changed"));
        QCOMPARE(contentsOf(path), QByteArray("changed\n"));
        f.dialogs.answerNumber(1);
        f.session.onReload();
        f.wait();
        QTRY_COMPARE(f.session.view().scene().document()->text(0, 0), word("changed"));
        QVERIFY(!f.session.hasUnsavedChanges());
    }

    void bringsBackWhatWasUnsavedWhenTheProgramEnded()
    {
        QTemporaryDir kept;
        RecoveryStore store(kept.path());
        Edited f(&store);
        const QString path = f.open(QByteArray::fromHex("fffe61000d000a00"));
        f.typeAt(0, word("x"));
        std::optional<RecoveryRecord> record;
        QTRY_VERIFY(filesIn(kept.path()).size() == 1 && (record = readRecoveryRecord(filesIn(kept.path()).first())));

        QTemporaryDir later;
        RecoveryStore nextStore(later.path());
        Edited again(&nextStore);
        bool isKept = false;
        again.session.recover(*record, [&isKept] { isKept = true; });
        QTRY_VERIFY(isKept);
        QCOMPARE(again.session.view().scene().document()->text(0, 0), word("xa"));
        QCOMPARE(filesIn(later.path()).size(), 1);
        again.save();
        QCOMPARE(contentsOf(path), QByteArray::fromHex("fffe780061000d000a00"));
        QTRY_COMPARE(filesIn(later.path()), QStringList());
        RecoveryRecord otherKind = *record;
        otherKind.description[word("kind")] = word("text");
        Edited untouched;
        untouched.session.recover(otherKind, [] { QFAIL("took what is not its own"); });
        QVERIFY(!untouched.session.hasUnsavedChanges());
    }

    void comparesWhatIsSaved()
    {
        Edited f;
        const QString path = f.open("a\n");
        const QString other = f.folder.filePath(word("b.txt"));
        f.typeAt(0, word("x"));
        f.dialogs.answerNumber(1); // save
        f.dialogs.answerPath(other);
        f.session.findChild<QAction *>(word("compareWithAction"))->trigger();
        QTRY_COMPARE(f.host.opened.size(), 1);
        QCOMPARE(f.host.opened.first(), (std::pair(word("text"), SessionPaths{path, other, {}})));
        QCOMPARE(contentsOf(path), QByteArray("xa\n"));
    }

    void asksBeforeItReplacesAReadOnlyFile()
    {
        Edited f;
        const QString path = f.open("a\n");
        QVERIFY(QFile::setPermissions(path, QFile::ReadOwner | QFile::ReadUser));
        f.session.onReload();
        f.wait();
        QVERIFY(f.session.findChild<QLabel *>(word("protectedLabel"))->isVisible());
        f.typeAt(0, word("x"));
        f.session.onSave();
        QCOMPARE(f.dialogs.titles(), words("Read-only file"));
        QVERIFY(f.session.hasUnsavedChanges());
        QCOMPARE(contentsOf(path), QByteArray("a\n"));
        QVERIFY(QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner));
    }

    void leavesAloneWhatIsNoText()
    {
        const std::pair<QByteArray, const char *> cases[] = {
            {QByteArray("a\0b\n", 4), "This file holds bytes that no text has and is not edited here"},
            {QByteArray("\xff\xfe\x00\xd8\x61\x00\n\x00", 8), "This file holds bytes that its encoding does not know"}};
        for (const auto &[bytes, why] : cases) {
            Edited f;
            const QString path = f.open(bytes);
            f.typeAt(0, word("x"));
            QVERIFY2(f.label("statusLabel").startsWith(word(why)), qPrintable(f.label("statusLabel")));
            f.session.onSave();
            QVERIFY(!f.session.hasUnsavedChanges());
            QCOMPARE(contentsOf(path), bytes);
        }
    }
};

VELMORA_TEST(TextEditTest)
#include "text_edit_test.moc"
