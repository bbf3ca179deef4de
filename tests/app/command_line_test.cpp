#include "app/start/command_line.h"
#include "app/start/manual.h"
#include "support/files.h"
#include "support/test_main.h"

#include <QCommandLineParser>

using namespace velmora;
using velmora::test::word;
using velmora::test::words;

namespace {

/// A command line as one line of text, to be read at a glance.
QString dump(const CommandLine &line)
{
    QStringList parts;
    for (const ExplorerPick &pick : line.picks)
        parts.append((pick.side == ExplorerPick::Side::Left ? word("left=") : word("right=")) + pick.path);
    if (!line.report.isEmpty())
        parts.append(word("report=") + line.report);
    for (const QString &file : line.sessionFiles)
        parts.append(word("session=") + file);
    if (!line.workspace.isEmpty())
        parts.append(word("workspace=") + line.workspace);
    parts.append(line.mode);
    parts += line.paths;
    for (const IgnoredArgument &ignored : line.ignored)
        parts.append(word("?=+")[static_cast<int>(ignored.reason)] + ignored.argument);
    return parts.join(u' ');
}

QStringList arguments(const QString &typed)
{
    return words("velmora") + typed.split(u' ', Qt::SkipEmptyParts);
}

} // namespace

class CommandLineTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void says()
    {
        const std::pair<const char *, const char *> lines[] = {
            {"", "auto"},
            {"a b", "auto a b"},
            {"a b c d", "auto a b +c +d"},
            {"--diff a b", "text a b"},
            {"a --folder b", "folder a b"},
            {"a b --sync --binary", "binary a b"},
            {"--table", "table"},
            {"--image", "image"},
            {"--registry", "registry"},
            {"--archive", "archive"},
            {"--snapshot a", "snapshot a"},
            {"--as-left a", "left=a auto"},
            {"--as-right b --as-left a", "right=b left=a auto"},
            {"--workspace desk a", "workspace=desk auto +a"},
            {"a --as-left", "auto a =--as-left"},
            {"--as-left --diff", "left=--diff auto"},
            {"--report r.html --diff a b", "report=r.html text a b"},
            {"--report", "auto =--report"},
            {"--report=r.html a b", "report=r.html auto a b"},
            {"--theme dark --lang zh a b", "auto a b"},
            {"--theme=dark a", "auto a"},
            {"--help --version -x --unknown - --diff=1 a", "auto a ?-x ?--unknown ?- ?--diff=1"},
            {"a x.KVSession b --as-left c", "left=c session=x.KVSession auto +a +b"},
            {"x.kvsession y.kvsession", "session=x.kvsession session=y.kvsession auto"},
        };
        for (const auto &[typed, understood] : lines)
            QCOMPARE(dump(parseCommandLine(arguments(word(typed)))), word(understood));
    }

    void passesOverEmptyArguments()
    {
        QCOMPARE(dump(parseCommandLine({{}, {}, word("a"), {}})), word("auto a"));
        QCOMPARE(dump(parseCommandLine({})), word("auto"));
    }

    void makesEveryPathAbsoluteForAnotherFolder()
    {
        const QDir folder(word("/home/me"));
        const QStringList typed = arguments(QStringLiteral(
            "--diff a --report r.html --as-left ../l --theme dark --report=q --as-right /r ./b --lang --unknown"));
        QCOMPARE(withAbsolutePaths(typed, folder).join(u' '),
                 QStringLiteral("velmora --diff /home/me/a --report /home/me/r.html --as-left /home/l --theme dark "
                                "--report=/home/me/q --as-right /r /home/me/b --lang --unknown"));
        QCOMPARE(withAbsolutePaths(arguments(word("--registry 32:HKLM\\Software hkcu\\a HKCUX")), folder).join(u' '),
                 word("velmora --registry 32:HKLM\\Software hkcu\\a /home/me/HKCUX"));
    }

    void readsThemeAndLanguage()
    {
        using Theme = StartSwitches::Theme;
        const auto read = [](const char *typed) { return startSwitches(arguments(QString::fromLatin1(typed))); };
        QCOMPARE(read(""), (StartSwitches{Theme::Unchanged, {}}));
        QCOMPARE(read("--theme 1"), (StartSwitches{Theme::Dark, {}}));
        QCOMPARE(read("--theme Light"), (StartSwitches{Theme::Light, {}}));
        QCOMPARE(read("--theme whatever --lang fr"), (StartSwitches{Theme::Light, {}}));
        QCOMPARE(read("--lang English"), (StartSwitches{Theme::Unchanged, word("en_US")}));
        QCOMPARE(read("--lang zh_cn"), (StartSwitches{Theme::Unchanged, word("zh_CN")}));
        // Among switches that the standard parser does not know.
        QCOMPARE(read("--registry --lang zh --browse --theme DARK a b --bogus=1"),
                 (StartSwitches{Theme::Dark, word("zh_CN")}));
    }

    void findsWhatIsAskedInsteadOfAWindow()
    {
        const auto asks = [](const char *typed) { return inquiryIn(arguments(QString::fromLatin1(typed))); };
        for (const char *help : {"--help", "-h", "a --theme dark --help-all", "--bogus -?"})
            QVERIFY2(asks(help) == Inquiry::Help, help);
        for (const char *version : {"--version", "a b -v"})
            QVERIFY2(asks(version) == Inquiry::Version, version);
        for (const char *none : {"", "a b", "--as-left --help", "help", "--version=1", "--version-compare"})
            QVERIFY2(asks(none) == Inquiry::None, none);
    }

    void helpAndManualPageHaveEverySwitch()
    {
        QCommandLineParser parser;
        declareCommandLine(parser);
        const QString help = parser.helpText();
        const QString manual = QString::fromUtf8(manualPage());
        qsizetype last = 0;
        for (const char *option :
             {"--lang <code>", "--theme <mode>", "--diff", "--folder", "--sync", "--binary", "--table", "--image",
              "--git", "--archive", "--checksum", "--version-compare", "--report <file>", "--as-left <path>",
              "--as-right <path>", "--workspace <file>", "left", "right"}) {
            const qsizetype at = help.indexOf(QLatin1String("  ") + QLatin1String(option), last);
            QVERIFY2(at >= 0, option);
            last = at;
        }
        for (const CommandSwitch &known : commandSwitches()) {
            const QString name = QLatin1String("--") + QLatin1String(known.name);
            QCOMPARE(help.contains(name), known.isOffered);
            QVERIFY2(manual.contains(word(".TP\n\\fB") + QString(name).replace(u'-', word("\\-"))), known.name);
        }
    }
};

VELMORA_TEST(CommandLineTest)
#include "command_line_test.moc"
