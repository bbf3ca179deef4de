#pragma once

#include <QFont>
#include <QString>
#include <QStringList>

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

/// Runs the program to its end and returns its exit status: hands over to an instance that is already running, prints
/// help or version, or opens the main window.
[[nodiscard]] int runApplication();

} // namespace velmora
