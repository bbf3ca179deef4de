#include "platform/file_access.h"
#include "platform/folder_listing_win.h"
#include "platform/handle_win.h"
#include "platform/long_path_win.h"

#include <windows.h>

namespace velmora {

namespace {

/// 1601-01-01 to 1970-01-01 in units of 100 ns.
constexpr qint64 unixEpoch = 116'444'736'000'000'000;

qint64 modifiedMs(const FILETIME &time)
{
    const qint64 ticks = qint64(quint64(time.dwHighDateTime) << 32U | time.dwLowDateTime);
    const qint64 sinceEpoch = ticks - unixEpoch;
    // Rounded down also before 1970, as the integral part of a time is elsewhere.
    return sinceEpoch >= 0 ? sinceEpoch / 10'000 : -((-sinceEpoch + 9'999) / 10'000);
}

qint64 joined(DWORD high, DWORD low)
{
    return qint64(quint64(high) << 32U | low);
}

FileIdentity identityOf(const BY_HANDLE_FILE_INFORMATION &information)
{
    return {information.dwVolumeSerialNumber, quint64(joined(information.nFileIndexHigh, information.nFileIndexLow))};
}

/// Opens what links at `path` lead to, for its attributes only.
HANDLE openForAttributes(const std::wstring &path)
{
    return ::CreateFileW(path.c_str(), FILE_READ_ATTRIBUTES, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                         nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
}

class WindowsFile final : public OpenFile {
public:
    WindowsFile(HANDLE handle, const FileIdentity &identity) : m_handle(handle), m_identity(identity) {}

    FilePiece readAt(qint64 offset, char *buffer, qint64 length) override
    {
        qint64 total = 0;
        while (total < length) {
            const quint64 position = quint64(offset + total);
            OVERLAPPED place{};
            place.Offset = DWORD(position & 0xFFFF'FFFFU);
            place.OffsetHigh = DWORD(position >> 32U);
            DWORD count = 0;
            const DWORD wanted = DWORD(std::min<qint64>(length - total, 1 << 30));
            if (!::ReadFile(m_handle.get(), buffer + total, wanted, &count, &place)) {
                if (::GetLastError() == ERROR_HANDLE_EOF)
                    break;
                return {total, true};
            }
            if (count == 0)
                break;
            total += count;
        }
        return {total, false};
    }

    std::optional<qint64> size() const override
    {
        LARGE_INTEGER size{};
        return ::GetFileSizeEx(m_handle.get(), &size) ? std::optional(qint64(size.QuadPart)) : std::nullopt;
    }

    void expect(qint64, qint64) override {} // the sequential flag of the handle says it already

    std::optional<FileIdentity> identity() const override { return m_identity; }

private:
    Handle m_handle;
    FileIdentity m_identity;
};

class WindowsOpener final : public FileOpener {
public:
    std::unique_ptr<OpenFile> open(const QString &path, OpenHint) override
    {
        // Everything that the device names stand for is out of reach of a path in the long form.
        const HANDLE handle =
            ::CreateFileW(longPath(path).c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                          nullptr, OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr);
        if (handle == INVALID_HANDLE_VALUE)
            return nullptr;
        BY_HANDLE_FILE_INFORMATION information{};
        if (::GetFileType(handle) != FILE_TYPE_DISK || !::GetFileInformationByHandle(handle, &information)) {
            ::CloseHandle(handle);
            return nullptr;
        }
        return std::make_unique<WindowsFile>(handle, identityOf(information));
    }
};

/// What stands at `path` once links are followed; false for a broken link.
bool describeTarget(const QString &path, FolderEntry &entry)
{
    const Handle target(openForAttributes(longPath(path)));
    BY_HANDLE_FILE_INFORMATION information{};
    if (!target.isOpen() || !::GetFileInformationByHandle(target.get(), &information))
        return false;
    entry.kind = (information.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? EntryKind::Folder : EntryKind::File;
    entry.size = joined(information.nFileSizeHigh, information.nFileSizeLow);
    entry.modifiedMs = modifiedMs(information.ftLastWriteTime);
    entry.identity = identityOf(information);
    return true;
}

bool describeEntry(const QString &folder, const WIN32_FIND_DATAW &raw, bool listsHidden, FolderEntry &entry)
{
    entry.name = QString::fromWCharArray(raw.cFileName);
    if (!listsHidden && (raw.dwFileAttributes & FILE_ATTRIBUTE_HIDDEN) != 0)
        return false;
    entry.kind = (raw.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? EntryKind::Folder : EntryKind::File;
    entry.size = joined(raw.nFileSizeHigh, raw.nFileSizeLow);
    entry.modifiedMs = modifiedMs(raw.ftLastWriteTime);
    entry.isLink = (raw.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 &&
                   (raw.dwReserved0 == IO_REPARSE_TAG_SYMLINK || raw.dwReserved0 == IO_REPARSE_TAG_MOUNT_POINT);
    return !entry.isLink || describeTarget(folder + u'/' + entry.name, entry);
}

class WindowsAccess final : public FileAccess {
public:
    explicit WindowsAccess(bool listsHidden) : m_listsHidden(listsHidden) {}

    FolderRead readFolder(const QString &path, const Sink &sink) const override
    {
        return listFolder(folderPrefix(path), [&](const WIN32_FIND_DATAW &raw) {
            FolderEntry entry;
            return !describeEntry(path, raw, m_listsHidden, entry) || sink(std::move(entry));
        });
    }

    std::unique_ptr<FileOpener> makeOpener() const override { return std::make_unique<WindowsOpener>(); }

    std::optional<FolderEntry> describe(const QString &path) const override
    {
        FolderEntry entry;
        return describeTarget(path, entry) ? std::optional(std::move(entry)) : std::nullopt;
    }

private:
    const bool m_listsHidden;
};

} // namespace

const FileAccess &FileAccess::native()
{
    static const WindowsAccess access(false);
    return access;
}

const FileAccess &FileAccess::nativeWithHidden()
{
    static const WindowsAccess access(true);
    return access;
}

} // namespace velmora
