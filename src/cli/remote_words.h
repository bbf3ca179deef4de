#pragma once

#include "vfs/remote/ssh_call.h"

#include <QString>

namespace velmora::cli {

/// Why something of a host is not to be had, with its address.
[[nodiscard]] QString remoteFaultText(const RemoteFault &fault);

} // namespace velmora::cli
