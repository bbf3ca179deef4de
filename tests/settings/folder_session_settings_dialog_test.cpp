#include "core/settings_store.h"
#include "settings/dialogs/folder_session_settings_dialog.h"
#include "settings/options/folder_presets.h"
#include "settings/options/kept_copies.h"
#include "settings/settings_fixture.h"
#include "support/files.h"
#include "support/test_main.h"
#include "support/unusual_folder_options.h"

#include <QCheckBox>
#include <QComboBox>
#include <QPlainTextEdit>
#include <QSpinBox>
#include <QTableView>

using namespace velmora;
using velmora::test::word;
using velmora::test::words;
using Hands = velmora::test::SettingsHands<FolderSessionSettingsDialog>;

namespace {

FolderSettingsStore storeOf(QSettings &settings)
{
    return FolderSettingsStore(settings);
}

QStringList menuEntries(Hands &f)
{
    QMenu *menu = f.get<QPushButton>("applyPreset").menu();
    Q_EMIT menu->aboutToShow();
    QStringList names;
    for (const QAction *action : menu->actions()) {
        if (!action->isSeparator())
            names.append(action->text());
    }
    return names;
}

} // namespace

class FolderSessionSettingsDialogTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init() { SessionSettings().clear(); }

    void shownOptionsComeBackAsTheyWere()
    {
        QVERIFY(Hands(test::unusualFolderOptions()).dialog.options() == test::unusualFolderOptions());
        QVERIFY(Hands(FolderSessionOptions()).dialog.options() == FolderSessionOptions());
        // What files may hold and no control can show.
        FolderSessionOptions strange;
        strange.compareBasis = -7;
        strange.timeToleranceSec = 4000;
        QVERIFY(Hands(strange).dialog.options() == strange);
        strange.timeToleranceSec = -1;
        QVERIFY(Hands(strange).dialog.options() == strange);
    }

    /// Every control sets its own field, and no other.
    void everyControlSetsItsField()
    {
        Hands f(FolderSessionOptions{});
        FolderSessionOptions expected;
        for (const char *box :
             {"leftReadOnly", "rightReadOnly", "excludeOsFiles", "showHidden", "showLogPanel", "showFilterBar"})
            f.click(box);
        expected.leftReadOnly = expected.rightReadOnly = expected.showHidden = true;
        expected.excludeOsFiles = expected.showLogPanel = expected.showFilterBar = false;
        f.get<QComboBox>("compareBasis").setCurrentText(word("Binary compare (N)"));
        expected.compareBasis = 2;
        auto &tolerance = f.get<QSpinBox>("timeTolerance");
        tolerance.setValue(3601);
        QCOMPARE(tolerance.text(), word("3600 sec"));
        tolerance.setValue(2);
        expected.timeToleranceSec = 2;
        f.type("includeFiles", word(" *.h ;; *.cpp;"));
        f.type("excludeFiles", word("b"));
        f.type("includeFolders", word("c"));
        f.type("excludeFolders", word("d"));
        expected.includeFiles = {word("*.h"), word("*.cpp")};
        expected.excludeFiles = {word("b")};
        expected.includeFolders = {word("c")};
        expected.excludeFolders = {word("d")};
        QVERIFY(f.dialog.options() == expected);

        f.click("clearFilters");
        for (QStringList FolderSessionOptions::*masks :
             {&FolderSessionOptions::includeFiles, &FolderSessionOptions::excludeFiles,
              &FolderSessionOptions::includeFolders, &FolderSessionOptions::excludeFolders})
            (expected.*masks).clear();
        QVERIFY(f.dialog.options() == expected);
    }

    void masksAreJudgedWhileTheyAreTyped()
    {
        Hands f(FolderSessionOptions{}, SessionPaths{}, FolderSessionSettingsDialog::NameFilters);
        auto &verdict = f.get<QLabel>("excludeFilesVerdict");
        auto &line = f.get<QLineEdit>("excludeFiles");
        line.setFocus();
        QTest::keyClicks(&line, word("*.o;[ab"));
        QVERIFY(verdict.text().contains(word("\"[ab\"")));
        QVERIFY(f.get<QLabel>("includeFilesVerdict").text().isEmpty());
        QTest::keyClicks(&line, word("]"));
        QCOMPARE(verdict.text(), QString());
        QTest::keyClicks(&line, word(";out/*"));
        QVERIFY(verdict.text().contains(word("\"out/*\"")));
    }

    void exclusionRulesAreAddedEditedAndDeletedTogether()
    {
        Hands f(FolderSessionOptions{}, SessionPaths{}, FolderSessionSettingsDialog::OtherFilters);
        QCOMPARE(f.get<QPushButton>("otherExcludeAdd").text(), word("Add exclusion rule"));
        QVERIFY(!f.get<QPushButton>("otherExcludeRemove").isEnabled());
        for (const char *mask : {"*.bak", "*.tmp", "*.old"}) {
            f.click("otherExcludeAdd");
            QVERIFY(!f.get<QPushButton>("settingsOk", f.opened()).isEnabled());
            f.type("exclusionMask", word("["), f.opened());
            QVERIFY(!f.get<QPushButton>("settingsOk", f.opened()).isEnabled());
            f.type("exclusionMask", QLatin1Char(' ') + QLatin1String(mask), f.opened());
            f.click("settingsOk", f.opened());
            QTRY_VERIFY(!f.opened());
        }
        f.select("otherExcludeList", 1);
        f.click("otherExcludeEdit");
        QCOMPARE(f.get<QLineEdit>("exclusionMask", f.opened()).text(), word("*.tmp"));
        f.type("exclusionMask", word("*.temp"), f.opened());
        f.click("settingsOk", f.opened());
        QCOMPARE(f.dialog.options().otherExclude, words("*.bak|*.temp|*.old"));

        auto &list = f.get<QListView>("otherExcludeList");
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualRect(list.model()->index(0, 0)).center());
        QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::ControlModifier,
                          list.visualRect(list.model()->index(2, 0)).center());
        QVERIFY(!f.get<QPushButton>("otherExcludeEdit").isEnabled());
        QCOMPARE(f.get<QPushButton>("otherExcludeRemove").text(), word("Delete selected rules"));
        f.click("otherExcludeRemove");
        QCOMPARE(f.dialog.options().otherExclude, words("*.temp"));
    }

    void fileFormatsAreCheckedInTheirTable()
    {
        Hands f(FolderSessionOptions{}, SessionPaths{}, FolderSessionSettingsDialog::OtherFilters);
        auto &table = f.get<QTableView>("fileFormats");
        const QAbstractItemModel &model = *table.model();
        QCOMPARE(model.headerData(0, Qt::Horizontal).toString(), word("Name"));
        QCOMPARE(model.headerData(1, Qt::Horizontal).toString(), word("Mask"));
        QCOMPARE(model.rowCount(), int(defaultFileFormats().size()));
        QCOMPARE(model.index(2, 1).data().toString(), word("*.csv"));
        table.setCurrentIndex(model.index(2, 0));
        QTest::keyClick(&table, Qt::Key_Space);
        FolderSessionOptions expected;
        expected.fileFormats[2].on = true;
        QVERIFY(f.dialog.options() == expected);
        QTest::keyClick(&table, Qt::Key_Space);
        QVERIFY(f.dialog.options() == FolderSessionOptions());
    }

    void fileFormatsAreAddedEditedRemovedAndBroughtBack()
    {
        Hands f(FolderSessionOptions{}, SessionPaths{}, FolderSessionSettingsDialog::OtherFilters);
        auto &table = f.get<QTableView>("fileFormats");
        const auto ok = [&f] { return f.get<QPushButton>("settingsOk", f.opened()).isEnabled(); };
        QVERIFY(!f.get<QPushButton>("fileFormatsEdit").isEnabled());
        QVERIFY(!f.get<QPushButton>("fileFormatsRestore").isEnabled());
        QTest::keyClick(&table, Qt::Key_Insert);
        f.type("formatName", word(" html "), f.opened());
        f.type("formatMasks", word("*.md"), f.opened());
        QVERIFY(!ok()); // there is one of this name, whatever its case
        f.type("formatName", word(" Notes "), f.opened());
        f.type("formatMasks", word(" ; "), f.opened());
        QVERIFY(!ok());
        f.type("formatMasks", word("*.md;[a"), f.opened());
        QVERIFY(!ok());
        f.type("formatMasks", word("*.md ;; *.txt;"), f.opened());
        f.click("settingsOk", f.opened());
        QTRY_VERIFY(!f.opened());
        FolderSessionOptions expected;
        expected.fileFormats.append({word("Notes"), word("*.md;*.txt"), true});
        QVERIFY(f.dialog.options() == expected);

        // A double click on the masks edits; the name that the format has is not taken.
        table.setCurrentIndex(table.model()->index(6, 1));
        const QPoint masks = table.visualRect(table.currentIndex()).center();
        QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, masks);
        QTest::mouseDClick(table.viewport(), Qt::LeftButton, {}, masks);
        QVERIFY(f.opened() && ok());
        QCOMPARE(f.get<QLineEdit>("formatName", f.opened()).text(), word("HTML"));
        f.type("formatMasks", word("*.html"), f.opened());
        f.click("settingsOk", f.opened());
        QTRY_VERIFY(!f.opened());
        expected.fileFormats[6].mask = word("*.html");
        QVERIFY(f.dialog.options() == expected);

        table.setCurrentIndex(table.model()->index(0, 0));
        QTest::keyClick(&table, Qt::Key_Delete);
        const FileFormatGroup removed = expected.fileFormats.takeFirst();
        QVERIFY(f.dialog.options() == expected);
        f.click("fileFormatsRestore");
        expected.fileFormats.append(removed);
        QVERIFY(f.dialog.options() == expected);
        QVERIFY(!f.get<QPushButton>("fileFormatsRestore").isEnabled());
    }

    void alignmentOverridesAreAddedEditedMovedAndRemoved()
    {
        FolderSessionOptions options;
        options.alignOverrides = {{word("a%2"), word("b")}};
        Hands f(options, SessionPaths{}, FolderSessionSettingsDialog::Handling);
        QCOMPARE(f.rows("alignOverridesList"), words("a%2  <->  b"));
        f.click("alignOverridesAdd");
        QCOMPARE(f.opened()->windowTitle(), word("Alignment override"));
        f.type("alignLeftMask", word("*.[c"), f.opened());
        QVERIFY(!f.get<QPushButton>("settingsOk", f.opened()).isEnabled());
        f.type("alignRightMask", word("x/y"), f.opened());
        QVERIFY(!f.get<QPushButton>("settingsOk", f.opened()).isEnabled());
        f.type("alignRightMask", word("*.h"), f.opened());
        f.click("settingsOk", f.opened());
        f.click("alignOverridesUp");
        const QList<ManualAlignRule> wanted{{word("*.[c"), word("*.h")}, {word("a%2"), word("b")}};
        QVERIFY(f.dialog.options().alignOverrides == wanted);
        QTest::keyClick(&f.get<QListView>("alignOverridesList"), Qt::Key_Delete);
        QVERIFY(f.dialog.options() == options);
    }

    void builtInPresetsChangeWhatTheyNameAndNothingElse()
    {
        for (const FolderPreset &preset : folderPresets()) {
            Hands f(test::unusualFolderOptions());
            f.choose("applyPreset", QLatin1String(preset.name));
            FolderSessionOptions expected = test::unusualFolderOptions();
            QVERIFY(applyFolderPreset(QLatin1String(preset.name), expected));
            QVERIFY2(f.dialog.options() == expected, preset.name);
            QCOMPARE(f.preset(), QLatin1String("Preset: ") + QLatin1String(preset.menuText));
            QCOMPARE(f.get<QLabel>("settingsModified").text(), QString());
        }
        QCOMPARE(Hands(FolderSessionOptions{}).preset(), word("Preset: Custom"));
    }

    void presetsAreMadeLoadedReplacedAndDeleted()
    {
        const QString name = word("Build & test");
        {
            Hands f(test::unusualFolderOptions());
            f.get<QPlainTextEdit>("description").setPlainText(word("for the night"));
            f.answers.answerText(QLatin1Char(' ') + name);
            f.click("addPreset");
            QCOMPARE(f.answers.asked().last().text, word("Preset name:"));
            QCOMPARE(f.preset(), QLatin1String("Preset: ") + name);
            const QString modified = f.get<QLabel>("settingsModified").text();
            const QString format = word("'Last modified: 'yyyy/M/d h:mm:ss");
            const QDateTime shown = QDateTime::fromString(modified, format);
            QVERIFY2(qAbs(shown.secsTo(QDateTime::currentDateTime())) < 60, qPrintable(modified));
            f.click("showLogPanel");
            QVERIFY(f.preset() != QLatin1String("Preset: ") + name);
            f.dialog.reject(); // a preset stays all the same
        }
        Hands f(FolderSessionOptions{});
        QCOMPARE(menuEntries(f).mid(3), words("Build && test|Delete preset"));
        f.choose("applyPreset", name);
        QVERIFY(f.dialog.options() == test::unusualFolderOptions());
        QCOMPARE(f.get<QPlainTextEdit>("description").toPlainText(), word("for the night"));

        f.click("leftReadOnly");
        for (const int answer : {0, 1}) {
            f.answers.answerText(name);
            f.answers.answerNumber(answer);
            f.click("addPreset");
            SessionSettings settings;
            QCOMPARE(storeOf(settings).preset(name)->options.leftReadOnly, answer == 0);
        }
        f.answers.answerText(word("  "));
        f.click("addPreset");
        QCOMPARE(menuEntries(f).size(), 5);

        for (const int answer : {0, 1}) {
            f.answers.answerNumber(answer);
            f.choose("applyPreset", QLatin1String("delete ") + name);
            QCOMPARE(menuEntries(f).contains(word("Build && test")), answer == 0);
        }
        QCOMPARE(menuEntries(f).size(), 3);
    }

    void defaultsAreStoredOnlyWhenChosen()
    {
        SessionSettings settings;
        {
            Hands f(test::unusualFolderOptions());
            f.click("settingsOk");
            QVERIFY(storeOf(settings).defaults().options == FolderSessionOptions());
        }
        Hands f(test::unusualFolderOptions());
        auto &scope = f.get<QComboBox>("settingsScope");
        QCOMPARE(scope.itemText(0), word("Only for this view"));
        scope.setCurrentText(word("Save as default settings"));
        f.get<QPlainTextEdit>("description").setPlainText(word("mine"));
        f.dialog.reject();
        QVERIFY(storeOf(settings).defaults().options == FolderSessionOptions());
        f.dialog.open();
        f.click("settingsOk");
        settings.sync();
        QVERIFY(storeOf(settings).defaults().options == test::unusualFolderOptions());
        Hands again(test::unusualFolderOptions());
        QCOMPARE(again.preset(), word("Preset: Default settings"));
        QCOMPARE(again.get<QPlainTextEdit>("description").toPlainText(), word("mine"));
    }

    void keptCopiesAreSetForAllSessions()
    {
        {
            Hands f(FolderSessionOptions{}, SessionPaths{}, FolderSessionSettingsDialog::Misc);
            f.get<QSpinBox>("keptCopiesSize").setValue(0);
            QVERIFY(!f.get<QSpinBox>("keptCopiesDays").isEnabled());
            f.get<QSpinBox>("keptCopiesSize").setValue(3000);
            f.get<QSpinBox>("keptCopiesDays").setValue(7);
            f.dialog.reject();
            QVERIFY(loadKeptCopies(SessionSettings()) == KeptCopies());
            f.dialog.accept();
        }
        SessionSettings settings;
        QVERIFY(loadKeptCopies(settings) == (KeptCopies{qint64(3000) * 1024 * 1024, 7}));
        settings.setValue(word("FolderCompare/KeptCopies/bytes"), word("-5"));
        settings.setValue(word("FolderCompare/KeptCopies/days"), word("x"));
        QVERIFY(loadKeptCopies(settings) == KeptCopies());

        // What no control can show stays.
        for (const KeptCopies &kept : {KeptCopies{1234, 5}, KeptCopies{qint64(1) << 50, 10'000}}) {
            saveKeptCopies(settings, kept);
            settings.sync();
            Hands(FolderSessionOptions{}).dialog.accept();
            QVERIFY(loadKeptCopies(SessionSettings()) == kept);
        }
    }

    void opensAtTheTabAskedFor()
    {
        for (const auto &[asked, shown] : {std::pair(5, 5), std::pair(0, 0), std::pair(-1, 0), std::pair(6, 0)}) {
            Hands f(FolderSessionOptions{}, SessionPaths{}, asked);
            QCOMPARE(f.get<QTabWidget>("settingsTabs").currentIndex(), shown);
        }
        Hands f(FolderSessionOptions{});
        QCOMPARE(f.dialog.windowTitle(), word("Session settings — folder compare"));
        QStringList titles;
        for (int tab = 0; tab < f.get<QTabWidget>("settingsTabs").count(); ++tab)
            titles.append(f.get<QTabWidget>("settingsTabs").tabText(tab));
        QCOMPARE(titles.join(u'|'), word("Spec|Compare|Handling|Name filters|Other filters|Misc"));
    }

    void mnemonicsAreUniqueOnEveryTab()
    {
        Hands f(FolderSessionOptions{});
        QCOMPARE(f.clashingMnemonics(), QStringList());
    }
};

VELMORA_TEST(FolderSessionSettingsDialogTest)
#include "folder_session_settings_dialog_test.moc"
