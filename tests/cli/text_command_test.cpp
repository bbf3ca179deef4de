#include "cli_fixture.h"
#include "core/text_encode.h"
#include "settings/options/text_session_options.h"
#include "support/test_main.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

using namespace velmora;
using namespace velmora::test;

namespace {

QString word(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

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
        m_files = std::make_unique<CliFiles>();
        m_left = m_files->write(word("left"), "one\ntwo\nthree\nfour\n");
        m_right = m_files->write(word("right"), "one\n two \nThree\n4\nfive\n");
    }

    void presetsDecideWhatCounts_data()
    {
        QTest::addColumn<QString>("preset");
        QTest::addColumn<QByteArray>("counts");
        QTest::newRow("none") << QString() << QByteArray("4 diffs (added 2, removed 1, modified 1)");
        QTest::newRow("strict") << word("strict") << QByteArray("6 diffs (added 3, removed 2, modified 1)");
        QTest::newRow("white space") << word("ignore-whitespace")
                                     << QByteArray("4 diffs (added 2, removed 1, modified 1)");
        QTest::newRow("case") << word("ignore-case") << QByteArray("5 diffs (added 3, removed 2, modified 0)");
        QTest::newRow("relaxed") << word("relaxed") << QByteArray("3 diffs (added 2, removed 1, modified 0)");
        QTest::newRow("full name") << word("@preset/text/vm-relaxed")
                                   << QByteArray("3 diffs (added 2, removed 1, modified 0)");
        QTest::newRow("old name") << word("@preset/text/flibelag-strict")
                                  << QByteArray("6 diffs (added 3, removed 2, modified 1)");
    }

    void presetsDecideWhatCounts()
    {
        QFETCH(QString, preset);
        QFETCH(QByteArray, counts);
        const CliResult result = compare(preset.isEmpty() ? QStringList() : QStringList{word("--preset"), preset});
        QCOMPARE(result.errors, QByteArray());
        QCOMPARE(result.output, "Compare done: " + counts + " | Left: 4 lines, Right: 5 lines\n");
        QCOMPARE(result.status, 1);
    }

    void equalTextsExitWithZero()
    {
        for (const char *format : {"summary", "json", "patch", "html"}) {
            const CliResult result = runCli({word("text"), word("--format"), word(format), m_left, m_left});
            QCOMPARE(result.status, 0);
            QCOMPARE(result.output.isEmpty(), word(format) == word("patch"));
        }
        QCOMPARE(runCli({word("text"), word("-"), word("-")}, "x\n").status, 0);
        QCOMPARE(runCli({word("text"), word("-"), m_left}, "one\ntwo\nthree\nfour\n").status, 0);
    }

    void optionsComeFromSessionFilesAndBareObjects()
    {
        TextSessionOptions options;
        options.importantCharacterCase = false;
        options.leftReplaceFind = {word("four")};
        options.leftReplaceWith = {word("4")};
        deriveLegacySwitches(options);
        const QJsonObject bare = toJson(options);
        const QJsonObject session{{word("type"), word("text")}, {word("options"), bare}};
        for (const QJsonObject &object : {bare, session}) {
            const QString file = m_files->write(word("options.json"), QJsonDocument(object).toJson());
            QCOMPARE(
                compare({word("--options"), file}).output,
                QByteArray("Compare done: 1 diffs (added 1, removed 0, modified 0) | Left: 4 lines, Right: 5 lines\n"));
        }
        const auto errorOf = [this](const QByteArray &json) {
            const QString file = m_files->write(word("options.json"), json);
            const CliResult result = compare({word("--options"), file});
            return result.status == 2 ? result.errors.mid(result.errors.indexOf("options.json")) : QByteArray();
        };
        QCOMPARE(errorOf("{"), QByteArray("options.json: invalid JSON: unterminated object\n"));
        QCOMPARE(errorOf("{}"), QByteArray("options.json: no options in it\n"));
        QCOMPARE(errorOf("{\"options\": {}}"), QByteArray("options.json: no options in it\n"));
    }

