#include "platform/file_layer.h"
#include "platform/raw_file.h"
#include "support/files.h"
#include "support/test_main.h"

#include <QDir>
#include <QTemporaryDir>

#include <algorithm>
#include <vector>

using namespace velmora;
using namespace velmora::test;

/// The true file system below the operations on files, where systems differ most.
class FileLayerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_root = QDir(m_folder->path()).canonicalPath();
    }

    void recyclesAndRestoresAFolder()
    {
        QVERIFY(makeRawFolder(m_root + QLatin1String("/folder")));
        QVERIFY(makeRawFile(m_root + QLatin1String("/folder/file"), "kept"));
        const auto root = open(m_root);
        QVERIFY(root);
        const RecycleResult recycled =
            root->recycle(QStringLiteral("folder"), [](const QString &) { return FileError(); });
        if (recycled.error.kind == FileErrorKind::Unsupported) {
            QCOMPARE(contentsOf(m_root + QLatin1String("/folder/file")), QByteArray("kept"));
            QSKIP(qPrintable(QLatin1String("no recycle bin here: ") + recycled.error.reason));
        }
        QVERIFY2(!recycled.error.isError(), qPrintable(recycled.error.reason));
        QVERIFY(!QFileInfo::exists(m_root + QLatin1String("/folder")));
        if (recycled.binPath.isEmpty())
            QSKIP("the system does not tell where it is");
        QCOMPARE(contentsOf(recycled.binPath + QLatin1String("/file")), QByteArray("kept"));
        const QString again = QStringLiteral("again");
        const auto answers = [](bool is) { return [is](const NodeState &) { return is; }; };
        QCOMPARE(FileLayer::native().restore(recycled.binPath, *root, again, answers(false)).kind,
                 FileErrorKind::NotExpected);
        QVERIFY(QFileInfo::exists(recycled.binPath));
        const FileError restored = FileLayer::native().restore(recycled.binPath, *root, again, answers(true));
        QVERIFY2(!restored.isError(), qPrintable(restored.reason));
        QCOMPARE(contentsOf(m_root + QLatin1String("/again/file")), QByteArray("kept"));
        QVERIFY(!QFileInfo::exists(recycled.binPath));
    }

    void copiesBelowLongPathsAndKeepsTimes()
    {
        QString path = m_root;
        for (int level = 0; level < 8; ++level) {
            path += QStringLiteral("/a folder with quite a long name of its own %1").arg(level);
            QVERIFY(makeRawFolder(path));
        }
        QVERIFY(path.size() > 320);
        const QByteArray bytes = QByteArray("line\r\n").repeated(100'000);
        QVERIFY(makeRawFile(path + QLatin1String("/source"), bytes));
        const auto folder = open(path);
        QVERIFY(folder);
        NodeState model = folder->stat(QStringLiteral("source")).node;
        model.modifiedNs = 1'234'567'890'000'000'000;

        FileError error;
        auto source = folder->openFile(QStringLiteral("source"), error);
        auto sink = folder->createFile(QStringLiteral("copy"), error);
        QVERIFY2(source && sink, qPrintable(error.reason));
        error = sink->copyFrom(*source, [](qint64) { return true; });
        QVERIFY2(!error.isError(), qPrintable(error.reason));
        QVERIFY(!sink->keepAttributes(model).isError());
        QVERIFY(!sink->flush().isError());
        sink.reset();
        const NodeState copy = folder->stat(QStringLiteral("copy")).node;
        QCOMPARE(copy.size, qint64(bytes.size()));
        QCOMPARE(copy.modifiedNs, model.modifiedNs);
        QCOMPARE(copy.permissions, model.permissions);
        QCOMPARE(contentsOf(path + QLatin1String("/copy")), bytes);
        QVERIFY(!folder->createFile(QStringLiteral("copy"), error));
        QCOMPARE(error.kind, FileErrorKind::Exists);
    }

    void reachesFoldersBelowAsByTheirParts()
    {
        for (const char *folder : {"/a", "/a/b", "/a/b/c", "/outside"})
            QVERIFY(makeRawFolder(m_root + QLatin1String(folder)));
        QVERIFY(makeRawFile(m_root + QLatin1String("/a/file"), "1"));
        const QString part(200, u'p');
        QString longPath = QStringLiteral("a");
        std::vector<std::unique_ptr<FolderHandle>> deep;
#ifdef Q_OS_UNIX
        QVERIFY(QFile::link(QStringLiteral("b"), m_root + QLatin1String("/a/link")));
        QVERIFY(QFile::link(QStringLiteral("../outside"), m_root + QLatin1String("/a/out")));
        deep.push_back(open(m_root + QLatin1String("/a")));
        for (int level = 0; level < 25; ++level) { // beyond what the system takes as one path
            FileError error;
            QVERIFY(!deep.back()->makeFolder(part, nullptr).isError());
            deep.push_back(deep.back()->openFolder(part, error));
            longPath += u'/' + part;
        }
#endif
        const auto root = open(m_root);
        QStringList paths{longPath, {}, QStringLiteral("a/x\u00e9"), QStringLiteral("a") + QChar(u'\0') + u'b'};
        for (const char *path : {"a",       "a/b",
                                 "a/b/c",   "a/b/c/missing",
                                 "missing", "missing/b",
                                 "a/file",  "a/file/x",
                                 "a/link",  "a/link/c",
                                 "a/out",   "..",
                                 "a/..",    "a/../outside",
                                 ".",       "a/./b",
                                 "a//b",    "/",
                                 "/a",      "a/"})
            paths.append(QString::fromLatin1(path));
        int reachable = 0;
        for (const QString &path : std::as_const(paths)) {
            FileError error;
            FileError plainError;
            const auto folder = root->openBelow(path, error);
            const auto plain = root->FolderHandle::openBelow(path, plainError);
            QVERIFY2(bool(folder) == bool(plain), qPrintable(path));
            QCOMPARE(error.kind, plainError.kind);
            if (!folder)
                continue;
            ++reachable;
            QCOMPARE(folder->self().node.identity, plain->self().node.identity);
            QVERIFY(folder->liesIn(*root) && !root->liesIn(*folder));
            const auto lineage = folder->lineage();
            QVERIFY(!lineage || (lineage->front() == folder->self().node.identity &&
                                 std::count(lineage->begin(), lineage->end(), *root->self().node.identity) == 1));
        }
        QVERIFY(reachable >= 4);
        for (; deep.size() > 1; deep.pop_back())
            QVERIFY(!deep[deep.size() - 2]->removeFolder(part).isError());
    }

    void knowsWhichNamesCanBe()
    {
        for (const char *name : {"a", ".hidden", "console", "com", "com10", "nulled.txt"})
            QVERIFY2(isPlainName(QString::fromLatin1(name)), name);
        for (const char *name : {"", ".", "..", "a/b"})
            QVERIFY2(!isPlainName(QString::fromLatin1(name)), name);
        for (const char *name :
             {"con", "NUL.txt", "com1", "LPT9.tar.gz", "aux ", "ends.", "ends ", "a\\b", "a:b", "a?"}) {
#ifdef Q_OS_WIN
            QVERIFY2(!isPlainName(QString::fromLatin1(name)), name);
#else
            QVERIFY2(isPlainName(QString::fromLatin1(name)), name);
#endif
        }
    }

private:
    static std::unique_ptr<FolderHandle> open(const QString &path)
    {
        FileError error;
        return FileLayer::native().openRoot(path, error);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_root;
};

VELMORA_TEST(FileLayerTest)
#include "file_layer_test.moc"
