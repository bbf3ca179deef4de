#include "platform/memory_hint.h"

#include <cstdint>

#include <sys/mman.h>
#include <unistd.h>

namespace velmora {

void expectFullUse(void *address, size_t bytes)
{
#ifdef MADV_HUGEPAGE
    const auto page = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
    const auto start = reinterpret_cast<std::uintptr_t>(address);
    const std::uintptr_t firstPage = (start + page - 1) / page * page;
    if (start + bytes > firstPage)
        madvise(reinterpret_cast<void *>(firstPage), start + bytes - firstPage, MADV_HUGEPAGE);
#else
    static_cast<void>(address);
    static_cast<void>(bytes);
#endif
}

} // namespace velmora
