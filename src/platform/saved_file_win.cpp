#include "platform/handle_win.h"
#include "platform/long_path_win.h"
#include "platform/patient_call_win.h"
#include "platform/saved_file.h"

#include <QFileDevice>
#include <QFileInfo>

#include <cstddef>
#include <string>
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

QString systemWords(DWORD error)
{
    return QString::fromStdString(std::system_category().message(int(error))).trimmed();
}

/// Copies what `source` reads to the new file at `path`. Returns an error number.
DWORD copyToNewFile(const Handle &source, const std::wstring &path)
{
    const Handle sink(::CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_ALWAYS,
                                    FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!sink.isOpen())
        return ::GetLastError();
    std::vector<char> buffer(1 << 16);
    for (;;) {
        DWORD count = 0;
        if (!::ReadFile(source.get(), buffer.data(), DWORD(buffer.size()), &count, nullptr))
            return ::GetLastError();
        if (count == 0)
            return ::FlushFileBuffers(sink.get()) ? ERROR_SUCCESS : ::GetLastError();
        DWORD written = 0;
        if (!::WriteFile(sink.get(), buffer.data(), count, &written, nullptr))
            return ::GetLastError();
        if (written != count)
            return ERROR_DISK_FULL;
    }
}

/// Gives the file at `path` the named streams of the one at `model`: the mark of what came from the internet, what
/// other systems keep about files on a share. Returns an error number; none where the file system knows no streams.
DWORD copyNamedStreams(const std::wstring &model, const std::wstring &path)
{
    WIN32_FIND_STREAM_DATA stream{};
    const HANDLE search = ::FindFirstStreamW(model.c_str(), FindStreamInfoStandard, &stream, 0);
    if (search == INVALID_HANDLE_VALUE)
        return ERROR_SUCCESS;
    DWORD error = ERROR_SUCCESS;
    do {
        const std::wstring name = stream.cStreamName; // ":name:$DATA"; the contents themselves are "::$DATA"
        if (name.compare(0, 2, L"::") == 0)
            continue;
        const Handle source(::CreateFileW((model + name).c_str(), GENERIC_READ,
                                          FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                          OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
        error = source.isOpen() ? copyToNewFile(source, path + name) : ::GetLastError();
    } while (error == ERROR_SUCCESS && ::FindNextStreamW(search, &stream));
    ::FindClose(search);
    return error;
}

} // namespace

QString takeAfter(QFileDevice &file, const QString &target)
{
    const std::wstring model = longPath(QFileInfo(target).absoluteFilePath());
    const DWORD attributes = ::GetFileAttributesW(model.c_str());
    const std::wstring path = pathOf(file);
    if (attributes == INVALID_FILE_ATTRIBUTES || path.empty())
        return {};
    // Before anything that may take away the right to write.
    if (const DWORD error = copyNamedStreams(model, path); error != ERROR_SUCCESS)
        return systemWords(error);
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
    const DWORD error = ::GetLastError();
    return error == ERROR_INVALID_FUNCTION ? QString() : systemWords(error);
}

void awaitReplaceable(const QString &path)
{
    const std::wstring target = longPath(QFileInfo(path).absoluteFilePath());
    (void)patiently([&target] {
        const Handle probe(::CreateFileW(target.c_str(), DELETE, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                         nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
        return BOOL(probe.isOpen());
    });
}

void bringNameToDisk(const QString & /*path*/) {}

} // namespace velmora
