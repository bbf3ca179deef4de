#include "platform/descriptor_unix.h"
#include "platform/file_layer.h"
#include "platform/recycle_bin_unix.h"

#include <chrono>
#include <cstdio>
#include <cstring>
#include <system_error>

#include <dirent.h>
#ifdef __linux__
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <sys/vfs.h>
#endif

namespace velmora {

namespace {

constexpr qint64 nanoseconds = 1'000'000'000;
constexpr mode_t permissionBits = 0777; // what acts in the owner's or the group's name is not copied along

timespec modificationTime(const struct stat &status)
{
#ifdef __APPLE__
    return status.st_mtimespec;
#else
    return status.st_mtim;
#endif
}

NodeState stateOf(const struct stat &status, bool lastingIdentities)
{
    NodeState node;
    node.kind = S_ISREG(status.st_mode)   ? NodeKind::File
                : S_ISDIR(status.st_mode) ? NodeKind::Folder
                : S_ISLNK(status.st_mode) ? NodeKind::Link
                                          : NodeKind::Special;
    node.size = status.st_size;
    const timespec time = modificationTime(status);
    node.modifiedNs = qint64(time.tv_sec) * nanoseconds + time.tv_nsec;
    if (lastingIdentities)
        node.identity = identityOf(status);
    node.permissions = status.st_mode & permissionBits;
    return node;
}

/// False on file systems that number files anew whenever they come into memory.
bool hasLastingIdentities([[maybe_unused]] int folder)
{
#ifdef __linux__
    struct statfs status {};
    if (::fstatfs(folder, &status) == 0) {
        const auto type = static_cast<unsigned long>(status.f_type);
        return type != 0x4D44 && type != 0x2011'BAB0; // FAT, exFAT
    }
#endif
    return true;
}

FileError lastError()
{
    return fileErrorOf(errno);
}

FileError setAttributes(int base, const char *name, const NodeState &model)
{
    timespec times[2] = {};
    times[0].tv_nsec = UTIME_OMIT;
    const qint64 fraction = (model.modifiedNs % nanoseconds + nanoseconds) % nanoseconds;
    times[1].tv_sec = static_cast<time_t>((model.modifiedNs - fraction) / nanoseconds);
    times[1].tv_nsec = static_cast<long>(fraction);
    // The permissions first: with the owner's right to write taken away the time can still be set, by the owner.
    if (name) {
        if (model.kind != NodeKind::Link && ::fchmodat(base, name, mode_t(model.permissions), 0) != 0)
            return lastError();
        return ::utimensat(base, name, times, AT_SYMLINK_NOFOLLOW) == 0 ? FileError() : lastError();
    }
    if (::fchmod(base, mode_t(model.permissions)) != 0 || ::futimens(base, times) != 0)
        return lastError();
    return {};
}

class UnixSource final : public FileSource {
public:
    UnixSource(Descriptor file, bool lastingIdentities)
        : m_file(std::move(file)), m_lastingIdentities(lastingIdentities)
    {}

    NodeResult state() override
    {
        struct stat status {};
        if (::fstat(m_file.get(), &status) != 0)
            return {{}, lastError()};
        return {stateOf(status, m_lastingIdentities), {}};
    }

    FilePiece read(char *buffer, qint64 length) override
    {
        qint64 total = 0;
        while (total < length) {
            const ssize_t count = ::read(m_file.get(), buffer + total, std::size_t(length - total));
            if (count < 0 && errno == EINTR)
                continue;
            if (count < 0)
                return {total, true};
            if (count == 0)
                break;
            total += count;
        }
        return {total, false};
    }

    [[nodiscard]] int descriptor() const { return m_file.get(); }

private:
    Descriptor m_file;
    bool m_lastingIdentities;
};

/// Chooses pieces that take long enough to be worth a call and short enough to stop between them.
class PieceSize {
public:
    [[nodiscard]] qint64 next()
    {
        const auto now = std::chrono::steady_clock::now();
        if (m_size == 0)
            m_size = smallest;
        else if (now - m_last < std::chrono::milliseconds(8))
            m_size = std::min(m_size * 2, largest);
        else if (now - m_last > std::chrono::milliseconds(25))
            m_size = std::max(m_size / 2, smallest);
        m_last = now;
        return m_size;
    }

private:
    static constexpr qint64 smallest = qint64(256) << 10U;
    static constexpr qint64 largest = qint64(16) << 20U;
    std::chrono::steady_clock::time_point m_last;
    qint64 m_size = 0;
};

class UnixSink final : public FileSink {
public:
    UnixSink(Descriptor file, bool lastingIdentities) : m_file(std::move(file)), m_lastingIdentities(lastingIdentities)
    {}

