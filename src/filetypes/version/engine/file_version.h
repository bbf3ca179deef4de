#pragma once

#include "platform/file_access.h"

#include <QString>

namespace velmora {

/// The file version of a program or library of Windows (PE), as "1.2.3.4"; empty for a file that says none, and for any
/// other file. Only the headers and the section of the resources are read, of which the first 64 MiB count.
[[nodiscard]] QString readFileVersion(OpenFile &file);

} // namespace velmora
