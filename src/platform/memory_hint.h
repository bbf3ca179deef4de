#pragma once

#include <cstddef>

namespace velmora {

/// Tells the system that the `bytes` from `address` on, newly allocated, will all be written to soon: it may provide
/// them in large pages, which spares a large buffer most of the cost of its first use. Changes nothing else.
void expectFullUse(void *address, size_t bytes);

} // namespace velmora
