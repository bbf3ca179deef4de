#pragma once

#include "cli/arguments.h"

#include <QByteArray>
#include <QString>

namespace velmora::cli {

/// Takes the password from the first line of the file that "--password-file" names; leaves it alone where the option is
/// not given. Returns what is wrong, empty when nothing is.
[[nodiscard]] QString takePassword(const Arguments &arguments, QByteArray &password);

} // namespace velmora::cli
