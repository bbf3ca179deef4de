#include "settings/options/text_importance_file.h"
#include "settings/options/text_presets.h"
#include "settings/options/text_replacements.h"
#include "settings/options/text_session_options.h"
#include "support/test_main.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

using namespace velmora;

namespace {

using Kind = ImportanceFileError::Kind;

/// A record in which every field differs from its default.
TextSessionOptions unusualOptions()
{
    TextSessionOptions options;
    options.leftReadOnly = true;
    options.rightReadOnly = true;
    options.ignoreBlankLines = true;
    options.importantLeadingWhitespace = true;
    options.importantEmbeddedWhitespace = true;
    options.importantTrailingWhitespace = true;
    options.importantEverythingElse = false;
    options.importantCharacterCase = false;
    options.orphanLinesAlwaysImportant = true;
    options.compareLineEndings = false;
    options.unimportantText = {QStringLiteral("^//"), QStringLiteral("生成")};
    options.leftFileType = QStringLiteral("C++");
    options.leftEncoding = QStringLiteral("UTF-8");
    options.leftEol = QStringLiteral("Unix");
    options.rightFileType = QStringLiteral("Python");
    options.rightEncoding = QStringLiteral("Big5");
    options.rightEol = QStringLiteral("Mac");
    options.sameAsLeftFileFormat = false;
    options.alignAlgorithm = 2;
    options.curvatureTolerance = 7;
    options.useNearbyMatches = false;
    options.neverAlignDifferences = true;
    options.leftReplaceFind = {QStringLiteral("a")};
    options.leftReplaceWith = {QStringLiteral("b")};
    options.rightReplaceFind = {QStringLiteral("c"), QStringLiteral("d")};
    options.rightReplaceWith = {QStringLiteral("e")};
    deriveLegacySwitches(options);
    return options;
}

QJsonObject object(const char *json)
{
    return QJsonDocument::fromJson(json).object();
}

void write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), bytes.size());
}

} // namespace

class TextOptionsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void jsonHoldsEveryFieldButPathsAndDescription()
    {
        TextSessionOptions written = unusualOptions();
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
        read.leftPath = written.leftPath = QStringLiteral("/left");
        read.description = written.description = QStringLiteral("words");
        QVERIFY(fromJson(json, read));
        QCOMPARE(read, written);
    }

    void missingAndMistypedKeysLeaveTheirFields()
    {
        TextSessionOptions options = unusualOptions();
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
            TextSessionOptions expected = unusualOptions();
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
                TextSessionOptions options = unusualOptions();
                QVERIFY(applyTextPreset(QLatin1String(prefix) + QLatin1String(row.name), options));
                QCOMPARE(options, expected);
            }
        }
        TextSessionOptions options = unusualOptions();
        for (const char *unknown : {"strict", "@preset/text/vm-", "@preset/folder/vm-strict", ""})
            QVERIFY(!applyTextPreset(QLatin1String(unknown), options));
        QCOMPARE(options, unusualOptions());
    }

    void replacementRulesApplyInOrder_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QStringList>("find");
        QTest::addColumn<QStringList>("with");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char *name, const char *line, QStringList find, QStringList with,
                            const char *expected) {
            QTest::newRow(name) << QString::fromUtf8(line) << find << with << QString::fromUtf8(expected);
        };
        const QString a = QStringLiteral("a"), b = QStringLiteral("b"), c = QStringLiteral("c");
        row("chain", "aAb", {a, b}, {b, c}, "cAc");
        row("no partner", "abc", {a, b}, {c}, "cc");
        row("empty find", "abc", {QString(), a}, {b, b}, "bbc");
        row("every occurrence", "aaa", {a}, {QStringLiteral("aa")}, "aaaaaa");
        row("beyond ascii", "中文中", {QStringLiteral("中")}, {QStringLiteral("é")}, "é文é");
        row("line feed in", "ab", {a}, {QStringLiteral("\n")}, "\nb");
        row("carriage return at the end", "a\rb", {b}, {}, "a\r");
        row("half a character", "😀", {QString(QChar(0xD83D))}, {b}, "😀");
    }

    void replacementRulesApplyInOrder()
    {
        QFETCH(QString, line);
        QFETCH(QStringList, find);
        QFETCH(QStringList, with);
        QFETCH(QString, expected);
        const QByteArray utf8 = line.toUtf8();
        const TextLines lines = applyReplacementRules(TextLines::split(utf8 + "\r\n" + utf8 + '\n' + utf8), find, with);
        QCOMPARE(lines.count(), 3);
        for (qsizetype index = 0; index < lines.count(); ++index)
            QCOMPARE(lines.text(index), expected);
        const bool keepsEnds = !expected.endsWith(u'\r');
        QCOMPARE(lines.lineEnd(0), LineEnd::CrLf);
        QCOMPARE(lines.lineEnd(1), keepsEnds ? LineEnd::Lf : LineEnd::CrLf);
        QCOMPARE(lines.lineEnd(2), keepsEnds ? LineEnd::None : LineEnd::Cr);
    }

    void importanceRulesComeBack()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("rules.json"));
        QVERIFY(exportImportanceRules(path, unusualOptions()).ok());
        TextSessionOptions options;
        QVERIFY(importImportanceRules(path, options).ok());
        TextSessionOptions expected;
        const TextSessionOptions unusual = unusualOptions();
        expected.importantLeadingWhitespace = unusual.importantLeadingWhitespace;
        expected.importantEmbeddedWhitespace = unusual.importantEmbeddedWhitespace;
        expected.importantTrailingWhitespace = unusual.importantTrailingWhitespace;
        expected.importantEverythingElse = unusual.importantEverythingElse;
        expected.importantCharacterCase = unusual.importantCharacterCase;
        expected.orphanLinesAlwaysImportant = unusual.orphanLinesAlwaysImportant;
        expected.compareLineEndings = unusual.compareLineEndings;
        expected.ignoreBlankLines = unusual.ignoreBlankLines;
        expected.unimportantText = unusual.unimportantText;
        deriveLegacySwitches(expected);
        QCOMPARE(options, expected);

        QVERIFY(!exportImportanceRules(folder.filePath(QStringLiteral("no/folder")), options).ok());
    }

    void importRefusesWhatIsNotItsKind_data()
    {
        QTest::addColumn<QByteArray>("json");
        QTest::addColumn<int>("kind");
        QTest::addColumn<QString>("detail");
        const auto row = [](const char *name, const QByteArray &json, Kind kind, const char *detail) {
            QTest::newRow(name) << json << int(kind) << QString::fromUtf8(detail);
        };
        row("ours", R"({"schema": "Tarnwick.TextImportance/1", "ignoreBlankLines": false})", Kind::None, "");
        row("no schema", R"({"ignoreBlankLines": false})", Kind::None, "");
        row("empty schema", R"({"schema": "", "ignoreBlankLines": false})", Kind::None, "");
        row("other version", R"({"schema": "Tarnwick.TextImportance/2", "ignoreBlankLines": false})", Kind::OtherSchema,
            "Tarnwick.TextImportance/2");
        row("other case", R"({"schema": "tarnwick.TextImportance/1"})", Kind::OtherSchema, "tarnwick.TextImportance/1");
        row("number", R"({"schema": 1})", Kind::OtherSchema, "1");
        row("empty object", "{}", Kind::Empty, "");
        row("list", "[1]", Kind::Empty, "");
        row("cut", R"({"schema": )", Kind::InvalidJson, "unterminated object");
    }

    void importRefusesWhatIsNotItsKind()
    {
        QFETCH(QByteArray, json);
        QFETCH(int, kind);
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("rules.json"));
        write(path, json);
        TextSessionOptions options = unusualOptions();
        const ImportanceFileError error = importImportanceRules(path, options);
        QCOMPARE(int(error.kind), kind);
        QTEST(error.detail, "detail");
        QCOMPARE(options.ignoreBlankLines, !error.ok());
        QCOMPARE(importImportanceRules(folder.filePath(QStringLiteral("none")), options).kind, Kind::Unreadable);
    }
};

VELMORA_TEST(TextOptionsTest)
#include "text_options_test.moc"
