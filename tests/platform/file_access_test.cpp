#include "core/safe_file.h"
#include "folder/engine/folder_engine.h"
#include "platform/file_access.h"
#include "platform/raw_file.h"
#include "support/diff_items.h"
#include "support/files.h"
#include "support/test_main.h"

#include <QDateTime>
#include <QDir>
#include <QTemporaryDir>

using namespace velmora;
using namespace velmora::test;

namespace {

/// A sign for the status ("=", "<", ">", "!") and the name of each item.
QStringList drawn(const QList<FolderDiffItem> &items)
{
    QStringList lines;
    for (const FolderDiffItem &item : items)
        lines.append(QStringLiteral("=<>!").at(item.status) + item.name);
    return lines;
}

} // namespace

/// What the folder comparison asks of the file system, where systems differ most.
class FileAccessTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_root = QDir(m_folder->path()).canonicalPath();
        QVERIFY(makeRawFolder(left()) && makeRawFolder(right()));
    }

    void cleanup()
    {
        QVERIFY(removeRawTree(left()));
        QVERIFY(removeRawTree(right()));
    }

    void comparesAndSavesBelowLongPaths()
    {
        QString below;
        for (int level = 0; level < 12; ++level) {
            below += QStringLiteral("/a folder with a long name %1").arg(level, 2, 10, QLatin1Char('0'));
            QVERIFY(makeRawFolder(left() + below) && makeRawFolder(right() + below));
        }
        const QString file = below + QLatin1String("/file");
        QVERIFY((left() + file).size() > 350);
        QVERIFY(makeRawFile(left() + file, "one") && makeRawFile(right() + file, "two"));

        const auto compared = [&] { return compareFolderTree(between(left(), right(), CompareMethod::Binary)).last(); };
        QCOMPARE(compared().name, file.mid(1));
        QCOMPARE(compared().diffStatus(), FolderDiffStatus::Different);
        QCOMPARE(fileCrc32(left() + file), QByteArray::fromHex("7a6c86f1"));
        QCOMPARE(countFolderContents(localFolder(left())), (FolderTotals{1, 12, 3}));

        QVERIFY(saveFile(right() + file, "one").ok());
        QCOMPARE(compared().diffStatus(), FolderDiffStatus::Same);
    }

    void namesOfDevicesAreNames()
    {
        // To Windows a path that ends so means a device, or the name without its end.
        const QStringList names = words("aux|com1.txt|con|ends in .|nul|trailing ");
        for (const QString &name : names) {
            QVERIFY(makeRawFile(left() + u'/' + name, name.toUtf8() + '1'));
            QVERIFY(makeRawFile(right() + u'/' + name, name.toUtf8() + (name == QLatin1String("con") ? '2' : '1')));
        }
        const QStringList expected = words("=aux|=com1.txt|!con|=ends in .|=nul|=trailing ");
        for (const CompareMethod method : {CompareMethod::Crc, CompareMethod::Binary}) {
            QCOMPARE(drawn(compareFolderTree(between(left(), right(), method))), expected);
            QCOMPARE(drawn(compareFolderLevel(between(left(), right(), method))), expected);
        }
    }

    void namesThatDifferInCaseAreTwo()
    {
        QVERIFY(makeRawFile(left() + QLatin1String("/Readme.txt"), "1"));
        QVERIFY(makeRawFile(right() + QLatin1String("/README.txt"), "1"));
        QVERIFY(makeRawFolder(left() + QLatin1String("/sub")));
        QVERIFY(makeRawFolder(right() + QLatin1String("/Sub")));
        QVERIFY(makeRawFile(left() + QLatin1String("/sub/f"), "1"));
        QVERIFY(makeRawFile(right() + QLatin1String("/Sub/f"), "1"));
        // Also where the file system takes them for one and would find each on both sides.
        QCOMPARE(drawn(compareFolderTree(between(left(), right(), CompareMethod::Crc))),
                 words(">README.txt|<Readme.txt|>Sub|>Sub/f|<sub|<sub/f"));
        const auto level = compareFolderLevel(
            between(left(), right(), CompareMethod::Crc, 0, {{QStringLiteral("read*"), QStringLiteral("read*")}}));
        QCOMPARE(drawn(level), words("=Readme.txt|>Sub|<sub"));
    }

    void timesAreThoseOfTheSystem()
    {
        const QString path = left() + QLatin1String("/f");
        QVERIFY(makeRawFile(path, "12345"));
        // From before 1970 on, with the milliseconds that every system of today keeps.
        for (const qint64 time :
             {qint64(-86'400'000), qint64(0), qint64(1'483'228'799'999), qint64(4'102'444'800'123)}) {
            QFile file(path);
            QVERIFY(file.open(QIODevice::ReadWrite));
            QVERIFY(file.setFileTime(QDateTime::fromMSecsSinceEpoch(time), QFileDevice::FileModificationTime));
            file.close();
            const auto described = FileAccess::native().describe(path);
            QVERIFY(described);
            QCOMPARE(described->modifiedMs, time);
            QCOMPARE(described->modifiedMs, QFileInfo(path).lastModified().toMSecsSinceEpoch());
            QCOMPARE(described->size, 5);
            QList<FolderEntry> entries;
            QCOMPARE(FileAccess::native().readFolder(left(),
                                                     [&entries](FolderEntry &&entry) {
                                                         entries.append(std::move(entry));
                                                         return true;
                                                     }),
                     FolderRead::Complete);
            QCOMPARE(entries.size(), 1);
            QCOMPARE(entries.first().modifiedMs, time);
            QCOMPARE(entries.first().size, 5);
        }
    }

    void twoSecondsOfToleranceAreTwoSeconds()
    {
        const auto write = [this](const QString &path, qint64 ms) {
            QFile file(path);
            return makeRawFile(path, path.startsWith(left()) ? "l" : "r") && file.open(QIODevice::ReadWrite) &&
                   file.setFileTime(QDateTime::fromMSecsSinceEpoch(ms), QFileDevice::FileModificationTime);
        };
        constexpr qint64 moment = 1'700'000'000'000;
        for (const int apart : {2000, 2999, 3000}) {
            const QString name = QStringLiteral("/%1 ms apart").arg(apart);
            QVERIFY(write(left() + name, moment) && write(right() + name, moment + apart));
        }
        // Equal sizes: the times alone decide, and only beyond the tolerance the contents, which differ.
        QCOMPARE(drawn(compareFolderTree(between(left(), right(), CompareMethod::Rules, 2))),
                 words("=2000 ms apart|=2999 ms apart|!3000 ms apart"));
        QCOMPARE(drawn(compareFolderTree(between(left(), right()))).filter(QStringLiteral("=")).size(), 0);
    }

    void saysWhyAFolderGivesNothing()
    {
        QVERIFY(makeRawFile(left() + QLatin1String("/file"), "1"));
        const auto read = [](const QString &path) {
            return FileAccess::native().readFolder(path, [](FolderEntry &&) { return true; });
        };
        QCOMPARE(read(left() + QLatin1String("/nowhere")), FolderRead::Missing);
        QCOMPARE(read(left() + QLatin1String("/file")), FolderRead::Missing);
        QCOMPARE(read(left() + QLatin1String("/file/below")), FolderRead::Missing);
        QCOMPARE(read(right()), FolderRead::Complete);
    }

private:
    [[nodiscard]] QString left() const { return m_root + QLatin1String("/left"); }
    [[nodiscard]] QString right() const { return m_root + QLatin1String("/right"); }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_root;
};

VELMORA_TEST(FileAccessTest)
#include "file_access_test.moc"
