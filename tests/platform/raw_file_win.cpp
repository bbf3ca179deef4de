#include "platform/long_path_win.h"
#include "platform/raw_file.h"

#include <windows.h>

namespace velmora::test {

bool makeRawFolder(const QString &path)
{
    return ::CreateDirectoryW(longPath(path).c_str(), nullptr) != FALSE;
}

bool makeRawFile(const QString &path, const QByteArray &bytes)
{
    const HANDLE file =
        ::CreateFileW(longPath(path).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return false;
    DWORD written = 0;
    const BOOL ok = ::WriteFile(file, bytes.constData(), DWORD(bytes.size()), &written, nullptr);
    ::CloseHandle(file);
    return ok && written == DWORD(bytes.size());
}

bool removeRawTree(const QString &path)
{
    WIN32_FIND_DATAW entry{};
    const HANDLE search = ::FindFirstFileW(longPath(path + QLatin1String("/*")).c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE)
        return false;
    bool ok = true;
    do {
        const QString name = QString::fromWCharArray(entry.cFileName);
        if (name == QLatin1String(".") || name == QLatin1String(".."))
            continue;
        const QString child = path + u'/' + name;
        ok = ((entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0
                  ? removeRawTree(child)
                  : ::DeleteFileW(longPath(child).c_str()) != FALSE) &&
             ok;
    } while (::FindNextFileW(search, &entry));
    ::FindClose(search);
    return ::RemoveDirectoryW(longPath(path).c_str()) != FALSE && ok;
}

} // namespace velmora::test
