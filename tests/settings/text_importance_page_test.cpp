#include "settings/options/text_importance_file.h"
#include "settings/settings_fixture.h"
#include "support/files.h"
#include "support/test_main.h"

#include <QCheckBox>
#include <QClipboard>
#include <QFile>
#include <QGuiApplication>
#include <QTemporaryDir>

using namespace velmora;
using velmora::test::acceptedDefaults;
using velmora::test::SettingsFixture;
using velmora::test::word;
using velmora::test::words;

namespace {

constexpr int importanceTab = TextSessionSettingsDialog::Importance;

TextSessionOptions withUnimportant(const QStringList &rules)
{
    TextSessionOptions options;
    options.unimportantText = rules;
    return options;
}

} // namespace

class TextImportancePageTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void grammarIsEditedInAWindowOfItsOwn()
    {
        SettingsFixture f({}, importanceTab);
        f.click("editGrammar");
        QCOMPARE(f.opened()->windowTitle(), word("Edit Grammar"));
        QVERIFY(f.get<QCheckBox>("importantCharacterCase", f.opened()).isChecked());
        f.click("importantCharacterCase", f.opened());
        f.click("settingsCancel", f.opened());
        QVERIFY(f.dialog.options() == acceptedDefaults());

        QVERIFY(!f.opened());
        f.click("editGrammar");
        QDialog *window = f.opened();
        f.click("importantTrailingWhitespace", window);
        f.click("importantCharacterCase", window);
        f.click("settingsOk", window);
        QVERIFY(f.dialog.options().importantTrailingWhitespace);
        QVERIFY(!f.dialog.options().importantCharacterCase);
        QVERIFY(f.dialog.options().ignoreCase);
        QCOMPARE(f.preset(), word("Preset: Custom"));
    }

    void unimportantTextsAreAddedEditedAndRemoved()
    {
        SettingsFixture f(withUnimportant({word("one"), word("two"), word("three")}), importanceTab);
        QVERIFY(!f.get<QPushButton>("unimportantRemove").isEnabled());
        auto &list = f.get<QListView>("unimportantList");
        f.select("unimportantList", 1);
        QTest::keyClick(&list, Qt::Key_Delete);
        QCOMPARE(f.rows("unimportantList"), words("one|three"));

        // The rule that has moved up is selected.
        const QPoint place = list.visualRect(list.currentIndex()).center();
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, place);
        QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, place);
        QVERIFY(f.opened());
        QCOMPARE(f.opened()->windowTitle(), word("Unimportant text"));
        QCOMPARE(f.get<QLineEdit>("unimportantRule", f.opened()).text(), word("three"));
        f.type("unimportantRule", word("3"), f.opened());
        f.click("settingsOk", f.opened());

        f.select("unimportantList", 0);
        QTest::keyClick(&list, Qt::Key_Insert);
        f.type("unimportantRule", word("   "), f.opened());
        QVERIFY(!f.get<QPushButton>("settingsOk", f.opened()).isEnabled());
        f.type("unimportantRule", word("new"), f.opened());
        f.click("settingsOk", f.opened());
        QCOMPARE(f.dialog.options().unimportantText, words("one|3|new"));
        QCOMPARE(list.currentIndex().row(), 2);

        for (int row = 0; row < 3; ++row)
            f.click("unimportantRemove");
        QVERIFY(f.dialog.options().unimportantText.isEmpty());
        QVERIFY(!f.get<QPushButton>("unimportantRemove").isEnabled());
    }

    void aBrokenExpressionIsToldAndStillAccepted()
    {
        SettingsFixture f({}, importanceTab);
        f.click("unimportantAdd");
        auto &verdict = f.get<QLabel>("unimportantVerdict", f.opened());
        f.type("unimportantRule", word("^#.*"), f.opened());
        QVERIFY(verdict.text().isEmpty());
        f.type("unimportantRule", word("(TODO"), f.opened());
        QVERIFY(verdict.text().contains(word("Not a regular expression")));
        f.click("settingsOk", f.opened());
        QCOMPARE(f.dialog.options().unimportantText, words("(TODO"));
    }

    void theListGoesThroughTheClipboard()
    {
        QClipboard *clipboard = QGuiApplication::clipboard();
        SettingsFixture f(withUnimportant({word("one"), word(" two")}), importanceTab);
        f.choose("unimportantClipboard", word("copyUnimportant"));
        QCOMPARE(clipboard->text(), word("one\n two"));

        clipboard->setText(word("a\r\n\r\nb \n c"));
        f.answers.answerNumber(0);
        f.choose("unimportantClipboard", word("pasteUnimportant"));
        QCOMPARE(f.answers.asked().last().text, word("Replace the list with text from the clipboard?"));
        QCOMPARE(f.rows("unimportantList").size(), 2);

        f.answers.answerNumber(1);
        f.choose("unimportantClipboard", word("pasteUnimportant"));
        QCOMPARE(f.dialog.options().unimportantText, words("a|b | c"));

        clipboard->setText(word("\n"));
        f.choose("unimportantClipboard", word("pasteUnimportant"));
        QCOMPARE(f.answers.asked().size(), 2);
    }

    void rulesGoThroughAFile()
    {
        const QString path = m_folder.filePath(word("rules.json"));
        SettingsFixture source(withUnimportant({word("^;")}), importanceTab);
        source.click("importantCharacterCase");
        source.click("ignoreBlankLines");
        source.answers.answerPath(path);
        source.click("exportRules");
        const auto &asked = source.answers.asked().last();
        QCOMPARE(asked.title, word("Export importance rules"));
        QCOMPARE(asked.start, word("text-importance.json"));
        QCOMPARE(asked.text, word("Text importance rules (*.json);;All files (*.*)"));
        QCOMPARE(source.answers.asked().size(), 1);

        SettingsFixture target({}, importanceTab);
        target.click("leftReadOnly");
        target.click("alignMyers");
        target.answers.answerPath(path);
        target.click("importRules");
        QCOMPARE(target.answers.titles(), words("Import importance rules"));
        TextSessionOptions expected = source.dialog.options();
        expected.leftReadOnly = true;
        expected.alignAlgorithm = 1;
        QVERIFY(target.dialog.options() == expected);
        QCOMPARE(target.preset(), word("Preset: Custom"));
    }

    void filesThatCannotBeUsedAreToldAndChangeNothing()
    {
        SettingsFixture f({}, importanceTab);
        const auto told = [&f](const char *button, const QString &path) {
            f.answers.answerPath(path);
            f.click(button);
            return f.answers.titles().last() + word(" | ") + f.answers.asked().last().text;
        };
        const QString path = m_folder.filePath(word("broken.json"));
        for (const auto &[content, reason] :
             {std::pair("{", "Invalid JSON: unterminated object"),
              std::pair(R"({"schema":"Tarnwick.TextImportance/2","importantCharacterCase":false})",
                        "Unrecognized importance rules file (expected schema Tarnwick.TextImportance/1)."),
              std::pair("{}", "The file holds no importance rules.")}) {
            QFile file(path);
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write(content) > 0);
            file.close();
            QCOMPARE(told("importRules", path), QLatin1String("Import failed | ") + QLatin1String(reason));
            QVERIFY(f.dialog.options() == acceptedDefaults());
        }
        const QString missing = m_folder.filePath(word("none/rules.json"));
        const QString shown = QDir::toNativeSeparators(missing);
        QCOMPARE(told("importRules", missing), word("Import failed | Cannot read file: ") + shown);
        QCOMPARE(told("exportRules", missing), word("Export failed | Cannot write file: ") + shown);
    }

private:
    QTemporaryDir m_folder;
};

VELMORA_TEST(TextImportancePageTest)
#include "text_importance_page_test.moc"
