#include "platform/window_chrome.h"

#include <windows.h>

namespace velmora {

void setDarkTitleBar(quintptr window, bool dark)
{
    using SetAttribute = HRESULT(WINAPI *)(HWND, DWORD, LPCVOID, DWORD);
    constexpr DWORD useImmersiveDarkMode = 20;

    // Loaded by name: systems without the desktop composition library start all the same.
    static const HMODULE library = LoadLibraryExW(L"dwmapi.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    if (!library)
        return;
    static const auto setAttribute =
        reinterpret_cast<SetAttribute>(reinterpret_cast<void *>(GetProcAddress(library, "DwmSetWindowAttribute")));
    if (!setAttribute)
        return;
    const BOOL value = dark ? TRUE : FALSE;
    setAttribute(reinterpret_cast<HWND>(window), useImmersiveDarkMode, &value, sizeof value);
}

void allowOthersToActivate()
{
    AllowSetForegroundWindow(ASFW_ANY);
}

} // namespace velmora
