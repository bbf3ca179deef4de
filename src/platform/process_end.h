#pragma once

namespace velmora {

/// Ends this process with `status`, whatever its other threads are doing: nothing is destroyed, nothing that is
/// buffered is written.
[[noreturn]] void endProcessNow(int status);

} // namespace velmora
