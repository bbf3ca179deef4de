#include "folder/engine/folder_engine.h"
#include "folder/engine/short_path.h"
#include "folder_engine/plain_engine.h"
#include "folder_engine/test_tree.h"
#include "support/diff_items.h"
#include "support/test_main.h"

#include <random>

using namespace velmora;
using namespace velmora::test;

namespace {

using Status = FolderDiffStatus;

/// Fills both sides of a tree with what a short random walk finds: few names and contents, so that everything meets.
class RandomTree {
public:
    RandomTree(TestTree &tree, unsigned seed) : m_tree(tree), m_random(seed)
    {
        fill(word("left"), 0);
        fill(word("right"), 0);
    }

    unsigned number(unsigned below) { return unsigned(m_random()) % below; }

private:
    void fill(const QString &folder, int depth)
    {
#ifdef Q_OS_WIN // where names that differ in case alone are the same
        static const QStringList names = words("a|a.txt|B|b!|é|ﬀ|😀|z z");
#else
        // Upper and lower case; a name that sorts differently by code points than by UTF-16 units; hidden; a prefix of
        // another.
        static const QStringList names = words("a|A|a.txt|b|b!|B.TXT|é|ﬀ|😀|.hid|z z");
#endif
        for (const QString &name : names) {
            const QString path = folder + u'/' + name;
            const unsigned choice = number(10);
            if (choice < 2 && depth < 3) {
                m_tree.folder(path);
                fill(path, depth + 1);
            } else if (choice < 6) {
                const QByteArray zeros(int(number(3)), number(2) != 0 ? 'x' : '\0');
                m_tree.file(path, zeros + QByteArray::number(number(2)), number(4));
#ifndef Q_OS_WIN // where a file is made that stands for a link
            } else if (choice == 6 && number(2) == 0) {
                m_tree.link(path, number(2) != 0 ? word("a.txt") : word("nowhere"));
#endif
            }
        }
    }

    TestTree &m_tree;
    std::mt19937 m_random;
};

} // namespace

class FolderEngineTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void agreesWithThePlainForm()
    {
        const QList<QList<ManualAlignRule>> ruleSets{
            {}, {{word("a*"), word("B*")}}, {{word("?"), word("*.txt")}, {word("*"), word("*")}}};
        int shortened = 0;
        for (unsigned seed = 0; seed < 40; ++seed) {
            TestTree tree;
            RandomTree random(tree, seed);
            const QString left = tree.left();
            const QString right = tree.right();
            const auto method = CompareMethod(seed % 3);
            const auto tolerance = qint32(random.number(3));
            for (const QList<ManualAlignRule> &rules : ruleSets) {
                const QString prefix = seed % 2 == 0 ? QString() : word("up/here");
                const QStringList expected = dumped(plain::compareTree(left, right, prefix, method, tolerance, rules));
                FolderInput input = between(left, right, method, tolerance, rules);
                QCOMPARE(dumped(compareFolderLevel(input)),
                         dumped(plain::compareLevel(left, right, method, tolerance, rules)));
                for (const bool recursive : {false, true})
                    QCOMPARE(dumped(listFolderStructure(input, recursive)),
                             dumped(plain::listStructure(left, right, recursive, rules)));
                input.prefix = prefix;
                for (const int threads : {1, 3}) {
                    input.threads = threads;
                    QCOMPARE(dumped(compareFolderTree(input)), expected);
                }
                QList<FolderDiffItem> items = compareFolderTreeInShort(input);
                for (FolderDiffItem &item : items) {
                    shortened += item.leftPath == item.name || item.rightPath == item.name ? 1 : 0;
                    item.leftPath = fullPathOn(item, Side::Left, left);
                    item.rightPath = fullPathOn(item, Side::Right, right);
                }
                QCOMPARE(dumped(items), expected);
            }
            QCOMPARE(countFolderContents(localFolder(left)), plain::countContents(left));
            for (const FolderDiffItem &item : compareFolderLevel(between(left, right, method))) {
                const QFileInfo l(item.leftPath);
                const QFileInfo r(item.rightPath);
                if (!l.isFile() || !r.isFile())
                    continue;
                const qint64 apart = std::abs(l.lastModified().secsTo(r.lastModified()));
                QCOMPARE(timestampsMatch(l, r, tolerance), apart <= tolerance); // all are whole seconds
                const bool same = plain::samePair(l, r, method, tolerance);
                QCOMPARE(compareFilePair(l, r, method, {}, tolerance), same);
                if (l.size() == r.size() || method != CompareMethod::Rules)
                    QCOMPARE(fileStatus(l, r, method, {}, tolerance), same ? Status::Same : Status::Different);
            }
        }
        QVERIFY(shortened > 100);
    }

    void comparesMissingFolders()
    {
        TestTree tree;
        tree.file(word("left/f"), "1");
        const QString nowhere = tree.path(word("nowhere"));
        for (const QString &missing : {nowhere, QString(), tree.path(word("left/f"))}) {
            QCOMPARE(compareFolderTree(between(missing, missing)), {});
            QCOMPARE(drawn(compareFolderTree(between(tree.left(), missing))), words("<f 1 0"));
            QCOMPARE(drawn(compareFolderLevel(between(missing, tree.left(), CompareMethod::Crc))), words(">f 0 1"));
            QCOMPARE(listFolderStructure(between(missing, nowhere), true), {});
            QCOMPARE(countFolderContents(localFolder(missing)), FolderTotals());
        }
    }

    /// Files of one size and time were told like files whose contents are equal.
    void whatWasNotReadIsKnown()
    {
        TestTree tree;
        for (const char *side : {"left/", "right/"}) {
            tree.file(word(side) + word("d/in/lies"), QByteArray(side).left(1));
            tree.file(word(side) + word("d/same"), "x");
            tree.file(word(side) + word("empty"), "");
            tree.file(word(side) + word("read"), "x", side[0] == 'l' ? 1 : 2);
        }
        const auto unread = [](const QList<FolderDiffItem> &items) {
            QStringList names;
            for (const FolderDiffItem &item : items) {
                if (item.isUnread)
                    names.append(item.name);
            }
            return names;
        };
        QVERIFY(unread(compareFolderTree(between(tree.left(), tree.right(), CompareMethod::Crc))).isEmpty());
        const FolderInput input = between(tree.left(), tree.right());
        QList<FolderDiffItem> items = compareFolderTree(input);
        QCOMPARE(unread(items), words("d|d/in|d/in/lies|d/same"));
        const CancelFlag cancelled;
        cancelled.cancel();
        QList<FolderDiffItem> partly = items;
        readUnread(input, partly, cancelled);
        QCOMPARE(partly, items);
        readUnread(input, items);
        QVERIFY(unread(items).isEmpty());
        QCOMPARE(drawn(items), words("!d/ 2 2|!d/in/ 1 1|!d/in/lies 1 1|=d/same 1 1|=empty|=read 1 1"));
    }

    void takesUnreadableFilesAsTheMethodHasIt()
    {
        TestTree tree;
        tree.file(word("left/f"), "1");
        const QFileInfo there(tree.left() + QLatin1String("/f"));
        const QFileInfo missing(tree.left() + QLatin1String("/none"));
        QVERIFY(compareFilePair(missing, missing, CompareMethod::Crc));
        QVERIFY(!compareFilePair(there, missing, CompareMethod::Crc));
        QVERIFY(!compareFilePair(missing, missing, CompareMethod::Binary));
        QVERIFY(!sameContentByDigest(missing.filePath(), missing.filePath()));
    }

    /// What is known of a file may be old: then the contents of a pair decide, and its status goes by what is known.
    void looksIntoAPairWhoseSizesDiffer()
    {
        TestTree tree;
        tree.file(word("left/f"), "longer before");
        tree.file(word("right/f"), "same", 5);
        const QFileInfo left(tree.left() + QLatin1String("/f"));
        const QFileInfo right(tree.right() + QLatin1String("/f"));
        QVERIFY(left.size() != right.size());
        tree.file(word("left/f"), "same");
        QVERIFY(compareFilePair(left, right, CompareMethod::Rules));
        QCOMPARE(fileStatus(left, right, CompareMethod::Rules), Status::Different);
        QVERIFY(!compareFilePair(left, right, CompareMethod::Binary));
    }

    void stopsAtOnceWhenCancelledBefore()
    {
        TestTree tree;
        tree.file(word("left/f"), "1");
        tree.file(word("right/f"), "1", 5);
        const QString left = tree.left();
        const QString right = tree.right();
        const CancelFlag cancel;
        cancel.cancel();
        QCOMPARE(compareFolderTree(between(left, right), cancel), {});
        QCOMPARE(compareFolderLevel(between(left, right), cancel), {});
        QCOMPARE(listFolderStructure(between(left, right), true, cancel), {});
        QCOMPARE(countFolderContents(localFolder(left), cancel), FolderTotals());
        const QFileInfo l(left + QLatin1String("/f"));
        const QFileInfo r(right + QLatin1String("/f"));
        QVERIFY(!compareFilePair(l, r, CompareMethod::Rules, cancel));
        QVERIFY(!compareFilePair(l, r, CompareMethod::Binary, cancel));
        QVERIFY(compareFilePair(l, r, CompareMethod::Crc, cancel));
        QCOMPARE(fileCrc32(l.filePath(), cancel), QByteArray());
    }
};

VELMORA_TEST(FolderEngineTest)
#include "folder_engine_test.moc"
