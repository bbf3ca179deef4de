#include "app/command_line.h"
#include "support/test_main.h"

#include <QCommandLineParser>

using namespace velmora;

namespace {

/// A command line as one line of text, to be read at a glance.
QString dump(const CommandLine &line)
{
    QStringList parts;
    for (const ExplorerPick &pick : line.picks)
        parts.append((pick.side == ExplorerPick::Side::Left ? QStringLiteral("left=") : QStringLiteral("right=")) +
                     pick.path);
    if (!line.report.isEmpty())
        parts.append(QStringLiteral("report=") + line.report);
    if (!line.sessionFile.isEmpty())
        parts.append(QStringLiteral("session=") + line.sessionFile);
    if (!line.workspace.isEmpty())
        parts.append(QStringLiteral("workspace=") + line.workspace);
    parts.append(line.mode);
    return (parts + line.paths).join(u' ');
}

QStringList arguments(const QString &typed)
{
    return QStringList{QStringLiteral("velmora")} + typed.split(u' ', Qt::SkipEmptyParts);
}

} // namespace

class CommandLineTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void says_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("understood");
        const auto row = [](const char *typed, const char *understood) {
            QTest::newRow(typed) << QString::fromLatin1(typed) << QString::fromLatin1(understood);
        };
        row("", "auto");
        row("a b", "auto a b");
        row("a b c", "auto a b");
        row("--diff a b", "text a b");
        row("a --folder b", "folder a b");
        row("a b --sync --binary", "binary a b");
        row("--table", "table");
        row("--image", "image");
        row("--registry", "registry");
        row("--version-compare", "version");
        row("--git a", "git a");
        row("--archive", "archive");
        row("--checksum a", "checksum a");
        row("--duplicate a", "duplicate a");
        row("--snapshot a", "snapshot a");
        row("--diskusage a", "diskusage a");
        row("--browse a", "archivebrowse a");
        row("--as-left a", "left=a auto");
        row("--as-right b --as-left a", "right=b left=a auto");
        row("--workspace desk a", "workspace=desk auto a");
        row("a --as-left", "auto a");
        row("--as-left --diff", "left=--diff auto");
        row("--report r.html --diff a b", "report=r.html text a b");
        row("--report", "auto");
        row("--report=r.html a b", "report=r.html auto a b");
        row("--theme dark --lang zh a b", "auto a b");
        row("--theme=dark a", "auto a");
        row("--help --version -x --unknown - --diff=1 a", "auto a");
        row("a x.KVSession b --as-left c", "left=c session=x.KVSession auto");
        row("x.kvsession y.kvsession", "session=x.kvsession auto");
    }

    void says()
    {
        QFETCH(QString, typed);
        QFETCH(QString, understood);
        QCOMPARE(dump(parseCommandLine(arguments(typed))), understood);
    }

    void passesOverEmptyArguments()
    {
        QCOMPARE(dump(parseCommandLine({{}, {}, QStringLiteral("a"), {}})), QStringLiteral("auto a"));
        QCOMPARE(dump(parseCommandLine({})), QStringLiteral("auto"));
    }

    void makesEveryPathAbsoluteForAnotherFolder()
    {
        const QDir folder(QStringLiteral("/home/me"));
        const QStringList typed = arguments(QStringLiteral(
            "--diff a --report r.html --as-left ../l --theme dark --report=q --as-right /r ./b --lang --unknown"));
        QCOMPARE(withAbsolutePaths(typed, folder).join(u' '),
                 QStringLiteral("velmora --diff /home/me/a --report /home/me/r.html --as-left /home/l --theme dark "
                                "--report=/home/me/q --as-right /r /home/me/b --lang --unknown"));
    }

    void readsThemeAndLanguage()
    {
        using Theme = StartSwitches::Theme;
        const auto read = [](const char *typed) {
            QCommandLineParser parser;
            declareCommandLine(parser);
            parser.parse(arguments(QString::fromLatin1(typed)));
            return startSwitches(parser);
        };
        QCOMPARE(read(""), (StartSwitches{Theme::Unchanged, {}}));
        QCOMPARE(read("--theme 1"), (StartSwitches{Theme::Dark, {}}));
        QCOMPARE(read("--theme Light"), (StartSwitches{Theme::Light, {}}));
        QCOMPARE(read("--theme whatever --lang fr"), (StartSwitches{Theme::Light, {}}));
        QCOMPARE(read("--lang English"), (StartSwitches{Theme::Unchanged, QStringLiteral("en_US")}));
        QCOMPARE(read("--lang zh_cn"), (StartSwitches{Theme::Unchanged, QStringLiteral("zh_CN")}));
        // Among switches that the standard parser does not know.
        QCOMPARE(read("--registry --lang zh --browse --theme DARK a b --bogus=1"),
                 (StartSwitches{Theme::Dark, QStringLiteral("zh_CN")}));
    }

    void offersItsOptionsInTheHelp()
    {
        QCommandLineParser parser;
        declareCommandLine(parser);
        const QString help = parser.helpText();
        qsizetype last = 0;
        for (const char *option : {"--lang <code>", "--theme <mode>", "--diff", "--folder", "--sync", "--binary",
                                   "--table", "--image", "--git", "--archive", "--checksum", "--version-compare",
                                   "--report <file>", "--as-left <path>", "--as-right <path>", "left", "right"}) {
            const qsizetype at = help.indexOf(QLatin1String("  ") + QLatin1String(option), last);
            QVERIFY2(at >= 0, option);
            last = at;
        }
        for (const char *hidden : {"--registry", "--duplicate", "--snapshot", "--diskusage", "--browse"})
            QVERIFY2(!help.contains(QLatin1String(hidden)), hidden);
    }
};

VELMORA_TEST(CommandLineTest)
#include "command_line_test.moc"
