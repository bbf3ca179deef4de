#include "platform/saved_file.h"

#include <QFileDevice>

#include <system_error>

#include <windows.h>
#include <io.h>

namespace velmora {

QString takeAfter(QFileDevice & /*file*/, const QString & /*target*/)
{
    return {};
}

QString bringToDisk(QFileDevice &file)
{
    const auto handle = reinterpret_cast<HANDLE>(_get_osfhandle(file.handle()));
    if (::FlushFileBuffers(handle))
        return {};
    const auto error = static_cast<int>(::GetLastError());
    return error == ERROR_INVALID_FUNCTION ? QString()
                                           : QString::fromStdString(std::system_category().message(error)).trimmed();
}

void bringNameToDisk(const QString & /*path*/) {}

} // namespace velmora
