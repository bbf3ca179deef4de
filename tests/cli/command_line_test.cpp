#include "cli/arguments.h"
#include "cli/command.h"
#include "cli_fixture.h"
#include "support/test_main.h"

#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

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
        for (const char *wrong : {"--value", "--flag=x", "--other", "-flag"})
            QVERIFY(!parse(wrong).error().isEmpty());
        constexpr std::array choices{cli::Choice{"one", "d"}, cli::Choice{"three", "e"}};
        const std::array closed{OptionSpec{"kind", "K", "", choices}};
        QCOMPARE(Arguments::parse({word("--kind=two")}, closed).error(), word("unknown kind \"two\""));
        QCOMPARE(Arguments::parse({word("--kind=three")}, closed).error(), QString());
        QCOMPARE(cli::describeOptions(closed), QByteArray("  --kind K  one    d\n            three  e\n"));
        QCOMPARE(cli::describeOptions(specs), QByteArray("  --flag     a\n             b\n  --value X  c\n"));
    }

    // The manual page lacked a command, and nobody was told.
    void everyDescriptionHasEveryOption()
    {
        QCOMPARE(runCli("--version").output, runCli("text --version").output);
        QVERIFY(runCli("--version").output.startsWith("velmora-cli "));
        QFile document(QStringLiteral(VELMORA_SOURCE_DIR "/docs/velmora-cli.md"));
        QVERIFY(document.open(QIODevice::ReadOnly));
        const QByteArray documented = document.readAll();
        const QByteArray help = runCli("--help").output;
        const QByteArray manual = runCli("--man").output;
        for (const cli::Command &command : cli::commands()) {
            QVERIFY(help.contains(QByteArray("\n  ") + command.name + ' '));
            QVERIFY(documented.contains(QByteArray("\n## velmora-cli ") + command.name));
            const QByteArray own = runCli(QByteArray(command.name) + " --help").output;
            const qsizetype from = manual.indexOf(".SH COMMAND " + QByteArray(command.name).toUpper() + '\n');
            const QByteArray described = manual.mid(from, manual.indexOf(".SH", from + 1) - from).replace("\\-", "-");
            QVERIFY(from > 0);
            for (const cli::OptionSpec &option : cli::allOptions(command)) {
                const QByteArray name = QByteArray("--") + option.name;
                QVERIFY2(own.contains("\n  " + name + ' '), name.constData());
                QVERIFY2(described.contains(".TP\n\\fB" + name + "\\fR"), name.constData());
                QVERIFY2(documented.contains(name) || name == "--help" || name == "--version", name.constData());
                for (const cli::Choice &choice : option.choices)
                    QVERIFY2(described.contains(".TP\n" + QByteArray(choice.name) + '\n'), choice.name);
            }
        }
    }

#ifdef Q_OS_LINUX
    void bashCompletesCommandsOptionsAndValues()
    {
        if (QStandardPaths::findExecutable(word("bash")).isEmpty())
            QSKIP("there is no bash");
        const QByteArray script = runCli("--bash-completion").output;
        const std::pair<const char *, const char *> cases[]{
            {"velmora-cli fo", "folder"},
            {"velmora-cli --v", "--version"},
            {"velmora-cli text --for", "--format"},
            {"velmora-cli text --format ", "summary json patch html"},
            {"velmora-cli text --format = j", "json"},
            {"velmora-cli folder --format = ", "summary list json html"},
            {"velmora-cli folder a --method c", "crc"},
            {"velmora-cli system --kind s", "service startup"},
            {"velmora-cli text --output ", ""},
            {"velmora-cli text a", ""},
        };
        for (const auto &[typed, offered] : cases) {
            QStringList words = QString::fromLatin1(typed).split(u' ');
            if (words.size() > 2 && words.constLast().isEmpty() && words[words.size() - 2] == u'=')
                words.removeLast(); // bash stands on the sign itself then
            const QString asked = QString::fromUtf8(script) + word("COMP_WORDS=(\"$@\"); COMP_CWORD=$(($# - 1)); "
                                                                   "_velmora_cli; echo \"${COMPREPLY[*]}\"");
            QProcess bash;
            bash.start(word("bash"), QStringList{word("--norc"), word("-c"), asked, word("bash")} + words);
            QVERIFY(bash.waitForFinished());
            QCOMPARE(typed + QByteArray(": ") + bash.readAllStandardOutput().trimmed(),
                     typed + QByteArray(": ") + offered);
        }
    }
