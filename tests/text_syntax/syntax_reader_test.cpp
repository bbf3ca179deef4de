#include "support/files.h"
#include "support/test_main.h"
#include "text/syntax/syntax_reader.h"
#include "text_syntax/syntax_pictures.h"

#include <QFile>
#include <QTemporaryDir>

using namespace velmora;
using namespace velmora::test;

namespace {

QByteArray withRule(const char *rule)
{
    return QByteArrayLiteral(R"({"name": "X", "rules": [)") + rule + QByteArrayLiteral("]}");
}

} // namespace

class SyntaxReaderTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void damagedDefinitionsAreRefused()
    {
        QByteArray deep = R"({"start": "x", "to": "y"})";
        for (int k = 0; k < 100; ++k)
            deep = R"({"start": "x", "to": "y", "rules": [)" + deep + "]}";
        struct Case {
            QByteArray json;
            const char *complaint;
        };
        const auto others = [](const QString &name) {
            return name == QStringLiteral("Y")   ? QByteArray(R"({"name": "Y"})")
                   : name == QStringLiteral("X") ? QByteArray(R"({"name": "X"})")
                                                 : QByteArray();
        };
        for (const Case &damaged : {
                 Case{{}, "definition: "},
                 Case{R"({"name": "X", "rules": [)", "definition: "},
                 Case{"[]", "not a JSON object"},
                 Case{"{}", "has no name"},
                 Case{R"({"name": "X", "colour": 1})", "unknown key \"colour\""},
                 Case{R"({"name": "X", "ignoreCase": "yes"})", "\"ignoreCase\" is of the wrong type"},
                 Case{R"({"name": "X", "words": {"keywords": "a"}})", "unknown role \"keywords\""},
                 Case{withRule(R"({"role": "comment"})"), "has no start"},
                 Case{withRule(R"({"start": "", "role": "comment"})"), "begins with an ASCII character"},
                 Case{withRule(R"({"start": "x", "role": "commnet"})"), "rules[0]: \"commnet\""},
                 Case{withRule("1"), "rules[0]: not an object"},
                 Case{withRule(R"({"start": "x", "end": "y"})"), "unknown key \"end\""},
                 Case{withRule(R"({"start": "x", "to": "y", "escape": "ab"})"), "one character"},
                 Case{withRule(R"({"start": "x", "mustClose": true})"), "has no end"},
                 Case{withRule(R"({"start": "x", "at": "column", "column": -1})"), "out of range"},
                 Case{withRule(R"({"start": "x", "to": "y", "set": "z"})"), "there is no set \"z\""},
                 Case{withRule(R"({"start": "x", "to": "y", "language": "Z"})"), "no language \"Z\""},
                 Case{withRule(R"({"start": "x", "to": "y", "language": "X"})"), "\"X\" contains itself"},
                 Case{withRule(R"({"start": "x", "toLineEnd": true, "language": "Y"})"), "needs an end"},
                 Case{withRule(deep.constData()), "nested too deep"},
             }) {
            const SyntaxReadResult read = readSyntaxDefinition(damaged.json, others);
            QVERIFY(!read.definition);
            QVERIFY2(read.error.contains(QLatin1String(damaged.complaint)), qPrintable(read.error));
        }
    }

    void anyCutOfADefinitionIsRefused()
    {
        QFile file(QStringLiteral(VELMORA_SOURCE_DIR "/resources/syntax/rust.json"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray whole = file.readAll().trimmed();
        QVERIFY(readSyntaxDefinition(whole).definition);
        for (qsizetype size = 0; size < whole.size(); size += 7)
            QVERIFY(!readSyntaxDefinition(whole.first(size)).definition);
    }

    void aDamagedFileLeavesTheOthersUsable()
    {
        QTemporaryDir folder;
        QVERIFY(makeFile(folder.filePath(QStringLiteral("good.json")), R"({"name": "Good", "files": "*.good"})"));
        QVERIFY(makeFile(folder.filePath(QStringLiteral("bad.json")), R"({"name": "Bad", "files": "*.bad", "x": 1})"));
        QVERIFY(makeFile(folder.filePath(QStringLiteral("worse.json")), QByteArray(1000, '\xff')));
        const SyntaxLibrary library(folder.path());
        QCOMPARE(library.names(), words("Good"));
        QCOMPARE(library.errors().size(), 2);
        QVERIFY(library.detect(QStringLiteral("a.good")));
        QVERIFY(!library.detect(QStringLiteral("a.bad")));
        QVERIFY(!library.named(QStringLiteral("Bad")));
        QVERIFY(SyntaxLibrary(folder.filePath(QStringLiteral("nowhere"))).names().isEmpty());
    }
};

VELMORA_TEST(SyntaxReaderTest)
#include "syntax_reader_test.moc"
