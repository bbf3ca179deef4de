#include "cli/arguments.h"
#include "cli_fixture.h"
#include "support/test_main.h"

#include <QProcess>

#include <array>

using namespace velmora;
using namespace velmora::test;

class CommandLineTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void sortsArguments()
    {
        using cli::Arguments;
        using cli::OptionSpec;
        constexpr std::array specs{OptionSpec{"flag", nullptr, "a\nb"}, OptionSpec{"value", "X", "c"}};
        const auto parse = [&specs](const char *words) {
            return Arguments::parse(QString::fromLatin1(words).split(u' ', Qt::SkipEmptyParts), specs);
        };
        const Arguments all = parse("a --value=1=2 - --value 3 --flag b -- --flag");
        QCOMPARE(all.error(), QString());
        QCOMPARE(all.paths().join(u'|'), QStringLiteral("a|-|b|--flag"));
        QVERIFY(all.has("flag"));
        QCOMPARE(*all.value("value"), QStringLiteral("3"));
        QCOMPARE(*parse("--value=").value("value"), QString());
        QVERIFY(!parse("a").value("value"));
        QVERIFY(!parse("--value").error().isEmpty());
        QVERIFY(!parse("--flag=x").error().isEmpty());
        QVERIFY(!parse("--other").error().isEmpty());
        QVERIFY(!parse("-flag").error().isEmpty());
        QCOMPARE(cli::describeOptions(specs), QByteArray("  --flag     a\n             b\n  --value X  c\n"));
    }

    void helpAndVersionNeedNothingElse()
    {
        const CliResult program = runCli({QStringLiteral("--help")});
        QCOMPARE(program.status, 0);
        QVERIFY(program.output.contains("\n  text "));
        const CliResult command = runCli({QStringLiteral("text"), QStringLiteral("--help")});
        QCOMPARE(command.status, 0);
        for (const char *option : {"--format", "--output", "--preset", "--options", "--encoding-left",
                                   "--encoding-right", "--text", "--help", "--version"})
            QVERIFY2(command.output.contains(QByteArray("\n  ") + option + ' '), option);
        QCOMPARE(runCli({QStringLiteral("--version")}).output,
                 runCli({QStringLiteral("text"), QStringLiteral("--version")}).output);
        QVERIFY(runCli({QStringLiteral("--version")}).output.startsWith("velmora-cli "));
    }

    void refusesWhatItDoesNotKnow_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QByteArray>("error");
        const auto row = [](const char *arguments, const char *error) {
            QTest::newRow(arguments) << QString::fromLatin1(arguments).split(u' ', Qt::SkipEmptyParts)
                                     << QByteArray("velmora-cli: ") + error + '\n';
        };
        row("", "no command given; velmora-cli --help lists them");
        row("tex a b", "unknown command \"tex\"; velmora-cli --help lists them");
        row("--flag", "unknown option \"--flag\"; velmora-cli --help lists them");
        row("text a", "two paths are needed, 1 given");
        row("text a b c", "two paths are needed, 3 given");
        row("text a b --format pdf", "unknown format \"pdf\"");
        row("text a b --preset loose", "unknown preset \"loose\"");
        row("text a b --encoding-right=EBCDIC-9", "unknown encoding \"EBCDIC-9\"");
        row("text a b --encoding-left", "option \"--encoding-left\" needs a value");
        row("text a b --quiet", "unknown option \"--quiet\"");
        row("text / -", "/: Is a directory");
        row("text - /", "/: Is a directory");
    }

    void refusesWhatItDoesNotKnow()
    {
        QFETCH(QStringList, arguments);
        const CliResult result = runCli(arguments, "text\n");
        QTEST(result.errors, "error");
        QCOMPARE(result.status, 2);
        QVERIFY(result.output.isEmpty());
    }

    void namesThePathThatFailed_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("left") << QStringList{QStringLiteral("text"), QStringLiteral("/no/file"), QStringLiteral("-")};
        QTest::newRow("right") << QStringList{QStringLiteral("text"), QStringLiteral("-"), QStringLiteral("/no/file")};
        QTest::newRow("options") << QStringList{QStringLiteral("text"), QStringLiteral("-"), QStringLiteral("-"),
                                                QStringLiteral("--options=/no/file")};
        QTest::newRow("output") << QStringList{QStringLiteral("text"), QStringLiteral("-"), QStringLiteral("-"),
                                               QStringLiteral("--output"), QStringLiteral("/no/file")};
    }

    void namesThePathThatFailed()
    {
        QFETCH(QStringList, arguments);
        const CliResult result = runCli(arguments, "text\n");
        QCOMPARE(result.status, 2);
        QCOMPARE(result.output, QByteArray());
        // The system says the rest in its own words.
        QVERIFY2(result.errors.startsWith("velmora-cli: /no/file: "), result.errors.constData());
        QCOMPARE(result.errors.count('\n'), 1);
    }

    void anErrorStaysOneLine()
    {
        const CliResult result = runCli({QStringLiteral("text"), QStringLiteral("no\nfile"), QStringLiteral("-")});
        QCOMPARE(result.errors.count('\n'), 1);
    }

    void theProgramItselfRuns()
    {
        CliFiles files;
        files.write(QStringLiteral("left ü.txt"), "a\r\nb\n");
        QProcess program;
        program.setWorkingDirectory(files.path(QString()));
        program.start(QStringLiteral(VELMORA_CLI), {QStringLiteral("text"), QStringLiteral("--format=patch"),
                                                    QStringLiteral("left ü.txt"), QStringLiteral("-")});
        QVERIFY(program.waitForStarted());
        program.write("a\r\nc\n");
        program.closeWriteChannel();
        QVERIFY(program.waitForFinished());
        QCOMPARE(program.exitCode(), 1);
        QCOMPARE(program.readAllStandardError(), QByteArray());
        QCOMPARE(program.readAllStandardOutput(),
                 QByteArray("--- left \xC3\xBC.txt\t\n+++ -\n@@ -1,2 +1,2 @@\n a\r\n-b\n+c\n"));

#ifdef Q_OS_LINUX
        program.setStandardOutputFile(QStringLiteral("/dev/full"));
        program.start(QStringLiteral(VELMORA_CLI),
                      {QStringLiteral("text"), QStringLiteral("left ü.txt"), QStringLiteral("left ü.txt")});
        QVERIFY(program.waitForFinished());
        QCOMPARE(program.exitCode(), 2);
        QVERIFY(program.readAllStandardError().startsWith("velmora-cli: standard output: "));
#endif
    }
};

VELMORA_TEST(CommandLineTest)
#include "command_line_test.moc"
