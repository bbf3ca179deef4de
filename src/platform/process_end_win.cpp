#include "platform/process_end.h"

#include <cstdlib>

#include <windows.h>

namespace velmora {

void endProcessNow(int status)
{
    // ExitProcess would stop the other threads wherever they are and then destroy what libraries hold, which waits for
    // ever when one of them held a lock.
    TerminateProcess(GetCurrentProcess(), UINT(status));
    std::abort();
}

} // namespace velmora
