#include "filetypes/checksum/checksum_widget.h"
#include "platform/file_access.h"
#include "support/recording_host.h"
#include "support/scripted_dialogs.h"
#include "support/test_main.h"

#include <QClipboard>
#include <QComboBox>
#include <QCompleter>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>

using namespace velmora;
using namespace velmora::test;

namespace {

QString word(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

QStringList words(std::initializer_list<const char *> texts)
{
    QStringList list;
    for (const char *text : texts)
        list.append(word(text));
    return list;
}

class ChecksumFixture {
public:
    ChecksumFixture() { session.show(); }

    QString file(const QString &name, const QByteArray &bytes) const
    {
        QFile file(folder.filePath(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("cannot write %s", qPrintable(name));
        return file.fileName();
    }

    [[nodiscard]] QString text(const char *label) const
    {
        return session.findChild<QLabel *>(QLatin1String(label))->text();
    }
    void click(const char *button)
    {
        QTest::mouseClick(session.findChild<QPushButton *>(QLatin1String(button)), Qt::LeftButton);
    }
    void choose(const QString &algorithm)
    {
        auto *box = session.findChild<QComboBox *>(QStringLiteral("algorithmBox"));
        box->setFocus();
        QTest::keyClicks(box, algorithm);
        QTest::keyClick(box, Qt::Key_Return);
    }
    /// What the session shows: both values and the verdict.
    [[nodiscard]] QStringList shown() const
    {
        return {text("leftValueLabel"), text("rightValueLabel"), text("matchLabel")};
    }

    QTemporaryDir folder;
    RecordingHost host;
    ScriptedDialogs dialogs;
    ChecksumWidget session{host};
};

} // namespace

class ChecksumTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void agreesWithPublishedDigests_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QStringList>("digests"); // in the order of checksumAlgorithms
        QTest::newRow("nothing") << QByteArray()
                                 << words({"D41D8CD98F00B204E9800998ECF8427E",
                                           "DA39A3EE5E6B4B0D3255BFEF95601890AFD80709",
                                           "E3B0C44298FC1C149AFBF4C8996FB92427AE41E4649B934CA495991B7852B855",
                                           "00000000"});
        QTest::newRow("digits") << QByteArray("123456789")
                                << words({"25F9E794323B453885F5181F1B624D0B",
                                          "F7C3BC1D808E04732ADF679965CCC34CA7AE3441",
                                          "15E2B0D3C33891EBB0F1EF609EC419420C20E320CE94C65FBC8C3312448EB225",
                                          "CBF43926"});
        // Ends with a piece that is read whole.
        QTest::newRow("two pieces of zeros")
            << QByteArray(2 * 1024 * 1024, '\0')
            << words({"B2D1236C286A3C0704224FE4105ECA49", "7D76D48D64D7AC5411D714A4BB83F37E3E5B8DF6",
                      "5647F05EC18958947D32874EEB788FA396A05D0BAB7C1B71F112CEB7E9B31EEE", "8D89877E"});
    }

    void agreesWithPublishedDigests()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QStringList, digests);
        ChecksumFixture fixture;
        const QString path = fixture.file(word("f"), bytes);
        qint64 read = 0;
        QStringList found;
        for (const ChecksumAlgorithm algorithm : checksumAlgorithms)
            found.append(fileChecksum(path, algorithm, FileAccess::native(), {}, [&](qint64 n) { read = n; }).text());
        QCOMPARE(found, digests);
        QCOMPARE(read, bytes.size());
        CancelFlag cancel;
        cancel.cancel();
        QCOMPARE(fileChecksum(path, ChecksumAlgorithm::Md5, FileAccess::native(), cancel).end,
                 FileChecksum::End::Cancelled);
        QCOMPARE(fileChecksum(fixture.folder.path(), ChecksumAlgorithm::Md5, FileAccess::native(), {}).end,
                 FileChecksum::End::NotOpened);
    }

    void comparesTwoFilesAndOneWithNothing()
    {
        ChecksumFixture fixture;
        QSignalSpy titles(&fixture.session, &SessionWidget::tabTitleChanged);
        QSignalSpy finished(&fixture.session, &SessionWidget::comparisonFinished);
        const QString one = fixture.file(word("one"), "123456789");
        const QString same = fixture.file(word("same"), "123456789");
        const QString other = fixture.file(word("other"), "");
        fixture.session.setOptions({{word("algorithm"), word("CRC-32")}});
        QCOMPARE(fixture.shown(), words({"Left : —", "Right: —", ""}));
        fixture.click("computeButton");
        QCOMPARE(fixture.text("statusLabel"), word("Select at least one file"));

        fixture.session.dropPaths({one, same}, {});
        QTRY_COMPARE(fixture.shown(),
                     words({"Left (CRC-32): CBF43926", "Right (CRC-32): CBF43926", "Checksums match"}));
        QCOMPARE(fixture.text("statusLabel"), word("Computed CRC-32"));
        QCOMPARE(titles.last().first(), word("one <-> same"));
        QCOMPARE(finished.size(), 1);

        fixture.session.setPaths({one, other, {}});
        fixture.click("computeButton");
        QTRY_COMPARE(fixture.shown().last(), word("Checksums differ"));
        fixture.click("copyRightButton");
        QCOMPARE(QGuiApplication::clipboard()->text(), word("00000000"));

        fixture.session.setPaths({one, {}, {}});
        fixture.choose(word("MD5"));
        QTRY_COMPARE(fixture.shown(), words({"Left (MD5): 25F9E794323B453885F5181F1B624D0B", "Right: —", ""}));
        QCOMPARE(titles.last().first(), word("one"));
        fixture.click("copyRightButton"); // nothing to copy
        QCOMPARE(QGuiApplication::clipboard()->text(), word("00000000"));
    }

    void tellsWhichFileCannotBeOpened()
    {
        ChecksumFixture fixture;
        const QString one = fixture.file(word("one"), "1");
        const QString missing = fixture.folder.filePath(word("missing"));
        fixture.session.setPaths({one, missing, {}});
        fixture.session.start();
        QTRY_COMPARE(fixture.text("rightValueLabel"), word("Right: error"));
        QCOMPARE(fixture.text("matchLabel"), QString());
        QCOMPARE(fixture.text("statusLabel"), word("Cannot open: ") + QDir::toNativeSeparators(missing));
        fixture.session.setPaths({missing, one, {}});
        fixture.session.start();
        QTRY_COMPARE(fixture.shown(), words({"Left: error", "Right: —", ""}));
    }

    /// With only a right path, another algorithm computes nothing until it is asked for; browsing computes at once.
    void offersWhatIsOnTheDiskWhileAPathIsTyped()
    {
        ChecksumFixture f;
        const QString file = f.file(word("firmware.bin"), {});
        auto *line = f.session.findChild<QLineEdit *>();
        line->setFocus();
        QTest::keyClicks(line, QDir::toNativeSeparators(f.folder.filePath(word("firm"))));
        QVERIFY(line->completer());
        QTRY_COMPARE(line->completer()->currentCompletion(), QDir::toNativeSeparators(file));
    }

    void waitsWithTheRightFileAloneAndComputesWhatIsBrowsed()
    {
        ChecksumFixture fixture;
        const QString one = fixture.file(word("one"), "123456789");
        fixture.session.setPaths({{}, one, {}});
        fixture.choose(word("CRC-32"));
        QCOMPARE(fixture.shown(), words({"Left : —", "Right: —", ""}));
        fixture.dialogs.answerPath(one);
        QTest::mouseClick(fixture.session.findChildren<QToolButton *>(word("pathBrowseBtn")).first(), Qt::LeftButton);
        QTRY_COMPARE(fixture.text("matchLabel"), word("Checksums match"));
        QCOMPARE(fixture.dialogs.titles(), words({"Select file"}));
    }
};

VELMORA_TEST(ChecksumTest)
#include "checksum_test.moc"
