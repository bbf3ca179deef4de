#include "folder/engine/folder_engine.h"
#include "folder/engine/folder_jobs.h"
#include "platform/long_path_win.h"
#include "platform/system_attribute.h"
#include "support/diff_items.h"
#include "support/test_main.h"

#include <QTemporaryDir>

#include <windows.h>

using namespace velmora;

class SystemAttributeTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void systemFilesAreListedAndHiddenByTheOption()
    {
        const QTemporaryDir folder;
        const auto path = [&folder](const char *name) { return folder.filePath(QLatin1String(name)); };
        for (const char *name : {"plain", "system", "hidden", "both"}) {
            QFile file(path(name));
            QVERIFY(file.open(QIODevice::WriteOnly));
        }
        QVERIFY(QDir(folder.path()).mkdir(QStringLiteral("folder")));
        QVERIFY(mark(path("system"), FILE_ATTRIBUTE_SYSTEM));
        QVERIFY(mark(path("hidden"), FILE_ATTRIBUTE_HIDDEN));
        QVERIFY(mark(path("both"), FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_HIDDEN));
        QVERIFY(mark(path("folder"), FILE_ATTRIBUTE_SYSTEM));

        QVERIFY(isSystemFile(path("system")));
        QVERIFY(isSystemFile(path("both")));
        QVERIFY(!isSystemFile(path("plain")));
        QVERIFY(!isSystemFile(path("hidden")));
        QVERIFY(!isSystemFile(path("folder")));
        QVERIFY(!isSystemFile(path("nothing")));

        const auto items = compareFolderLevel(test::between(folder.path(), path("nothing"), CompareMethod::Binary));
        QCOMPARE(names(items), QStringLiteral("folder plain system"));
        FolderSessionOptions options;
        options.excludeOsFiles = true;
        const auto shown = [&] {
            FolderTree tree = FolderTree::inGivenOrder(items);
            tree.setVerdicts(
                FolderTree::judge(items, FolderSpec{localFolders(folder.path(), {}), options, {}, {}}.filter(), {}));
            return names(shownItems(tree));
        };
        QCOMPARE(shown(), QStringLiteral("folder plain"));
        options.excludeOsFiles = false;
        QCOMPARE(shown(), QStringLiteral("folder plain system"));
    }

private:
    static bool mark(const QString &path, DWORD attributes)
    {
        return ::SetFileAttributesW(longPath(path).c_str(), attributes) != FALSE;
    }

    static QString names(const QList<FolderDiffItem> &items)
    {
        QStringList result;
        for (const FolderDiffItem &item : items)
            result.append(item.name);
        return result.join(u' ');
    }
};

VELMORA_TEST(SystemAttributeTest)
#include "system_attribute_win_test.moc"
