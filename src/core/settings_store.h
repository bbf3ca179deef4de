#pragma once

#include <QSettings>

namespace velmora {

/// The settings of the interface: locale, theme, session history.
class InterfaceSettings final : public QSettings {
public:
    InterfaceSettings() : QSettings(QStringLiteral("Tarnwick"), QStringLiteral("Tarnwick")) {}
};

/// The stored settings of the sessions. The command line's theme switch is written here too and not to the interface's
/// settings: it colours one run and leaves the choice made in the options alone.
class SessionSettings final : public QSettings {
public:
    SessionSettings() : QSettings(name(), name()) {}

    /// The store's name, under which the system keeps all else that the programs store, too.
    [[nodiscard]] static QString name() { return QStringLiteral("Ostrafen"); }
};

} // namespace velmora
