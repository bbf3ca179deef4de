#include "folder/engine/folder_filter.h"
#include "folder/engine/folder_tree.h"
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

    [[nodiscard]] FolderFilter filter() const
    {
        return FolderFilter(options, {excludedNames, {}, limits},
                            [files = systemFiles](Side, const QString &path) { return files.contains(path); });
    }
};

FolderDiffItem item(const char *name, FolderDiffStatus status, bool isDir)
{
    FolderDiffItem item;
    item.name = word(name);
    item.isDir = isDir;
    item.setDiffStatus(status);
    if (status != FolderDiffStatus::RightOnly)
        item.leftPath = QLatin1String("/l/") + item.name;
    if (status != FolderDiffStatus::LeftOnly)
        item.rightPath = QLatin1String("/r/") + item.name;
    return item;
}

/// A left file of 100 bytes.
FolderDiffItem mainFile()
{
    FolderDiffItem file = item("sub/Main.cpp", FolderDiffStatus::LeftOnly, false);
    file.leftSize = 100;
    file.leftTime = TestTree::moment(0);
    return file;
}

} // namespace

class FolderFilterTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void showsByEachRule()
    {
        /// Whether `mainFile()` is shown, and whether a folder in its place is.
        const auto check = [](const char *name, bool file, bool folder, const std::function<void(Setting &)> &change) {
            Setting setting;
            change(setting);
            FolderDiffItem entry = mainFile();
            QVERIFY2(setting.filter().shows(entry) == file, name);
            entry.isDir = true;
            QVERIFY2(setting.filter().shows(entry) == folder, name);
        };
        const QStringList cpp = words("*.CPP");
        const QStringList other = words("*.h");
        check("nothing set", true, true, [](Setting &) {});
        check("excluded name", false, false, [](Setting &s) { s.excludedNames = {word("Main.cpp")}; });
        check("excluded in other case", true, true, [](Setting &s) { s.excludedNames = {word("main.cpp")}; });
        check("included", true, true, [&](Setting &s) { s.options.includeFiles = other + cpp; });
        check("not included", false, true, [&](Setting &s) { s.options.includeFiles = other; });
        check("excluded", false, true, [&](Setting &s) { s.options.includeFiles = s.options.excludeFiles = cpp; });
        check("excluded otherwise", false, true, [&](Setting &s) { s.options.otherExclude = cpp; });
        check("folder not included", true, false, [&](Setting &s) { s.options.includeFolders = other; });
        check("folder excluded", true, false, [&](Setting &s) { s.options.excludeFolders = cpp; });
        check("mask of the path", true, true,
              [](Setting &s) { s.options.excludeFiles = s.options.excludeFolders = words("sub*"); });
        check("system file", false, true, [](Setting &s) { s.systemFiles = words("/l/sub/Main.cpp"); });
        check("system files shown", true, true, [](Setting &s) {
            s.systemFiles = words("/l/sub/Main.cpp");
            s.options.excludeOsFiles = false;
        });
        check("format of it on", true, true, [](Setting &s) { s.options.fileFormats[0].on = true; });
        check("format of others on", false, true, [](Setting &s) { s.options.fileFormats[1].on = true; });
        for (const char *masks : {"", "*", "*.*", " *.* ", ";;", "*.cpp; *.h", "*.h;main.*"})
            check(masks, true, true, [=](Setting &s) { s.limits.masks = word(masks); });
        check("bar without it", false, true, [](Setting &s) { s.limits.masks = word("*.h;*.c"); });
        check("at the limits", true, true, [](Setting &s) {
            s.limits = {{}, 100, 100, TestTree::moment(0), TestTree::moment(0)};
        });
        check("below the minimum", false, true, [](Setting &s) { s.limits.minimumSize = 101; });
        check("above the maximum", false, true, [](Setting &s) { s.limits.maximumSize = 99; });
        check("from later", false, true, [](Setting &s) { s.limits.from = TestTree::moment(1); });
        check("to earlier", false, true, [](Setting &s) { s.limits.to = TestTree::moment(-1); });
    }

    void rangesLeaveTheMasksAndIgnoringGoesBothWays()
    {
        ViewFilters filters;
        filters.limits.masks = word("*.c");
        FolderViewLimits ranges;
        ranges.minimumSize = 1;
        QVERIFY(!filters.hasRanges());
        filters.takeRanges(ranges);
        QVERIFY(filters.hasRanges());
        QCOMPARE(filters.limits.masks, word("*.c"));
        filters.toggleIgnored(words("a|b"));
        filters.toggleIgnored(words("b|c"));
        QCOMPARE(filters.ignoredNames, (QSet<QString>{word("a"), word("c")}));
    }

    void aSystemFileOnTheRightOnlyIsHidden()
    {
        Setting setting;
        setting.systemFiles = words("/r/x");
        QVERIFY(!setting.filter().shows(item("x", FolderDiffStatus::RightOnly, false)));
        QVERIFY(setting.filter().shows(item("y", FolderDiffStatus::RightOnly, false)));
    }

    void goesByTheLargerSideAndTheLeftTime()
    {
        Setting setting;
        setting.limits.minimumSize = 200;
        FolderDiffItem entry = mainFile();
        entry.rightSize = 300;
        QVERIFY(setting.filter().shows(entry));

        setting.limits.from = TestTree::moment(5);
        entry.rightTime = TestTree::moment(9);
        QVERIFY(!setting.filter().shows(entry));
        entry.leftTime = {};
        QVERIFY(setting.filter().shows(entry));
        entry.rightTime = {};
        QVERIFY(!setting.filter().shows(entry));
    }

    void keepsWhatIsShownConsistent()
    {
        using enum FolderDiffStatus;
        const QList<FolderDiffItem> items{
            item("d", Different, true),      item("d/a.o", Different, false),      item("d/b.c", LeftOnly, false),
            item("mixed", Different, true), // a folder on one side only
            item("o", Different, true),      item("o/x.o", Different, false),      item("out", Different, true),
            item("out/in", Different, true), item("out/in/y.c", Different, false), item("outer.c", Same, false)};
        Setting setting;
        setting.options.excludeFiles = words("*.o");
        setting.options.excludeFolders = words("out");
        const auto shown = [&items](const FolderFilter &filter) {
            FolderTree tree = FolderTree::inGivenOrder(items);
            tree.setVerdicts(FolderTree::judge(items, filter, {}));
            tree.rollUp();
            return shownItems(tree);
        };
        QCOMPARE(drawn(shown(setting.filter())), words("<d/|<d/b.c|!mixed/|=o/|=outer.c"));
        QCOMPARE(shown(Setting().filter()), items);
    }
};

VELMORA_TEST(FolderFilterTest)
#include "folder_filter_test.moc"