    FileError write(const char *bytes, qint64 length) override
    {
        while (length > 0) {
            const ssize_t count = ::write(m_file.get(), bytes, std::size_t(length));
            if (count < 0 && errno == EINTR)
                continue;
            if (count < 0)
                return lastError();
            bytes += count;
            length -= count;
        }
        return {};
    }

    FileError copyFrom(FileSource &source, const Tick &tick) override
    {
        auto &from = static_cast<UnixSource &>(source);
        struct stat status {};
        if (::fstat(from.descriptor(), &status) != 0)
            return lastError();
        if (shareBlocks(from.descriptor(), status.st_size))
            return tick(status.st_size) ? FileError() : FileError{FileErrorKind::Stopped, {}};
        qint64 copied = 0;
        const FileError error = copyInSystem(from.descriptor(), status.st_size, copied, tick);
        if (error.isError())
            return error;
        return copyThroughMemory(from, copied, tick);
    }

    FileError keepAttributes(const NodeState &model) override { return setAttributes(m_file.get(), nullptr, model); }

    FileError flush() override
    {
        while (::fsync(m_file.get()) != 0) {
            if (errno != EINTR)
                return lastError();
        }
        return {};
    }

    NodeResult state() override
    {
        struct stat status {};
        if (::fstat(m_file.get(), &status) != 0)
            return {{}, lastError()};
        return {stateOf(status, m_lastingIdentities), {}};
    }

private:
    /// Lets the file system share the contents between both files, where it can.
    bool shareBlocks([[maybe_unused]] int from, [[maybe_unused]] qint64 size)
    {
#ifdef FICLONE
        constexpr qint64 worthACall = 64 << 10;
        return size >= worthACall && ::ioctl(m_file.get(), FICLONE, from) == 0;
#else
        return false;
#endif
    }

    /// Lets the system copy. Ends early without an error where it cannot; what is left is copied through memory.
    FileError copyInSystem([[maybe_unused]] int from, [[maybe_unused]] qint64 size, [[maybe_unused]] qint64 &copied,
                           [[maybe_unused]] const Tick &tick)
    {
#if defined(__linux__) && defined(__GLIBC__)
        constexpr qint64 worthACall = 64 << 10;
        if (size < worthACall)
            return {};
        PieceSize piece;
        while (copied < size) {
            const ssize_t count = ::copy_file_range(from, nullptr, m_file.get(), nullptr, std::size_t(piece.next()), 0);
            if (count < 0 && errno == EINTR)
                continue;
            if (count < 0 && (errno == ENOSPC || errno == EDQUOT || errno == EFBIG))
                return lastError();
            if (count <= 0) // another file system, or one that cannot; reading tells whether it is a real error
                return {};
            copied += count;
            if (!tick(copied))
                return {FileErrorKind::Stopped, {}};
        }
#endif
        return {};
    }

    FileError copyThroughMemory(UnixSource &from, qint64 copied, const Tick &tick)
    {
        const NodeResult known = from.state();
        const qint64 blockSize = std::clamp<qint64>(known.node.size + 1, 4 << 10, 256 << 10); // one more shows the end
        const auto block = std::make_unique_for_overwrite<char[]>(std::size_t(blockSize));
        for (;;) {
            const FilePiece piece = from.read(block.get(), blockSize);
            if (piece.failed)
                return {FileErrorKind::ReadFailed, lastError().reason};
            if (const FileError error = write(block.get(), piece.length); error.isError())
                return error;
            copied += piece.length;
            if (piece.length > 0 && !tick(copied))
                return {FileErrorKind::Stopped, {}};
            if (piece.length < blockSize)
                return {};
        }
    }

