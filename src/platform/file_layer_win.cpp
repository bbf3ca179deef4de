#include "platform/file_error_win.h"
#include "platform/file_layer.h"
#include "platform/folder_listing_win.h"
#include "platform/handle_win.h"
#include "platform/long_path_win.h"
#include "platform/patient_call_win.h"
#include "platform/recycle_bin_win.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <vector>

#include <windows.h>
#include <winioctl.h>

namespace velmora {

namespace {

constexpr DWORD shareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr DWORD asItself = FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT;
/// The attributes that a copy takes along.
constexpr DWORD keptAttributes =
    FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE;

FileError lastError()
{
    return fileErrorOf(::GetLastError());
}

FileError errorUnless(BOOL done)
{
    return done ? FileError() : lastError();
}

FileError notAllowed()
{
    return fileErrorOf(ERROR_INVALID_NAME);
}

qint64 joined(DWORD high, DWORD low)
{
    return qint64(quint64(high) << 32U | low);
}

constexpr qint64 unixEpoch = 116'444'736'000'000'000; // 1601 to 1970 in units of 100 ns

qint64 nanoseconds(const FILETIME &time)
{
    return (joined(time.dwHighDateTime, time.dwLowDateTime) - unixEpoch) * 100;
}

FILETIME fileTime(qint64 ns)
{
    const auto ticks = quint64((ns - (ns % 100 + 100) % 100) / 100 + unixEpoch);
    return {DWORD(ticks & 0xFFFF'FFFFU), DWORD(ticks >> 32U)};
}

bool isLinkTag(DWORD tag)
{
    return tag == IO_REPARSE_TAG_SYMLINK || tag == IO_REPARSE_TAG_MOUNT_POINT;
}

NodeKind kindOf(DWORD attributes, DWORD reparseTag)
{
    if ((attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 && isLinkTag(reparseTag))
        return NodeKind::Link;
    return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? NodeKind::Folder : NodeKind::File;
}

NodeResult describe(HANDLE handle)
{
    BY_HANDLE_FILE_INFORMATION information{};
    if (!::GetFileInformationByHandle(handle, &information))
        return {{}, lastError()};
    FILE_ATTRIBUTE_TAG_INFO tag{};
    if ((information.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 &&
        !::GetFileInformationByHandleEx(handle, FileAttributeTagInfo, &tag, sizeof tag))
        return {{}, lastError()};
    NodeState node;
    node.kind = kindOf(information.dwFileAttributes, tag.ReparseTag);
    node.size = joined(information.nFileSizeHigh, information.nFileSizeLow);
    node.modifiedNs = nanoseconds(information.ftLastWriteTime);
    if (information.nFileIndexHigh != 0 || information.nFileIndexLow != 0)
        node.identity = FileIdentity{information.dwVolumeSerialNumber,
                                     quint64(joined(information.nFileIndexHigh, information.nFileIndexLow))};
    node.permissions = information.dwFileAttributes & keptAttributes;
    node.leadsToFolder = node.kind == NodeKind::Link && (information.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    return {node, {}};
}

HANDLE openAs(const std::wstring &path, DWORD access, DWORD share, DWORD flags)
{
    return ::CreateFileW(path.c_str(), access, share, nullptr, OPEN_EXISTING, flags, nullptr);
}

FileError setAttributes(const std::wstring &path, const NodeState &model)
{
    {
        const Handle entry(openAs(path, FILE_WRITE_ATTRIBUTES, shareAll, asItself));
        const FILETIME time = fileTime(model.modifiedNs);
        if (!entry.isOpen() || !::SetFileTime(entry.get(), nullptr, nullptr, &time))
            return lastError();
    }
    const DWORD attributes = model.permissions & keptAttributes;
    return errorUnless(::SetFileAttributesW(path.c_str(), attributes != 0 ? attributes : FILE_ATTRIBUTE_NORMAL));
}

/// Makes a call that moves or removes an entry. Takes the read-only mark from it for as long as that needs it gone, and
/// gives it back if the call fails.
template <typename Call>
FileError withoutReadOnlyMark(const std::wstring &path, const Call &call)
{
    const DWORD attributes = ::GetFileAttributesW(path.c_str());
    const bool isMarked = attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0;
    if (isMarked)
        (void)::SetFileAttributesW(path.c_str(), attributes & ~DWORD(FILE_ATTRIBUTE_READONLY));
    const FileError error = errorUnless(patiently(call));
    if (error.isError() && isMarked)
        (void)::SetFileAttributesW(path.c_str(), attributes);
    return error;
}

class WindowsSource final : public FileSource {
public:
    WindowsSource(HANDLE handle, std::wstring path) : m_handle(handle), m_path(std::move(path)) {}

    NodeResult state() override { return describe(m_handle.get()); }

    FilePiece read(char *buffer, qint64 length) override
    {
        qint64 total = 0;
        while (total < length) {
            DWORD count = 0;
            const DWORD wanted = DWORD(std::min<qint64>(length - total, 1 << 30));
            if (!::ReadFile(m_handle.get(), buffer + total, wanted, &count, nullptr))
                return {total, true};
            if (count == 0)
                break;
            total += count;
        }
        return {total, false};
    }

    [[nodiscard]] const std::wstring &path() const { return m_path; }

private:
    Handle m_handle;
    std::wstring m_path;
};

DWORD CALLBACK tellProgress(LARGE_INTEGER, LARGE_INTEGER transferred, LARGE_INTEGER, LARGE_INTEGER, DWORD, DWORD,
                            HANDLE, HANDLE, LPVOID tick)
{
    const auto &call = *static_cast<const FileSink::Tick *>(tick);
    return call(transferred.QuadPart) ? PROGRESS_CONTINUE : PROGRESS_CANCEL;
}

class WindowsSink final : public FileSink {
public:
    WindowsSink(HANDLE handle, std::wstring path) : m_handle(handle), m_path(std::move(path)) {}

    FileError write(const char *bytes, qint64 length) override
    {
        while (length > 0) {
            DWORD count = 0;
            if (!::WriteFile(m_handle.get(), bytes, DWORD(std::min<qint64>(length, 1 << 30)), &count, nullptr))
                return lastError();
            bytes += count;
            length -= count;
        }
        return {};
    }

    /// By the system's own copying, which shares blocks, stays on the server and takes named streams along where it
    /// can. The source is held open, so that its name cannot come to mean another file.
    FileError copyFrom(FileSource &source, const Tick &tick) override
    {
        m_handle = Handle(INVALID_HANDLE_VALUE);
        const auto &from = static_cast<WindowsSource &>(source);
        auto call = tick;
        const FileError error =
            errorUnless(::CopyFileExW(from.path().c_str(), m_path.c_str(), &tellProgress, &call, nullptr, 0));
        if (error.isError())
            return error;
        (void)::SetFileAttributesW(m_path.c_str(), FILE_ATTRIBUTE_NORMAL); // a read-only one could not be flushed
        m_handle = Handle(openAs(m_path, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ, 0));
        return m_handle.isOpen() ? FileError() : lastError();
    }

    FileError keepAttributes(const NodeState &model) override
    {
        // By the handle: nothing else may open the file while it is written.
        FILE_BASIC_INFO information{};
        const FILETIME time = fileTime(model.modifiedNs);
        information.LastWriteTime.QuadPart = joined(time.dwHighDateTime, time.dwLowDateTime);
        const DWORD attributes = model.permissions & keptAttributes;
        information.FileAttributes = attributes != 0 ? attributes : FILE_ATTRIBUTE_NORMAL;
        return errorUnless(
            ::SetFileInformationByHandle(m_handle.get(), FileBasicInfo, &information, sizeof information));
    }

    FileError flush() override { return errorUnless(::FlushFileBuffers(m_handle.get())); }

    NodeResult state() override { return describe(m_handle.get()); }

private:
    Handle m_handle;
    std::wstring m_path;
};

/// The name of a link's target as the system stores it. The structure is `REPARSE_DATA_BUFFER` of the driver kit.
FileError readLinkTarget(HANDLE link, QString &target)
{
    struct Header {
        DWORD tag;
        WORD dataLength;
        WORD reserved;
        WORD substituteOffset;
        WORD substituteLength;
        WORD printOffset;
        WORD printLength;
    };
    std::vector<char> buffer(MAXIMUM_REPARSE_DATA_BUFFER_SIZE);
    DWORD length = 0;
    if (!::DeviceIoControl(link, FSCTL_GET_REPARSE_POINT, nullptr, 0, buffer.data(), DWORD(buffer.size()), &length,
                           nullptr))
        return lastError();
    Header header{};
    if (length < sizeof header)
        return {FileErrorKind::Other, {}};
    std::memcpy(&header, buffer.data(), sizeof header);
    const std::size_t begin = sizeof header + (header.tag == IO_REPARSE_TAG_SYMLINK ? sizeof(DWORD) : 0);
    const auto text = [&](WORD offset, WORD bytes) {
        const std::size_t from = begin + offset;
        if (from + bytes > length)
            return QString();
        QString name(bytes / 2, Qt::Uninitialized);
        std::memcpy(name.data(), buffer.data() + from, std::size_t(bytes / 2) * 2);
        return name;
    };
    target = text(header.printOffset, header.printLength);
    if (target.isEmpty()) {
        target = text(header.substituteOffset, header.substituteLength);
        if (target.startsWith(QLatin1String("\\??\\")))
            target.remove(0, 4);
    }
    return target.isEmpty() ? FileError{FileErrorKind::Unsupported, {}} : FileError();
}

bool canBeReached(const QString &name)
{
    return !name.isEmpty() && name != QLatin1String(".") && name != QLatin1String("..") && !name.contains(u'/') &&
           !name.contains(u'\\') && !name.contains(QChar(u'\0'));
}

/// Held without leave to rename or remove it, and so are all folders above it: what its path means cannot change.
class WindowsFolder final : public FolderHandle {
public:
    WindowsFolder(std::shared_ptr<Handle> handle, std::shared_ptr<const WindowsFolder> above, QString path)
        : m_handle(std::move(handle)), m_above(std::move(above)), m_path(std::move(path))
    {}

    static std::unique_ptr<WindowsFolder> open(const QString &path, std::shared_ptr<const WindowsFolder> above,
                                               DWORD flags, FileError &error)
    {
        const auto handle = std::make_shared<Handle>(openAs(longPath(path), FILE_LIST_DIRECTORY | FILE_READ_ATTRIBUTES,
                                                            FILE_SHARE_READ | FILE_SHARE_WRITE, flags));
        if (!handle->isOpen()) {
            error = lastError();
            return nullptr;
        }
        const NodeResult found = describe(handle->get());
        error = found.error;
        if (!error.isError() && found.node.kind != NodeKind::Folder)
            error.kind = found.node.kind == NodeKind::Link ? FileErrorKind::LinkOnTheWay : FileErrorKind::NotAFolder;
        return error.isError() ? nullptr : std::make_unique<WindowsFolder>(handle, std::move(above), path);
    }

    NodeResult self() override { return describe(m_handle->get()); }

    NodeResult stat(const QString &name) override
    {
        if (!canBeReached(name))
            return {{}, notAllowed()};
        const Handle entry(openAs(pathOf(name), FILE_READ_ATTRIBUTES, shareAll, asItself));
        return entry.isOpen() ? describe(entry.get()) : NodeResult{{}, lastError()};
    }

    FileError list(const Sink &sink) override
    {
        EntrySearch entries(pathOf(QString()));
        if (!entries.isOpen()) // the root of an empty volume has no entry at all
            return entries.error() == ERROR_FILE_NOT_FOUND ? FileError() : fileErrorOf(entries.error());
        while (const WIN32_FIND_DATAW *raw = entries.next()) {
            NodeState node;
            node.kind = kindOf(raw->dwFileAttributes, raw->dwReserved0);
            node.size = joined(raw->nFileSizeHigh, raw->nFileSizeLow);
            node.modifiedNs = nanoseconds(raw->ftLastWriteTime);
            node.permissions = raw->dwFileAttributes & keptAttributes;
            if (!sink(QString::fromWCharArray(raw->cFileName), node))
                return {};
        }
        return entries.error() == NO_ERROR ? FileError() : fileErrorOf(entries.error());
    }

    bool liesIn(FolderHandle &other) override
    {
        const QString inner = finalPath();
        const QString outer = static_cast<WindowsFolder &>(other).finalPath();
        return !inner.isEmpty() && !outer.isEmpty() && inner.startsWith(outer, Qt::CaseInsensitive);
    }

    FileError checkPath(const QString &path) override
    {
        const Handle there(openAs(longPath(path), FILE_READ_ATTRIBUTES, shareAll, FILE_FLAG_BACKUP_SEMANTICS));
        const NodeResult found = there.isOpen() ? describe(there.get()) : NodeResult{{}, lastError()};
        const NodeResult held = found.error.isError() ? found : self();
        if (held.error.isError())
            return held.error;
        return found.node.identity == held.node.identity ? FileError() : FileError{FileErrorKind::NotExpected, {}};
    }

    std::unique_ptr<FolderHandle> openFolder(const QString &name, FileError &error) override
    {
        if (!canBeReached(name)) {
            error = notAllowed();
            return nullptr;
        }
        return open(joinedPath(name), std::make_shared<WindowsFolder>(m_handle, m_above, m_path), asItself, error);
    }

    std::unique_ptr<FileSource> openFile(const QString &name, FileError &error) override
    {
        const std::wstring path = canBeReached(name) ? pathOf(name) : std::wstring();
        const HANDLE handle = openAs(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                     FILE_FLAG_OPEN_REPARSE_POINT | FILE_FLAG_SEQUENTIAL_SCAN);
        if (handle == INVALID_HANDLE_VALUE) {
            error = lastError();
            return nullptr;
        }
        auto file = std::make_unique<WindowsSource>(handle, path);
        if (::GetFileType(handle) == FILE_TYPE_DISK && file->state().node.kind == NodeKind::File)
            return file;
        error = {FileErrorKind::NotAFile, {}};
        return nullptr;
    }

    std::unique_ptr<FileSink> createFile(const QString &name, FileError &error) override
    {
        const std::wstring path = canBeReached(name) ? pathOf(name) : std::wstring();
        const HANDLE handle = ::CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                            CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
        if (handle == INVALID_HANDLE_VALUE) {
            error = lastError();
            return nullptr;
        }
        return std::make_unique<WindowsSink>(handle, path);
    }

    FileError makeFolder(const QString &name, const NodeState *) override
    {
        return canBeReached(name) ? errorUnless(::CreateDirectoryW(pathOf(name).c_str(), nullptr)) : notAllowed();
    }

    FileError linkTarget(const QString &name, QString &target) override
    {
        if (!canBeReached(name))
            return notAllowed();
        const Handle link(openAs(pathOf(name), FILE_READ_ATTRIBUTES, shareAll, asItself));
        return link.isOpen() ? readLinkTarget(link.get(), target) : lastError();
    }

    FileError makeLink(const QString &name, const QString &target, bool leadsToFolder) override
    {
        constexpr DWORD allowedForDevelopers = 0x2; // SYMBOLIC_LINK_FLAG_ALLOW_UNPRIVILEGED_CREATE
        const DWORD flags = allowedForDevelopers | (leadsToFolder ? SYMBOLIC_LINK_FLAG_DIRECTORY : 0U);
        if (!canBeReached(name))
            return notAllowed();
        return errorUnless(::CreateSymbolicLinkW(pathOf(name).c_str(), target.toStdWString().c_str(), flags));
    }

    FileError makeHardLink(const QString &name, FolderHandle &to, const QString &newName) override
    {
        if (!canBeReached(name) || !canBeReached(newName))
            return notAllowed();
        const std::wstring target = static_cast<WindowsFolder &>(to).pathOf(newName);
        return errorUnless(::CreateHardLinkW(target.c_str(), pathOf(name).c_str(), nullptr));
    }

    FileError move(const QString &name, FolderHandle &to, const QString &newName, IfTaken ifTaken) override
    {
        if (!canBeReached(name) || !canBeReached(newName))
            return notAllowed();
        const std::wstring source = pathOf(name);
        const std::wstring target = static_cast<WindowsFolder &>(to).pathOf(newName);
        if (ifTaken == IfTaken::Fail)
            return errorUnless(patiently([&] { return ::MoveFileExW(source.c_str(), target.c_str(), 0); }));
        return withoutReadOnlyMark(
            target, [&] { return ::MoveFileExW(source.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING); });
    }

    FileError keepAttributes(const QString &name, const NodeState &model) override
    {
        return canBeReached(name) ? setAttributes(pathOf(name), model) : notAllowed();
    }

    FileError removeFile(const QString &name) override
    {
        const NodeResult entry = stat(name);
        if (entry.error.isError())
            return entry.error;
        const std::wstring path = pathOf(name);
        return withoutReadOnlyMark(path, [&] {
            return entry.node.leadsToFolder ? ::RemoveDirectoryW(path.c_str()) : ::DeleteFileW(path.c_str());
        });
    }

    FileError removeFolder(const QString &name) override
    {
        if (!canBeReached(name))
            return notAllowed();
        const std::wstring path = pathOf(name);
        return withoutReadOnlyMark(path, [&] { return ::RemoveDirectoryW(path.c_str()); });
    }

    RecycleResult recycle(const QString &name, const BinNotice & /*notice*/) override
    {
        if (!canBeReached(name))
            return {{}, notAllowed()};
        return moveToRecycleBin(joinedPath(name));
    }

    FileError settle() override { return {}; } // `FileSink::flush` is the only way

    [[nodiscard]] std::wstring pathOf(const QString &name) const { return longPath(joinedPath(name)); }

private:
    [[nodiscard]] QString joinedPath(const QString &name) const
    {
        return m_path.endsWith(u'/') ? m_path + name : m_path + u'/' + name;
    }

    [[nodiscard]] QString finalPath() const
    {
        std::wstring path(32'768, L'\0');
        const DWORD length = ::GetFinalPathNameByHandleW(m_handle->get(), path.data(), DWORD(path.size()), 0);
        if (length == 0 || length >= path.size())
            return {};
        const QString text = QString::fromWCharArray(path.data(), int(length));
        return text.endsWith(u'\\') ? text : text + u'\\';
    }

    std::shared_ptr<Handle> m_handle;
    std::shared_ptr<const WindowsFolder> m_above;
    QString m_path;
};

class WindowsLayer final : public FileLayer {
public:
    std::unique_ptr<FolderHandle> openRoot(const QString &path, FileError &error) override
    {
        return WindowsFolder::open(path, nullptr, FILE_FLAG_BACKUP_SEMANTICS, error);
    }

    bool canSettle() const override { return false; }

    NodeResult statInBin(const QString &binPath) override
    {
        const Handle entry(openAs(longPath(binPath), FILE_READ_ATTRIBUTES, shareAll, asItself));
        return entry.isOpen() ? describe(entry.get()) : NodeResult{{}, lastError()};
    }

    FileError restore(const QString &binPath, FolderHandle &to, const QString &name,
                      const NodeTest &isExpected) override
    {
        if (!canBeReached(name) || binPath.isEmpty())
            return notAllowed();
        const std::wstring source = longPath(binPath);
        const std::wstring target = static_cast<WindowsFolder &>(to).pathOf(name);
        const NodeResult before = statInBin(binPath);
        if (before.error.isError() || !isExpected(before.node))
            return before.error.isError() ? before.error : FileError{FileErrorKind::NotExpected, {}};
        if (!::MoveFileExW(source.c_str(), target.c_str(), 0))
            return lastError();
        const NodeResult after = to.stat(name); // others may have been at the bin since
        if (after.error.isError() || !isExpected(after.node)) {
            return ::MoveFileExW(target.c_str(), source.c_str(), 0) ? FileError{FileErrorKind::NotExpected, {}}
                                                                    : lastError();
        }
        forgetInRecycleBin(binPath);
        return {};
    }
};

bool isDeviceName(QStringView name)
{
    const QString stem =
        name.left(name.indexOf(u'.') < 0 ? name.size() : name.indexOf(u'.')).trimmed().toString().toUpper();
    static constexpr std::array<const char *, 6> devices{"CON", "PRN", "AUX", "NUL", "CONIN$", "CONOUT$"};
    if (std::any_of(devices.begin(), devices.end(), [&](const char *device) { return stem == QLatin1String(device); }))
        return true;
    return stem.size() == 4 && (stem.startsWith(QLatin1String("COM")) || stem.startsWith(QLatin1String("LPT"))) &&
           stem[3] >= u'0' && stem[3] <= u'9';
}

} // namespace

FileLayer &FileLayer::native()
{
    static WindowsLayer layer;
    return layer;
}

bool isProtected(const NodeState &node)
{
    return node.kind == NodeKind::File && (node.permissions & FILE_ATTRIBUTE_READONLY) != 0;
}

bool isPlainName(QStringView name)
{
    if (name.isEmpty() || name.endsWith(u'.') || name.endsWith(u' ') || isDeviceName(name))
        return false;
    static constexpr QStringView forbidden = u"<>:\"/\\|?*";
    return std::none_of(name.begin(), name.end(), [](QChar unit) { return unit < u' ' || forbidden.contains(unit); });
}

} // namespace velmora
