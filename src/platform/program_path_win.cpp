#include "platform/program_path.h"

#include <QDir>
#include <qt_windows.h>

#include <vector>

namespace velmora {

QString programPath()
{
    std::vector<wchar_t> name(32768); // longer than any path
    const DWORD length = GetModuleFileNameW(nullptr, name.data(), DWORD(name.size()));
    return QDir::fromNativeSeparators(QString::fromWCharArray(name.data(), int(length)));
}

} // namespace velmora