    Descriptor m_file;
    bool m_lastingIdentities;
};

struct DirCloser {
    void operator()(DIR *dir) const { ::closedir(dir); }
};

/// A name in its bytes; one that holds a NUL is none.
class NativeName {
public:
    explicit NativeName(const QString &name) : m_bytes(nativeName(name)) {}
    [[nodiscard]] bool isPlain() const
    {
        return !m_bytes.empty() && m_bytes != "." && m_bytes != ".." &&
               m_bytes.find_first_of(std::string_view("/\0", 2)) == std::string::npos;
    }
    [[nodiscard]] const char *c() const { return m_bytes.c_str(); }
    [[nodiscard]] const std::string &bytes() const { return m_bytes; }

private:
    std::string m_bytes;
};

FileError notAllowed()
{
    return fileErrorOf(EINVAL);
}

class UnixFolder final : public FolderHandle {
public:
    UnixFolder(Descriptor folder, std::string path)
        : m_folder(std::move(folder)),
          m_path(std::move(path)),
          m_lastingIdentities(hasLastingIdentities(m_folder.get()))
    {}

    NodeResult self() override
    {
        struct stat status {};
        if (::fstat(m_folder.get(), &status) != 0)
            return {{}, lastError()};
        return {stateOf(status, m_lastingIdentities), {}};
    }

    NodeResult stat(const QString &name) override
    {
        const NativeName entry(name);
        struct stat status {};
        if (!entry.isPlain())
            return {{}, notAllowed()};
        if (::fstatat(m_folder.get(), entry.c(), &status, AT_SYMLINK_NOFOLLOW) != 0)
            return {{}, lastError()};
        return {stateOf(status, m_lastingIdentities), {}};
    }

    FileError list(const Sink &sink) override
    {
        Descriptor folder(openAgain(m_folder.get(), ".", O_RDONLY | O_DIRECTORY));
        if (!folder.isOpen())
            return lastError();
        const std::unique_ptr<DIR, DirCloser> dir(::fdopendir(folder.get()));
        if (!dir)
            return lastError();
        const int fd = folder.release(); // the stream closes it
        for (;;) {
            errno = 0;
            const dirent *raw = ::readdir(dir.get());
            if (!raw)
                return errno == 0 ? FileError() : lastError();
            const std::string_view name(raw->d_name);
            struct stat status {};
            if (name == "." || name == ".." || ::fstatat(fd, raw->d_name, &status, AT_SYMLINK_NOFOLLOW) != 0)
                continue;
            if (!sink(nameFromNative(name), stateOf(status, m_lastingIdentities)))
                return {};
        }
    }

    bool liesIn(FolderHandle &other) override
    {
        struct stat wanted {};
        struct stat status {};
        if (::fstat(static_cast<UnixFolder &>(other).m_folder.get(), &wanted) != 0)
            return false;
        Descriptor place(openAgain(m_folder.get(), ".", passThroughFlags));
        while (place.isOpen() && ::fstat(place.get(), &status) == 0) {
            if (identityOf(status) == identityOf(wanted))
                return true;
            Descriptor above(openAgain(place.get(), "..", passThroughFlags));
            struct stat higher {};
            if (!above.isOpen() || ::fstat(above.get(), &higher) != 0 || identityOf(higher) == identityOf(status))
                return false;
            place = std::move(above);
        }
        return false;
    }

    std::unique_ptr<FolderHandle> openFolder(const QString &name, FileError &error) override
    {
        const NativeName entry(name);
        if (!entry.isPlain()) {
            error = notAllowed();
            return nullptr;
        }
        Descriptor folder(openAgain(m_folder.get(), entry.c(), passThroughFlags | O_NOFOLLOW));
        if (!folder.isOpen()) {
            error = lastError();
            struct stat status {};
            if (::fstatat(m_folder.get(), entry.c(), &status, AT_SYMLINK_NOFOLLOW) == 0 && S_ISLNK(status.st_mode))
                error.kind = FileErrorKind::LinkOnTheWay;
            return nullptr;
        }
        return std::make_unique<UnixFolder>(std::move(folder), pathOf(entry));
    }

