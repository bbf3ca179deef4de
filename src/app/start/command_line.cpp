#include "app/start/command_line.h"

#include "platform/live_registry.h"
#include "session/translate.h"
#include "vfs/place/other_tree.h"

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QFileInfo>

namespace velmora {

namespace {

constexpr char themeSwitch[] = "theme";
constexpr char languageSwitch[] = "lang";
constexpr char reportSwitch[] = "report";
constexpr char leftSwitch[] = "as-left";
constexpr char rightSwitch[] = "as-right";
constexpr char workspaceSwitch[] = "workspace";
constexpr char outputSwitch[] = "output";
constexpr char waitSwitch[] = "wait";
constexpr char reportToSwitch[] = "report-to";
constexpr char servesWaitingSwitch[] = "serves-waiting";
constexpr char mergeMode[] = "merge";

constexpr CommandSwitch switches[] = {
    {.name = languageSwitch,
     .value = "code",
     .description = QT_TRANSLATE_NOOP("Velmora", "UI language: en (default) or zh")},
    {.name = themeSwitch,
     .value = "mode",
     .description = QT_TRANSLATE_NOOP("Velmora", "UI theme: light (default) or dark")},
    {.name = "diff", .mode = "text", .description = QT_TRANSLATE_NOOP("Velmora", "Text compare mode")},
    {.name = "edit", .mode = "textedit", .description = QT_TRANSLATE_NOOP("Velmora", "Text edit mode")},
    {.name = "folder", .mode = "folder", .description = QT_TRANSLATE_NOOP("Velmora", "Folder compare mode")},
    {.name = "sync", .mode = "sync", .description = QT_TRANSLATE_NOOP("Velmora", "Folder sync mode")},
    {.name = "binary", .mode = "binary", .description = QT_TRANSLATE_NOOP("Velmora", "Binary compare mode")},
    {.name = "table", .mode = "table", .description = QT_TRANSLATE_NOOP("Velmora", "Table compare mode")},
    {.name = "image", .mode = "image", .description = QT_TRANSLATE_NOOP("Velmora", "Image compare mode")},
    {.name = "git", .mode = "git", .description = QT_TRANSLATE_NOOP("Velmora", "Git repository compare mode")},
    {.name = "archive", .mode = "archive", .description = QT_TRANSLATE_NOOP("Velmora", "Archive compare mode")},
    {.name = "checksum", .mode = "checksum", .description = QT_TRANSLATE_NOOP("Velmora", "Checksum verification mode")},
    {.name = "version-compare",
     .mode = "version",
     .description = QT_TRANSLATE_NOOP("Velmora", "Version info compare mode")},
    {.name = "merge",
     .mode = mergeMode,
     .description = QT_TRANSLATE_NOOP("Velmora", "Text merge mode: left, right and base, in this order")},
    {.name = outputSwitch,
     .value = "file",
     .valueIsPath = true,
     .description = QT_TRANSLATE_NOOP("Velmora", "File that the merged text is saved to")},
    {.name = waitSwitch, .description = QT_TRANSLATE_NOOP("Velmora", "Return only when the opened tabs are closed")},
    {.name = reportSwitch,
     .value = "file",
     .valueIsPath = true,
     .description = QT_TRANSLATE_NOOP("Velmora", "Export diff report to HTML after compare")},
    {.name = leftSwitch,
     .value = "path",
     .valueIsPath = true,
     .description = QT_TRANSLATE_NOOP("Velmora", "Treat path as left side (shell context menu)")},
    {.name = rightSwitch,
     .value = "path",
     .valueIsPath = true,
     .description = QT_TRANSLATE_NOOP("Velmora", "Treat path as right side; pairs with prior --as-left")},
    {.name = workspaceSwitch,
     .value = "file",
     .valueIsPath = true,
     .description = QT_TRANSLATE_NOOP("Velmora", "Open a workspace file")},
    // For the program's own starts.
    {.name = reportToSwitch, .value = "address", .description = "Where a start waits for its tabs", .isOffered = false},
    {.name = servesWaitingSwitch, .description = "Close when no tab is left", .isOffered = false},
    {.name = "registry", .mode = "registry", .description = "Registry compare mode", .isOffered = false},
    {.name = "duplicate", .mode = "duplicate", .description = "Duplicate finder mode", .isOffered = false},
    {.name = "snapshot", .mode = "snapshot", .description = "Folder snapshot mode", .isOffered = false},
    {.name = "diskusage", .mode = "diskusage", .description = "Disk usage mode", .isOffered = false},
    {.name = "browse", .mode = "archivebrowse", .description = "Archive browse mode", .isOffered = false},
};

struct InquiryName {
    const char *name; ///< as it is typed
    Inquiry inquiry;
};

constexpr InquiryName inquiries[] = {
    {"--help", Inquiry::Help},       {"--help-all", Inquiry::Help}, {"-h", Inquiry::Help},      {"-?", Inquiry::Help},
    {"--version", Inquiry::Version}, {"-v", Inquiry::Version},      {"--man", Inquiry::Manual},
};

Inquiry inquiryNamed(const QString &argument)
{
    const auto *found = std::find_if(std::begin(inquiries), std::end(inquiries), [&argument](const InquiryName &known) {
        return argument == QLatin1String(known.name);
    });
    return found == std::end(inquiries) ? Inquiry::None : found->inquiry;
}

/// One element of a command line: a switch with the value that belongs to it, or a path.
struct Element {
    enum class Form { Flag, NextArgument, Attached, Path };

