#pragma once

#include "vfs/git/git_call.h"

#include <QString>

namespace velmora {

/// Why something of a repository is not to be had, as a sentence.
[[nodiscard]] QString gitFaultText(const GitFault &fault);

} // namespace velmora
