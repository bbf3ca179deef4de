#include "folder/engine/folder_filter.h"
#include "folder_engine/test_tree.h"
#include "support/test_main.h"

using namespace velmora;
using namespace velmora::test;

namespace {

/// How to make a filter out of one that shows everything.
struct Setting {
    FolderSessionOptions options;
    QSet<QString> excludedNames;
    FolderViewLimits limits;
    QStringList systemFiles;
};

FolderDiffItem fileItem(const QString &name)
{
    FolderDiffItem item;
    item.name = name;
    item.leftPath = QLatin1String("/l/") + name;
    item.leftSize = 100;
    item.leftTime = TestTree::moment(0);
    item.setDiffStatus(FolderDiffStatus::LeftOnly);
    return item;
}

FolderFilter filterOf(const Setting &setting)
{
    return FolderFilter(setting.options, setting.excludedNames, setting.limits,
                        [files = setting.systemFiles](const QString &path) { return files.contains(path); });
}

} // namespace

Q_DECLARE_METATYPE(Setting)

class FolderFilterTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void showsByEachRule_data()
    {
        QTest::addColumn<Setting>("setting");
        QTest::addColumn<bool>("file");   // whether "sub/Main.cpp", 100 bytes, is shown
        QTest::addColumn<bool>("folder"); // whether "sub/Main.cpp" as a folder is

        const auto row = [](const char *name, bool file, bool folder, const std::function<void(Setting &)> &change) {
            Setting setting;
            change(setting);
            QTest::newRow(name) << setting << file << folder;
        };
        const QStringList cpp{QStringLiteral("*.CPP")};
        const QStringList other{QStringLiteral("*.h")};
        row("nothing set", true, true, [](Setting &) {});
        row("excluded name", false, false, [](Setting &s) { s.excludedNames = {QStringLiteral("Main.cpp")}; });
        row("excluded name, other case", true, true,
            [](Setting &s) { s.excludedNames = {QStringLiteral("main.cpp")}; });
        row("included", true, true, [&](Setting &s) { s.options.includeFiles = other + cpp; });
        row("not included", false, true, [&](Setting &s) { s.options.includeFiles = other; });
        row("excluded", false, true, [&](Setting &s) { s.options.excludeFiles = cpp; });
        row("excluded though included", false, true,
            [&](Setting &s) { s.options.includeFiles = s.options.excludeFiles = cpp; });
        row("excluded otherwise", false, true, [&](Setting &s) { s.options.otherExclude = cpp; });
        row("folder not included", true, false, [&](Setting &s) { s.options.includeFolders = other; });
        row("folder excluded", true, false, [&](Setting &s) { s.options.excludeFolders = cpp; });
        row("mask of the path", true, true,
            [](Setting &s) { s.options.excludeFiles = s.options.excludeFolders = {QStringLiteral("sub*")}; });
        row("system file", false, true, [](Setting &s) { s.systemFiles = {QStringLiteral("/l/sub/Main.cpp")}; });
        row("system files shown", true, true, [](Setting &s) {
            s.systemFiles = {QStringLiteral("/l/sub/Main.cpp")};
            s.options.excludeOsFiles = false;
        });
        row("format of it on", true, true, [](Setting &s) { s.options.fileFormats[0].on = true; });
        row("format of others on", false, true, [](Setting &s) { s.options.fileFormats[1].on = true; });
        for (const char *masks : {"", "*", "*.*", " *.* ", ";;", "*.cpp; *.h", "*.h;main.*"})
            row(qPrintable(QStringLiteral("bar \"%1\"").arg(QLatin1String(masks))), true, true,
                [=](Setting &s) { s.limits.masks = QString::fromLatin1(masks); });
        row("bar without it", false, true, [](Setting &s) { s.limits.masks = QStringLiteral("*.h;*.c"); });
        row("at the minimum", true, true, [](Setting &s) { s.limits.minimumSize = 100; });
        row("below the minimum", false, true, [](Setting &s) { s.limits.minimumSize = 101; });
        row("at the maximum", true, true, [](Setting &s) { s.limits.maximumSize = 100; });
        row("above the maximum", false, true, [](Setting &s) { s.limits.maximumSize = 99; });
        row("from its time", true, true, [](Setting &s) { s.limits.from = TestTree::moment(0); });
        row("from later", false, true, [](Setting &s) { s.limits.from = TestTree::moment(1); });
        row("to its time", true, true, [](Setting &s) { s.limits.to = TestTree::moment(0); });
        row("to earlier", false, true, [](Setting &s) { s.limits.to = TestTree::moment(-1); });
    }

    void showsByEachRule()
    {
        QFETCH(Setting, setting);
        QFETCH(bool, file);
        QFETCH(bool, folder);
        const FolderFilter filter = filterOf(setting);
        FolderDiffItem item = fileItem(QStringLiteral("sub/Main.cpp"));
        QCOMPARE(filter.shows(item), file);
        item.isDir = true;
        QCOMPARE(filter.shows(item), folder);
    }

    void goesByTheLargerSideAndTheLeftTime()
    {
        Setting setting;
        setting.limits.minimumSize = 200;
        FolderDiffItem item = fileItem(QStringLiteral("f"));
        item.rightSize = 300;
        QVERIFY(filterOf(setting).shows(item));

        setting.limits = {};
        setting.limits.from = TestTree::moment(5);
        item.rightTime = TestTree::moment(9);
        QVERIFY(!filterOf(setting).shows(item));
        item.leftTime = {};
        QVERIFY(filterOf(setting).shows(item));
        item.rightTime = {};
        QVERIFY(!filterOf(setting).shows(item));
    }

    void asksForAnAttributeOnce()
    {
        QStringList asked;
        const SystemFileTest test = makeCachedTest([&asked](const QString &path) {
            asked.append(path);
            return path == QLatin1String("s");
        });
        const SystemFileTest copy = test;
        for (int i = 0; i < 2; ++i) {
            QVERIFY(test(QStringLiteral("s")));
            QVERIFY(!copy(QStringLiteral("t")));
        }
        QCOMPARE(asked, (QStringList{QStringLiteral("s"), QStringLiteral("t")}));
    }

    void keepsWhatIsShownConsistent()
    {
        QList<FolderDiffItem> items;
        const auto add = [&items](const char *name, FolderDiffStatus status, bool isDir) {
            FolderDiffItem item;
            item.name = QString::fromLatin1(name);
            item.isDir = isDir;
            item.setDiffStatus(status);
            if (status != FolderDiffStatus::RightOnly)
                item.leftPath = QLatin1String("/l/") + item.name;
            if (status != FolderDiffStatus::LeftOnly || isDir)
                item.rightPath = QLatin1String("/r/") + item.name;
            items.append(item);
        };
        add("d", FolderDiffStatus::Different, true);
        add("d/a.o", FolderDiffStatus::Different, false);
        add("d/b.c", FolderDiffStatus::LeftOnly, false);
        add("mixed", FolderDiffStatus::Different, true); // a folder on one side, a file on the other
        add("o", FolderDiffStatus::Different, true);
        add("o/x.o", FolderDiffStatus::Different, false);
        add("out", FolderDiffStatus::Different, true);
        add("out/in", FolderDiffStatus::Different, true);
        add("out/in/y.c", FolderDiffStatus::Different, false);
        add("outer.c", FolderDiffStatus::Same, false);
        Setting setting;
        setting.options.excludeFiles = {QStringLiteral("*.o")};
        setting.options.excludeFolders = {QStringLiteral("out")};
        QCOMPARE(drawn(shownItems(items, filterOf(setting))),
                 (QStringList{QStringLiteral("<d/"), QStringLiteral("<d/b.c"), QStringLiteral("!mixed/"),
                              QStringLiteral("=o/"), QStringLiteral("=outer.c")}));
        QCOMPARE(shownItems(items, filterOf({})), items);
    }
};

VELMORA_TEST(FolderFilterTest)
#include "folder_filter_test.moc"
