#pragma once

#include "vfs/git/git_call.h"

#include <QString>

namespace velmora::cli {

/// Why something of a repository is not to be had.
[[nodiscard]] QString gitFaultText(const GitFault &fault);

} // namespace velmora::cli
