#include "app/file_kind.h"
#include "support/files.h"
#include "support/test_main.h"

#include <QTemporaryDir>

using namespace velmora;
using namespace velmora::test;

class FileKindTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void knowsFilesByTheirContent()
    {
        struct Case {
            const char *name;
            QByteArray bytes;
            const char *kind;
        };
        for (const auto &[name, bytes, kind] :
             {Case{"a.txt", "words\n", "text"},
              {"a.bin", "words\n", "text"},
              {"utf8", "Gr\xC3\xBC\xC3\x9F\n", "text"},
              {"utf16", QByteArray("\xFF\xFEh\0i\0", 6), "text"},
              {"numbers.CSV", "1,2\n", "table"},
              {"numbers.tsv", QByteArray("\0\1\2\3", 4), "binary"},
              {"a.exe", QByteArray("MZ\0\0\0\0words", 11), "binary"},
              {"libx.so.1",
               QByteArray("\x7f"
                          "ELF\2\1\1\0",
                          8),
               "version"},
              {"b.dll", "MZ" + QByteArray(58, '\0') + QByteArray("\x40\0\0\0PE\0\0", 8), "version"},
              {"picture", QByteArray("\x89PNG\r\n\x1a\n\0\0\0\r", 12), "image"},
              {"photo.txt", "\xFF\xD8\xFF\xE0 and so on", "image"},
              {"BMW.txt", "BMW is a text\n", "text"},
              {"map", QByteArray("BM\x36\0\0\0\0\0\0\0\x36\0\0\0\x28\0", 16), "image"},
              {"a.zip", QByteArray("PK\3\4\x14\0", 6), "archive"},
              {"b", QByteArray("\x1F\x8B\x08\0\0", 5), "archive"},
              {"BZ.txt", "BZhelp is a text\n", "text"},
              {"song", QByteArray("ID3\3\0\0\0\0\0\0\0\0", 12), "mp3"},
              {"song.txt", "ID3 is a text about music", "text"},
              {"song", "RIFF\x10\x10\x10\x10WAVEfmt ", "mp3"},
              {"song", "\xff\xfb\x90\x64 and so on...", "mp3"},
              {"marked",
               QByteArray("\xff\xfe"
                          "a\0b\0c\0d\0e\0f\0",
                          14),
               "text"},
              {"empty.csv", "", "table"}})
            QVERIFY2(kindOfContent(word(name), bytes) == word(kind), name);
    }

    void aPairIsWhatBothAre()
    {
        QTemporaryDir folder;
        const auto file = [&](const char *name, const QByteArray &bytes) {
            const QString path = folder.filePath(word(name));
            return makeFile(path, bytes) ? path : QString();
        };
        const QString text = file("text", "a\n");
        const QString table = file("t.csv", "a,b\n");
        const QString binary = file("b", QByteArray("\0\1", 2));
        const QString picture = file("p", "GIF89a...");
        QCOMPARE(kindOfPair(text, text), word("text"));
        QCOMPARE(kindOfPair(table, table), word("table"));
        QCOMPARE(kindOfPair(text, table), word("text"));
        QCOMPARE(kindOfPair(text, binary), word("binary"));
        QCOMPARE(kindOfPair(picture, picture), word("image"));
        QCOMPARE(kindOfPair(picture, text), word("binary"));
        QCOMPARE(kindOfPair(picture, {}), word("image"));
        const QString program = file("e", QByteArray("\x7f"
                                                     "ELF\2\1\1\0",
                                                     8));
        QCOMPARE(kindOfPair(program, program), word("version"));
        QCOMPARE(kindOfPair(program, {}), word("binary"));
        QCOMPARE(kindOfPair(program, text), word("binary"));
        const QString archive = file("z", QByteArray("PK\3\4\x14\0", 6));
        QCOMPARE(kindOfPair(archive, archive), word("archive"));
        QCOMPARE(kindOfPair(archive, {}), word("archivebrowse"));
        QCOMPARE(kindOfPair(archive, binary), word("binary"));
        const QString song = file("s", QByteArray("OggS\0 and so on", 16));
        QCOMPARE(kindOfPair(song, song), word("mp3"));
        QCOMPARE(kindOfPair(song, {}), word("binary"));
        QCOMPARE(kindOfPair({}, folder.filePath(word("gone"))), word("text"));
    }
};

VELMORA_TEST(FileKindTest)
#include "file_kind_test.moc"
