#include "platform/long_path_win.h"
#include "platform/space_listing.h"

#include <memory>
#include <string>
#include <string_view>

#include <windows.h>

namespace velmora {

namespace {

struct SearchCloser {
    using pointer = HANDLE;
    void operator()(HANDLE search) const { ::FindClose(search); }
};

qint64 joined(DWORD high, DWORD low)
{
    return qint64(quint64(high) << 32U | low);
}

/// What the volume of a folder hands out at a time.
qint64 clusterSize(const std::wstring &folder)
{
    constexpr qint64 usual = 4096;
    DWORD sectors = 0;
    DWORD bytes = 0;
    DWORD free = 0;
    DWORD all = 0;
    wchar_t volume[MAX_PATH + 1] = {};
    const bool isKnown = ::GetVolumePathNameW(folder.c_str(), volume, MAX_PATH) &&
                         ::GetDiskFreeSpaceW(volume, &sectors, &bytes, &free, &all) && sectors > 0 && bytes > 0;
    return isKnown ? qint64(sectors) * bytes : usual;
}

qint64 allocatedSize(const std::wstring &path, const WIN32_FIND_DATAW &raw, qint64 size, qint64 cluster)
{
    if (raw.dwFileAttributes & (FILE_ATTRIBUTE_COMPRESSED | FILE_ATTRIBUTE_SPARSE_FILE | FILE_ATTRIBUTE_OFFLINE)) {
        DWORD high = 0;
        ::SetLastError(NO_ERROR);
        const DWORD low = ::GetCompressedFileSizeW(path.c_str(), &high);
        if (low != INVALID_FILE_SIZE || ::GetLastError() == NO_ERROR)
            return joined(high, low);
    }
    return (size + cluster - 1) / cluster * cluster;
}

/// Of a link or mount point; other reparse points, as those of files that are kept elsewhere, are what they look like.
bool isLink(const WIN32_FIND_DATAW &raw)
{
    return (raw.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) && IsReparseTagNameSurrogate(raw.dwReserved0);
}

bool isLeftOut(const WIN32_FIND_DATAW &raw, bool withHidden)
{
    const std::wstring_view name(raw.cFileName);
    return name == L"." || name == L".." || (raw.dwFileAttributes & FILE_ATTRIBUTE_SYSTEM) ||
           (!withHidden && (raw.dwFileAttributes & FILE_ATTRIBUTE_HIDDEN));
}

} // namespace

FolderRead readSpace(const QString &path, bool withHidden, const SpaceSink &sink)
{
    std::wstring folder = longPath(path);
    if (folder.empty() || folder.back() != L'\\')
        folder += L'\\';
    WIN32_FIND_DATAW raw{};
    const HANDLE first = ::FindFirstFileExW((folder + L'*').c_str(), FindExInfoBasic, &raw, FindExSearchNameMatch,
                                            nullptr, FIND_FIRST_EX_LARGE_FETCH);
    if (first == INVALID_HANDLE_VALUE) {
        switch (::GetLastError()) {
        case ERROR_FILE_NOT_FOUND: // the root of an empty volume
            return FolderRead::Complete;
        case ERROR_PATH_NOT_FOUND:
        case ERROR_DIRECTORY:
        case ERROR_INVALID_NAME:
            return FolderRead::Missing;
        default:
            return FolderRead::Unreadable;
        }
    }
    const std::unique_ptr<void, SearchCloser> search(first);
    const qint64 cluster = clusterSize(folder);
    do {
        if (isLeftOut(raw, withHidden))
            continue;
        SpaceEntry entry;
        entry.name = QString::fromWCharArray(raw.cFileName);
        if (isLink(raw)) {
            entry.kind = SpaceEntry::Kind::Link;
        } else if (raw.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) {
            entry.kind = SpaceEntry::Kind::Folder;
        } else {
            entry.size = joined(raw.nFileSizeHigh, raw.nFileSizeLow);
            entry.allocated = allocatedSize(folder + raw.cFileName, raw, entry.size, cluster);
        }
        if (!sink(std::move(entry)))
            return FolderRead::Stopped;
    } while (::FindNextFileW(first, &raw));
    return ::GetLastError() == ERROR_NO_MORE_FILES ? FolderRead::Complete : FolderRead::Unreadable;
}

} // namespace velmora
