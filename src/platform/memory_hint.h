#pragma once

#include <cstddef>

namespace velmora {

/// Tells the system that the `bytes` from `address` on, newly allocated, will all be written to soon: it may provide
/// them in large pages, which spares a large buffer most of the cost of its first use. Changes nothing else.
void expectFullUse(void *address, size_t bytes);

/// Tells the allocator that the program will use about `bytes` of memory and then end. It may take them from the system
/// at once, in large pages, and keep what is freed for the next allocation, which spares short work most of the cost of
/// the first use of each page. For the process as a whole: to be called once, by what runs in a process of its own.
void expectUse(size_t bytes);

} // namespace velmora
