#include "platform/memory_hint.h"

#include <cstdint>
#include <cstdlib>

#include <sys/mman.h>
#include <unistd.h>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace velmora {

#if defined(__GLIBC__) && defined(MADV_HUGEPAGE)
void expectUse(size_t bytes)
{
    constexpr size_t largePage = 2 * 1024 * 1024;
    constexpr size_t most = 32 * 1024 * 1024; // what the allocator takes for a threshold
    const size_t whole = (bytes + largePage - 1) / largePage * largePage;
    if (whole > most || mallopt(M_MMAP_THRESHOLD, int(most)) == 0)
        return;
    // All comes from one heap, which threads share, and what is freed stays in it for the next allocation.
    mallopt(M_TRIM_THRESHOLD, int(2 * most));
    mallopt(M_ARENA_MAX, 1);
    // Kept, and never touched: what is allocated next comes from behind it, where a large page begins.
    static void *const filler = std::malloc(largePage - reinterpret_cast<std::uintptr_t>(sbrk(0)) % largePage);
    void *const block = filler ? std::aligned_alloc(largePage, whole) : nullptr;
    if (block)
        madvise(block, whole, MADV_HUGEPAGE);
    std::free(block);
}
#else
void expectUse(size_t) {}
#endif

void expectFullUse(void *address, size_t bytes)
{
#ifdef MADV_HUGEPAGE
    const auto page = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
    const size_t skipped = (page - reinterpret_cast<std::uintptr_t>(address) % page) % page;
    if (bytes > skipped)
        madvise(static_cast<char *>(address) + skipped, bytes - skipped, MADV_HUGEPAGE);
#else
    static_cast<void>(address);
    static_cast<void>(bytes);
#endif
}

} // namespace velmora
