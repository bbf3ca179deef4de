#include "platform/folder_listing_win.h"
#include "platform/space_listing.h"

#include <string>
#include <utility>

#include <windows.h>

namespace velmora {

namespace {

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
    return (raw.dwFileAttributes & FILE_ATTRIBUTE_SYSTEM) ||
           (!withHidden && (raw.dwFileAttributes & FILE_ATTRIBUTE_HIDDEN));
}

} // namespace

FolderRead readSpace(const QString &path, bool withHidden, const SpaceSink &sink)
{
    const std::wstring folder = folderPrefix(path);
    const qint64 cluster = clusterSize(folder);
    return listFolder(folder, [&](const WIN32_FIND_DATAW &raw) {
        if (isLeftOut(raw, withHidden))
            return true;
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
        return sink(std::move(entry));
    });
}

} // namespace velmora
