#include "platform/long_path_win.h"
#include "platform/saved_file.h"

#include <QFileDevice>
#include <QFileInfo>

#include <cstddef>
#include <system_error>
#include <vector>

#include <windows.h>
#include <io.h>

namespace velmora {

namespace {

/// Where an open file lies now, whatever it was opened as; empty when the system does not say.
std::wstring pathOf(QFileDevice &file)
{
    const auto handle = reinterpret_cast<HANDLE>(_get_osfhandle(file.handle()));
    std::wstring path(32768, L'\0');
    const DWORD length = ::GetFinalPathNameByHandleW(handle, path.data(), DWORD(path.size()), FILE_NAME_NORMALIZED);
    path.resize(length < path.size() ? length : 0);
    return path;
}

/// Gives the file at `path` the access list of the one at `model`. A file system without such lists has nothing to
/// give, and a share that lets nobody set them goes by its folders.
void copyAccessList(const std::wstring &model, const std::wstring &path)
{
    DWORD size = 0;
    ::GetFileSecurityW(model.c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &size);
    std::vector<std::byte> descriptor(size);
    if (size > 0 && ::GetFileSecurityW(model.c_str(), DACL_SECURITY_INFORMATION, descriptor.data(), size, &size))
        ::SetFileSecurityW(path.c_str(), DACL_SECURITY_INFORMATION, descriptor.data());
}

} // namespace

QString takeAfter(QFileDevice &file, const QString &target)
{
    const std::wstring model = longPath(QFileInfo(target).absoluteFilePath());
    const DWORD attributes = ::GetFileAttributesW(model.c_str());
    const std::wstring path = pathOf(file);
    if (attributes == INVALID_FILE_ATTRIBUTES || path.empty())
        return {};
    copyAccessList(model, path);
    constexpr DWORD kept = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_NOT_CONTENT_INDEXED;
    if ((attributes & kept) != 0)
        ::SetFileAttributesW(path.c_str(), attributes & kept);
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