    Form form = Form::Flag;
    QString name;  ///< of the switch, without dashes
    QString value; ///< of the switch, or the path
    bool valueIsPath = false;
};

const CommandSwitch *findSwitch(const QString &name)
{
    const auto *found = std::find_if(std::begin(switches), std::end(switches),
                                     [&name](const CommandSwitch &known) { return name == QLatin1String(known.name); });
    return found == std::end(switches) ? nullptr : found;
}

/// Splits the arguments behind the program path. A switch whose value is missing is a flag.
QList<Element> elements(const QStringList &arguments)
{
    QList<Element> result;
    for (qsizetype i = 1; i < arguments.size(); ++i) {
        const QString &argument = arguments[i];
        if (!argument.startsWith(u'-')) {
            result.append({Element::Form::Path, {}, argument, true});
            continue;
        }
        const bool isLong = argument.startsWith(QLatin1String("--"));
        const qsizetype equals = argument.indexOf(u'=');
        const QString name = isLong ? argument.mid(2, equals < 0 ? -1 : equals - 2) : QString();
        const CommandSwitch *known = findSwitch(name);
        const bool takesValue = known && known->value;
        if (takesValue && equals >= 0)
            result.append({Element::Form::Attached, name, argument.mid(equals + 1), known->valueIsPath});
        else if (takesValue && i + 1 < arguments.size())
            result.append({Element::Form::NextArgument, name, arguments[++i], known->valueIsPath});
        else
            result.append({Element::Form::Flag, equals < 0 ? name : QString(), argument, false});
    }
    return result;
}

void takeFlag(const Element &flag, CommandLine &line)
{
    const CommandSwitch *known = findSwitch(flag.name);
    if (known && known->mode)
        line.mode = QString::fromLatin1(known->mode);
    else if (flag.name == QLatin1String(waitSwitch))
        line.waits = true;
    else if (flag.name == QLatin1String(servesWaitingSwitch))
        line.servesWaiting = true;
    else if (known)
        line.ignored.append({IgnoredArgument::Reason::NoValue, flag.value});
    else if (inquiryNamed(flag.value) == Inquiry::None)
        line.ignored.append({IgnoredArgument::Reason::UnknownOption, flag.value});
}

void takeValue(const Element &element, CommandLine &line)
{
    if (element.name == QLatin1String(reportSwitch))
        line.report = element.value;
    else if (element.name == QLatin1String(workspaceSwitch))
        line.workspace = element.value;
    else if (element.name == QLatin1String(outputSwitch))
        line.output = element.value;
    else if (element.name == QLatin1String(reportToSwitch))
        line.reportTo = element.value;
    else if (element.name == QLatin1String(leftSwitch))
        line.picks.append({ExplorerPick::Side::Left, element.value});
    else if (element.name == QLatin1String(rightSwitch))
        line.picks.append({ExplorerPick::Side::Right, element.value});
}

/// Keeps of the paths what is done something about.
void settlePaths(CommandLine &line)
{
    const bool opensFile = !line.sessionFiles.isEmpty() || !line.workspace.isEmpty();
    const qsizetype sides = line.mode == QLatin1String(mergeMode) ? 3 : 2;
    const qsizetype taken = opensFile ? 0 : std::min(line.paths.size(), sides);
    for (const QString &path : line.paths.mid(taken))
        line.ignored.append({IgnoredArgument::Reason::SurplusPath, path});
    line.paths.resize(taken);
}

QString absoluteFrom(const QDir &folder, const QString &path)
{
    if (isOtherTree(path))
        return otherTreeText(path, folder);
    return path.isEmpty() || namesLiveKey(folder, path) || QDir::isAbsolutePath(path)
               ? path
               : QDir::cleanPath(folder.absoluteFilePath(path));
}

} // namespace

std::span<const CommandSwitch> commandSwitches()
{
    return switches;
}

CommandLine parseCommandLine(const QStringList &arguments)
{
    CommandLine result;
    const QList<Element> all = elements(arguments);
    for (const Element &element : all) {
        if (element.form == Element::Form::Flag)
            takeFlag(element, result);
        else if (element.value.isEmpty())
            continue;
        else if (element.form != Element::Form::Path)
            takeValue(element, result);
        else if (element.value.endsWith(QLatin1String(".kvsession"), Qt::CaseInsensitive))
            result.sessionFiles.append(element.value);
        else
            result.paths.append(element.value);
    }
    settlePaths(result);
    return result;
}

Inquiry inquiryIn(const QStringList &arguments)
{
    const QList<Element> all = elements(arguments);
    for (const Element &element : all) {
        const Inquiry inquiry = element.form == Element::Form::Flag ? inquiryNamed(element.value) : Inquiry::None;
        if (inquiry != Inquiry::None)
            return inquiry;
    }
    return Inquiry::None;
}

bool namesLiveKey(const QDir &folder, const QString &path)
{
    return liveKeyOf(path) && !QFileInfo::exists(folder.absoluteFilePath(path));
}

QStringList withAbsolutePaths(const QStringList &arguments, const QDir &folder)
{
    QStringList result = arguments.mid(0, 1);
    const QList<Element> all = elements(arguments);
    for (const Element &element : all) {
        const QString value = element.valueIsPath ? absoluteFrom(folder, element.value) : element.value;
        switch (element.form) {
        case Element::Form::Flag:
        case Element::Form::Path:
            result.append(value);
            break;
        case Element::Form::NextArgument:
            result << QStringLiteral("--") + element.name << value;
            break;
        case Element::Form::Attached:
            result.append(QStringLiteral("--%1=%2").arg(element.name, value));
            break;
        }
    }
    return result;
}

QStringList withReportTo(const QStringList &arguments, const QString &address)
{
    QStringList result = arguments;
    return result << QStringLiteral("--%1=%2").arg(QLatin1String(reportToSwitch), address);
}

QStringList windowArguments(const QStringList &arguments)
{
    QStringList result{QStringLiteral("--") + QLatin1String(servesWaitingSwitch)};
    const QList<Element> all = elements(arguments);
    for (const Element &element : all) {
        if (element.name == QLatin1String(themeSwitch) || element.name == QLatin1String(languageSwitch))
            result.append(QStringLiteral("--%1=%2").arg(element.name, element.value));
    }
    return result;
}

void declareCommandLine(QCommandLineParser &parser)
{
    parser.setApplicationDescription(Velmora::tr("Velmora — file and folder comparison"));
    parser.addHelpOption();
    parser.addVersionOption();
    for (const CommandSwitch &known : switches) {
        if (known.isOffered)
            parser.addOption(QCommandLineOption(QString::fromLatin1(known.name), Velmora::tr(known.description),
                                                QString::fromLatin1(known.value)));
    }
    parser.addPositionalArgument(QStringLiteral("left"), Velmora::tr("Left file or folder path"));
    parser.addPositionalArgument(QStringLiteral("right"), Velmora::tr("Right file or folder path"));
    parser.addPositionalArgument(QStringLiteral("base"), Velmora::tr("Base file of a merge"));
}

StartSwitches startSwitches(const QStringList &arguments)
{
    QCommandLineParser parser;
    declareCommandLine(parser);
    // Its verdict is left aside: what it does not know is for the window to understand or to pass over.
    parser.parse(arguments);
    StartSwitches result;
    if (parser.isSet(QString::fromLatin1(themeSwitch))) {
        const QString value = parser.value(QString::fromLatin1(themeSwitch)).trimmed().toLower();
        const bool dark = value == QLatin1String("dark") || value == QLatin1String("1");
        result.theme = dark ? StartSwitches::Theme::Dark : StartSwitches::Theme::Light;
    }
    const QString language = parser.value(QString::fromLatin1(languageSwitch)).trimmed().toLower();
    const QStringList english = {QStringLiteral("en"), QStringLiteral("english"), QStringLiteral("en_us")};
    const QStringList chinese = {QStringLiteral("zh"), QStringLiteral("chinese"), QStringLiteral("zh_cn")};
    if (english.contains(language))
        result.locale = QStringLiteral("en_US");
    else if (chinese.contains(language))
        result.locale = QStringLiteral("zh_CN");
    return result;
}

} // namespace velmora
