#pragma once

#if defined(__SSE2__) || defined(_M_X64)
#include <xmmintrin.h>
#endif

namespace velmora {

/// Asks the processor for memory that is needed some steps later, so that the waits for it overlap. `address` need not
/// be valid.
inline void prefetch([[maybe_unused]] const void *address) noexcept
{
#if defined(__SSE2__) || defined(_M_X64)
    _mm_prefetch(static_cast<const char *>(address), _MM_HINT_T0);
#endif
}

} // namespace velmora