    void replacementRulesApplyToTheComparisonOnly()
    {
        const QString left = m_files->write(word("l"), "a=b\tx\\y\ncolour\n");
        const QString right = m_files->write(word("r"), "a:=b x/y\ncolor\n");
        const QStringList rules{
            word("--preset=strict"), word("--replace-left=a\\=b=a:=b"), word("--replace-left"),
            word("\\t= "),           word("--replace-left=x\\\\y=x/y"), word("--replace-right=color=colour")};
        const CliResult summary = runCli(QStringList{word("text"), left, right} + rules);
        QCOMPARE(summary.errors, QByteArray());
        QCOMPARE(summary.status, 0);
        const CliResult json = runCli(QStringList{word("text"), word("--format=json"), left, right} + rules);
        QVERIFY2(json.output.contains("\"leftText\":\"a=b\\tx\\\\y\"") &&
                     json.output.contains("\"rightText\":\"color\""),
                 json.output.constData());
        const CliResult html = runCli(QStringList{word("text"), word("--format=html"), left, right} + rules);
        QVERIFY(html.output.contains("colour</td>") && html.output.contains("color</td>"));

        // In their order, each on what the ones before it left.
        const QStringList chain{word("--replace-left=a=b"), word("--replace-left=b=c"), word("--replace-left=o=")};
        QCOMPARE(
            runCli(QStringList{word("text"), m_files->write(word("l"), "aob\n"), m_files->write(word("r"), "cc\n")} +
                   chain)
                .status,
            0);
        for (const char *bad : {"", "=", "=x", "x", "a\\=b", "a\\n=b", "a=b\\"}) {
            const CliResult result = compare({word("--replace-right"), word(bad)});
            QCOMPARE(result.status, 2);
            QCOMPARE(result.errors,
                     QByteArray("velmora-cli: --replace-right: \"") + bad + "\" is not of the form FIND=WITH\n");
        }
    }

    void importanceRulesComeFromAFile()
    {
        const auto compareBy = [this](const QByteArray &json) {
            return compare({word("--preset=strict"), word("--importance"), m_files->write(word("rules.json"), json)});
        };
        QVERIFY(compare({word("--preset=strict")}).output != compareBy(R"({"unimportantText": ["."]})").output);
        QCOMPARE(compareBy(R"({"unimportantText": ["."], "schema": "Tarnwick.TextImportance/1"})").status, 0);
        const auto errorOf = [&](const QByteArray &json) {
            const CliResult result = compareBy(json);
            return result.status == 2 ? result.errors.mid(result.errors.indexOf("rules.json")) : QByteArray();
        };
        QCOMPARE(errorOf("{"), QByteArray("rules.json: Invalid JSON: unterminated object\n"));
        QCOMPARE(errorOf("{}"), QByteArray("rules.json: The file holds no importance rules.\n"));
        QCOMPARE(errorOf(R"({"schema": "Tarnwick.TextImportance/2"})"),
                 QByteArray("rules.json: Unrecognized importance rules file (expected schema "
                            "Tarnwick.TextImportance/1).\n"));
        const CliResult missing = compare({word("--importance"), m_files->path(word("missing"))});
        QCOMPARE(missing.status, 2);
        QVERIFY(missing.errors.startsWith("velmora-cli: Cannot read file: "));
    }

    void anExpressionThatRunsAwayIsGivenUpWithAWarning()
    {
        const QByteArray slow(60, 'a');
        const QString rules = m_files->write(word("rules.json"), R"({"unimportantText": ["(a+)+$"]})");
        const CliResult result = runCli({word("text"), m_files->write(word("l"), slow + "!1\n"),
                                         m_files->write(word("r"), slow + "!2\n"), word("--importance"), rules});
        QCOMPARE(result.status, 1);
        QVERIFY2(result.errors.startsWith("velmora-cli: warning: an expression of the unimportant text is too slow"),
                 result.errors.constData());
    }

