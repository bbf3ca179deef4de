#pragma once

#include <QList>
#include <QString>

class QWidget;

namespace velmora {

class SessionHost;

/// A command and its keys, as they are written on this system.
struct KeyEntry {
    QString command;
    QString keys;

    friend bool operator==(const KeyEntry &, const KeyEntry &) = default;
};

/// The commands of one part of the program that have keys.
struct KeyGroup {
    QString title;
    QList<KeyEntry> entries;
};

/// The keys of all commands, read from the commands themselves: those of the window's menus first, then those of each
/// kind of session, kinds with the same ones together. Makes a session of each kind for a moment, which may use `host`.
[[nodiscard]] QList<KeyGroup> collectKeys(const QWidget &menuBar, SessionHost &host);

} // namespace velmora