    std::unique_ptr<FileSource> openFile(const QString &name, FileError &error) override
    {
        const NativeName entry(name);
        struct stat status {};
        // Opening alone already does things to a device.
        if (!entry.isPlain()) {
            error = notAllowed();
        } else if (::fstatat(m_folder.get(), entry.c(), &status, AT_SYMLINK_NOFOLLOW) != 0) {
            error = lastError();
        } else if (!S_ISREG(status.st_mode)) {
            error = {FileErrorKind::NotAFile, {}};
        } else {
            Descriptor file(openAgain(m_folder.get(), entry.c(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY));
            if (file.isOpen() && ::fstat(file.get(), &status) == 0 && S_ISREG(status.st_mode))
                return std::make_unique<UnixSource>(std::move(file), m_lastingIdentities);
            error = file.isOpen() ? FileError{FileErrorKind::NotAFile, {}} : lastError();
        }
        return nullptr;
    }

    std::unique_ptr<FileSink> createFile(const QString &name, FileError &error) override
    {
        const NativeName entry(name);
        if (!entry.isPlain()) {
            error = notAllowed();
            return nullptr;
        }
        Descriptor file;
        do {
            file = Descriptor(
                ::openat(m_folder.get(), entry.c(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600));
        } while (!file.isOpen() && errno == EINTR);
        if (!file.isOpen()) {
            error = lastError();
            return nullptr;
        }
        return std::make_unique<UnixSink>(std::move(file), m_lastingIdentities);
    }

    FileError makeFolder(const QString &name, const NodeState *model) override
    {
        constexpr mode_t ownersRights = 0700;
        const mode_t mode = model ? mode_t(model->permissions) | ownersRights : permissionBits;
        return onName(name, [this, mode](const char *entry) { return ::mkdirat(m_folder.get(), entry, mode); });
    }

    FileError linkTarget(const QString &name, QString &target) override
    {
        const NativeName entry(name);
        if (!entry.isPlain())
            return notAllowed();
        std::string bytes(PATH_MAX, '\0');
        const ssize_t length = ::readlinkat(m_folder.get(), entry.c(), bytes.data(), bytes.size());
        if (length < 0)
            return lastError();
        bytes.resize(std::size_t(length));
        target = nameFromNative(bytes);
        return {};
    }

    FileError makeLink(const QString &name, const QString &target, bool) override
    {
        const std::string bytes = nativeName(target);
        return onName(name, [&](const char *entry) { return ::symlinkat(bytes.c_str(), m_folder.get(), entry); });
    }

    FileError makeHardLink(const QString &name, FolderHandle &to, const QString &newName) override
    {
        const NativeName target(newName);
        if (!target.isPlain())
            return notAllowed();
        const int folder = static_cast<UnixFolder &>(to).m_folder.get();
        return onName(name, [&](const char *entry) { return ::linkat(m_folder.get(), entry, folder, target.c(), 0); });
    }

    FileError move(const QString &name, FolderHandle &to, const QString &newName, IfTaken ifTaken) override
    {
        const NativeName target(newName);
        if (!target.isPlain())
            return notAllowed();
        const int folder = static_cast<UnixFolder &>(to).m_folder.get();
        return onName(name, [&](const char *entry) {
            if (ifTaken == IfTaken::Replace)
                return ::renameat(m_folder.get(), entry, folder, target.c());
            return renameToFree(m_folder.get(), entry, folder, target.c()) ? 0 : -1;
        });
    }

    FileError keepAttributes(const QString &name, const NodeState &model) override
    {
        const NativeName entry(name);
        if (!entry.isPlain())
            return notAllowed();
        if (model.kind != NodeKind::Folder)
            return setAttributes(m_folder.get(), entry.c(), model);
        // By its handle: a change of permissions by name would follow a link.
        const Descriptor folder(openAgain(m_folder.get(), entry.c(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW));
        return folder.isOpen() ? setAttributes(folder.get(), nullptr, model) : lastError();
    }

    FileError removeFile(const QString &name) override
    {
        return onName(name, [this](const char *entry) { return ::unlinkat(m_folder.get(), entry, 0); });
    }

    FileError removeFolder(const QString &name) override
    {
        return onName(name, [this](const char *entry) { return ::unlinkat(m_folder.get(), entry, AT_REMOVEDIR); });
    }

    RecycleResult recycle(const QString &name) override
    {
        const NativeName entry(name);
        if (!entry.isPlain())
            return {{}, notAllowed()};
        return recycleInto(m_folder.get(), m_path, entry.bytes());
    }

    FileError settle() override
    {
        const Descriptor folder(openAgain(m_folder.get(), ".", O_RDONLY | O_DIRECTORY));
        if (!folder.isOpen())
            return lastError();
#if defined(__linux__) && defined(__GLIBC__)
        return ::syncfs(folder.get()) == 0 ? FileError() : lastError();
#else
        return {};
#endif
    }

    /// For `UnixLayer::restore`.
    [[nodiscard]] int descriptor() const
    {
        return m_folder.get();
    }

private:
    template <typename Call>
    static FileError onName(const QString &name, const Call &call)
    {
        const NativeName entry(name);
        if (!entry.isPlain())
            return notAllowed();
        return call(entry.c()) == 0 ? FileError() : lastError();
    }

    [[nodiscard]] std::string pathOf(const NativeName &entry) const
    {
        return m_path == "/" ? '/' + entry.bytes() : m_path + '/' + entry.bytes();
    }

    Descriptor m_folder;
    std::string m_path;
    bool m_lastingIdentities;
};

class UnixLayer final : public FileLayer {
public:
    std::unique_ptr<FolderHandle> openRoot(const QString &path, FileError &error) override
    {
        const ReachablePath place(path);
        Descriptor folder;
        if (place.isReachable())
            folder = Descriptor(openAgain(place.base(), place.name(), passThroughFlags));
        if (!folder.isOpen()) {
            error = lastError();
            return nullptr;
        }
        return std::make_unique<UnixFolder>(std::move(folder), nativeName(path));
    }

    bool canSettle() const override
    {
#if defined(__linux__) && defined(__GLIBC__)
        return true;
#else
        return false;
#endif
    }

    FileError restore(const QString &binPath, FolderHandle &to, const QString &name) override
    {
        const NativeName entry(name);
        return entry.isPlain() ? restoreFrom(binPath, static_cast<UnixFolder &>(to).descriptor(), entry.c())
                               : notAllowed();
    }
};

FileErrorKind errorKind(int number)
{
    switch (number) {
    case ENOENT:
        return FileErrorKind::Missing;
    case EEXIST:
        return FileErrorKind::Exists;
    case ENOTDIR:
        return FileErrorKind::NotAFolder;
    case EISDIR:
        return FileErrorKind::NotAFile;
    case ELOOP:
        return FileErrorKind::LinkOnTheWay;
    case ENOTEMPTY:
        return FileErrorKind::NotEmpty;
    case EACCES:
    case EPERM:
    case EROFS:
        return FileErrorKind::Denied;
    case EBUSY:
    case ETXTBSY:
        return FileErrorKind::InUse;
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        return FileErrorKind::NoSpace;
    case EINVAL:
    case ENAMETOOLONG:
    case EILSEQ:
        return FileErrorKind::NameNotAllowed;
    case EXDEV:
        return FileErrorKind::OtherVolume;
    case ENOSYS:
    case EOPNOTSUPP:
        return FileErrorKind::Unsupported;
    default:
        return FileErrorKind::Other;
    }
}

/// As `renameToFree` where the system has no call for it. A second name for the file can only be made where none is;
/// folders, and files where that is not possible, are looked for first.
bool renameToFreeInSteps(int fromFolder, const char *name, int toFolder, const char *newName)
{
    if (::linkat(fromFolder, name, toFolder, newName, 0) == 0) {
        if (::unlinkat(fromFolder, name, 0) == 0)
            return true;
        const int number = errno;
        (void)::unlinkat(toFolder, newName, 0);
        errno = number;
        return false;
    }
    if (errno == EEXIST || errno == EXDEV || errno == ENOENT)
        return false;
    struct stat status {};
    if (::fstatat(toFolder, newName, &status, AT_SYMLINK_NOFOLLOW) == 0) {
        errno = EEXIST;
        return false;
    }
    return ::renameat(fromFolder, name, toFolder, newName) == 0;
}

} // namespace

FileError fileErrorOf(int number)
{
    return {errorKind(number), QString::fromStdString(std::generic_category().message(number))};
}

bool renameToFree(int fromFolder, const char *name, int toFolder, const char *newName)
{
#ifdef RENAME_NOREPLACE
    if (::renameat2(fromFolder, name, toFolder, newName, RENAME_NOREPLACE) == 0)
        return true;
    if (errno != EINVAL && errno != ENOSYS && errno != EOPNOTSUPP)
        return false;
#endif
    return renameToFreeInSteps(fromFolder, name, toFolder, newName);
}

FileLayer &FileLayer::native()
{
    static UnixLayer layer;
    return layer;
}

bool isPlainName(QStringView name)
{
    return !name.isEmpty() && name != QLatin1String(".") && name != QLatin1String("..") && !name.contains(u'/') &&
           !name.contains(QChar(u'\0'));
}

} // namespace velmora
