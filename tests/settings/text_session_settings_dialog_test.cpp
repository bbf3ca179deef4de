#include "core/settings_store.h"
#include "settings/options/text_defaults.h"
#include "settings/options/text_presets.h"
#include "settings/settings_fixture.h"
#include "support/files.h"
#include "support/test_main.h"
#include "support/unusual_text_options.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QGroupBox>
#include <QJsonObject>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTabWidget>
#include <QTranslator>

using namespace velmora;
using velmora::test::acceptedDefaults;
using velmora::test::SettingsFixture;
using velmora::test::word;
using velmora::test::words;

namespace {

/// Those that a session file holds, and the ones of this view besides.
TextSessionOptions unusualOptions()
{
    TextSessionOptions options = test::unusualTextOptions();
    options.leftPath = word("/a/left.txt");
    options.rightPath = word("/b/right.txt");
    options.description = word("first line\nsecond line");
    return options;
}

/// A language that writes every text in brackets; spoken while it lives.
class OtherLanguage final : public QTranslator {
public:
    OtherLanguage() { QCoreApplication::installTranslator(this); }
    ~OtherLanguage() override { QCoreApplication::removeTranslator(this); }
    [[nodiscard]] bool isEmpty() const override { return false; }
    QString translate(const char *, const char *text, const char *, int) const override
    {
        return u'[' + QString::fromUtf8(text) + u']';
    }
};

} // namespace

class TextSessionSettingsDialogTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void cleanup() { SessionSettings().clear(); }

    void shownOptionsComeBackAsTheyWere()
    {
        const TextSessionOptions unusual = unusualOptions();
        QCOMPARE(toJson(SettingsFixture(unusual).dialog.options()), toJson(unusual));
        QVERIFY(SettingsFixture(unusual).dialog.options() == unusual);
        QVERIFY(SettingsFixture().dialog.options() == acceptedDefaults());
    }

    /// Every control sets its own field, and no other: from the defaults to the unusual options, and the same record.
    void everyControlSetsItsField()
    {
        SettingsFixture f;
        const TextSessionOptions wanted = unusualOptions();
        f.type("leftPath", QDir::toNativeSeparators(wanted.leftPath));
        f.type("rightPath", QDir::toNativeSeparators(wanted.rightPath));
        f.get<QPlainTextEdit>("description").setPlainText(wanted.description);
        for (const char *box : {"leftReadOnly", "rightReadOnly", "sameAsLeftFileFormat", "importantLeadingWhitespace",
                                "importantEmbeddedWhitespace", "importantTrailingWhitespace", "importantEverythingElse",
                                "importantCharacterCase", "orphanLinesAlwaysImportant", "compareLineEndings",
                                "ignoreBlankLines", "neverAlignDifferences", "useNearbyMatches", "alignPatience"})
            f.click(box);
        f.get<QSpinBox>("curvatureTolerance").setValue(0);
        f.get<QComboBox>("leftFileType").setCurrentText(wanted.leftFileType);
        f.get<QComboBox>("leftEncoding").setCurrentText(wanted.leftEncoding);
        f.get<QComboBox>("leftEol").setCurrentText(wanted.leftEol);
        f.get<QComboBox>("rightEol").setCurrentText(wanted.rightEol);

        TextSessionOptions expected = wanted;
        const TextSessionOptions builtIn;
        expected.rightFileType = acceptedDefaults().rightFileType;
        expected.rightEncoding = builtIn.rightEncoding;
        expected.unimportantText.clear();
        for (QStringList TextSessionOptions::*list :
             {&TextSessionOptions::leftReplaceFind, &TextSessionOptions::leftReplaceWith,
              &TextSessionOptions::rightReplaceFind, &TextSessionOptions::rightReplaceWith})
            (expected.*list).clear();
        QCOMPARE(toJson(f.dialog.options()), toJson(expected));
        QVERIFY(f.dialog.options() == expected);
    }

    void pathsAreCopiedAndSwapped()
    {
        TextSessionOptions options;
        options.leftPath = word("/a");
        options.rightPath = word("/b");
        options.leftReadOnly = true;
        SettingsFixture f(options);
        f.click("swapPaths");
        QCOMPARE(f.dialog.options().leftPath, word("/b"));
        QCOMPARE(f.dialog.options().rightPath, word("/a"));
        QVERIFY(f.dialog.options().leftReadOnly);
        f.click("copyLeftPath");
        QCOMPARE(f.dialog.options().rightPath, word("/b"));
    }

    void storedWordsHaveOtherNamesOnScreen()
    {
        const TextSessionOptions builtIn;
        SettingsFixture f;
        QCOMPARE(f.get<QComboBox>("leftFileType").currentText(), word("Everything else"));
        QCOMPARE(f.get<QComboBox>("leftEncoding").currentText(), word("Auto detect"));
        f.get<QComboBox>("leftEncoding").setCurrentText(word("Shift-JIS"));
        QCOMPARE(f.dialog.options().leftEncoding, word("Shift-JIS"));
        f.get<QComboBox>("leftEncoding").setCurrentText(word("Auto detect"));
        QCOMPARE(f.dialog.options().leftEncoding, builtIn.leftEncoding);

        TextSessionOptions other;
        other.leftEncoding = word("auto");
        other.leftFileType = word("Detected: Python");
        other.rightFileType = word("Everything else");
        SettingsFixture g(other);
        QCOMPARE(g.get<QComboBox>("leftEncoding").currentText(), word("Auto detect"));
        QCOMPARE(g.dialog.options().leftEncoding, word("auto"));
        QCOMPARE(g.dialog.options().leftFileType, word("Everything else"));
        QCOMPARE(g.dialog.options().rightFileType, word("Everything else"));
    }

    void storedWordsAreTheSameInEveryLanguage()
    {
        OtherLanguage language;
        TextSessionOptions options;
        options.rightFileType = word("[Detected]: Python");
        SettingsFixture f(options);
        QCOMPARE(f.get<QComboBox>("leftFileType").currentText(), word("[Everything else]"));
        QCOMPARE(f.get<QComboBox>("leftEncoding").currentText(), word("[Auto detect]"));
        QVERIFY(f.dialog.options() == acceptedDefaults());
    }

    void aDetectedTypeIsShownAndNotStored()
    {
        TextSessionOptions options;
        options.leftPath = word("/somewhere/main.py");
        options.rightPath = word("/somewhere/unknown");
        SettingsFixture f(options);
        QCOMPARE(f.get<QComboBox>("leftFileType").currentText(), word("Detected: Python"));
        QCOMPARE(f.get<QComboBox>("rightFileType").currentText(), word("Everything else"));
        QCOMPARE(f.dialog.options().leftFileType, word("Everything else"));
        f.get<QComboBox>("leftFileType").setCurrentText(word("Rust"));
        QCOMPARE(f.dialog.options().leftFileType, word("Rust"));
    }

    void rightFormatRestsWhileItFollowsTheLeft()
    {
        SettingsFixture f({}, TextSessionSettingsDialog::Format);
        QVERIFY(!f.get<QComboBox>("rightEncoding").isEnabled());
        f.click("sameAsLeftFileFormat");
        QVERIFY(f.get<QComboBox>("rightEncoding").isEnabled());
    }

    void alignmentShowsWhatIsCompared()
    {
        struct Method {
            const char *button;
            qint32 number;
        };
        for (const Method method : {Method{"alignUnaligned", 3}, Method{"alignStandard", 0}, Method{"alignMyers", 1},
                                    Method{"alignPatience", 2}}) {
            TextSessionOptions options;
            options.alignAlgorithm = method.number;
            SettingsFixture shown(options);
            QVERIFY2(shown.get<QRadioButton>(method.button).isChecked(), method.button);
            SettingsFixture chosen;
            chosen.click(method.button);
            QCOMPARE(chosen.dialog.options().alignAlgorithm, method.number);
        }
        TextSessionOptions unknown;
        unknown.alignAlgorithm = 17;
        QVERIFY(SettingsFixture(unknown).get<QRadioButton>("alignStandard").isChecked());
    }

    void presetsComeFromTheMenuAndAreNamed()
    {
        TextSessionOptions start = unusualOptions();
        for (const TextPreset &preset : textPresets()) {
            SettingsFixture f(start, TextSessionSettingsDialog::Importance);
            QCOMPARE(f.preset(), word("Preset: Custom"));
            f.choose("applyPreset", QLatin1String(preset.name));
            TextSessionOptions expected = start;
            QVERIFY(applyTextPreset(QLatin1String(preset.name), expected));
            QVERIFY2(f.dialog.options() == expected, preset.name);
            QCOMPARE(f.preset(), QLatin1String("Preset: ") + QLatin1String(preset.menuText));
            f.click("alignUnaligned");
            QCOMPARE(f.preset(), word("Preset: Custom"));
        }
        QCOMPARE(SettingsFixture().preset(), word("Preset: Ignore whitespace"));
    }

    void defaultsAreStoredOnlyWhenChosen()
    {
        {
            SettingsFixture f(unusualOptions());
            f.click("settingsOk");
            QVERIFY(loadDefaultTextOptions() == TextSessionOptions());
        }
        SettingsFixture f(unusualOptions());
        f.get<QComboBox>("settingsScope").setCurrentText(word("Save as default settings"));
        QSignalSpy accepted(&f.dialog, &QDialog::accepted);
        f.dialog.reject();
        QVERIFY(loadDefaultTextOptions() == TextSessionOptions());
        f.dialog.open();
        f.click("settingsOk");
        QCOMPARE(accepted.size(), 1);
        TextSessionOptions expected = unusualOptions();
        expected.leftPath.clear();
        expected.rightPath.clear();
        expected.description.clear();
        QVERIFY(loadDefaultTextOptions() == expected);
    }

    void damagedDefaultsAreTheBuiltInOnes()
    {
        SettingsFixture f(unusualOptions());
        f.get<QComboBox>("settingsScope").setCurrentIndex(1);
        f.dialog.accept();
        SessionSettings settings;
        const QStringList keys = settings.allKeys();
        QCOMPARE(keys.size(), 1);
        const QString stored = settings.value(keys.first()).toString();
        settings.setValue(keys.first(), stored.chopped(1));
        settings.sync();
        QVERIFY(loadDefaultTextOptions() == TextSessionOptions());
        settings.setValue(keys.first(), word("{\"importantCharacterCase\":\"no\",\"ignoreCase\":true}"));
        settings.sync();
        QVERIFY(!loadDefaultTextOptions().importantCharacterCase);
    }

    void opensAtTheTabAskedFor()
    {
        for (const auto &[asked, shown] : {std::pair(3, 3), std::pair(0, 0), std::pair(-1, 0), std::pair(5, 0)}) {
            SettingsFixture f({}, asked);
            QCOMPARE(f.get<QTabWidget>("settingsTabs").currentIndex(), shown);
        }
    }

    /// On no tab do two controls answer to the same key.
    void mnemonicsAreUniqueOnEveryTab() { QCOMPARE(SettingsFixture().clashingMnemonics(), QStringList()); }

    void replacementRulesAreAddedEditedAndRemoved()
    {
        TextSessionOptions options;
        options.leftReplaceFind = {word("%2"), word("gone")};
        options.leftReplaceWith = {word("two")};
        SettingsFixture f(options, TextSessionSettingsDialog::Replacements);
        QCOMPARE(f.rows("leftReplaceList"), words("%2  ->  two|gone  ->  "));
        QVERIFY(!f.get<QPushButton>("leftReplaceEdit").isEnabled());

        f.click("leftReplaceAdd");
        QCOMPARE(f.opened()->windowTitle(), word("Replacement rule"));
        QVERIFY(!f.get<QPushButton>("settingsOk", f.opened()).isEnabled());
        f.type("replacementFind", word("a b"), f.opened());
        f.type("replacementWith", word(" c"), f.opened());
        f.click("settingsOk", f.opened());

        f.select("leftReplaceList", 0);
        QTest::keyClick(&f.get<QListView>("leftReplaceList"), Qt::Key_Delete);
        f.click("leftReplaceEdit");
        f.type("replacementWith", word("kept"), f.opened());
        f.click("settingsOk", f.opened());
        f.click("leftReplaceEdit");
        f.type("replacementWith", word("not kept"), f.opened());
        f.click("settingsCancel", f.opened());

        QCOMPARE(f.dialog.options().leftReplaceFind, words("gone|a b"));
        QCOMPARE(f.dialog.options().leftReplaceWith, words("kept| c"));
        QVERIFY(f.dialog.options().rightReplaceFind.isEmpty());
    }

    void replacementRulesChangeTheirOrder()
    {
        TextSessionOptions options;
        options.rightReplaceFind = {word("a"), word("b"), word("c")};
        options.rightReplaceWith = {word("1"), word("2"), word("3")};
        SettingsFixture f(options, TextSessionSettingsDialog::Replacements);
        QVERIFY(!f.get<QAbstractButton>("rightReplaceUp").isEnabled());
        QVERIFY(!f.get<QAbstractButton>("rightReplaceDown").isEnabled());
        f.select("rightReplaceList", 0);
        f.click("rightReplaceDown");
        f.click("rightReplaceDown");
        QCOMPARE(f.dialog.options().rightReplaceFind.join(QString()), word("bca"));
        QVERIFY(!f.get<QAbstractButton>("rightReplaceDown").isEnabled());
        auto &list = f.get<QListView>("rightReplaceList");
        QTest::keyClick(&list, Qt::Key_Down, Qt::AltModifier);
        QTest::keyClick(&list, Qt::Key_Up, Qt::AltModifier);
        QCOMPARE(f.dialog.options().rightReplaceFind.join(QString()), word("bac"));
        QCOMPARE(f.dialog.options().rightReplaceWith.join(QString()), word("213"));
        QCOMPARE(list.currentIndex().row(), 1);
    }
};

VELMORA_TEST(TextSessionSettingsDialogTest)
#include "text_session_settings_dialog_test.moc"
