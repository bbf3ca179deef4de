#pragma once

#include <QDir>
#include <QList>
#include <QString>
#include <QStringList>

#include <span>

class QCommandLineParser;

namespace velmora {

/// One switch of the command line. The table of them is what is parsed, what "--help" shows and what the manual page
/// describes.
struct CommandSwitch {
    const char *name;            ///< without its dashes
    const char *value = nullptr; ///< what its value is called; null for a switch without a value
    bool valueIsPath = false;    ///< of a file or folder
    const char *mode = nullptr;  ///< the session kind that the switch asks for
    const char *description;     ///< English source
    bool isOffered = true;       ///< the help shows it
};

/// All switches but those that ask for help and version, in the order of the help.
[[nodiscard]] std::span<const CommandSwitch> commandSwitches();

/// A path that Explorer's context menu names as one side of a comparison.
struct ExplorerPick {
    enum class Side { Left, Right };

    Side side = Side::Left;
    QString path;

    friend bool operator==(const ExplorerPick &, const ExplorerPick &) = default;
};

/// An argument that nothing is done about.
struct IgnoredArgument {
    enum class Reason { UnknownOption, NoValue, SurplusPath };

    Reason reason = Reason::UnknownOption;
    QString argument;

    friend bool operator==(const IgnoredArgument &, const IgnoredArgument &) = default;
};

/// What an argument list asks the main window to do. Paths stand as they were typed.
struct CommandLine {
    QList<ExplorerPick> picks;             ///< in the order given; carried out first
    QString report;                        ///< where the next comparison writes its report; empty for nowhere
    QString mode = QStringLiteral("auto"); ///< a session kind, or "auto"
    QStringList sessionFiles;              ///< to be opened in place of everything below
    QString workspace;                     ///< a workspace file, likewise; empty when there is none
    QStringList paths;                     ///< none, one, or the first two; for the mode "merge" the first three
    QString output;                        ///< where the result of a merge is saved to; empty when that is not said
    bool waits = false;                    ///< the process ends when what it has opened is closed
    QString reportTo;                      ///< the address of a process that waits; empty when none does
    bool servesWaiting = false;            ///< the window is opened for those who wait, and goes with their tabs
    QList<IgnoredArgument> ignored;        ///< in the order given

    friend bool operator==(const CommandLine &, const CommandLine &) = default;
};

/// Reads an argument list whose first element is the program's own path, which is skipped. A value may follow its
/// switch as the next argument or behind "=". Empty arguments are passed over.
[[nodiscard]] CommandLine parseCommandLine(const QStringList &arguments);

/// What is asked of the program instead of opening a window.
enum class Inquiry { None, Help, Version, Manual };

/// The first inquiry in an argument list; an argument that is the value of a switch is none.
[[nodiscard]] Inquiry inquiryIn(const QStringList &arguments);

/// Whether an argument names a key of the registry, and no file in `folder`: no folder is put before it.
[[nodiscard]] bool namesLiveKey(const QDir &folder, const QString &path);

/// The same argument list with every path in it, as an argument or as the value of a switch, made absolute from
/// `folder`, keys of the registry apart; order and switches stay. For a process that works in another folder.
[[nodiscard]] QStringList withAbsolutePaths(const QStringList &arguments, const QDir &folder);

/// The arguments of a hand-over for a process that waits at `address`.
[[nodiscard]] QStringList withReportTo(const QStringList &arguments, const QString &address);

/// The arguments, without a program, of the window that a start with `arguments` opens when it waits itself.
[[nodiscard]] QStringList windowArguments(const QStringList &arguments);

/// Gives the standard parser the description, the options and the positional arguments that its help shows.
void declareCommandLine(QCommandLineParser &parser);

/// What the switches that act at the start of the process ask for.
struct StartSwitches {
    enum class Theme { Unchanged, Light, Dark };

    Theme theme = Theme::Unchanged;
    QString locale; ///< a locale code, empty when the locale stays

    friend bool operator==(const StartSwitches &, const StartSwitches &) = default;
};

/// Reads them from an argument list. A language that nobody knows leaves the locale as it is.
[[nodiscard]] StartSwitches startSwitches(const QStringList &arguments);

} // namespace velmora