#endif

    void refusesWhatItDoesNotKnow()
    {
        const QList<std::pair<QByteArray, QByteArray>> cases{
            {"", "no command given; velmora-cli --help lists them"},
            {"tex a b", "unknown command \"tex\"; velmora-cli --help lists them"},
            {"--flag", "unknown option \"--flag\"; velmora-cli --help lists them"},
            {"text a", "two paths are needed, 1 given"},
            {"text a b c", "two paths are needed, 3 given"},
            {"text a b --format pdf", "unknown format \"pdf\""},
            {"text a b --preset loose", "unknown preset \"loose\""},
            {"text a b --encoding-right=EBCDIC-9", "unknown encoding \"EBCDIC-9\""},
            {"text a b --encoding-left", "option \"--encoding-left\" needs a value"},
            {"text a b --quiet", "unknown option \"--quiet\""},
            {"text / -", "/: Is a directory"},
            {"text - /", "/: Is a directory"},
            {"folder l", "two paths are needed, 1 given"},
            {"folder l r --tolerance -1", "\"-1\" is no number of seconds"},
            {"folder l r --align a*", "\"a*\" is no pair of masks, LEFT=RIGHT"},
            {"folder / /no/folder", "/no/folder: there is no such folder or archive"},
#ifdef Q_OS_UNIX
            {"folder /dev/null /", "/dev/null: is neither a folder nor an archive"},
            {"duplicates /dev/null", "/dev/null: is not a folder"},
            {"merge-folders / / /no/folder", "/no/folder: there is no such folder"},
#endif
        };
        for (const auto &[arguments, error] : cases) {
            const CliResult result = runCli(arguments, "text\n");
            QCOMPARE(arguments + '|' + result.errors, arguments + "|velmora-cli: " + error + '\n');
            QCOMPARE(result.status, 2);
            QVERIFY(result.output.isEmpty());
        }
    }

    void namesThePathThatFailed()
    {
        for (const char *arguments :
             {"text /no/file -", "text - /no/file", "text - - --options=/no/file", "text - - --output /no/file"}) {
            const CliResult result = runCli(arguments, "text\n");
            QCOMPARE(result.status, 2);
            QCOMPARE(result.output, QByteArray());
            // The system says the rest in its own words.
            QVERIFY2(result.errors.startsWith("velmora-cli: /no/file: "), result.errors.constData());
            QCOMPARE(result.errors.count('\n'), 1);
        }
        QVERIFY(runCli("text no\nfile\u202E -").errors.startsWith("velmora-cli: no[LF]file[RLO]: "));
    }

    void theProgramItselfRuns()
    {
        // The drive that it is on is the one of the folder that this program was started in.
        const QString cli = QFileInfo(QStringLiteral(VELMORA_CLI)).absoluteFilePath();
        CliFiles files;
        CliFiles::write("left ü.txt", "a\r\nb\n");
        QProcess program;
        program.start(cli, {word("text"), word("--format=patch"), word("left ü.txt"), word("-")});
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
        program.start(cli, {word("text"), word("left ü.txt"), word("left ü.txt")});
        QVERIFY(program.waitForFinished());
        QCOMPARE(program.exitCode(), 2);
        QVERIFY(program.readAllStandardError().startsWith("velmora-cli: standard output: "));
#endif
    }
};

VELMORA_TEST(CommandLineTest)
#include "command_line_test.moc"
