#include "cli_fixture.h"
#include "support/test_main.h"

#include <QDateTime>
#include <QDirIterator>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>
#include <QRandomGenerator>

using namespace velmora;
using namespace velmora::test;

namespace {

/// A file by its bytes and its time; a folder has neither.
struct Entry {
    QByteArray bytes;
    qint64 time = 0;

    friend bool operator==(const Entry &one, const Entry &other) { return one.bytes == other.bytes; }
};
using Tree = QMap<QString, Entry>;

Tree treeOf(const QString &root)
{
    Tree tree;
    QDirIterator entries(root, QDir::AllEntries | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
    while (entries.hasNext()) {
        const QString path = entries.next();
        const QFileInfo info = entries.fileInfo();
        tree.insert(path.mid(root.size() + 1),
                    info.isDir() ? Entry() : Entry{contentsOf(path), info.lastModified().toSecsSinceEpoch()});
    }
    return tree;
}

void makeFileOf(const QString &path, const QByteArray &bytes, qint64 time)
{
    QVERIFY(QDir().mkpath(QFileInfo(path).path()) && makeFile(path, bytes));
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(file.setFileTime(QDateTime::fromSecsSinceEpoch(1'600'000'000 + time), QFileDevice::FileModificationTime));
}

void makeRandomTree(const QString &root, QRandomGenerator &random)
{
    QVERIFY(QDir().mkpath(root));
    for (int i = 0; i < 12; ++i) {
        QString path = root;
        for (quint32 depth = random.bounded(3U); depth > 0; --depth)
            path += QStringLiteral("/d%1").arg(random.bounded(3));
        if (random.bounded(4) == 0)
            QVERIFY(QDir().mkpath(path + QStringLiteral("/d9")));
        else // the length tells files apart that are of one time
            makeFileOf(path + QStringLiteral("/f%1").arg(random.bounded(4)), QByteArray(random.bounded(1, 9), 'x'),
                       random.bounded(3));
    }
}

/// What a run makes of one entry; `from` is the side that the mode copies from, or null where the newer one wins.
Entry winner(const Entry &left, const Entry &right, bool whenEqualRight)
{
    if (left.time == right.time)
        return whenEqualRight ? right : left;
    return left.time > right.time ? left : right;
}

} // namespace

class SyncCommandTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_files.emplace(); }

    /// Of random trees: what stands on both sides after a run, by a rule of one line for each mode.
    void makesFoldersAgreeInEveryMode()
    {
        QRandomGenerator random(20);
        for (int round = 0; round < 40; ++round) {
            const QString left = word("l%1").arg(round);
            const QString right = word("r%1").arg(round);
            makeRandomTree(left, random);
            makeRandomTree(right, random);
            const Tree l = treeOf(left);
            const Tree r = treeOf(right);
            const char *mode = std::array{"left-to-right", "right-to-left", "mirror", "update"}[size_t(round % 4)];
            const QStringList arguments{
                word("sync"), word("--for-good"), word("--max-delete"), word("99"), word("--mode"), word(mode), left,
                right};
            const QByteArray told = runCli(arguments).output;
            QCOMPARE(treeOf(left), l); // it was only told
            const CliResult run = runCli(QStringList(arguments) << word("--run"));
            QCOMPARE(run.errors, QByteArray());
            QVERIFY2(run.output.startsWith(told), run.output.constData());

            const Tree nowLeft = treeOf(left);
            const Tree nowRight = treeOf(right);
            if (round % 4 == 0) {
                QCOMPARE(nowLeft, l);
                QCOMPARE(nowRight, l);
            } else if (round % 4 == 1) {
                QCOMPARE(nowLeft, r);
                QCOMPARE(nowRight, r);
            } else {
                Tree all = l;
                all.insert(r);
                QCOMPARE(nowLeft.keys(), all.keys());
                QCOMPARE(nowRight.keys(), all.keys());
                for (const QString &name : all.keys()) {
                    const bool isOnBoth = l.contains(name) && r.contains(name);
                    const bool isTie = isOnBoth && l[name].time == r[name].time;
                    const bool keepsBoth = isTie && round % 4 == 3;
                    const Entry wanted = isOnBoth ? winner(l[name], r[name], round % 4 == 2) : all[name];
                    QCOMPARE(nowLeft[name], keepsBoth ? l[name] : wanted);
                    QCOMPARE(nowRight[name], keepsBoth ? r[name] : wanted);
                }
            }
            QCOMPARE(runCli(arguments).status, 0); // nothing is left to do
        }
    }

    void listsThePlanWithItsActions()
    {
        makeFileOf(word("l/a/new"), "1", 0);
        makeFileOf(word("l/changed"), "left", 5);
        makeFileOf(word("r/changed"), "other", 5);
        makeFileOf(word("r/gone"), "22", 0);
        const CliResult text = runCli("sync l r");
        QCOMPARE(text.output, "-> a/\n-> a/new\n-> changed\n>x gone\n"
                              "Copy right: 3 | Copy left: 0 | Delete: 1 | Skip: 0 | Total: 4\n");
        QCOMPARE(text.status, 1);
        QCOMPARE(runCli("sync --mode update l r").output,
                 "-> a/\n-> a/new\n-- changed\n<- gone\n"
                 "Copy right: 2 | Copy left: 1 | Delete: 0 | Skip: 1 | Total: 4\n");
        const QJsonObject json = QJsonDocument::fromJson(runCli("sync --format json l r").output).object();
        const QJsonObject last = json.value(word("items")).toArray().last().toObject();
        QCOMPARE(last.value(word("action")).toString(), word("deleteRight"));
        QCOMPARE(last.value(word("rightSize")).toInt(), 2);
    }

    /// A drive that is not mounted must not empty its copy.
    void asksTwiceBeforeMuchIsDeleted()
    {
        QVERIFY(QDir().mkpath(word("l")));
        for (const char *name : {"r/a", "r/b", "r/c"})
            makeFileOf(word(name), "1", 0);
        const CliResult empty = runCli("sync --run --for-good l r");
        QCOMPARE(empty.status, 2);
        QVERIFY2(empty.errors.contains("nothing was done: 3 of 3 entries"), empty.errors.constData());
        makeFileOf(word("l/a"), "1", 0);
        QCOMPARE(runCli("sync --run --for-good l r").status, 2); // two of three
        QCOMPARE(runCli("sync --run --for-good --max-delete 1 l r").status, 2);
        QCOMPARE(entriesOf(word("r")).size(), 3);
        const CliResult run = runCli("sync --run --for-good --max-delete 2 l r");
        QCOMPARE(run.status, 0);
        QVERIFY(run.output.endsWith("Sync complete. Success: 2, failed: 0\n"));
        QCOMPARE(entriesOf(word("r")), words("a"));
        QCOMPARE(runCli("sync --max-delete many l r").status, 2);
    }

    /// A folder that changed is never copied over what is newer in it, and what the other side hides stays.
    void leavesWhatNoItemNames()
    {
        makeFileOf(word("l/d/old"), "1", 0);
        makeFileOf(word("r/d/old"), "newer", 9);
        makeFileOf(word("r/x/.hidden"), "1", 0);
        makeFileOf(word("r/x/gone"), "1", 0);
        makeFileOf(word("r/kept"), "1", 0);
        makeFileOf(word("l/kept"), "1", 0);
        QCOMPARE(runCli("sync --run --mode update l r").status, 0);
        QCOMPARE(CliFiles::read("l/d/old"), "newer");
        QVERIFY(QDir(word("l/x")).removeRecursively());
        const CliResult run = runCli("sync --run --for-good l r");
        QCOMPARE(run.status, 1);
        QVERIFY2(run.errors.contains("not list"), run.errors.constData());
        QVERIFY(QFileInfo::exists(word("r/x/.hidden")));
        QVERIFY(runCli("sync --run --for-good l l").status != 1); // nothing to do
    }

private:
    std::optional<CliFiles> m_files;
};

VELMORA_TEST(SyncCommandTest)
#include "sync_command_test.moc"
