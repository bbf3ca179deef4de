#include "folder/engine/folder_merge.h"
#include "support/files.h"
#include "support/test_main.h"

#include <QCryptographicHash>
#include <QDirIterator>
#include <QMap>
#include <QRandomGenerator>
#include <QTemporaryDir>

using namespace velmora;
using namespace velmora::test;

namespace {

/// The plain form: every file by the digest of its content, without one when it cannot be opened.
QMap<QString, QByteArray> digestsOf(const QString &root)
{
    QMap<QString, QByteArray> digests;
    QDirIterator files(root, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        const bool opens = file.open(QIODevice::ReadOnly);
        digests.insert(file.fileName().mid(root.size() + 1),
                       opens ? QCryptographicHash::hash(file.readAll(), QCryptographicHash::Md5) : QByteArray());
    }
    return digests;
}

int plainStatus(const QByteArray *base, const QByteArray *left, const QByteArray *right)
{
    if (base && !left)
        return right ? 7 : 9;
    if (base && !right)
        return 8;
    if (!base && !right)
        return 5;
    if (!base && !left)
        return 6;
    if (base && *left == *base)
        return *right == *base ? 0 : 2;
    if (base && *right == *base)
        return 1;
    return *left == *right ? 3 : 4;
}

} // namespace

class FolderMergeTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void agreesWithDigestsOnRandomTrees()
    {
        constexpr qint64 beyondAPiece = 300 * 1024;
        QRandomGenerator random(54);
        std::array<int, 10> seen{};
        for (int round = 0; round < 12; ++round) {
            QTemporaryDir dir;
            MergeVersions<QString> folders{dir.filePath(word("base")), dir.filePath(word("left")),
                                           dir.filePath(word("right"))};
            for (const MergeVersion version : allMergeVersions)
                QVERIFY(QDir().mkpath(folders[version] + word("/d/e")));
            for (int i = 0; i < 40; ++i) {
                const QString name = word(std::array{"/", "/d/", "/d/e/", "/d/e/."}[i % 4]) + QString::number(i);
                QByteArray bytes(random.bounded(3) == 0 ? beyondAPiece : random.bounded(3), 'a');
                for (const MergeVersion version : allMergeVersions) {
                    if (random.bounded(4) == 0)
                        continue;
                    if (!bytes.isEmpty() && random.bounded(3) == 0)
                        bytes[random.bounded(2) == 0 ? bytes.size() - 1 : 0] = char('a' + random.bounded(3));
                    QVERIFY(makeFile(folders[version] + name, bytes));
                    if (random.bounded(5) == 0) // as root it opens all the same
                        QVERIFY(QFile::setPermissions(folders[version] + name, QFileDevice::WriteOwner));
                }
            }
            MergeVersions<QMap<QString, QByteArray>> digests;
            QMap<QString, int> expected;
            for (const MergeVersion version : allMergeVersions)
                digests[version] = digestsOf(folders[version]);
            for (const MergeVersion version : allMergeVersions) {
                for (const QString &path : digests[version].keys()) {
                    const auto find = [&](MergeVersion of) {
                        const auto at = digests[of].constFind(path);
                        return at == digests[of].constEnd() ? nullptr : &*at;
                    };
                    expected[path] =
                        plainStatus(find(MergeVersion::Base), find(MergeVersion::Left), find(MergeVersion::Right));
                }
            }
            Progress progress;
            const FolderMergeResult result = mergeFolderTrees(folders, {}, progress);
            QMap<QString, int> found;
            for (const FolderMergeFile &file : result.files) {
                found.insert(file.path, int(file.status));
                ++seen[std::size_t(file.status)];
            }
            QCOMPARE(found, expected);
            QCOMPARE(result.conflicts, std::count(expected.begin(), expected.end(), 4));
            QVERIFY(std::is_sorted(result.files.begin(), result.files.end(),
                                   [](const auto &one, const auto &other) { return one.path < other.path; }));
        }
        QVERIFY(std::all_of(seen.begin(), seen.end(), [](int count) { return count > 0; }));
    }
};

VELMORA_TEST(FolderMergeTest)
#include "folder_merge_test.moc"
