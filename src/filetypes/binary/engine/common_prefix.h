#pragma once

#include "core/cancel_flag.h"
#include "filetypes/binary/engine/binary_pair.h"

#include <functional>

namespace velmora {

/// The number of bytes with which both begin alike, found by as many threads as `runCrew` has; holes that both have are
/// passed over. A byte that cannot be read is no such byte. Cancelled, it is any number. `advanced`, where there is
/// one, is called on the calling thread with the bytes that were looked at so far.
[[nodiscard]] qint64 commonPrefix(const BinaryPair &files, const CancelFlag &cancel,
                                  const std::function<void(qint64)> &advanced = {});

} // namespace velmora
