#include "core/message_digest.h"
#include "core/sha_instructions.h"
#include "filetypes/checksum/checksum_widget.h"
#include "filetypes/checksum/engine/checksum_check.h"
#include "platform/file_access.h"
#include "support/recording_host.h"
#include "support/scripted_dialogs.h"
#include "support/test_main.h"

#include <QAbstractItemView>
#include <QClipboard>
#include <QComboBox>
#include <QCompleter>
#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>
#include <QTreeView>

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
        QCOMPARE(fixture.text("statusDetail"), word("There is no such file"));
        fixture.session.setPaths({one, word("123"), {}});
        fixture.session.start();
        QTRY_COMPARE(fixture.text("statusLabel"), word("Cannot open: 123"));
        QCOMPARE(fixture.text("statusDetail"), word("There is no such file, and it is no checksum either"));
        fixture.session.setFocus();
        QVERIFY(qobject_cast<QLineEdit *>(fixture.session.focusWidget())); // paths are what is typed first
    }

    void offersWhatIsOnTheDiskWhileAPathIsTyped()
    {
        ChecksumFixture f;
        const QString file = f.file(word("firmware.bin"), {});
        auto *line = f.session.findChild<QLineEdit *>();
        line->setFocus();
        QTRY_VERIFY(line->hasFocus());
        QTest::keyClicks(line, QDir::toNativeSeparators(f.folder.filePath(word("firm"))));
        QVERIFY(line->completer());
        QTRY_COMPARE(line->completer()->currentCompletion(), QDir::toNativeSeparators(file));
        QTRY_VERIFY(line->completer()->popup()->isVisible());
        QTest::keyClick(line->completer()->popup(), Qt::Key_Tab);
        QVERIFY(!line->completer()->popup()->isVisible() && !line->hasFocus());
        // What is found late is not offered over the next field, where it would take what is typed.
        line->setFocus();
        QTest::keyClicks(line, QDir::toNativeSeparators(word("/x")));
        line->completer()->popup()->hide();
        line->setText(QDir::toNativeSeparators(f.folder.filePath(word("f"))));
        Q_EMIT line->textEdited(line->text());
        f.session.findChildren<QLineEdit *>().at(1)->setFocus();
        QTRY_COMPARE(line->completer()->model()->rowCount(), 1);
        QVERIFY(!line->completer()->popup()->isVisible());
    }

    /// With only a right path, another algorithm computes nothing until it is asked for; browsing computes at once.
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

    /// Whatever the pieces in which the bytes come, and with the processor's instructions as without.
    void computesWhatTheToolKitDoes()
    {
        QRandomGenerator random(5);
        QByteArray bytes(5000, Qt::Uninitialized);
        random.generate(bytes.begin(), bytes.end());
        constexpr std::array kinds{QCryptographicHash::Md5, QCryptographicHash::Sha1, QCryptographicHash::Sha256};
        for (int length = 0; length < 400; ++length) {
            const QByteArrayView view = QByteArrayView(bytes).sliced(length % 7, length);
            for (std::size_t kind = 0; kind < kinds.size(); ++kind) {
                MessageDigest digest{MessageDigest::Kind(kind)};
                for (qsizetype at = 0; at < length;) {
                    const qsizetype piece = std::min<qsizetype>(random.bounded(1, 150), length - at);
                    digest.update(view.sliced(at, piece));
                    at += piece;
                }
                QCOMPARE(digest.value(), QCryptographicHash::hash(view.toByteArray(), kinds[kind]));
            }
        }
        if (!hasShaInstructions())
            return;
        const auto *blocks = reinterpret_cast<const unsigned char *>(bytes.constData());
        Sha1State sha1[2] = {{1, 2, 3, 4, 5}, {1, 2, 3, 4, 5}};
        Sha256State sha256[2] = {{1, 2, 3, 4, 5, 6, 7, 8}, {1, 2, 3, 4, 5, 6, 7, 8}};
        sha1PlainRounds(sha1[0], blocks, 70);
        sha1InstructionRounds(sha1[1], blocks, 70);
        sha256PlainRounds(sha256[0], blocks, 70);
        sha256InstructionRounds(sha256[1], blocks, 70);
        QVERIFY(sha1[0] == sha1[1] && sha256[0] == sha256[1]);
    }

    void comparesWithAPastedChecksum()
    {
        ChecksumFixture fixture;
        const QString one = fixture.file(word("one"), "123456789");
        const QStringList pasted =
            words({"cbf43926", "md5: 25f9e794323b453885f5181f1b624d0b",
                   "25:F9:E7:94:32:3B:45:38:85:F5:18:1F:1B:62:4D:0B", "F7C3BC1D808E04732ADF679965CCC34CA7AE3441  one",
                   "sha256:15e2b0d3c33891ebb0f1ef609ec419420c20e320ce94c65fbc8c3312448eb225  one"});
        for (const QString &value : pasted) {
            fixture.session.setPaths({one, value, {}});
            fixture.session.start();
            QTRY_COMPARE(fixture.text("matchLabel"), word("Checksums match"));
            fixture.session.setPaths({one, QString(value).replace(u'9', u'8'), {}});
            fixture.session.start();
            QTRY_COMPARE(fixture.text("matchLabel"), word("Checksums differ"));
        }
        for (const char *none : {"", "cbf4392", "hello", "gbf43926"})
            QVERIFY2(!expectedChecksum(word(none)), none);
    }

    /// What is written for a folder is found again, and every kind of trouble has its word.
    void writesAndChecksLists()
    {
        ChecksumFixture fixture;
        QVERIFY(QDir(fixture.folder.path()).mkdir(word("sub")));
#ifdef Q_OS_WIN // where a name holds neither
        const char *const odd = "sub/deep name";
#else
        const char *const odd = "sub/deep\\\nname";
#endif
        for (const char *name : {"same", "changed", "gone", odd})
            fixture.file(word(name), name);
        fixture.session.setPaths({fixture.folder.path(), {}, {}});
        const QString list = fixture.folder.filePath(word("sums.sha256"));
        fixture.dialogs.answerPath(list);
        fixture.click("writeListButton");
        QTRY_VERIFY(QFile::exists(list));
        QTRY_VERIFY(fixture.text("statusLabel").startsWith(word("Saved")));

        fixture.file(word("changed"), "other");
        fixture.file(word("added"), "");
        QVERIFY(QFile::remove(fixture.folder.filePath(word("gone"))));
        QFile file(list);
        QVERIFY(file.open(QIODevice::Append));
        file.write("MD5 (../up) = 25f9e794323b453885f5181f1b624d0b\nnonsense\n");
        file.close();
        fixture.session.setPaths({list, {}, {}});
        fixture.session.start();
        QTRY_VERIFY(fixture.session.findChild<QPushButton *>(word("checksumOfferAction"))->isVisible());
        fixture.click("checksumOfferAction");
        auto *rows = fixture.session.findChild<QTreeView *>();
        QTRY_VERIFY(rows->isVisible());
        QTRY_COMPARE(rows->model()->rowCount(), 4); // only what differs
        QStringList seen;
        for (int row = 0; row < 4; ++row)
            seen.append(rows->model()->index(row, 0).data().toString() + u' ' +
                        rows->model()->index(row, 1).data().toString());
        QCOMPARE(seen, words({"Differs changed", "Missing gone", "Outside the folder ../up", "Not listed added"}));
        QCOMPARE(fixture.text("checksumOfferText"), word("Not all files are what the list says."));
        const auto *box = fixture.session.findChild<QComboBox *>(word("algorithmBox"));
        QCOMPARE(box->currentText(), word("SHA-256")); // of a list with several
        fixture.session.setPaths({fixture.file(word("one.sums"), "51037a4a37730f52c8732586d3aaa316  same\n"), {}, {}});
        fixture.click("checkListButton");
        QTRY_COMPARE(box->currentText(), word("MD5"));
    }

    void readsEachFormOfList()
    {
        const QByteArray md5 = "25f9e794323b453885f5181f1b624d0b";
        const ChecksumList list =
            parseChecksumList("\xEF\xBB\xBF; note\n" + md5 + " *a  b\r\n\\" + md5 + "  c\\nd\n\nMD5 (e) = f) = " + md5 +
                              "\nSHA1 (g) = " + md5 + "\n" + "h\\i j CBF43926\nk\n");
        QStringList names;
        for (const ChecksumEntry &entry : list.entries)
            names.append(checksumLine(ChecksumForm::Bsd, entry).startsWith("CRC32") ? entry.name + u'!' : entry.name);
        QCOMPARE(names, words({"a  b", "c\nd", "e) = f", "h/i j!"}));
        QCOMPARE(list.badLines, 2);
        QCOMPARE(list.firstBadLine, 6);
        for (const char *outside : {"", ".", "..", "../x", "a/../../x", "/x", "a/.."})
            QVERIFY2(!pathWithin(word(outside)), outside);
        QCOMPARE(pathWithin(word("./a/../b//c")), word("b/c"));
    }
};

VELMORA_TEST(ChecksumTest)
#include "checksum_test.moc"
