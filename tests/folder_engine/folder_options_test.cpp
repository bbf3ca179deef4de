#include "folder_engine/test_tree.h"
#include "settings/options/folder_presets.h"
#include "settings/options/folder_session_options.h"
#include "settings/options/folder_settings_store.h"
#include "support/test_main.h"
#include "support/unusual_folder_options.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QSettings>

using namespace velmora;
using namespace velmora::test;

namespace {

/// A record with the two sets of names that travel with it.
struct Travelling {
    FolderSessionOptions options;
    QSet<QString> excluded;
    QSet<QString> ignored;

    void read(const char *json) { fromJson(QJsonDocument::fromJson(json).object(), options, excluded, ignored); }
    friend bool operator==(const Travelling &, const Travelling &) = default;
};

} // namespace

class FolderOptionsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_settings = std::make_unique<QSettings>(m_tree.path(word("settings.ini")), QSettings::IniFormat); }
    void cleanup() { m_settings->clear(); }

    void writesAndReadsTheFormat()
    {
        const char *const json =
            "{\"alignOverrides\":[{\"left\":\"*.c\",\"right\":\"*.cpp\"},{\"left\":\"\",\"right\":\"x\"}],"
            "\"compareBasis\":2,\"excludeFiles\":[\" *.o \",\"\"],\"excludeFolders\":[\".git\",\"a/b\"],"
            "\"excludeOsFiles\":false,\"excludedNames\":[\"a\",\"z\"],\"includeFiles\":[\"*.cpp\",\"a;b\",\"ü\"],"
            "\"includeFolders\":[\"src[\"],\"leftReadOnly\":true,\"rightReadOnly\":true,\"showHidden\":true,"
            "\"timeToleranceSec\":90}";
        const QJsonObject object = toJson(unusualFolderOptions(), {word("z"), word("a")}, {});
        QCOMPARE(QJsonDocument(object).toJson(QJsonDocument::Compact), json);
        QVERIFY(!toJson({}, {}, {}).contains(word("excludedNames")));
        QVERIFY(!toJson({}, {}, {}).contains(word("showHidden")));
        QVERIFY(toJson({}, {}, {word("n")}).contains(word("ignoredNames")));

        Travelling expected{unusualFolderOptions(), {word("a"), word("z")}, {word("kept")}};
        const FolderSessionOptions fresh;
        expected.options.otherExclude = fresh.otherExclude; // these do not travel
        expected.options.showLogPanel = expected.options.showFilterBar = true;
        expected.options.fileFormats = fresh.fileFormats;
        Travelling found{{}, {word("old")}, {word("kept")}};
        found.read(json);
        QVERIFY(found == expected);
    }

    void leavesAloneWhatIsMissingOrOfAnotherType()
    {
        const Travelling before{unusualFolderOptions(), {word("n")}, {word("n")}};
        for (const char *json : {"{}", "{\"leftReadOnly\":1,\"timeToleranceSec\":\"5\",\"includeFiles\":\"*.c\","
                                       "\"alignOverrides\":{},\"excludedNames\":null,\"compareBasis\":1.5}"}) {
            Travelling found = before;
            found.read(json);
            QVERIFY(found == before);
        }
        Travelling cleared = before;
        cleared.read("{\"includeFiles\":[],\"alignOverrides\":[7],\"excludedNames\":[]}");
        Travelling expected{unusualFolderOptions(), {}, {word("n")}};
        expected.options.includeFiles.clear();
        expected.options.alignOverrides = {ManualAlignRule()};
        QVERIFY(cleared == expected);
    }

    void appliesPresets()
    {
        for (const qint32 basis : {0, 3, -1, 99})
            QCOMPARE(compareMethod(basis), CompareMethod::Rules);
        const QStringList methods = words("rules|crc|binary");
        for (int basis = 0; basis < 3; ++basis) {
            QCOMPARE(compareMethod(basis), CompareMethod(basis));
            for (const char *stem : {"@preset/folder/vm-", "@preset/folder/flibelag-"}) {
                FolderSessionOptions expected = unusualFolderOptions();
                FolderSessionOptions options = expected;
                QVERIFY(applyFolderPreset(word(stem) + methods[basis], options));
                expected.compareBasis = basis;
                expected.timeToleranceSec = basis == 0 ? 2 : 90;
                QCOMPARE(options, expected);
            }
        }
        for (const char *unknown : {"", "@preset/folder/VM-rules", "@preset/folder/vm-rule"}) {
            FolderSessionOptions options = unusualFolderOptions();
            QVERIFY(!applyFolderPreset(word(unknown), options));
            QCOMPARE(options, unusualFolderOptions());
        }
    }

    void storesSets()
    {
        QCOMPARE(FolderSettingsStore(*m_settings).defaults(), StoredFolderSet());
        QVERIFY(FolderSessionOptions().excludeOsFiles);
        QCOMPARE(defaultFileFormats().size(), 11);
        QCOMPARE(defaultFileFormats().first().mask, word("*.c;*.cc;*.cpp;*.cs;*.h;*.hpp;*.m"));

        const QDateTime time(QDate(2024, 5, 6), QTime(7, 8, 9));
        const StoredFolderSet set{word("what for"), unusualFolderOptions(), time};
        const QStringList names = words("a/b\\c|plain|Ä %2F"); // in alphabetical order
        FolderSettingsStore(*m_settings).setDefaults(set);
        for (const QString &name : names + QStringList{QString()})
            FolderSettingsStore(*m_settings).setPreset(name, set);
        m_settings.reset();
        init();
        FolderSettingsStore store(*m_settings);
        QCOMPARE(store.defaults(), set);
        QCOMPARE(store.presetNames(), names);
        for (const QString &name : names)
            QCOMPARE(*store.preset(name), set);
        QVERIFY(!store.preset(word("none")));

        // A shorter list leaves nothing of the longer one.
        StoredFolderSet shorter = set;
        shorter.options.alignOverrides.removeLast();
        shorter.options.fileFormats.clear();
        store.setPreset(word("plain"), shorter);
        QCOMPARE(*store.preset(word("plain")), shorter);
        QVERIFY(m_settings->contains(word("FolderCompare/Presets/plain/align0.left")));
        QVERIFY(!m_settings->contains(word("FolderCompare/Presets/plain/align1.left")));
        for (const QString &name : names)
            store.removePreset(name);
        QVERIFY(store.presetNames().isEmpty());
        QCOMPARE(store.defaults(), set);
    }

    void passesOverDamagedLists()
    {
        m_settings->beginGroup(word("FolderCompare/Defaults"));
        m_settings->setValue(word("formatCount"), 2'000'000'000);
        m_settings->setValue(word("format0.name"), word("one"));
        m_settings->setValue(word("alignCount"), -5);
        m_settings->endGroup();
        const FolderSessionOptions options = FolderSettingsStore(*m_settings).defaults().options;
        QCOMPARE(options.fileFormats, (QList<FileFormatGroup>{{word("one"), QString(), false}}));
        QVERIFY(options.alignOverrides.isEmpty());
    }

    void remembersTheLatestPaths()
    {
        FolderSettingsStore store(*m_settings);
        for (int i = 0; i < FolderSettingsStore::recentPathLimit + 3; ++i)
            store.addRecentPath(QString::number(i));
        store.addRecentPath(word("5"));
        QCOMPARE(store.recentPaths().size(), FolderSettingsStore::recentPathLimit);
        QCOMPARE(store.recentPaths().first(), word("5"));
        QCOMPARE(store.recentPaths().count(word("5")), 1);
    }

private:
    TestTree m_tree;
    std::unique_ptr<QSettings> m_settings;
};

VELMORA_TEST(FolderOptionsTest)
#include "folder_options_test.moc"
