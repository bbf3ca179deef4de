#include "vfs/archive/archive_test.h"

#include "archive/made_archive.h"
#include "core/preferred_charsets.h"
#include "core/text_transcode.h"
#include "folder/engine/folder_engine.h"
#include "support/test_main.h"
#include "vfs/archive/archive_layout.h"
#include "vfs/place/tree_path.h"
#include "vfs/safe_name.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QScopeGuard>
#include <QTemporaryDir>

#include <utility>

using namespace velmora;
using namespace velmora::test;

namespace {

class Folder {
public:
    [[nodiscard]] QString put(const QString &name, const QByteArray &bytes) const
    {
        const QString path = m_folder.filePath(name);
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() ? path : QString();
    }
    [[nodiscard]] QString path(const QString &name) const { return m_folder.filePath(name); }

private:
    QTemporaryDir m_folder;
};

TreeAt opened(const QString &path, const ArchiveLimits &limits = {}, const QByteArray &password = {})
{
    Progress silent;
    ArchiveRequest request{path, password, NestedArchives::BecomeFolders};
    request.limits = limits;
    return treeAt(request, {}, silent);
}

QStringList differences(const TreeFolder &left, const TreeFolder &right, QList<FolderProblem> *problems = nullptr)
{
    FolderInput input{{left, right}};
    QList<FolderDiffItem> items = compareFolderTree(input, {}, {nullptr, problems});
    readUnread(input, items, {}, {nullptr, problems});
    QStringList names;
    for (const FolderDiffItem &item : std::as_const(items)) {
        if (item.diffStatus() != FolderDiffStatus::Same)
            names.append(item.name);
    }
    return names;
}

QList<ArchiveProblem::Kind> kinds(const QList<ArchiveProblem> &problems)
{
    QList<ArchiveProblem::Kind> result;
    for (const ArchiveProblem &problem : problems)
        result.append(problem.kind);
    return result;
}

/// All that is below a folder.
QStringList everythingIn(const QString &folder)
{
    QStringList found;
    for (QDirIterator all(folder, QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System,
                          QDirIterator::Subdirectories);
         all.hasNext();)
        found.append(QDir(folder).relativeFilePath(all.next()));
    found.sort();
    return found;
}

} // namespace

class ArchivesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    /// The same files in every format, and unpacked: no two differ; with one byte changed that file does.
    void everyFormatHoldsTheSameTree()
    {
        const Folder folder;
        QList<TreeFolder> trees;
        for (const auto &[format, filter] : {std::pair{"zip", "none"},
                                             {"ustar", "gzip"},
                                             {"gnutar", "xz"},
                                             {"pax", "zstd"},
                                             {"pax", "bzip2"},
                                             {"gnutar", "lz4"},
                                             {"newc", "gzip"},
                                             {"7zip", "none"},
                                             {"iso9660", "none"}}) {
            const QString name = QString::fromLatin1(format) + QString::fromLatin1(filter); // no ending that tells
            const TreeAt tree = opened(folder.put(name, packed(plainFiles, format, filter)));
            QVERIFY2(tree.folder.isThere() && tree.opening.problems.isEmpty(), format);
            trees.append(tree.folder);
        }
        Progress silent;
        const auto &zip = static_cast<const ArchiveSource &>(*trees.first().source);
        const QString unpacked = folder.path(QStringLiteral("unpacked"));
        QVERIFY(QDir().mkpath(unpacked));
        const LayOutResult laidOut = layOutEntries(
            zip, {QStringLiteral("/docs"), QStringLiteral("/empty"), QStringLiteral("/link")}, unpacked, {}, silent);
        QCOMPARE(laidOut.files, 4);
        trees.append(opened(unpacked).folder);
        auto changed = plainFiles;
        changed[1].content[299'999] = 'c';
        const TreeFolder other = opened(folder.put(QStringLiteral("changed"), packed(changed, "ustar", "gzip"))).folder;
        for (const TreeFolder &left : trees) {
            for (const TreeFolder &right : trees)
                QCOMPARE(left.shown() + differences(left, right).join(u',') + right.shown(),
                         left.shown() + right.shown());
            QCOMPARE(differences(left, other).filter(QLatin1String("b.bin")),
                     QStringList(QStringLiteral("docs/deep/b.bin")));
            // By other methods contents are read rather than known.
            FolderInput binary{{left, other}};
            binary.method = CompareMethod::Crc;
            int different = 0;
            for (const FolderDiffItem &item : compareFolderTree(binary))
                different += !item.isDir && item.diffStatus() != FolderDiffStatus::Same;
            QCOMPARE(different, 1);
        }
    }

    void whatLiesWithinOpensAsFolders()
    {
        const Folder folder;
        const QByteArray inner = packed(plainFiles, "zip");
        const QByteArray middle = packed({{"in.zip", inner}, {"notes.gz", "no archive"}}, "ustar", "gzip");
        const QString outer = folder.put(QStringLiteral("outer"), packed({{"m.tgz", middle}, {"x", "1"}}, "zip"));
        const TreeFolder deep = opened(outer + QStringLiteral("/m.tgz/in.zip")).folder;
        QVERIFY(deep.isThere());
        QCOMPARE(differences(deep, opened(folder.put(QStringLiteral("inner"), inner)).folder), QStringList());
        QCOMPARE(opened(outer + QStringLiteral("/m.tgz/notes.gz")).opening.fault, ArchiveFault::Missing);
        ArchiveLimits shallow;
        shallow.nesting = 1;
        QVERIFY(kinds(opened(outer, shallow).opening.problems).contains(ArchiveProblem::Kind::NestedUnreadable));
        Progress silent;
        const auto &archive = static_cast<const ArchiveSource &>(*deep.source);
        QCOMPARE(testArchive(archive, {}, silent).files, 7);
    }

    /// Nothing of it gets out, whatever is asked for, and each kind is told.
    void hostileNamesAndLinksStayInside()
    {
        using enum ArchiveProblem::Kind;
        const Folder folder;
        const QList<Made> files{{"/abs", "1"},
                                {"../up", "2"},
                                {"a/../../up", "3"},
                                {"C:/x", "4"},
                                {"out", "", "../../etc"},
                                {"root", "", "/etc"},
                                {"out/passwd", "5"},
                                {"round", "", "round"},
                                {"CON", "6"},
                                {"same", "7"},
                                {"same", "8"},
                                {"fine", "9"},
                                {"self/in", "", "."},
                                {"gone", "", "nowhere"}};
        for (const char *format : {"ustar", "zip"}) {
            const TreeAt tree = opened(folder.put(QString::fromLatin1(format), packed(files, format)));
            QVERIFY(tree.folder.isThere());
            const auto problems = kinds(tree.opening.problems);
            QVERIFY(problems.contains(NameLeadsOut) && problems.contains(LinkLeadsOut) && problems.contains(SameName));
            const auto &archive = static_cast<const ArchiveSource &>(*tree.folder.source);
            QStringList all;
            for (qint32 node = 1; node < archive.tree().count(); ++node)
                all.append(archive.tree().path(node));
            all += {QStringLiteral("/../up"), QStringLiteral("/out/passwd"), QStringLiteral("/root/passwd")};
            const QString target = folder.path(QString::fromLatin1(format) + QStringLiteral("-out/in"));
            QVERIFY(QDir().mkpath(target));
            Progress silent;
            const LayOutResult result = layOutEntries(archive, all, target, {}, silent);
            QVERIFY(kinds(result.problems).contains(NameUnfit));
            const QStringList written = everythingIn(QFileInfo(target).path());
            for (const QString &name : written)
                QVERIFY2(!QFileInfo(QFileInfo(target).path() + u'/' + name).isSymLink(), qPrintable(name));
            QVERIFY(written.contains(QStringLiteral("in/fine")) && !written.contains(QStringLiteral("in/CON")));
            QVERIFY(std::all_of(written.begin(), written.end(),
                                [](const QString &name) { return name == u"in" || name.startsWith(u"in/"); }));
        }
        QVERIFY(canStandInFolder(u"a b.c") && !canStandInFolder(u"lpt1.txt") && !canStandInFolder(u"a:b"));
        QVERIFY(!canStandInFolder(u"..") && !canStandInFolder(QString(128, u'é')));
    }

    void limitsEndWithTheirProblems()
    {
        using enum ArchiveProblem::Kind;
        const Folder folder;
        const QString bomb =
            folder.put(QStringLiteral("bomb"), packed({{"zeros", QByteArray(4 << 20, '\0')}}, "ustar", "gzip"));
        ArchiveLimits limits;
        limits.unpacked = 1 << 20;
        limits.expansion = 1;
        QCOMPARE(kinds(opened(bomb, limits).opening.problems), QList{TooMuchContent});
        limits = {};
        limits.within = 100;
        for (const char *format : {"zip", "ustar"}) {
            const QByteArray inner = packed(plainFiles, "ustar");
            const QString outer =
                folder.put(QStringLiteral("outer"), packed({{"in.tar", inner}, {"t.tar", inner}}, format));
            QCOMPARE(kinds(opened(outer, limits).opening.problems), QList{NestedTooLarge});
        }
        limits = {};
        limits.entries = 2;
        limits.depth = 1;
        for (const char *format : {"zip", "ustar"}) {
            const auto found = opened(folder.put(QStringLiteral("many"), packed(plainFiles, format)), limits);
            QCOMPARE(kinds(found.opening.problems), (QList{TooManyEntries, TooDeep}));
        }
    }

    /// What is unpacked as it is read is read in any order, and its end only when it is what was packed.
    void largeEntriesAreReadForwardAndBack()
    {
        const Folder folder;
        QByteArray bytes(40 << 20, Qt::Uninitialized);
        for (qsizetype i = 0; i < bytes.size(); ++i)
            bytes[i] = char((i * 7 + i / 1000) & 0x3F);
        QByteArray zip = packed({{"big", bytes}}, "zip");
        const auto read = [&](qint64 offset, qint64 length) {
            const TreeAt found = opened(folder.put(QStringLiteral("zip"), zip));
            const auto opener = found.opening.source->makeOpener();
            const auto file = opener->open(QStringLiteral("/big"), OpenHint::Unknown);
            QByteArray all;
            for (const qint64 at : {qint64(0), qint64(3000), offset, offset - 100, qint64(1)}) {
                QByteArray piece(length, '\0');
                const FilePiece got = file->readAt(at, piece.data(), length);
                all += got.failed ? QByteArray("failed") : piece.first(got.length);
            }
            return all;
        };
        for (const qint64 offset : {qint64(bytes.size() - 50), qint64(bytes.size() + 100)}) {
            QByteArray wanted;
            for (const qint64 at : {qint64(0), qint64(3000), offset, offset - 100, qint64(1)})
                wanted += bytes.mid(at, 5000);
            QCOMPARE(read(offset, 5000), wanted);
        }
        zip[zip.size() / 2] = char(zip[zip.size() / 2] ^ 1);
        QVERIFY(read(bytes.size() - 50, 5000).contains("failed"));
    }

    /// Cut anywhere, an archive says that something is missing; what is there is right.
    void damagedArchivesTellWhatIsMissing()
    {
        const Folder folder;
        for (const auto &[format, filter] : {std::pair{"zip", "none"}, {"ustar", "gzip"}, {"newc", "none"}}) {
            const QByteArray whole = packed(plainFiles, format, filter);
            const TreeFolder complete = opened(folder.put(QStringLiteral("whole"), whole)).folder;
            for (qsizetype cut = whole.size() / 7; cut < whole.size() - 600; cut += whole.size() / 7) {
                const TreeAt tree = opened(folder.put(QStringLiteral("cut"), whole.first(cut)));
                QVERIFY(!tree.folder.isThere() || !tree.opening.problems.isEmpty());
                QList<FolderProblem> unread;
                if (tree.folder.isThere())
                    QVERIFY(!differences(complete, tree.folder, &unread).isEmpty());
            }
        }
        // What is known by its beginning is never taken for something else.
        for (const char *format : {"7zip", "zip", "iso9660", "newc", "ustar", "xar", "ar"}) {
            for (const char *filter : {"none", "gzip", "xz", "zstd", "bzip2", "lz4"}) {
                const QByteArray whole = packed(plainFiles.mid(0, 2), format, filter);
                const qsizetype cut = qMax(
                    qstrcmp(format, "iso9660") == 0 && qstrcmp(filter, "none") == 0 ? 34000 : 270, whole.size() / 2);
                if (cut >= whole.size())
                    continue; // too short to be cut
                const TreeAt tree = opened(folder.put(QStringLiteral("half"), whole.first(cut)));
                QVERIFY2(tree.folder.isThere() ? !tree.opening.problems.isEmpty()
                                               : tree.opening.fault == ArchiveFault::Damaged,
                         qPrintable(QLatin1String(format) + u' ' + QLatin1String(filter)));
            }
        }
        // One changed byte of a content, and two entries on the same bytes.
        QByteArray zip = packed({{"a", "first content"}, {"b", "other content"}}, "zip");
        QByteArray changed = packed({{"a", QByteArray(5000, 'x')}}, "zip");
        const qsizetype data = 30 + changed.at(26) + changed.at(28); // behind the header of the entry
        changed[data + 2] = char(changed.at(data + 2) ^ 0x55);
        Progress silent;
        const TreeAt damaged = opened(folder.put(QStringLiteral("changed"), changed));
        QCOMPARE(testArchive(static_cast<const ArchiveSource &>(*damaged.folder.source), {}, silent).problems.size(),
                 1);
        const qsizetype second = zip.lastIndexOf("PK\1\2");
        const qsizetype first = zip.lastIndexOf("PK\1\2", second - 1);
        zip.replace(second + 42, 4, zip.mid(first + 42, 4));
        QVERIFY(kinds(opened(folder.put(QStringLiteral("over"), zip)).opening.problems)
                    .contains(ArchiveProblem::Kind::Overlapping));
    }

    void namesInOldEncodingsAreRead()
    {
        if (!canTranscode("GB18030"))
            QSKIP("this system does not know the encoding"); // Wine does not
        setInterfaceLanguage(QStringLiteral("zh_CN"));       // one name is too little to go by alone
        const auto restored = qScopeGuard([] { setInterfaceLanguage({}); });
        const Folder folder;
        const QByteArray chinese = QByteArray::fromHex("cec4b5b5cbb5c3f7cae92fd2bbb8f6cec4bcfe2e747874"); // GB 18030
        const TreeAt tree =
            opened(folder.put(QStringLiteral("old"), packed({{chinese, "1"}, {"ascii", "2"}}, "ustar")));
        QVERIFY(tree.folder.source->describe(QStringLiteral("/文档说明书/一个文件.txt"), HiddenEntries::Listed));
    }
};

VELMORA_TEST(ArchivesTest)
#include "archive_test.moc"
