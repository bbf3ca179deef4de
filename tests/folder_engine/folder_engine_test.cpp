#include "folder/engine/folder_engine.h"
#include "folder/engine/folder_engine_internal.h"
#include "folder_engine/plain_engine.h"
#include "folder_engine/test_tree.h"
#include "platform/file_access.h"
#include "support/test_main.h"

#include <QDir>
#include <QStandardPaths>

#include <random>

using namespace velmora;
using namespace velmora::test;

namespace {

/// Fills both sides of a tree with what a short random walk finds: few names and contents, so that everything meets.
class RandomTree {
public:
    enum class Names {
        All,
        Ordinary, ///< no links, nothing hidden
    };

    RandomTree(TestTree &tree, unsigned seed, Names names = Names::All)
        : m_tree(tree), m_random(seed), m_ordinary(names == Names::Ordinary)
    {
        fill(QStringLiteral("left"), 0);
        fill(QStringLiteral("right"), 0);
    }

    unsigned number(unsigned below) { return unsigned(m_random()) % below; }

private:
    void fill(const QString &folder, int depth)
    {
#ifdef Q_OS_WIN // where names that differ in case alone are the same
        static const QStringList names{QStringLiteral("a"),  QStringLiteral("a.txt"), QStringLiteral("B"),
                                       QStringLiteral("b!"), QStringLiteral("é"),     QStringLiteral("ﬀ"),
                                       QStringLiteral("😀"),  QStringLiteral("z z")};
#else
        // Upper and lower case; a name that sorts differently by code points than by UTF-16 units; hidden; a prefix of
        // another.
        static const QStringList names{QStringLiteral("a"),    QStringLiteral("A"),  QStringLiteral("a.txt"),
                                       QStringLiteral("b"),    QStringLiteral("b!"), QStringLiteral("B.TXT"),
                                       QStringLiteral("é"),    QStringLiteral("ﬀ"),  QStringLiteral("😀"),
                                       QStringLiteral(".hid"), QStringLiteral("z z")};
#endif
        for (const QString &name : names) {
            const QString path = folder + u'/' + name;
            const unsigned choice = number(10);
            if (m_ordinary && (choice == 6 || name.startsWith(u'.')))
                continue;
            if (choice < 2 && depth < 3) {
                m_tree.folder(path);
                fill(path, depth + 1);
            } else if (choice < 6) {
                m_tree.file(path,
                            QByteArray(int(number(3)), number(2) != 0 ? 'x' : '\0') + QByteArray::number(number(2)),
                            number(4));
#ifndef Q_OS_WIN // where a file is made that stands for a link
            } else if (choice == 6 && number(2) == 0) {
                m_tree.link(path, number(2) != 0 ? QStringLiteral("a.txt") : QStringLiteral("nowhere"));
#endif
            }
        }
    }

    TestTree &m_tree;
    std::mt19937 m_random;
    bool m_ordinary;
};

QList<FolderDiffItem> compareWithThreads(int threads, const TestTree &tree, CompareMethod method, qint32 tolerance,
                                         const QList<ManualAlignRule> &rules)
{
    return compareFolderTree({FileAccess::native(), threads}, tree.left(), tree.right(), {}, method, {}, tolerance,
                             rules, {});
}

/// The lines of "diff -rq", as the engine words them: a sign and a relative path. One-sided folders are one line.
QStringList diffLines(const TestTree &tree)
{
    const QByteArray output =
        outputOf("LC_ALL=C.UTF-8 diff -rq '" + tree.left().toUtf8() + "' '" + tree.right().toUtf8() + '\'');
    QStringList lines;
    for (const QString &line : QString::fromUtf8(output).split(u'\n', Qt::SkipEmptyParts)) {
        static const QRegularExpression only(QStringLiteral("^Only in (.*): (.*)$"));
        static const QRegularExpression both(
            QStringLiteral("^(?:Files|File) (.*?) (?:and|is a .* while file) .* ?.*$"));
        if (const auto match = only.match(line); match.hasMatch()) {
            const bool left = match.captured(1).startsWith(tree.left());
            const QString folder = match.captured(1).mid((left ? tree.left() : tree.right()).size() + 1);
            lines.append((left ? u'<' : u'>') + (folder.isEmpty() ? QString() : folder + u'/') + match.captured(2));
        } else if (const auto pair = both.match(line); pair.hasMatch()) {
            lines.append(u'!' + pair.captured(1).mid(tree.left().size() + 1));
        } else {
            lines.append(line);
        }
    }
    lines.sort();
    return lines;
}

/// What the same lines are in a comparison.
QStringList differenceLines(const QList<FolderDiffItem> &items)
{
    QStringList lines;
    QString oneSided; // the folder whose contents go without saying
    for (const FolderDiffItem &item : items) {
        const bool onBoth = !item.leftPath.isEmpty() && !item.rightPath.isEmpty();
        if (item.status == 0 || (!oneSided.isEmpty() && item.name.startsWith(oneSided)))
            continue;
        const bool mixed =
            onBoth && item.isDir && QFileInfo(item.leftPath).isDir() != QFileInfo(item.rightPath).isDir();
        if (onBoth && item.isDir && !mixed)
            continue;
        lines.append(QStringLiteral("=<>!").at(item.status) + item.name);
        oneSided = item.isDir && !onBoth ? item.name + u'/' : QString();
    }
    lines.sort();
    return lines;
}

} // namespace

class FolderEngineTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void agreesWithThePlainForm()
    {
        const QList<QList<ManualAlignRule>> ruleSets{
            {},
            {{QStringLiteral("a*"), QStringLiteral("B*")}},
            {{QStringLiteral("?"), QStringLiteral("*.txt")}, {QStringLiteral("*"), QStringLiteral("*")}},
        };
        for (unsigned seed = 0; seed < 40; ++seed) {
            TestTree tree;
            RandomTree random(tree, seed);
            const auto method = CompareMethod(seed % 3);
            const qint32 tolerance = qint32(random.number(3));
            for (const QList<ManualAlignRule> &rules : ruleSets) {
                const QStringList expected =
                    dumped(plain::compareTree(tree.left(), tree.right(), {}, method, tolerance, rules));
                for (const int threads : {1, 3})
                    QCOMPARE(dumped(compareWithThreads(threads, tree, method, tolerance, rules)), expected);
                QCOMPARE(dumped(compareFolderLevel(tree.left(), tree.right(), method, {}, tolerance, rules)),
                         dumped(plain::compareLevel(tree.left(), tree.right(), method, tolerance, rules)));
                for (const bool recursive : {false, true})
                    QCOMPARE(dumped(listFolderStructure(tree.left(), tree.right(), recursive, {}, rules)),
                             dumped(plain::listStructure(tree.left(), tree.right(), recursive, rules)));
            }
            QCOMPARE(countFolderContents(tree.left()), plain::countContents(tree.left()));
        }
    }

    void agreesWithDiff()
    {
        if (QStandardPaths::findExecutable(QStringLiteral("diff")).isEmpty())
            QSKIP("no diff on this machine");
        for (unsigned seed = 100; seed < 110; ++seed) {
            TestTree tree;
            const RandomTree random(tree, seed, RandomTree::Names::Ordinary);
            const QStringList expected = diffLines(tree);
            const auto found = [&tree](CompareMethod method) {
                return differenceLines(compareFolderTree(tree.left(), tree.right(), {}, method));
            };
            QVERIFY(!expected.isEmpty());
            QCOMPARE(found(CompareMethod::Crc), expected);
            // The binary method overlooks what comes after a common zero, the rules what size and time do not tell.
            for (const CompareMethod method : {CompareMethod::Binary, CompareMethod::Rules}) {
                const QStringList lines = found(method);
                for (const QString &line : expected)
                    QVERIFY(line.startsWith(u'!') || lines.contains(line));
                for (const QString &line : lines)
                    QVERIFY(expected.contains(line));
            }
        }
    }

    void rollsUpAndTotals()
    {
        TestTree tree;
        tree.folder(QStringLiteral("left/empty"));
        tree.folder(QStringLiteral("right/empty"));
        tree.folder(QStringLiteral("right/gone"));
        tree.file(QStringLiteral("left/gone/deep/x"), "12345", 9);
        tree.file(QStringLiteral("left/mixed/l"), "1");
        tree.file(QStringLiteral("right/mixed/r"), "22");
        tree.file(QStringLiteral("left/same/f"), "abc", 5);
        tree.file(QStringLiteral("right/same/f"), "abc", 7);
        tree.file(QStringLiteral("left/thing"), "file");
        tree.file(QStringLiteral("right/thing/in it"), "folder");
        const QList<FolderDiffItem> items = compareFolderTree(tree.left(), tree.right(), {}, CompareMethod::Rules);
        QCOMPARE(drawn(items).filter(QRegularExpression(QStringLiteral("^.(?!thing)"))),
                 (QStringList{
                     QStringLiteral("=empty/"), QStringLiteral("<gone/ 5 0"), QStringLiteral("<gone/deep/ 5 0"),
                     QStringLiteral("<gone/deep/x 5 0"), QStringLiteral("!mixed/ 1 2"), QStringLiteral("<mixed/l 1 0"),
                     QStringLiteral(">mixed/r 0 2"), QStringLiteral("=same/ 3 3"), QStringLiteral("=same/f 3 3")}));
        QCOMPARE(items.last().name, QStringLiteral("thing")); // nothing beneath it
        QCOMPARE(items.last().diffStatus(), FolderDiffStatus::Different);
        QVERIFY(items.last().isDir);
        QVERIFY(!items.at(1).rightPath.isEmpty()); // on both sides, and still left only
        QVERIFY(!items.at(2).rightTime.isValid());
    }

    void namesEntriesUnderAPrefix()
    {
        TestTree tree;
        tree.file(QStringLiteral("left/in/f"), "1");
        const QList<FolderDiffItem> items =
            compareFolderTree(tree.left(), tree.right(), QStringLiteral("up/here"), CompareMethod::Rules);
        QCOMPARE(drawn(items), (QStringList{QStringLiteral("<up/here/in/ 1 0"), QStringLiteral("<up/here/in/f 1 0")}));
    }

    void comparesMissingFolders()
    {
        TestTree tree;
        tree.file(QStringLiteral("left/f"), "1");
        const QString nowhere = tree.path(QStringLiteral("nowhere"));
        for (const QString &missing : {nowhere, QString(), tree.path(QStringLiteral("left/f"))}) {
            QCOMPARE(compareFolderTree(missing, missing, {}, CompareMethod::Rules), {});
            QCOMPARE(drawn(compareFolderTree(tree.left(), missing, {}, CompareMethod::Rules)),
                     QStringList{QStringLiteral("<f 1 0")});
            QCOMPARE(drawn(compareFolderLevel(missing, tree.left(), CompareMethod::Crc)),
                     QStringList{QStringLiteral(">f 0 1")});
            QCOMPARE(listFolderStructure(missing, nowhere, true), {});
            QCOMPARE(countFolderContents(missing), FolderTotals());
        }
    }

    void comparesPathsOfAnyLength()
    {
        TestTree tree;
        QString name(100, u'n');
        for (int depth = 0; depth < 6; ++depth)
            name += u'/' + QString(100, u'n');
        tree.file(QLatin1String("left/") + name, "123");
        tree.file(QLatin1String("right/") + name, "456", 1);
        const auto items = compareFolderTree(tree.left(), tree.right(), {}, CompareMethod::Rules);
        QCOMPARE(items.size(), 7);
        QCOMPARE(drawn(items).last(), QString(u'!' + name + QLatin1String(" 3 3")));
        QVERIFY(fileCrc32(items.last().leftPath) != fileCrc32(items.last().rightPath));
    }

    void alignsByHand()
    {
        TestTree tree;
        tree.file(QStringLiteral("left/a.txt"), "same");
        tree.file(QStringLiteral("right/A.txt"), "same");
        QCOMPARE(drawn(compareFolderLevel(tree.left(), tree.right(), CompareMethod::Binary)),
                 (QStringList{QStringLiteral(">A.txt 0 4"), QStringLiteral("<a.txt 4 0")}));
        const QList<ManualAlignRule> rules{{QStringLiteral("a.*"), QStringLiteral("A.*")}};
        const QList<FolderDiffItem> items =
            compareFolderLevel(tree.left(), tree.right(), CompareMethod::Binary, {}, 0, rules);
        QCOMPARE(drawn(items), QStringList{QStringLiteral("=a.txt 4 4")});
        QVERIFY(items.first().rightPath.endsWith(QLatin1String("/A.txt")));
    }

    void alignsFoldersAndWhatIsInThem()
    {
        TestTree tree;
        tree.file(QStringLiteral("left/v1/f1"), "x");
        tree.file(QStringLiteral("right/v2/f2"), "x");
        const QList<ManualAlignRule> rules{{QStringLiteral("?1"), QStringLiteral("?2")}};
        const QList<FolderDiffItem> items =
            compareFolderTree(tree.left(), tree.right(), {}, CompareMethod::Crc, {}, 0, rules);
        QCOMPARE(drawn(items), (QStringList{QStringLiteral("=v1/ 1 1"), QStringLiteral("=v1/f1 1 1")}));
        QCOMPARE(items.last().rightPath, tree.right() + QLatin1String("/v2/f2"));
    }

    void decidesPairsByTheMethod_data()
    {
        QTest::addColumn<QByteArray>("left");
        QTest::addColumn<QByteArray>("right");
        QTest::addColumn<int>("apart"); // seconds
        QTest::addColumn<int>("tolerance");
        QTest::addColumn<QString>("same"); // the methods that find them the same

        const QByteArray zeroFirst = QByteArray("a\0b", 3);
        const QByteArray zeroThenOther = QByteArray("a\0c", 3);
        QTest::newRow("equal") << QByteArray("x") << QByteArray("x") << 0 << 0 << QStringLiteral("rules crc binary");
        QTest::newRow("equal, other time")
            << QByteArray("x") << QByteArray("x") << 1 << 0 << QStringLiteral("rules crc binary");
        QTest::newRow("time within") << QByteArray("x") << QByteArray("y") << 2 << 2 << QStringLiteral("rules");
        QTest::newRow("time within, before")
            << QByteArray("x") << QByteArray("y") << -2 << 2 << QStringLiteral("rules");
        QTest::newRow("time beyond") << QByteArray("x") << QByteArray("y") << 3 << 2 << QString();
        QTest::newRow("same time, other size") << QByteArray("x") << QByteArray("xy") << 0 << 0 << QString();
        QTest::newRow("negative tolerance") << QByteArray("x") << QByteArray("y") << 1 << -5 << QString();
        QTest::newRow("after a zero") << zeroFirst << zeroThenOther << 9 << 0 << QStringLiteral("binary");
    }

    void decidesPairsByTheMethod()
    {
        QFETCH(QByteArray, left);
        QFETCH(QByteArray, right);
        QFETCH(int, apart);
        QFETCH(int, tolerance);
        QFETCH(QString, same);
        TestTree tree;
        tree.file(QStringLiteral("left/f"), left);
        tree.file(QStringLiteral("right/f"), right, apart);
        const QFileInfo l(tree.left() + QLatin1String("/f"));
        const QFileInfo r(tree.right() + QLatin1String("/f"));
        const QStringList names{QStringLiteral("rules"), QStringLiteral("crc"), QStringLiteral("binary")};
        for (int method = 0; method < 3; ++method) {
            const bool expected = same.contains(names[method]);
            QCOMPARE(compareFilePair(l, r, CompareMethod(method), {}, tolerance), expected);
            QCOMPARE(fileStatus(l, r, CompareMethod(method), {}, tolerance),
                     expected ? FolderDiffStatus::Same : FolderDiffStatus::Different);
            const auto items = compareFolderLevel(tree.left(), tree.right(), CompareMethod(method), {}, tolerance);
            QCOMPARE(items.first().status == 0, expected);
        }
        QCOMPARE(timestampsMatch(l, r, tolerance), tolerance > 0 ? std::abs(apart) <= tolerance : apart == 0);
        QCOMPARE(compareFilePair(l, r, CompareMethod(77), {}, tolerance), same.contains(QLatin1String("rules")));
    }

    void takesUnreadableFilesAsTheMethodHasIt()
    {
        TestTree tree;
        tree.file(QStringLiteral("left/f"), "1");
        const QFileInfo there(tree.left() + QLatin1String("/f"));
        const QFileInfo missing(tree.left() + QLatin1String("/none"));
        const QFileInfo alsoMissing(tree.right() + QLatin1String("/none"));
        QVERIFY(compareFilePair(missing, alsoMissing, CompareMethod::Crc));
        QVERIFY(!compareFilePair(there, missing, CompareMethod::Crc));
        QVERIFY(!compareFilePair(missing, alsoMissing, CompareMethod::Binary));
        QVERIFY(!sameContentByDigest(missing.filePath(), alsoMissing.filePath()));
    }

    void stopsAtOnceWhenCancelledBefore()
    {
        TestTree tree;
        tree.file(QStringLiteral("left/f"), "1");
        tree.file(QStringLiteral("right/f"), "1", 5);
        const CancelFlag cancel;
        cancel.cancel();
        QCOMPARE(compareFolderTree(tree.left(), tree.right(), {}, CompareMethod::Rules, cancel), {});
        QCOMPARE(compareFolderLevel(tree.left(), tree.right(), CompareMethod::Rules, cancel), {});
        QCOMPARE(listFolderStructure(tree.left(), tree.right(), true, cancel), {});
        QCOMPARE(countFolderContents(tree.left(), cancel), FolderTotals());
        const QFileInfo l(tree.left() + QLatin1String("/f"));
        const QFileInfo r(tree.right() + QLatin1String("/f"));
        QVERIFY(!compareFilePair(l, r, CompareMethod::Rules, cancel));
        QVERIFY(!compareFilePair(l, r, CompareMethod::Binary, cancel));
        QVERIFY(compareFilePair(l, r, CompareMethod::Crc, cancel));
        QCOMPARE(fileCrc32(l.filePath(), cancel), QByteArray());
    }
};

VELMORA_TEST(FolderEngineTest)
#include "folder_engine_test.moc"
