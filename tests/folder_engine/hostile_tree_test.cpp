#include "folder/engine/folder_engine.h"
#include "folder_engine/test_tree.h"
#include "platform/file_access.h"
#include "support/diff_items.h"
#include "support/test_main.h"

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
        for (const QString &side : words("left|right")) {
            QCOMPARE(::mkfifo(QFile::encodeName(tree.path(side) + word("/pipe")).constData(), 0600), 0);
            tree.link(side + word("/to pipe"), word("pipe"));
            tree.link(side + word("/to device"), word("/dev/zero"));
            tree.link(side + word("/broken"), word("nowhere"));
        }
        tree.file(word("left/half"), {});
        tree.link(word("right/half"), word("pipe"));
        // It returns, that is the point: a pipe would wait for a writer, the device would never end.
        const auto items = compareFolderTree(between(tree.left(), tree.right(), CompareMethod::Crc));
        QCOMPARE(drawn(items), words("!half|=to device|=to pipe"));
        const QString pipe = tree.left() + word("/pipe");
        QCOMPARE(fileCrc32(pipe), QByteArray());
        QVERIFY(!sameContentByDigest(pipe, pipe));
    }

    void endsInLinksToAncestors()
    {
        TestTree tree;
        for (const QString &side : words("left|right")) {
            tree.file(side + word("/a/b/f"), "1");
            tree.link(side + word("/a/b/root"), tree.path(side));
            tree.link(side + word("/a/self"), word("."));
        }
        tree.link(word("left/up"), tree.left());
        tree.file(word("right/up/x"), "22");
        QList<FolderProblem> problems;
        QCOMPARE(
            drawn(compareFolderTree(between(tree.left(), tree.right(), CompareMethod::Crc), {}, {nullptr, &problems})),
            words("=a/ 1 1|=a/b/ 1 1|=a/b/f 1 1|=a/b/root/|=a/self/|>up/ 0 2|>up/x 0 2"));
        QCOMPARE(problems.size(), 5);
        QCOMPARE(problems.at(2), (FolderProblem{FolderProblem::Kind::LinkCycle, tree.left() + word("/up")}));
        QCOMPARE(countFolderContents(localFolder(tree.left())), (FolderTotals{1, 5, 1}));
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
        const auto items = compareFolderTree(between(tree.left(), tree.right(), CompareMethod::Crc));
        QCOMPARE(items.size(), levels + 3);
        QCOMPARE(items.first().leftSize, 3);
        const FolderDiffItem &last = items.last();
        QVERIFY(last.leftPath.size() > 6000);
        QVERIFY(items.first().status == 3 && last.status == 3);
        QVERIFY(sameContentByBlocks(last.leftPath, items.at(levels).leftPath));
        QCOMPARE(fileStatus(QFileInfo(last.leftPath), QFileInfo(last.rightPath), CompareMethod::Binary),
                 FolderDiffStatus::Different);
        QCOMPARE(countFolderContents(localFolder(tree.left())), (FolderTotals{3, levels, 3}));
        tree.removeHostile();
    }

    void keepsNamesThatAreNoText()
    {
        TestTree tree;
        const QByteArrayList names{"\xFF\xFE", "caf\xE9", "caf\xC3\xA9", "ok", "\xED\xB2\x80", "x\x80y"};
        for (const QString &side : {tree.left(), tree.right()}) {
            for (const QByteArray &name : names) {
                const int file = ::open((QFile::encodeName(side) + '/' + name).constData(), O_WRONLY | O_CREAT, 0600);
                const QByteArray bytes = name == "caf\xE9" ? side.toUtf8() : name;
                QCOMPARE(::write(file, bytes.constData(), std::size_t(bytes.size())), bytes.size());
                ::close(file);
            }
        }
        const auto items = compareFolderTree(between(tree.left(), tree.right(), CompareMethod::Crc));
        QCOMPARE(items.size(), names.size());
        for (const FolderDiffItem &item : items) {
            const QByteArray name = QByteArray::fromStdString(nativeName(item.name));
            QVERIFY(names.contains(name));
            QCOMPARE(item.diffStatus() == FolderDiffStatus::Same, name != "caf\xE9");
            QCOMPARE(compareFilePair(QFileInfo(item.leftPath), QFileInfo(item.rightPath), CompareMethod::Binary),
                     name != "caf\xE9");
        }
        tree.removeHostile();

        tree.file(word("left/f"), "1");
        QCOMPARE(fileCrc32(tree.left() + word("/f") + QChar(u'\0') + u'x'), QByteArray());
        QCOMPARE(countFolderContents(localFolder(tree.left() + QChar(u'\0'))), FolderTotals());
    }

    void mapsNamesToStringsAndBack()
    {
        std::mt19937 random(7);
        // Bytes around the borders of UTF-8's sequences.
        const std::string bytes = "a/\x7F\x80\xBF\xC2\xC3\xE0\xA0\x9F\xED\xEE\xF0\x90\xF4\x8F\xFF";
        for (int round = 0; round < 20'000; ++round) {
            std::string name;
            for (unsigned length = random() % 6; length > 0; --length)
                name.push_back(bytes[random() % bytes.size()]);
            // Coming back as they were, names that differ have strings that differ.
            QCOMPARE(nativeName(nameFromNative(name)), name);
            const QString text = QString::fromStdString(name);
            if (!text.contains(QChar::ReplacementCharacter))
                QCOMPARE(nameFromNative(name), text);
        }
    }
#endif
};

VELMORA_TEST(HostileTreeTest)
#include "hostile_tree_test.moc"
