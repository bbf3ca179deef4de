#include "platform/console.h"

#include <windows.h>

namespace velmora {

namespace {

bool writeTo(HANDLE output, const QString &text)
{
    if (!output || output == INVALID_HANDLE_VALUE)
        return false;
    DWORD mode = 0;
    DWORD written = 0;
    if (GetConsoleMode(output, &mode)) {
        const std::wstring wide = text.toStdWString();
        return WriteConsoleW(output, wide.data(), static_cast<DWORD>(wide.size()), &written, nullptr) != FALSE;
    }
    const QByteArray bytes = text.toUtf8();
    return WriteFile(output, bytes.constData(), static_cast<DWORD>(bytes.size()), &written, nullptr) != FALSE;
}

} // namespace

ConsoleResult writeToConsole(const QString &text, ConsoleStream stream)
{
    const QString line = text + QStringLiteral("\r\n");
    // A redirected output is inherited; a console has to be asked for, as a windowed program begins without one.
    if (writeTo(GetStdHandle(stream == ConsoleStream::Output ? STD_OUTPUT_HANDLE : STD_ERROR_HANDLE), line))
        return ConsoleResult::Written;
    if (!AttachConsole(ATTACH_PARENT_PROCESS))
        return ConsoleResult::NoConsole;
    const HANDLE console = CreateFileW(L"CONOUT$", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                       nullptr, OPEN_EXISTING, 0, nullptr);
    const bool written = writeTo(console, line);
    if (console != INVALID_HANDLE_VALUE)
        CloseHandle(console);
    FreeConsole();
    return written ? ConsoleResult::Written : ConsoleResult::NoConsole;
}

} // namespace velmora