    void encodingsAreDetectedOrNamed()
    {
        const char *sentence = "比较两个文件夹，并把不同之处并排显示出来。\n用户可以复制、合并或同步文件。\n";
        const QString utf8 = m_files->write(word("utf8"), sentence);
        for (const char *encoding : {"UTF-8 BOM", "UTF-16 LE", "UTF-16 BE", "GB18030"}) {
            const QString other = m_files->write(word("other"), encoded(sentence, encoding));
            QCOMPARE(runCli({word("text"), utf8, other}).status, 0);
            QCOMPARE(runCli({word("text"), other, utf8, word("--encoding-left"), word(encoding)}).status, 0);
        }
        const QString big5 = m_files->write(word("big5"), encoded("中", "Big5"));
        const QString one = m_files->write(word("one"), "中");
        QCOMPARE(runCli({word("text"), big5, one, word("--encoding-left=big5")}).status, 0);

        // The options' right encoding follows the left one; a named one does not.
        TextSessionOptions options;
        options.leftEncoding = word("Big5");
        const QString file = m_files->write(word("o.json"), QJsonDocument(toJson(options)).toJson());
        QCOMPARE(runCli({word("text"), big5, big5, word("--options"), file}).status, 0);
        QCOMPARE(runCli({word("text"), big5, one, word("--options"), file}).status, 1);
        QCOMPARE(runCli({word("text"), big5, one, word("--options"), file, word("--encoding-right=UTF-8")}).status, 0);
    }

    void undecodableTextIsComparedWithAWarning()
    {
        const QString file = m_files->write(word("latin"), "a\ncaf\xE9\n");
        const CliResult result =
            runCli({word("text"), file, file, word("--encoding-left=UTF-8"), word("--encoding-right=ISO-8859-1")});
        QCOMPARE(result.status, 1);
        QCOMPARE(result.errors.count('\n'), 1);
        QVERIFY(result.errors.endsWith("1 places are no UTF-8, the first in line 2\n"));
    }

    void binaryFilesAreNotComparedByLine()
    {
        const QString zero = m_files->write(word("zero"), QByteArray("a\0b\n", 4));
        const QString other = m_files->write(word("other"), QByteArray("a\0c\n", 4));
        for (const char *format : {"summary", "patch", "html"}) {
            const CliResult differ = runCli({word("text"), zero, other, word("--format"), word(format)});
            QCOMPARE(differ.status, 1);
            QCOMPARE(differ.output, QStringLiteral("Binary files %1 and %2 differ\n").arg(zero, other).toUtf8());
        }
        const CliResult same = runCli({word("text"), zero, zero});
        QCOMPARE(same.status, 0);
        QVERIFY(same.output.endsWith(" are identical\n"));
        const CliResult json = runCli({word("text"), zero, other, word("--format=json")});
        const QJsonObject object = QJsonDocument::fromJson(json.output).object();
        QVERIFY(object.value(word("binary")).toBool());
        QVERIFY(!object.value(word("identical")).toBool(true));
        QCOMPARE(json.status, 1);

        const QString untouched = m_files->write(word("report"), "before");
        QCOMPARE(runCli({word("text"), zero, other, word("--format=html"), word("--output"), untouched}).status, 1);
        QCOMPARE(m_files->read(word("report")), QByteArray("before"));
        QVERIFY(runCli({word("text"), zero, other, word("--text")}).output.startsWith("Compare done: 1 diffs"));
    }

    void jsonHoldsEveryRow()
    {
        const QString left = m_files->write(word("left"), "same\nold \"x\"\t\\\n# note\n");
        const QString right = m_files->write(word("right"), "same\r\nold \"y\"\t\\\n");
        const QString options = m_files->write(
            word("options"),
            QByteArray("{'unimportantText': ['^#'], 'importantLeadingWhitespace': true}").replace('\'', '"'));
        const CliResult result = runCli({word("text"), left, right, word("--format=json"), word("--options"), options});
        QJsonParseError error;
        const QJsonObject object = QJsonDocument::fromJson(result.output, &error).object();
        QCOMPARE(error.errorString(), word("no error occurred"));
        QCOMPARE(object.value(word("left")).toObject().value(word("path")).toString(), left);
        QCOMPARE(object.value(word("right")).toObject().value(word("lineEnds")).toString(), word("Mixed"));
        QCOMPARE(object.value(word("counts")).toObject().value(word("modified")).toInt(), 1);
        const QJsonArray rows = object.value(word("rows")).toArray();
        QStringList described;
        for (const QJsonValue value : rows) {
            const QJsonObject row = value.toObject();
            described.append(QStringLiteral("%1 %2:%3 %4 | %5")
                                 .arg(row.value(word("kind")).toInt())
                                 .arg(row.value(word("leftLine")).toInt())
                                 .arg(row.value(word("rightLine")).toInt())
                                 .arg(row.value(word("leftText")).toString(), row.value(word("rightText")).toString()));
        }
        QCOMPARE(described.join(u'\n'),
                 word("0 1:1 same | same\n3 2:2 old \"x\"\t\\ | old \"y\"\t\\\n0 3:-1 # note | # note"));
    }

