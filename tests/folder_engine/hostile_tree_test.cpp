#include "folder/engine/folder_engine.h"
#include "folder_engine/test_tree.h"
#include "platform/file_access.h"
#include "support/test_main.h"

#include <QDir>

#include <random>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

using namespace velmora;
using namespace velmora::test;

/// Trees that only a Unix file system holds, and the names in them.
class HostileTreeTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
#ifdef Q_OS_UNIX
    void leavesOutWhatNobodyMayOpen()
    {
        TestTree tree;
        for (const QString &side : {tree.left(), tree.right()}) {
            QCOMPARE(::mkfifo(QFile::encodeName(side + QLatin1String("/pipe")).constData(), 0600), 0);
            tree.link(side.mid(tree.path({}).size()) + QLatin1String("/to pipe"), QStringLiteral("pipe"));
            tree.link(side.mid(tree.path({}).size()) + QLatin1String("/to device"), QStringLiteral("/dev/zero"));
            tree.link(side.mid(tree.path({}).size()) + QLatin1String("/broken"), QStringLiteral("nowhere"));
        }
        // It returns, that is the point: a pipe would wait for a writer, the device would never end.
        const auto items = compareFolderTree(tree.left(), tree.right(), {}, CompareMethod::Crc);
        QCOMPARE(drawn(items), (QStringList{QStringLiteral("=to device"), QStringLiteral("=to pipe")}));
        QCOMPARE(fileCrc32(tree.left() + QLatin1String("/pipe")), QByteArray());
        QVERIFY(!sameContentByDigest(tree.left() + QLatin1String("/pipe"), tree.right() + QLatin1String("/pipe")));
    }

    void endsInLinksToAncestors()
    {
        TestTree tree;
        tree.file(QStringLiteral("left/a/b/f"), "1");
        tree.file(QStringLiteral("right/a/b/f"), "1");
        for (const QString &side : {QStringLiteral("left"), QStringLiteral("right")}) {
            tree.link(side + QLatin1String("/a/b/root"), tree.path(side));
            tree.link(side + QLatin1String("/a/self"), QStringLiteral("."));
        }
        const auto items = compareFolderTree(tree.left(), tree.right(), {}, CompareMethod::Crc);
        QCOMPARE(drawn(items),
                 (QStringList{QStringLiteral("=a/ 1 1"), QStringLiteral("=a/b/ 1 1"), QStringLiteral("=a/b/f 1 1"),
                              QStringLiteral("=a/b/root/"), QStringLiteral("=a/self/")}));
        QCOMPARE(countFolderContents(tree.left()), (FolderTotals{1, 4, 1}));
    }

    void comparesTwoThousandLevels()
    {
        constexpr int levels = 2000;
        TestTree tree;
        for (const QString &side : {tree.left(), tree.right()}) {
            int at = ::open(QFile::encodeName(side).constData(), O_RDONLY | O_DIRECTORY);
            for (int level = 0; level < levels; ++level) {
                QCOMPARE(::mkdirat(at, "dd", 0700), 0);
                const int next = ::openat(at, "dd", O_RDONLY | O_DIRECTORY);
                ::close(at);
                at = next;
            }
            for (const char *name : {"first", "second", "third"}) {
                const int file = ::openat(at, name, O_WRONLY | O_CREAT, 0600);
                QCOMPARE(::write(file, side == tree.left() ? "1" : "2", 1), 1);
                ::close(file);
            }
            ::close(at);
        }
        const auto items = compareFolderTree(tree.left(), tree.right(), {}, CompareMethod::Crc);
        QCOMPARE(items.size(), levels + 3);
        QCOMPARE(items.first().diffStatus(), FolderDiffStatus::Different);
        QCOMPARE(items.first().leftSize, 3);
        const FolderDiffItem &last = items.last();
        QVERIFY(last.leftPath.size() > 6000);
        QCOMPARE(last.diffStatus(), FolderDiffStatus::Different);
        const QFileInfo left(last.leftPath);
        QVERIFY(compareFilePair(left, left, CompareMethod::Crc));
        QVERIFY(sameContentByBlocks(last.leftPath, items.at(levels).leftPath));
        QCOMPARE(fileStatus(left, QFileInfo(last.rightPath), CompareMethod::Binary), FolderDiffStatus::Different);
        QCOMPARE(countFolderContents(tree.left()), (FolderTotals{3, levels, 3}));
        tree.removeHostile();
    }

    void keepsNamesThatAreNoText()
    {
        TestTree tree;
        const QByteArrayList names{"\xFF\xFE", "caf\xE9", "caf\xC3\xA9", "ok", "\xED\xB2\x80", "x\x80y"};
        for (const QString &side : {tree.left(), tree.right()}) {
            for (const QByteArray &name : names) {
                const int file = ::open((QFile::encodeName(side) + '/' + name).constData(), O_WRONLY | O_CREAT, 0600);
                QVERIFY(file >= 0);
                const QByteArray bytes =
                    name + (name == "caf\xE9" ? QByteArray(side == tree.left() ? "1" : "2") : QByteArray());
                QCOMPARE(::write(file, bytes.constData(), std::size_t(bytes.size())), bytes.size());
                ::close(file);
            }
        }
        const auto items = compareFolderTree(tree.left(), tree.right(), {}, CompareMethod::Crc);
        QCOMPARE(items.size(), names.size());
        for (const FolderDiffItem &item : items) {
            const std::string name = nativeName(item.name);
            QVERIFY(names.contains(QByteArray::fromStdString(name)));
            QCOMPARE(item.diffStatus() == FolderDiffStatus::Same, name != "caf\xE9");
            QCOMPARE(compareFilePair(QFileInfo(item.leftPath), QFileInfo(item.rightPath), CompareMethod::Binary),
                     name != "caf\xE9");
        }
        tree.removeHostile();
    }

    void mapsNamesToStringsAndBack()
    {
        std::mt19937 random(7);
        // Bytes around the borders of UTF-8's sequences.
        const std::string bytes = "a/\x7F\x80\xBF\xC2\xC3\xE0\xA0\x9F\xED\xEE\xF0\x90\xF4\x8F\xFF";
        QSet<QString> seen;
        QSet<QByteArray> sources;
        for (int round = 0; round < 20'000; ++round) {
            std::string name;
            for (unsigned length = random() % 6; length > 0; --length)
                name.push_back(bytes[random() % bytes.size()]);
            const QString text = nameFromNative(name);
            QCOMPARE(nativeName(text), name);
            const QByteArray source = QByteArray::fromStdString(name);
            if (!QString::fromUtf8(source).contains(QChar::ReplacementCharacter))
                QCOMPARE(text, QString::fromUtf8(source));
            seen.insert(text);
            sources.insert(source);
        }
        QCOMPARE(seen.size(), sources.size());
    }

    void refusesPathsWithAZero()
    {
        TestTree tree;
        tree.file(QStringLiteral("left/f"), "1");
        const QString path = tree.left() + QLatin1String("/f") + QChar(u'\0') + QLatin1String("x");
        QCOMPARE(fileCrc32(path), QByteArray());
        QCOMPARE(countFolderContents(tree.left() + QChar(u'\0')), FolderTotals());
    }
#endif
};

VELMORA_TEST(HostileTreeTest)
#include "hostile_tree_test.moc"
