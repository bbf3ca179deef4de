#include "settings/options/folder_presets.h"
#include "settings/options/folder_session_options.h"
#include "settings/options/folder_settings_store.h"
#include "support/test_main.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QSettings>
#include <QTemporaryDir>

using namespace velmora;

namespace {

FolderSessionOptions unusualOptions()
{
    FolderSessionOptions options;
    options.leftReadOnly = true;
    options.rightReadOnly = true;
    options.includeFiles = {QStringLiteral("*.c"), QStringLiteral("ü;")};
    options.excludeFiles = {QStringLiteral("x*")};
    options.includeFolders = {QStringLiteral("src")};
    options.excludeFolders = {QStringLiteral(".git"), QStringLiteral("build")};
    options.otherExclude = {QStringLiteral("*~")};
    options.excludeOsFiles = false;
    options.alignOverrides = {{QStringLiteral("a*"), QStringLiteral("b*")}, {QString(), QStringLiteral("c")}};
    options.compareBasis = 2;
    options.timeToleranceSec = 3600;
    options.showLogPanel = false;
    options.showFilterBar = false;
    options.fileFormats = {{QStringLiteral("Mine"), QStringLiteral("*.m;*.n"), true}};
    return options;
}

QJsonObject json(const char *text)
{
    return QJsonDocument::fromJson(text).object();
}

} // namespace

class FolderOptionsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_settingsFile = m_folder->filePath(QStringLiteral("settings.ini"));
    }

    void writesTheKeysOfTheFormat()
    {
        const QJsonObject object = toJson(unusualOptions(), {QStringLiteral("z"), QStringLiteral("a")}, {});
        QCOMPARE(
            QJsonDocument(object).toJson(QJsonDocument::Compact),
            "{\"alignOverrides\":[{\"left\":\"a*\",\"right\":\"b*\"},{\"left\":\"\",\"right\":\"c\"}],"
            "\"compareBasis\":2,\"excludeFiles\":[\"x*\"],\"excludeFolders\":[\".git\",\"build\"],"
            "\"excludeOsFiles\":false,\"excludedNames\":[\"a\",\"z\"],\"includeFiles\":[\"*.c\",\"ü;\"],"
            "\"includeFolders\":[\"src\"],\"leftReadOnly\":true,\"rightReadOnly\":true,\"timeToleranceSec\":3600}");
        QVERIFY(!toJson({}, {}, {}).contains(QLatin1String("excludedNames")));
        QVERIFY(toJson({}, {}, {QStringLiteral("n")}).contains(QLatin1String("ignoredNames")));
    }

    void readsWhatItWrites()
    {
        const QSet<QString> excluded{QStringLiteral("e")};
        const QSet<QString> ignored{QStringLiteral("i"), QStringLiteral("j")};
        FolderSessionOptions expected = unusualOptions();
        FolderSessionOptions options;
        QSet<QString> readExcluded{QStringLiteral("old")};
        QSet<QString> readIgnored;
        fromJson(toJson(expected, excluded, ignored), options, readExcluded, readIgnored);
        const FolderSessionOptions fresh;
        expected.otherExclude = fresh.otherExclude; // these do not travel
        expected.showLogPanel = fresh.showLogPanel;
        expected.showFilterBar = fresh.showFilterBar;
        expected.fileFormats = fresh.fileFormats;
        QCOMPARE(options, expected);
        QCOMPARE(readExcluded, excluded);
        QCOMPARE(readIgnored, ignored);
    }

    void leavesAloneWhatIsMissingOrOfAnotherType()
    {
        const FolderSessionOptions before = unusualOptions();
        const QSet<QString> namesBefore{QStringLiteral("n")};
        for (const char *text : {"{}", "{\"leftReadOnly\":1,\"timeToleranceSec\":\"5\",\"includeFiles\":\"*.c\","
                                       "\"alignOverrides\":{},\"excludedNames\":null,\"compareBasis\":1.5}"}) {
            FolderSessionOptions options = before;
            QSet<QString> excluded = namesBefore;
            QSet<QString> ignored = namesBefore;
            fromJson(json(text), options, excluded, ignored);
            QCOMPARE(options, before);
            QCOMPARE(excluded, namesBefore);
            QCOMPARE(ignored, namesBefore);
        }
    }

    void clearsListsThatAreEmpty()
    {
        FolderSessionOptions options = unusualOptions();
        QSet<QString> excluded{QStringLiteral("n")};
        QSet<QString> ignored;
        fromJson(json("{\"includeFiles\":[],\"alignOverrides\":[7],\"excludedNames\":[]}"), options, excluded, ignored);
        QCOMPARE(options.includeFiles, QStringList());
        QCOMPARE(options.alignOverrides, QList<ManualAlignRule>{ManualAlignRule()});
        QVERIFY(excluded.isEmpty());
        QCOMPARE(options.excludeFiles, unusualOptions().excludeFiles);
    }

    void takesUnknownMethodsForRules()
    {
        for (const qint32 basis : {0, 3, -1, 99})
            QCOMPARE(compareMethod(basis), CompareMethod::Rules);
        QCOMPARE(compareMethod(1), CompareMethod::Crc);
        QCOMPARE(compareMethod(2), CompareMethod::Binary);
    }

    void appliesPresets_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("basis"); // -1: unknown
        QTest::addColumn<int>("tolerance");

        const auto row = [](const char *name, int basis, int tolerance) {
            QTest::newRow(name) << QString::fromLatin1(name) << basis << tolerance;
        };
        row("@preset/folder/vm-rules", 0, 2);
        row("@preset/folder/vm-crc", 1, 3600);
        row("@preset/folder/vm-binary", 2, 3600);
        row("@preset/folder/flibelag-rules", 0, 2);
        row("@preset/folder/flibelag-crc", 1, 3600);
        row("@preset/folder/flibelag-binary", 2, 3600);
        row("@preset/folder/VM-rules", -1, 0);
        row("@preset/folder/vm-rule", -1, 0);
        row("", -1, 0);
    }

    void appliesPresets()
    {
        QFETCH(QString, name);
        QFETCH(int, basis);
        QFETCH(int, tolerance);
        FolderSessionOptions expected = unusualOptions();
        FolderSessionOptions options = expected;
        QCOMPARE(applyFolderPreset(name, options), basis >= 0);
        if (basis >= 0) {
            expected.compareBasis = basis;
            expected.timeToleranceSec = tolerance;
        }
        QCOMPARE(options, expected);
    }

    void hasDefaultsForAnEmptyStore()
    {
        QSettings settings(m_settingsFile, QSettings::IniFormat);
        const FolderSettingsStore store(settings);
        QCOMPARE(store.defaults(), StoredFolderSet());
        QVERIFY(store.defaults().options.excludeOsFiles);
        QCOMPARE(store.defaults().options.fileFormats.size(), 11);
        QCOMPARE(store.defaults().options.fileFormats.first().mask,
                 QStringLiteral("*.c;*.cc;*.cpp;*.cs;*.h;*.hpp;*.m"));
        QVERIFY(store.presetNames().isEmpty());
        QVERIFY(!store.preset(QStringLiteral("none")));
    }

    void storesSets()
    {
        const StoredFolderSet set{QStringLiteral("what for"), unusualOptions(),
                                  QDateTime(QDate(2024, 5, 6), QTime(7, 8, 9))};
        const QStringList names{QStringLiteral("a/b\\c"), QStringLiteral("Ä %2F"), QStringLiteral("plain")};
        {
            QSettings settings(m_settingsFile, QSettings::IniFormat);
            FolderSettingsStore store(settings);
            store.setDefaults(set);
            for (const QString &name : names)
                store.setPreset(name, set);
            store.setPreset({}, set);
        }
        QSettings settings(m_settingsFile, QSettings::IniFormat);
        FolderSettingsStore store(settings);
        QCOMPARE(store.defaults(), set);
        QStringList stored = store.presetNames();
        QCOMPARE(stored.size(), 3);
        for (const QString &name : names) {
            QVERIFY(stored.contains(name));
            QCOMPARE(*store.preset(name), set);
        }
        // A shorter list leaves nothing of the longer one.
        StoredFolderSet shorter = set;
        shorter.options.alignOverrides.removeLast();
        shorter.options.fileFormats.clear();
        store.setPreset(names.last(), shorter);
        QCOMPARE(*store.preset(names.last()), shorter);
        for (const QString &name : names)
            store.removePreset(name);
        QVERIFY(store.presetNames().isEmpty());
        QCOMPARE(store.defaults(), set);
    }

    void passesOverDamagedLists()
    {
        QSettings settings(m_settingsFile, QSettings::IniFormat);
        settings.setValue(QStringLiteral("FolderCompare/Defaults/formatCount"), 2'000'000'000);
        settings.setValue(QStringLiteral("FolderCompare/Defaults/format0.name"), QStringLiteral("one"));
        settings.setValue(QStringLiteral("FolderCompare/Defaults/alignCount"), -5);
        const FolderSessionOptions options = FolderSettingsStore(settings).defaults().options;
        QCOMPARE(options.fileFormats, (QList<FileFormatGroup>{{QStringLiteral("one"), QString(), false}}));
        QVERIFY(options.alignOverrides.isEmpty());
    }

    void remembersTheLatestPaths()
    {
        QSettings settings(m_settingsFile, QSettings::IniFormat);
        FolderSettingsStore store(settings);
        for (int i = 0; i < FolderSettingsStore::recentPathLimit + 3; ++i)
            store.addRecentPath(QString::number(i));
        store.addRecentPath(QStringLiteral("5"));
        QCOMPARE(store.recentPaths().size(), FolderSettingsStore::recentPathLimit);
        QCOMPARE(store.recentPaths().first(), QStringLiteral("5"));
        QCOMPARE(store.recentPaths().count(QStringLiteral("5")), 1);
    }

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_settingsFile;
};

VELMORA_TEST(FolderOptionsTest)
#include "folder_options_test.moc"
