#pragma once

#include <QFont>
#include <QString>
#include <QStringList>

#include <chrono>
#include <optional>

namespace velmora {

struct StartSwitches;

/// The interface's font under `locale`, given the families that the system has: "Segoe UI" or, where that lacks the
/// letters, the first of its Chinese companions that is there; 9 points.
[[nodiscard]] QFont interfaceFont(const QString &locale, const QStringList &families);

/// Gives the application everything that it has before a window is there: name, translation, version, icon, style,
/// font.
void dressApplication();

/// Wears and stores what the switches of the start ask for. Returns whether this run is dark, when they say so.
std::optional<bool> applyStartSwitches(const StartSwitches &switches);

/// Whether an argument list asks for help or the like, which is answered at once, whatever else stands in it: no other
/// instance hears of it, and no display is needed. The first argument is a program's path and is passed over.
[[nodiscard]] bool inquires(const QStringList &arguments);

/// Answers on the console and returns the exit status; nothing where there is no console. A core application suffices.
[[nodiscard]] std::optional<int> answerOnConsole(const QStringList &arguments);

/// How long a second start waits for the window to have read the files that `arguments` names: more for large ones.
[[nodiscard]] std::chrono::milliseconds readingPatience(const QStringList &arguments);

/// Runs the program to its end and returns its exit status: hands over to an instance that is already running, or opens
/// the main window. Tells on standard error about arguments that nothing is done about. Shows help and version in a
/// window, for a start without a console.
[[nodiscard]] int runApplication();

} // namespace velmora
