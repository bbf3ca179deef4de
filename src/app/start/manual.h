#pragma once

#include <QByteArray>

namespace velmora {

/// The program's page for the Unix manual, in English, made from the table of switches.
[[nodiscard]] QByteArray manualPage();

} // namespace velmora