    void jsonEscapesEveryControlCharacter()
    {
        QByteArray line;
        for (char control = 1; control < 0x20; ++control) {
            if (control != '\n')
                line.append(control);
        }
        line += "\x7F\xC3\xA9\xF0\x9F\x98\x80.";
        const QString file = m_files->write(word("controls"), line);
        const CliResult result = runCli({word("text"), file, file, word("--format=json")});
        const QJsonArray rows = QJsonDocument::fromJson(result.output).object().value(word("rows")).toArray();
        QCOMPARE(rows.first().toObject().value(word("leftText")).toString(), QString::fromUtf8(line));
    }

    void outputFilesAreReplacedInOneStep()
    {
        const QString file = m_files->write(word("out"), "before");
        const CliResult result = compare({word("--output"), file});
        QCOMPARE(result.output, QByteArray());
        QCOMPARE(result.status, 1);
        QVERIFY(m_files->read(word("out")).startsWith("Compare done: 4 diffs"));
    }

    void htmlIsTheReport()
    {
        const QString left = m_files->write(word("a&b"), "one\n<two>\nthree\n");
        const QString right = m_files->write(word("right"), "one\n<two!>\n\nmore\n");
        const CliResult result = runCli({word("text"), left, right, word("--format=html"), word("--preset=strict")});
        const QString page = QString::fromUtf8(result.output);
        QVERIFY(page.startsWith(
            word("<!DOCTYPE html>\n<html>\n<head>\n<meta charset=\"utf-8\">\n"
                 "<title>Velmora — diff report</title>\n<style>\n"
                 "body { font-family: 'Consolas', 'Courier New', monospace; font-size: 12px; margin: 20px; }\n")));
        QVERIFY(page.contains(word("<h1>Velmora diff report</h1>\n<div class=\"info\">Left: ")));
        QVERIFY(page.contains(word("/a&amp;b<br>Right: ")));
        QVERIFY(page.contains(
            QRegularExpression(word("<br>Generated at: \\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d</div>\n"))));
        QVERIFY2(
            page.contains(word(
                "<table>\n<tr><th class=\"ln\">#</th><th>Left side</th><th class=\"ln\">#</th><th>Right "
                "side</th></tr>\n"
                "<tr class=\"eq\"><td class=\"ln\">1</td><td>one</td><td class=\"ln\">1</td><td>one</td></tr>\n"
                "<tr class=\"mod\"><td class=\"ln\">2</td><td>&lt;two&gt;</td><td "
                "class=\"ln\">2</td><td>&lt;two!&gt;</td></tr>\n"
                "<tr class=\"del\"><td class=\"ln\">3</td><td>three</td><td "
                "class=\"ln\">&nbsp;</td><td>&nbsp;</td></tr>\n"
                "<tr class=\"add\"><td class=\"ln\">&nbsp;</td><td>&nbsp;</td><td class=\"ln\">3</td><td></td></tr>\n"
                "<tr class=\"add\"><td class=\"ln\">&nbsp;</td><td>&nbsp;</td><td "
                "class=\"ln\">4</td><td>more</td></tr>\n"
                "</table>\n<div class=\"summary\">Diff summary: 4 total (added 2, removed 1, modified "
                "1)</div>\n</body>\n</html>\n")),
            result.output.constData());
    }

private:
    [[nodiscard]] CliResult compare(const QStringList &options) const
    {
        return runCli(QStringList{word("text")} + options + QStringList{m_left, m_right});
    }

    std::unique_ptr<CliFiles> m_files;
    QString m_left;
    QString m_right;
};

VELMORA_TEST(TextCommandTest)
#include "text_command_test.moc"
