#include "settings/options/text_importance_file.h"
#include "settings/options/text_presets.h"
#include "settings/options/text_replacements.h"
#include "settings/options/text_session_options.h"
#include "support/files.h"
#include "support/test_main.h"
#include "support/unusual_text_options.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTemporaryDir>

using namespace velmora;
using namespace velmora::test;

namespace {

using Kind = ImportanceFileError::Kind;

QJsonObject object(const char *json)
{
    return QJsonDocument::fromJson(json).object();
}

} // namespace

class TextOptionsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void jsonHoldsEveryFieldButPathsAndDescription()
    {
        TextSessionOptions written = unusualTextOptions();
        const QJsonObject json = toJson(written);
        QCOMPARE(json.size(), 29);
        for (const char *key : {"leftPath", "rightPath", "description"})
            QVERIFY(!json.contains(QLatin1String(key)));
        const QJsonObject usual = toJson(TextSessionOptions());
        for (const QString &key : json.keys()) {
            // The white-space switch follows from flags that are set here, all others must come through by themselves.
            QVERIFY2(json.value(key) != usual.value(key), qPrintable(key));
        }

        TextSessionOptions read;
        read.leftPath = written.leftPath = word("/left");
        read.description = written.description = word("words");
        QVERIFY(fromJson(json, read));
        QCOMPARE(read, written);
    }

    void missingAndMistypedKeysLeaveTheirFields()
    {
        TextSessionOptions options = unusualTextOptions();
        const TextSessionOptions before = options;
        QVERIFY(!fromJson(QJsonObject(), options));
        QCOMPARE(options, before);
        QVERIFY(
            fromJson(object(R"({"importantLeadingWhitespace": "yes", "alignAlgorithm": "1", "curvatureTolerance": 2.5,
                                    "leftEol": 3, "unimportantText": "x", "unknown": true})"),
                     options));
        QCOMPARE(options, before);
    }

    void anOlderObjectSetsTheImportanceFlags()
    {
        TextSessionOptions options;
        options.importantEverythingElse = false;
        QVERIFY(
            fromJson(object(R"({"ignoreCase": true, "ignoreWhitespace": false, "ignoreLineEndings": true})"), options));
        QVERIFY(!options.importantCharacterCase);
        QVERIFY(options.importantLeadingWhitespace && options.importantEmbeddedWhitespace &&
                options.importantTrailingWhitespace);
        QVERIFY(!options.compareLineEndings);
        QVERIFY(!options.importantEverythingElse);

        // The flag decides, not the legacy switch beside it.
        QVERIFY(fromJson(object(R"({"ignoreCase": true, "importantLeadingWhitespace": true,
                                    "importantCharacterCase": true})"),
                         options));
        QVERIFY(!options.ignoreCase);
        QVERIFY(!options.ignoreWhitespace);
    }

    void presetsSetTheirRulesAndNothingElse()
    {
        struct Expected {
            const char *name;
            bool whitespace, character, lineEnds, blank, orphan;
        };
        constexpr Expected table[] = {
            {"strict", true, true, true, false, true},
            {"ignore-whitespace", false, true, true, false, true},
            {"ignore-case", true, false, true, false, true},
            {"relaxed", false, false, false, true, false},
        };
        QCOMPARE(textPresets().size(), std::size(table));
        for (size_t index = 0; index < std::size(table); ++index) {
            const Expected &row = table[index];
            QCOMPARE(textPresets()[index].name, QByteArray("@preset/text/vm-") + row.name);
            TextSessionOptions expected = unusualTextOptions();
            expected.importantLeadingWhitespace = row.whitespace;
            expected.importantEmbeddedWhitespace = row.whitespace;
            expected.importantTrailingWhitespace = row.whitespace;
            expected.importantEverythingElse = true;
            expected.importantCharacterCase = row.character;
            expected.compareLineEndings = row.lineEnds;
            expected.ignoreBlankLines = row.blank;
            expected.orphanLinesAlwaysImportant = row.orphan;
            expected.unimportantText.clear();
            expected.alignAlgorithm = 0;
            expected.useNearbyMatches = true;
            expected.neverAlignDifferences = false;
            deriveLegacySwitches(expected);
            for (const char *prefix : {"@preset/text/vm-", "@preset/text/flibelag-"}) {
                TextSessionOptions options = unusualTextOptions();
                QVERIFY(applyTextPreset(QLatin1String(prefix) + QLatin1String(row.name), options));
                QCOMPARE(options, expected);
            }
        }
        TextSessionOptions options = unusualTextOptions();
        for (const char *unknown : {"strict", "@preset/text/vm-", "@preset/folder/vm-strict", ""})
            QVERIFY(!applyTextPreset(QLatin1String(unknown), options));
        QCOMPARE(options, unusualTextOptions());
    }

    void replacementRulesApplyInOrder()
    {
        struct Case {
            QString line;
            QStringList find;
            QStringList with;
            QString expected;
        };
        const QString a = word("a"), b = word("b"), c = word("c");
        const QList<Case> cases{
            {word("aAb"), {a, b}, {b, c}, word("cAc")},
            {word("abc"), {a, b}, {c}, word("cc")},
            {word("abc"), {QString(), a}, {b, b}, word("bbc")},
            {word("aaa"), {a}, {word("aa")}, word("aaaaaa")},
            {word("中文中"), {word("中")}, {word("é")}, word("é文é")},
            {word("ab"), {a}, {word("\n")}, word("\nb")},
            {word("a\rb"), {b}, {}, word("a\r")},
            {word("😀"), {QString(QChar(0xD83D))}, {b}, word("😀")}, // half a character
        };
        for (const auto &[line, find, with, expected] : cases) {
            const QByteArray utf8 = line.toUtf8();
            const TextLines lines =
                applyReplacementRules(TextLines::split(utf8 + "\r\n" + utf8 + '\n' + utf8), find, with).value();
            QCOMPARE(lines.count(), 3);
            for (qsizetype index = 0; index < lines.count(); ++index)
                QCOMPARE(lines.text(index), expected);
            const bool keepsEnds = !expected.endsWith(u'\r');
            QCOMPARE(lines.lineEnd(0), LineEnd::CrLf);
            QCOMPARE(lines.lineEnd(1), keepsEnds ? LineEnd::Lf : LineEnd::CrLf);
            QCOMPARE(lines.lineEnd(2), keepsEnds ? LineEnd::None : LineEnd::Cr);
        }
    }

    void rulesThatMultiplyATextEndBeforeMemoryDoes()
    {
        const TextLines text = TextLines::split(QByteArray("a\n").repeated(1000));
        const auto doubled = [&](int rules) {
            return applyReplacementRules(text, QStringList(rules, word("a")), QStringList(rules, word("aa")));
        };
        QCOMPARE(doubled(10)->bytes().size(), size_t(1000 * 1025));
        QVERIFY(!doubled(17)); // 131 MB from 2 KB
        QVERIFY(!doubled(60));
    }

    void importanceRulesComeBack()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath(word("rules.json"));
        QVERIFY(exportImportanceRules(path, unusualTextOptions()).ok());
        TextSessionOptions options;
        QVERIFY(importImportanceRules(path, options).ok());
        static const QRegularExpression carried(word("^(important|ignore|orphan|compareLineEndings|unimportant)"));
        const QJsonObject usual = toJson(TextSessionOptions());
        const QJsonObject unusual = toJson(unusualTextOptions());
        for (const QString &key : usual.keys())
            QCOMPARE(toJson(options).value(key), (key.contains(carried) ? unusual : usual).value(key));

        QVERIFY(!exportImportanceRules(folder.filePath(word("no/folder")), options).ok());
    }

    void importRefusesWhatIsNotItsKind()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath(word("rules.json"));
        struct Case {
            QByteArray json;
            Kind kind;
            const char *detail = "";
        };
        const QList<Case> cases{
            {R"({"schema": "Tarnwick.TextImportance/1", "ignoreBlankLines": false})", Kind::None},
            {R"({"ignoreBlankLines": false})", Kind::None},
            {R"({"schema": "", "ignoreBlankLines": false})", Kind::None},
            {R"({"schema": "Tarnwick.TextImportance/2", "ignoreBlankLines": false})", Kind::OtherSchema,
             "Tarnwick.TextImportance/2"},
            {R"({"schema": "tarnwick.TextImportance/1"})", Kind::OtherSchema, "tarnwick.TextImportance/1"},
            {R"({"schema": 1})", Kind::OtherSchema, "1"},
            {"{}", Kind::Empty},
            {"[1]", Kind::Empty},
            {R"({"schema": )", Kind::InvalidJson, "unterminated object"},
        };
        for (const Case &tried : cases) {
            QVERIFY(makeFile(path, tried.json));
            TextSessionOptions options = unusualTextOptions();
            const ImportanceFileError error = importImportanceRules(path, options);
            QVERIFY2(error.kind == tried.kind, tried.json.constData());
            QCOMPARE(error.detail, QString::fromUtf8(tried.detail));
            QCOMPARE(options.ignoreBlankLines, !error.ok());
        }
        TextSessionOptions options;
        QCOMPARE(importImportanceRules(folder.filePath(word("none")), options).kind, Kind::Unreadable);
    }
};

VELMORA_TEST(TextOptionsTest)
#include "text_options_test.moc"
