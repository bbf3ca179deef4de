#include "folder_operations/operation_fixture.h"
#include "folder_operations/scripted_layer.h"
#include "platform/extended_attributes_unix.h"
#include "support/linux_attributes.h"
#include "support/test_main.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace velmora;
using namespace velmora::test;

namespace {

const QByteArray note(300, 'n');

struct stat statusOf(const QString &path)
{
    struct stat status {};
    status.st_blocks = std::numeric_limits<blkcnt_t>::max() / 512; // unlike any file's where there is none
    (void)::stat(QFile::encodeName(path).constData(), &status);
    return status;
}

} // namespace

class AttributesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void copiesAndUndoingCarryAttributesAndAccessLists()
    {
        OperationFixture tree(QDir::tempPath());
        tree.make("left/dir/noted=1 left/dir/listed=1 left/dir/plain=1 right/dir/listed=old right/gone/x=1 "
                  "left/made/ left/bare/");
        const QString left = tree.path("left/dir");
        const bool isTaken = setAttribute(left + QStringLiteral("/noted"), "user.note", note) &&
                             setAttribute(left + QStringLiteral("/noted"), "user.empty", {}) &&
                             setAttribute(left + QStringLiteral("/listed"), accessListName, accessListOf(4, 0, 0)) &&
                             setAttribute(left, defaultListName, accessListOf(6, 4, 0)) &&
                             setAttribute(left, "user.folder", note) &&
                             setAttribute(tree.path("left/made"), accessListName, accessListOf(4, 0, 0)) &&
                             setAttribute(tree.path("left/made"), defaultListName, accessListOf(6, 4, 0));
        if (!isTaken)
            QSKIP("the file system for temporary files has no such attributes");
        for (const char *old : {"right/dir/listed", "right/gone", "right/gone/x"}) {
            QVERIFY(setAttribute(tree.path(old), "user.note", "old"));
            QVERIFY(setAttribute(tree.path(old), accessListName, accessListOf(0, 6, 4)));
        }
        // What is made here inherits rights that no source gives.
        QVERIFY(setAttribute(tree.right(), defaultListName, accessListOf(6, 6, 6)));
        const QMap<QByteArray, QByteArray> replaced = attributesOf(tree.path("right/dir/listed"));
        const QMap<QByteArray, QByteArray> deleted = attributesOf(tree.path("right/gone"));

        ScriptedLayer layer(betweenVolumes());
        OperationJournal journal(layer, tree.journalFolder());
        QCOMPARE(tree.problems(tree.execute(tree.mirror(), journal, layer)), QStringList());
        for (const char *name : {"/dir/noted", "/dir/listed", "/dir/plain", "/made", "/bare"}) {
            QCOMPARE(attributesOf(tree.right() + QLatin1String(name)), attributesOf(tree.left() + QLatin1String(name)));
            QCOMPARE(statusOf(tree.right() + QLatin1String(name)).st_mode,
                     statusOf(tree.left() + QLatin1String(name)).st_mode);
        }

        const UndoPlan undo = journal.planUndo();
        journal.setNext({}, undo.id);
        QCOMPARE(tree.problems(tree.execute(undo.plan, journal, layer)), QStringList());
        QCOMPARE(attributesOf(tree.path("right/dir/listed")), replaced);
        for (const char *old : {"right/gone", "right/gone/x"})
            QCOMPARE(attributesOf(tree.path(old)), deleted);
    }

    /// The permission bits for the group are the list's mask: given as they are they would open the file.
    void aListThatIsLostOpensTheFileForNobody()
    {
        struct Case {
            QByteArray list;
            int withheld;
        };
        for (const auto &[list, withheld] : {Case{accessListOf(6, 0, 4), 073},    // the group may nothing
                                             Case{accessListOf(0, 4, 4), 077},    // a user may less than others
                                             Case{accessListOf(6, 4, 0), 037}}) { // a user may more than others
            OperationFixture tree(QDir::tempPath());
            tree.make("left/a=1");
            if (!setAttribute(tree.path("left/a"), accessListName, list))
                QSKIP("the file system for temporary files has no access lists");
            const QByteArray source = QFile::encodeName(tree.path("left/a"));
            int ends[2];
            QCOMPARE(::pipe(ends), 0); // takes no attributes at all
            const CarriedAttributes carried = carryAttributes({-1, source.constData()}, ends[1]);
            ::close(ends[0]);
            ::close(ends[1]);
            QCOMPARE(carried.error, EOPNOTSUPP);
            QCOMPARE(int(carried.withheld), withheld);
        }
    }

    void holesStayHoles()
    {
        // The megabytes that hold something.
        for (const QList<qint64> &written : {QList<qint64>{}, QList<qint64>{0, 17}, QList<qint64>{5, 6, 31}}) {
            constexpr qint64 piece = 1 << 20;
            OperationFixture tree(QDir::tempPath());
            tree.make("left/a=");
            QFile source(tree.path("left/a"));
            QVERIFY(source.open(QIODevice::ReadWrite));
            QVERIFY(source.resize(32 * piece));
            for (const qint64 at : written) {
                QVERIFY(source.seek(at * piece));
                QCOMPARE(source.write(QByteArray(piece, char('a' + at))), piece);
            }
            QVERIFY(source.flush());
            QCOMPARE(::fsync(source.handle()), 0); // blocks are counted by now
            const auto sizeOnDisk = [](const QString &path) { return qint64(statusOf(path).st_blocks) * 512; };
            const qint64 full = (written.size() + 1) * piece;
            if (sizeOnDisk(source.fileName()) > full)
                QSKIP("the file system for temporary files has no holes");
            QCOMPARE(tree.problems(tree.execute(tree.mirror(), {true, nullptr})), QStringList());
            QCOMPARE(QFileInfo(tree.path("right/a")).size(), 32 * piece);
            QVERIFY(sizeOnDisk(tree.path("right/a")) <= full);
        }
    }

    void aBinThatWasMadeForTheRunGoesWithTheLastEntry()
    {
        const OperationFixture tree;
        FileError error;
        const std::unique_ptr<FolderHandle> folder = FileLayer::native().openRoot(tree.left(), error);
        const QString name = QStringLiteral("mine");
        QVERIFY(!folder->makeFolder(name, nullptr).isError());
        qputenv("XDG_DATA_HOME", "/dev/null/no/home"); // so that the bin is the one at the top of the volume
        const RecycleResult recycled = folder->recycle(name, [](const QString &) { return FileError(); });
        if (recycled.error.isError())
            QSKIP("there can be no bin at the top of this volume");
        QVERIFY2(QFileInfo::exists(recycled.binPath), qPrintable(recycled.binPath));
        QVERIFY(!FileLayer::native()
                     .restore(recycled.binPath, *folder, name, [](const NodeState &) { return true; })
                     .isError());
        QVERIFY(QFileInfo::exists(tree.path("left/mine")));
        const QDir bin(QFileInfo(QFileInfo(recycled.binPath).path()).path());
        QVERIFY(!bin.exists() || !bin.isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
    }
};

VELMORA_TEST(AttributesTest)
#include "attributes_test.moc"
