#include "cli_fixture.h"
#include "core/text_encode.h"
#include "support/test_main.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

using namespace velmora;
using namespace velmora::test;

namespace {

QByteArray encoded(const char *utf8, const char *encoding)
{
    return encodeText(std::string_view(utf8), TextEncoding::fromName(word(encoding))).bytes;
}

} // namespace

class TextCommandTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_files.emplace(); // the old one goes first
        CliFiles::write("left", "one\ntwo\nthree\nfour\n");
        CliFiles::write("right", "one\n two \nThree\n4\nfive\n");
    }

    void presetsDecideWhatCounts()
    {
        const QList<std::pair<QByteArray, QByteArray>> cases{
            {"", "4 diffs (added 2, removed 1, modified 1)"},
            {"--preset strict", "6 diffs (added 3, removed 2, modified 1)"},
            {"--preset ignore-whitespace", "4 diffs (added 2, removed 1, modified 1)"},
            {"--preset ignore-case", "5 diffs (added 3, removed 2, modified 0)"},
            {"--preset relaxed", "3 diffs (added 2, removed 1, modified 0)"},
            {"--preset @preset/text/vm-relaxed", "3 diffs (added 2, removed 1, modified 0)"},
            {"--preset @preset/text/flibelag-strict", "6 diffs (added 3, removed 2, modified 1)"},
        };
        for (const auto &[preset, counts] : cases) {
            const CliResult result = compare(preset);
            QCOMPARE(result.errors, QByteArray());
            QCOMPARE(result.output, "Compare done: " + counts + " | Left: 4 lines, Right: 5 lines\n");
            QCOMPARE(result.status, 1);
        }
        CliFiles::write("out", "before");
        QCOMPARE(compare("--output out").output, QByteArray());
        QVERIFY(CliFiles::read("out").startsWith("Compare done: 4 diffs"));
    }

    void equalTextsExitWithZero()
    {
        for (const char *format : {"summary", "json", "patch", "html"}) {
            const CliResult result = runCli(QByteArray("text left left --format ") + format);
            QCOMPARE(result.status, 0);
            QCOMPARE(result.output.isEmpty(), word(format) == word("patch"));
        }
        QCOMPARE(runCli("text - -", "x\n").status, 0);
        QCOMPARE(runCli("text - left", "one\ntwo\nthree\nfour\n").status, 0);
    }

    void countsDifferingLineEndsApart()
    {
        const QList<std::array<QByteArray, 3>> cases{
            {"a\nb\n", "a\r\nb\r\n", " | Line ends differ in 2 rows"},
            {"a\nb\n", "a\nb", " | The last line feed is missing on the right"},
            {"a\nb", "a\r\nb\r\n", " | Line ends differ in 1 rows | The last line feed is missing on the left"},
            {"a\r\nb\r", "a\r\nb\r\n", " | Line ends differ in 1 rows"},
            {"a\nb", "a\nb", ""},
        };
        for (const auto &[left, right, ends] : cases) {
            CliFiles::write("left", left);
            CliFiles::write("right", right);
            const QByteArray counts =
                "Compare done: 0 diffs (added 0, removed 0, modified 0) | Left: 2 lines, Right: 2 lines";
            QCOMPARE(compare("--preset strict").output, counts + ends + '\n');
            QCOMPARE(compare("--preset strict --format html").output.contains("missing on the right</div>"),
                     ends.endsWith("right"));
            for (const char *format : {"summary", "json", "html", "patch"})
                QCOMPARE(compare(QByteArray("--format ") + format).status, ends.isEmpty() ? 0 : 1);
            QCOMPARE(compare("--preset relaxed").output, counts + '\n');
            QCOMPARE(compare("--preset relaxed").status, 0);
        }
    }

    void optionsComeFromSessionFilesAndBareObjects()
    {
        const QByteArray bare = R"({"ignoreCase": true, "leftReplaceFind": ["four"], "leftReplaceWith": ["4"]})";
        for (const QByteArray &json : {bare, R"({"type": "text", "options": )" + bare + '}'}) {
            CliFiles::write("options.json", json);
            QCOMPARE(
                compare("--options options.json").output,
                QByteArray("Compare done: 1 diffs (added 1, removed 0, modified 0) | Left: 4 lines, Right: 5 lines\n"));
        }
    }

    void replacementRulesApplyToTheComparisonOnly()
    {
        CliFiles::write("l", "a=b\tx\\y\ncolour\n");
        CliFiles::write("r", "a:=b x/y\ncolor\n");
        const QStringList rules = words("text|l|r|--preset=strict|--replace-left=a\\=b=a:=b|--replace-left|\\t= |"
                                        "--replace-left=x\\\\y=x/y|--replace-right=color=colour");
        const CliResult summary = runCli(rules);
        QCOMPARE(summary.errors, QByteArray());
        QCOMPARE(summary.status, 0);
        const CliResult json = runCli(rules + QStringList{word("--format=json")});
        QVERIFY2(json.output.contains("\"leftText\":\"a=b\\tx\\\\y\"") &&
                     json.output.contains("\"rightText\":\"color\""),
                 json.output.constData());
        const CliResult html = runCli(rules + QStringList{word("--format=html")});
        QVERIFY(html.output.contains("colour</td>") && html.output.contains("color</td>"));

        // In their order, each on what the ones before it left.
        CliFiles::write("l", "aob\n");
        CliFiles::write("r", "cc\n");
        QCOMPARE(runCli("text l r --replace-left=a=b --replace-left=b=c --replace-left=o=").status, 0);
        for (const char *bad : {"", "=", "=x", "x", "a\\=b", "a\\n=b", "a=b\\"}) {
            const CliResult result = runCli(words("text|left|right|--replace-right") << word(bad));
            QCOMPARE(result.status, 2);
            QCOMPARE(result.errors,
                     QByteArray("velmora-cli: --replace-right: \"") + bad + "\" is not of the form FIND=WITH\n");
        }
    }

    void importanceRulesComeFromAFile()
    {
        CliFiles::write("rules.json", R"({"unimportantText": ["."], "schema": "Tarnwick.TextImportance/1"})");
        QCOMPARE(compare("--preset=strict --importance rules.json").status, 0);
        CliFiles::write("rules.json", R"({"unimportantText": ["two"]})");
        QVERIFY(compare("--preset=strict").output != compare("--preset=strict --importance rules.json").output);
        const CliResult missing = compare("--importance missing");
        QCOMPARE(missing.status, 2);
        QVERIFY(missing.errors.startsWith("velmora-cli: Cannot read file: "));
    }

    void saysWhatIsWrongWithAFile()
    {
        const std::tuple<const char *, QByteArray, QByteArray> cases[] = {
            {"--options", "{", "invalid JSON: unterminated object"},
            {"--options", "{}", "no options in it"},
            {"--options", R"({"options": {}})", "no options in it"},
            {"--importance", "{", "Invalid JSON: unterminated object"},
            {"--importance", "{}", "The file holds no importance rules."},
            {"--importance", R"({"schema": "Tarnwick.TextImportance/2"})",
             "Unrecognized importance rules file (expected schema Tarnwick.TextImportance/1)."},
        };
        for (const auto &[option, json, error] : cases) {
            CliFiles::write("file.json", json);
            const CliResult result = compare(option + QByteArray(" file.json"));
            QCOMPARE(result.status, 2);
            QCOMPARE(result.errors, "velmora-cli: file.json: " + error + '\n');
        }
    }

    void anExpressionThatRunsAwayIsGivenUpWithAWarning()
    {
        const QByteArray slow(60, 'a');
        CliFiles::write("rules.json", R"({"unimportantText": ["(a+)+$"]})");
        CliFiles::write("l", slow + "!1\n");
        CliFiles::write("r", slow + "!2\n");
        const CliResult result = runCli("text l r --importance rules.json");
        QCOMPARE(result.status, 1);
        QVERIFY2(result.errors.startsWith("velmora-cli: warning: an expression of the unimportant text is too slow"),
                 result.errors.constData());
    }

    void encodingsAreDetectedOrNamed()
    {
        CliFiles::write("big5", encoded("中", "Big5"));
        CliFiles::write("one", "中");
        CliFiles::write("wide", encoded("中", "UTF-16 LE"));
        QCOMPARE(runCli("text wide one").status, 0);
        QCOMPARE(runCli("text big5 one --encoding-left=big5").status, 0);

        // The options' right encoding follows the left one; a named one does not.
        CliFiles::write("o.json", R"({"leftEncoding": "Big5"})");
        QCOMPARE(runCli("text big5 big5 --options o.json").status, 0);
        QCOMPARE(runCli("text big5 one --options o.json").status, 1);
        QCOMPARE(runCli("text big5 one --options o.json --encoding-right=UTF-8").status, 0);
    }

    void undecodableTextIsComparedWithAWarning()
    {
        CliFiles::write("latin", "a\ncaf\xE9\n");
        const CliResult result = runCli("text latin latin --encoding-left=UTF-8 --encoding-right=ISO-8859-1");
        QCOMPARE(result.status, 1);
        QCOMPARE(result.errors, "velmora-cli: warning: latin: 1 places are no UTF-8, the first in line 2\n");
    }

    void binaryFilesAreNotComparedByLine()
    {
        CliFiles::write("zero", QByteArray("a\0b\n", 4));
        CliFiles::write("other", QByteArray("a\0c\n", 4));
        for (const char *format : {"summary", "patch", "html"}) {
            const CliResult differ = runCli(QByteArray("text zero other --format ") + format);
            QCOMPARE(differ.status, 1);
            QCOMPARE(differ.output, "Binary files zero and other differ\n");
        }
        const CliResult same = runCli("text zero zero");
        QCOMPARE(same.status, 0);
        QVERIFY(same.output.endsWith(" are identical\n"));
        const CliResult json = runCli("text zero other --format=json");
        const QJsonDocument object = QJsonDocument::fromJson(json.output);
        QVERIFY(object[u"binary"].toBool() && !object[u"identical"].toBool(true));
        QCOMPARE(json.status, 1);

        CliFiles::write("report", "before");
        QCOMPARE(runCli("text zero other --format=html --output report").status, 1);
        QCOMPARE(CliFiles::read("report"), QByteArray("before"));
        QVERIFY(runCli("text zero other --text").output.startsWith("Compare done: 1 diffs"));
    }

    void jsonHoldsEveryRow()
    {
        CliFiles::write("left", "same\nold \"x\"\t\\\n# note\n");
        CliFiles::write("right", "same\r\nold \"y\"\t\\\n");
        CliFiles::write("options", R"({"unimportantText": ["note"], "importantLeadingWhitespace": true})");
        const CliResult result = compare("--format=json --options options");
        const QJsonDocument object = QJsonDocument::fromJson(result.output);
        QCOMPARE(object[u"left"][u"path"].toString(), word("left"));
        QCOMPARE(object[u"right"][u"lineEnds"].toString(), word("Mixed"));
        QCOMPARE(object[u"counts"][u"modified"].toInt(), 1);
        QCOMPARE(object[u"counts"][u"lineEnds"].toInt(), 1);
        QCOMPARE(object[u"counts"][u"missingLastLineFeeds"].toInt(), 0);
        QVERIFY(object[u"left"][u"lastLineFeed"].toBool());
        QStringList described;
        for (const QJsonValue row : object[u"rows"].toArray())
            described.append(QStringLiteral("%1 %2:%3 %4 | %5%6")
                                 .arg(row[u"kind"].toInt())
                                 .arg(row[u"leftLine"].toInt())
                                 .arg(row[u"rightLine"].toInt())
                                 .arg(row[u"leftText"].toString(), row[u"rightText"].toString(),
                                      row[u"leftEnd"].toString() + row[u"rightEnd"].toString()));
        QCOMPARE(described.join(u'\n'),
                 word("0 1:1 same | sameLFCRLF\n3 2:2 old \"x\"\t\\ | old \"y\"\t\\\n0 3:-1 # note | # note"));
    }

    void jsonEscapesEveryControlCharacter()
    {
        QByteArray line;
        for (char control = 1; control < 0x20; ++control) {
            if (control != '\n')
                line.append(control);
        }
        line += "\x7F\xC3\xA9\xF0\x9F\x98\x80.";
        CliFiles::write("controls", line);
        const CliResult result = runCli("text controls controls --format=json");
        for (char control = 1; control < 0x20; ++control)
            QVERIFY(control == '\n' || !result.output.contains(control));
        QCOMPARE(QJsonDocument::fromJson(result.output)[u"rows"][0][u"leftText"].toString(), QString::fromUtf8(line));
    }

    void htmlIsTheReport()
    {
        CliFiles::write("a&b", "one\n<two>\nthree\n");
        CliFiles::write("right", "one\n<two!>\n\nmore\n");
        const CliResult result = runCli("text a&b right --format=html --preset=strict");
        m_files.reset(); // on Windows the folder of files may be on another drive than the sources
        const QRegularExpression time(word("\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d"));
        QCOMPARE(QString::fromUtf8(result.output).replace(time, word("2024-03-04 05:06:07")),
                 QString::fromUtf8(contentsOf(word(VELMORA_SOURCE_DIR "/tests/cli/cases/report.html"))));
    }

    void htmlWithMarksHasTheDifferingPartsAndLinks()
    {
        CliFiles::write("left", "1\n2\n3\n<old> value\n5\n6\n7\n8\nend\n");
        CliFiles::write("right", "1\n2\n3\n<new> value\n5\n6\n7\n8\nend");
        const CliResult result = compare("--format html --context 1");
        const QString page = QString::fromUtf8(result.output);
        QCOMPARE(result.status, 1);
        QVERIFY2(page.contains(word(R"(<tr class="gap"><td colspan="5">⋯ 2 equal lines</td></tr>
<tr class="eq"><td class="nav"></td><td class="ln">3</td><td>3</td><td class="ln">3</td><td>3</td></tr>
<tr class="mod" id="d1"><td class="nav"><a href="#d2" title="Next difference">&darr;</a></td>)"
                                    R"(<td class="ln">4</td><td>&lt;<span class="m">old</span>&gt; value</td>)"
                                    R"(<td class="ln">4</td><td>&lt;<span class="m">new</span>&gt; value</td></tr>
<tr class="eq"><td class="nav"></td><td class="ln">5</td><td>5</td><td class="ln">5</td><td>5</td></tr>
<tr class="gap"><td colspan="5">⋯ 2 equal lines</td></tr>
)")) && page.contains(word("<tr class=\"eq\" id=\"d2\"><td class=\"nav\"><a href=\"#d1\"")),
                 result.output.constData());
        QCOMPARE(compare("--format html --context all").output.count("<tr class=\"eq\""), 8);
        for (const char *bad : {"--context 3", "--format html --context -1", "--format html --context x"})
            QCOMPARE(compare(bad).status, 2);
    }

private:
    [[nodiscard]] static CliResult compare(const QByteArray &options) { return runCli("text left right " + options); }

    std::optional<CliFiles> m_files;
};

VELMORA_TEST(TextCommandTest)
#include "text_command_test.moc"
