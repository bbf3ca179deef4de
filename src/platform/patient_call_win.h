#pragma once

#include <windows.h>

namespace velmora {

/// Repeats a call while somebody has its file open in a way that forbids it, for at most 300 ms: programs that look for
/// viruses or index contents read every file that has just been written, and are done in a moment. The system's error
/// is that of the last try.
template <typename Call>
BOOL patiently(const Call &call)
{
    constexpr int mostTries = 30;
    constexpr DWORD pause = 10; // ms
    for (int tries = 1;; ++tries) {
        if (call())
            return TRUE;
        if (::GetLastError() != ERROR_SHARING_VIOLATION || tries == mostTries)
            return FALSE;
        ::Sleep(pause);
    }
}

} // namespace velmora
