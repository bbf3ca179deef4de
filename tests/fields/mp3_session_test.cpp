#include "filetypes/mp3/mp3_compare_widget.h"
#include "support/files.h"
#include "support/made_music.h"
#include "support/recording_host.h"
#include "support/scripted_dialogs.h"
#include "support/test_main.h"

#include <QAction>
#include <QBuffer>
#include <QComboBox>
#include <QImage>
#include <QLabel>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeView>

using namespace velmora;
using namespace velmora::test;

namespace {

QByteArray coverOf(QRgb colour)
{
    QImage image(2, 2, QImage::Format_RGB32);
    image.fill(0xff0000ff);
    image.setPixel(0, 0, colour);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "png");
    return id3Frame("APIC",
                    QByteArray(1, '\0') + "image/png" + QByteArray(1, '\0') + "\x03" + QByteArray(1, '\0') + bytes);
}

/// A session on two files with the same sound and other tags.
class Music {
public:
    Music()
    {
        const QByteArray sound = madeSound();
        m_isMade =
            makeFile(left, id3v2(3, id3Text("TIT2", "\xd6\xd0") + coverOf(0xffff0000)) + sound + id3v1("Other", "")) &&
            makeFile(right, id3v2(4, id3Text("TIT2", "Title") + coverOf(0xff00ff00)) + sound);
        session.resize(1000, 700);
        session.show();
    }
    bool compare()
    {
        session.setPaths({left, right, {}});
        session.start();
        return m_isMade && QTest::qWaitFor([&] { return session.rows().rowCount() > 0 && !session.isReading(); });
    }
    QString label(const char *name) const { return session.findChild<QLabel *>(QLatin1String(name))->text(); }
    QAction &action(const char *name) const { return *session.findChild<QAction *>(QLatin1String(name)); }
    KeyedRow row(const char *key) const { return session.rows().rowAt(session.rows().find(word(key))); }
    void select(const char *key) const
    {
        auto *view = session.findChild<QTreeView *>();
        view->setCurrentIndex(view->model()->index(session.rows().find(word(key)), 1));
    }

    QTemporaryDir folder;
    QString left = folder.filePath(word("left.mp3"));
    QString right = folder.filePath(word("right.mp3"));
    RecordingHost host;
    Mp3CompareWidget session{host};

private:
    bool m_isMade = false;
};

} // namespace

