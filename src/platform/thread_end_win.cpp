#include "platform/thread_end.h"

#include <cstddef> // tells which standard library this is

#if defined(__MINGW32__) && defined(__GLIBCXX__)

#include <cxxabi.h>

namespace velmora {

void orderEndOfThreads()
{
    // Something to be destroyed at the end of this thread. Its key is the first as long as no thread_local object has
    // been used.
    (void)abi::__cxa_thread_atexit([](void *) {}, nullptr, nullptr);
}

} // namespace velmora

#else

namespace velmora {

void orderEndOfThreads() {}

} // namespace velmora

#endif
