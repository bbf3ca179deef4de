#pragma once

#include <QDir>
#include <QList>
#include <QString>
#include <QStringList>

class QCommandLineParser;

namespace velmora {

/// A path that Explorer's context menu names as one side of a comparison.
struct ExplorerPick {
    enum class Side { Left, Right };

    Side side = Side::Left;
    QString path;

    friend bool operator==(const ExplorerPick &, const ExplorerPick &) = default;
};

/// What an argument list asks the main window to do. Paths stand as they were typed.
struct CommandLine {
    QList<ExplorerPick> picks;             ///< in the order given; carried out first
    QString report;                        ///< where the next comparison writes its report; empty for nowhere
    QString mode = QStringLiteral("auto"); ///< a session kind, or "auto"
    QString sessionFile;                   ///< to be opened in place of everything below; empty when there is none
    QString workspace;                     ///< a workspace file, likewise
    QStringList paths;                     ///< none, one, or the first two

    friend bool operator==(const CommandLine &, const CommandLine &) = default;
};

/// Reads an argument list whose first element is the program's own path, which is skipped. A value may follow its
/// switch as the next argument or behind "=". Switches that nobody knows, values that are missing and empty arguments
/// are passed over.
[[nodiscard]] CommandLine parseCommandLine(const QStringList &arguments);

/// The same argument list with every path in it, as an argument or as the value of a switch, made absolute from
/// `folder`; order and switches stay. For a process that works in another folder.
[[nodiscard]] QStringList withAbsolutePaths(const QStringList &arguments, const QDir &folder);

/// Gives the standard parser the description, the options and the positional arguments that its help shows.
void declareCommandLine(QCommandLineParser &parser);

/// What the switches that act at the start of the process ask for.
struct StartSwitches {
    enum class Theme { Unchanged, Light, Dark };

    Theme theme = Theme::Unchanged;
    QString locale; ///< a locale code, empty when the locale stays

    friend bool operator==(const StartSwitches &, const StartSwitches &) = default;
};

/// Reads them from a parser that has parsed. A language that nobody knows leaves the locale as it is.
[[nodiscard]] StartSwitches startSwitches(const QCommandLineParser &parser);

} // namespace velmora
