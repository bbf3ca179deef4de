#pragma once

#include <QList>
#include <QString>

namespace velmora {

/// The parts of the registry that hold startup entries.
enum class RegistryRoot : quint8 { CurrentUser, LocalMachine };

/// Something that starts with the system.
struct StartupEntry {
    QString name;
    QString value;
};

/// The values of a registry key: their names as they are, slashes and the unnamed value included, and their data as
/// text. What refers to variables is not expanded; several strings are joined by line feeds, numbers are written in
/// decimal and other data in hexadecimal digits. Empty when the key cannot be read, and where there is no registry. Any
/// thread.
[[nodiscard]] QList<StartupEntry> registryValues(RegistryRoot root, const QString &key);

/// The names of the files in a folder with their absolute paths, "/" between the parts. Folders, hidden files and those
/// of the system ("desktop.ini") are left out. Empty when the folder cannot be read. Any thread.
[[nodiscard]] QList<StartupEntry> visibleFiles(const QString &folder);

/// The folder whose files start for every user; empty where the system has none.
[[nodiscard]] QString commonStartupFolder();

} // namespace velmora
