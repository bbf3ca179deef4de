#include "app/command_line.h"

#include "session/translate.h"

#include <QCommandLineOption>
#include <QCommandLineParser>

namespace velmora {

namespace {

/// A switch that sets the mode. Those without a description are left out of the help.
struct ModeSwitch {
    const char *name;
    const char *mode;
    const char *description = nullptr;
};

constexpr ModeSwitch modeSwitches[] = {
    {"diff", "text", QT_TRANSLATE_NOOP("Velmora", "Text compare mode")},
    {"folder", "folder", QT_TRANSLATE_NOOP("Velmora", "Folder compare mode")},
    {"sync", "sync", QT_TRANSLATE_NOOP("Velmora", "Folder sync mode")},
    {"binary", "binary", QT_TRANSLATE_NOOP("Velmora", "Binary compare mode")},
    {"table", "table", QT_TRANSLATE_NOOP("Velmora", "Table compare mode")},
    {"image", "image", QT_TRANSLATE_NOOP("Velmora", "Image compare mode")},
    {"git", "git", QT_TRANSLATE_NOOP("Velmora", "Git repository compare mode")},
    {"archive", "archive", QT_TRANSLATE_NOOP("Velmora", "Archive compare mode")},
    {"checksum", "checksum", QT_TRANSLATE_NOOP("Velmora", "Checksum verification mode")},
    {"version-compare", "version", QT_TRANSLATE_NOOP("Velmora", "Version info compare mode")},
    {"registry", "registry"},
    {"duplicate", "duplicate"},
    {"snapshot", "snapshot"},
    {"diskusage", "diskusage"},
    {"browse", "archivebrowse"},
};

constexpr char themeSwitch[] = "theme";
constexpr char languageSwitch[] = "lang";
constexpr char reportSwitch[] = "report";
constexpr char leftSwitch[] = "as-left";
constexpr char rightSwitch[] = "as-right";
constexpr char workspaceSwitch[] = "workspace";

/// A switch that takes a value.
struct ValueSwitch {
    const char *name;
    bool takesPath;
};

constexpr ValueSwitch valueSwitches[] = {
    {languageSwitch, false}, {themeSwitch, false}, {reportSwitch, true},
    {leftSwitch, true},      {rightSwitch, true},  {workspaceSwitch, true},
};

/// One element of a command line: a switch with the value that belongs to it, or a path.
struct Element {
    enum class Form { Flag, NextArgument, Attached, Path };

    Form form = Form::Flag;
    QString name;  ///< of the switch, without dashes
    QString value; ///< of the switch, or the path
    bool valueIsPath = false;
};

const ValueSwitch *findValueSwitch(const QString &name)
{
    const auto *found = std::find_if(std::begin(valueSwitches), std::end(valueSwitches),
                                     [&name](const ValueSwitch &known) { return name == QLatin1String(known.name); });
    return found == std::end(valueSwitches) ? nullptr : found;
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
        const ValueSwitch *known = findValueSwitch(name);
        if (known && equals >= 0)
            result.append({Element::Form::Attached, name, argument.mid(equals + 1), known->takesPath});
        else if (known && i + 1 < arguments.size())
            result.append({Element::Form::NextArgument, name, arguments[++i], known->takesPath});
        else
            result.append({Element::Form::Flag, equals < 0 ? name : QString(), argument, false});
    }
    return result;
}

QString absoluteFrom(const QDir &folder, const QString &path)
{
    return path.isEmpty() || QDir::isAbsolutePath(path) ? path : QDir::cleanPath(folder.absoluteFilePath(path));
}

} // namespace

CommandLine parseCommandLine(const QStringList &arguments)
{
    CommandLine result;
    const QList<Element> all = elements(arguments);
    for (const Element &element : all) {
        if (element.form == Element::Form::Flag) {
            for (const ModeSwitch &known : modeSwitches) {
                if (element.name == QLatin1String(known.name))
                    result.mode = QString::fromLatin1(known.mode);
            }
        } else if (element.value.isEmpty()) {
            continue;
        } else if (element.form == Element::Form::Path) {
            if (result.sessionFile.isEmpty() &&
                element.value.endsWith(QLatin1String(".kvsession"), Qt::CaseInsensitive))
                result.sessionFile = element.value;
            else if (result.paths.size() < 2)
                result.paths.append(element.value);
        } else if (element.name == QLatin1String(reportSwitch)) {
            result.report = element.value;
        } else if (element.name == QLatin1String(workspaceSwitch)) {
            result.workspace = element.value;
        } else if (element.name == QLatin1String(leftSwitch)) {
            result.picks.append({ExplorerPick::Side::Left, element.value});
        } else if (element.name == QLatin1String(rightSwitch)) {
            result.picks.append({ExplorerPick::Side::Right, element.value});
        }
    }
    if (!result.sessionFile.isEmpty())
        result.paths.clear();
    return result;
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

void declareCommandLine(QCommandLineParser &parser)
{
    const auto option = [&parser](const char *name, const QString &description, const char *value) {
        parser.addOption(QCommandLineOption(QString::fromLatin1(name), description, QString::fromLatin1(value)));
    };
    parser.setApplicationDescription(Velmora::tr("Velmora — file and folder comparison"));
    parser.addHelpOption();
    parser.addVersionOption();
    option(languageSwitch, Velmora::tr("UI language: en (default) or zh"), "code");
    option(themeSwitch, Velmora::tr("UI theme: light (default) or dark"), "mode");
    for (const ModeSwitch &known : modeSwitches) {
        if (known.description)
            option(known.name, Velmora::tr(known.description), "");
    }
    option(reportSwitch, Velmora::tr("Export diff report to HTML after compare"), "file");
    option(leftSwitch, Velmora::tr("Treat path as left side (shell context menu)"), "path");
    option(rightSwitch, Velmora::tr("Treat path as right side; pairs with prior --as-left"), "path");
    parser.addPositionalArgument(QStringLiteral("left"), Velmora::tr("Left file or folder path"));
    parser.addPositionalArgument(QStringLiteral("right"), Velmora::tr("Right file or folder path"));
}

StartSwitches startSwitches(const QCommandLineParser &parser)
{
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
