#include "folder/compare/file_kind.h"
#include "support/test_main.h"

#include <QFile>
#include <QTemporaryDir>

using namespace velmora;

class FileKindTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void knowsFilesByTheirContent_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("kind");
        const auto row = [](const char *name, const QByteArray &bytes, const char *kind) {
            QTest::newRow(name) << QString::fromLatin1(name) << bytes << QString::fromLatin1(kind);
        };
        row("a.txt", "words\n", "text");
        row("a.bin", "words\n", "text");
        row("utf8",
            "Gr\xC3\xBC\xC3\x9F"
            "e\n",
            "text");
        row("utf16", QByteArray("\xFF\xFEh\0i\0", 6), "text");
        row("numbers.CSV", "1,2\n", "table");
        row("numbers.tsv", QByteArray("\0\1\2\3", 4), "binary");
        row("a.exe", QByteArray("MZ\0\0\0\0words", 11), "binary");
        row("picture", QByteArray("\x89PNG\r\n\x1a\n\0\0\0\r", 12), "image");
        row("photo.txt", "\xFF\xD8\xFF\xE0 and so on", "image");
        row("BMW.txt", "BMW is a text\n", "text");
        row("map", QByteArray("BM\x36\0\0\0\0\0\0\0\x36\0\0\0\x28\0", 16), "image");
        row("empty.csv", "", "table");
    }

    void knowsFilesByTheirContent()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, bytes);
        QFETCH(QString, kind);
        QCOMPARE(kindOfContent(name, bytes), kind);
    }

    void aPairIsWhatBothAre()
    {
        QTemporaryDir folder;
        const auto file = [&](const char *name, const QByteArray &bytes) {
            QFile file(folder.filePath(QString::fromLatin1(name)));
            if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
                qFatal("cannot write a file");
            return file.fileName();
        };
        const QString text = file("text", "a\n");
        const QString table = file("t.csv", "a,b\n");
        const QString binary = file("b", QByteArray("\0\1", 2));
        const QString picture = file("p", "GIF89a...");
        QCOMPARE(kindOfPair(text, text), QStringLiteral("text"));
        QCOMPARE(kindOfPair(table, table), QStringLiteral("table"));
        QCOMPARE(kindOfPair(text, table), QStringLiteral("text"));
        QCOMPARE(kindOfPair(text, binary), QStringLiteral("binary"));
        QCOMPARE(kindOfPair(picture, picture), QStringLiteral("image"));
        QCOMPARE(kindOfPair(picture, text), QStringLiteral("binary"));
        QCOMPARE(kindOfPair(picture, {}), QStringLiteral("image"));
        QCOMPARE(kindOfPair({}, folder.filePath(QStringLiteral("gone"))), QStringLiteral("text"));
    }
};

VELMORA_TEST(FileKindTest)
#include "file_kind_test.moc"
