#include "platform/window_chrome.h"
#include "support/test_main.h"

#include <windows.h>

using namespace velmora;

class WindowChromeTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aDarkTitleBarIsAWishOnly()
    {
        const HMODULE library = ::LoadLibraryW(L"dwmapi.dll");
        QCOMPARE(library == nullptr, qEnvironmentVariableIsSet("VELMORA_WITHOUT_DWMAPI"));
        const HWND window = ::CreateWindowExW(0, L"STATIC", L"title", WS_OVERLAPPED, 0, 0, 10, 10, HWND_MESSAGE,
                                              nullptr, nullptr, nullptr);
        QVERIFY(window);
        for (const bool dark : {true, false})
            setDarkTitleBar(reinterpret_cast<quintptr>(window), dark);
        QVERIFY(::IsWindow(window));
        ::DestroyWindow(window);
        setDarkTitleBar(reinterpret_cast<quintptr>(window), true); // gone
        setDarkTitleBar(0, true);
        allowOthersToActivate();
    }
};

VELMORA_TEST(WindowChromeTest)
#include "window_chrome_win_test.moc"