class Mp3SessionTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void tellsTheSoundFirst()
    {
        Music music;
        QVERIFY(music.compare());
        const QStringList verdict = music.label("verdictBarText").split(u'\n');
        QCOMPARE(verdict.first(), word("The same sound, with other tags."));
        QVERIFY(verdict.at(1).contains(word("left.mp3 contradict each other: Title.")));
        QCOMPARE(music.row("Bit rate").left, word("128 kbit/s"));
        QCOMPARE(music.row("Version of ID3v2").right, word("2.4"));
        QCOMPARE(music.label("pictureTitle"), word("Front cover"));
        QCOMPARE(music.label("pictureDifference"), word("25.0 % of the pixels differ"));
        QVERIFY(!music.session.findChild<QLabel *>(word("leftPicture"))->pixmap().isNull());
        auto *box = music.session.findChild<QComboBox *>(word("oldTextBox"));
        QVERIFY(box->isVisible());
        music.session.setOptions({{word("oldText"), word("GB18030")}});
        QCOMPARE(music.row("ID3v2: Title").left, QStringLiteral("\u4e2d"));
        QCOMPARE(music.session.options().value(word("oldText")).toString(), word("GB18030"));
        // What fails leaves what is shown.
        QVERIFY(makeFile(music.right, "text"));
        music.session.start();
        QTRY_VERIFY(music.label("statusLabel").startsWith(word("No music of a format that is known: ")));
        QVERIFY(music.session.rows().rowCount() > 0);
    }

    void copiesTakesBackAndSaves()
    {
        Music music;
        QVERIFY(music.compare());
        const QByteArray before = contentsOf(music.left);
        music.select("ID3v2: Title");
        QVERIFY(!music.action("copyToLeftAction").isEnabled()); // nothing can be changed by mistake
        music.session.setEditingEnabled(true);
        QSignalSpy titles(&music.session, &SessionWidget::tabTitleChanged);
        music.action("copyToLeftAction").trigger();
        QCOMPARE(music.row("ID3v2: Title").left, word("Title"));
        QCOMPARE(music.row("ID3v1: Title").left, word("Title")); // or it would say something else
        QCOMPARE(titles.last().first().toString(), word("*left.mp3 <-> right.mp3"));
        QCOMPARE(contentsOf(music.left), before);
        QVERIFY(music.session.hasUnsavedChanges());
        music.session.edit(EditCommand::Undo);
        QVERIFY(!music.session.hasUnsavedChanges());
        QCOMPARE(titles.last().first().toString(), word("left.mp3 <-> right.mp3"));
        QCOMPARE(music.row("ID3v1: Title").left, word("Other"));
        music.session.edit(EditCommand::Redo);
        music.action("saveAction").trigger();
        QTRY_VERIFY(!music.session.hasUnsavedChanges());
        QCOMPARE(music.label("statusLabel"), word("Saved; the sound is the same as before"));
        QVERIFY(contentsOf(music.left) != before);
        QCOMPARE(loadSong(music.left).song.soundHash, loadSong(music.right).song.soundHash);

        // What was saved can be taken back, and is saved again on closing.
        QVERIFY(music.session.canEdit(EditCommand::Undo));
        music.session.edit(EditCommand::Undo);
        QVERIFY(music.session.hasUnsavedChanges());
        ScriptedDialogs dialogs;
        dialogs.answerNothing();
        music.session.onSwapSides();
        QCOMPARE(music.session.paths().left, music.left);
        constexpr int saveAnswer = 1;
        dialogs.answerNumber(saveAnswer);
        bool mayClose = false;
        music.session.confirmClose([&](bool may) { mayClose = may; });
        QTRY_VERIFY(mayClose);
        music.compare();
        QCOMPARE(music.row("ID3v2: Title").left, QString::fromLatin1("\xd6\xd0"));

        // All at once, and a file that another program has changed stays as that left it.
        music.action("copyAllToLeftAction").trigger();
        QCOMPARE(music.label("verdictBarText"),
                 word("The same sound with the same tags; they are only arranged otherwise in the files."));
        QVERIFY(makeFile(music.left, before + "x"));
        music.action("saveAction").trigger();
        QTRY_VERIFY(music.label("statusLabel").startsWith(word("Not saved, as another program has changed it")));
        QCOMPARE(contentsOf(music.left), before + "x");
        QVERIFY(music.session.hasUnsavedChanges());
    }

    void copiesBetweenFormats()
    {
        Music music;
        music.right = music.folder.filePath(word("right.flac"));
        QVERIFY(makeFile(music.right, madeFlac("TITLE=Flac")));
        QVERIFY(music.compare());
        music.session.setOptions({{word("oldText"), word("GB18030")}});
        KeyedRow row = music.row("Tag: Title");
        QCOMPARE(row.left + u' ' + row.right, QStringLiteral("\u4e2d Flac"));
        QCOMPARE(row.note, word("ID3v2 on the left, Vorbis on the right"));
        music.session.setEditingEnabled(true);
        music.select("Tag: Title");
        music.action("copyToRightAction").trigger();
        QCOMPARE(music.row("Tag: Title").right, QStringLiteral("\u4e2d"));
        music.select("Tag: Picture (Front cover)");
        music.action("copyToRightAction").trigger();
        QCOMPARE(music.label("pictureDifference"), word("The same picture in both"));
        QVERIFY(!music.session.findChild<QLabel *>(word("rightPicture"))->pixmap().isNull());
        music.action("saveAction").trigger();
        QTRY_VERIFY(!music.session.hasUnsavedChanges());
        QVERIFY(music.compare());
        QCOMPARE(music.row("Tag: Title").status, PairStatus::Same);
        QCOMPARE(music.row("Tag: Picture (Front cover)").status, PairStatus::Same);
        // What has a tag of its own for the other side, and what has not.
        music.select("ID3v1: Title");
        music.action("copyToRightAction").trigger();
        QCOMPARE(music.row("Tag: Title").right, word("Other"));
        music.select("Tag: Title");
        music.action("copyToLeftAction").trigger();
        QCOMPARE(music.row("Tag: Title").left, word("Other"));
        QVERIFY(!music.label("verdictBarText").contains(word("contradict")));
    }
};

VELMORA_TEST(Mp3SessionTest)
#include "mp3_session_test.moc"
