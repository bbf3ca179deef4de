#include "platform/file_streams_unix.h"
#include "platform/folder_listing_unix.h"
#include "platform/recycle_bin_unix.h"

#include <cstdio>

#ifdef __linux__
#include <linux/openat2.h>
#include <sys/syscall.h>
#endif

namespace velmora {

namespace {

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

/// A folder below `base` that no link leads to on any part of the way, in one call; -1 when that fails, which it always
/// does before Linux 5.6.
int openWithoutLinks([[maybe_unused]] int base, [[maybe_unused]] const char *path)
{
#ifdef SYS_openat2
    open_how how{};
    how.flags = passThroughFlags | O_CLOEXEC;
    how.resolve = RESOLVE_BENEATH | RESOLVE_NO_SYMLINKS;
    return int(::syscall(SYS_openat2, base, path, &how, sizeof how));
#else
    return -1;
#endif
}

FileError notAllowed()
{
    return fileErrorOf(EINVAL);
}

class UnixFolder final : public FolderHandle {
public:
    UnixFolder(Descriptor folder, std::string path, const LastingIdentities &identities = {})
        : m_folder(std::move(folder)), m_path(std::move(path)), m_identities(identities)
    {}

    NodeResult self() override
    {
        struct stat status {};
        if (::fstat(m_folder.get(), &status) != 0)
            return {{}, lastError()};
        return {seen(status), {}};
    }

    NodeResult stat(const QString &name) override
    {
        const NativeName entry(name);
        struct stat status {};
        if (!entry.isPlain())
            return {{}, notAllowed()};
        if (::fstatat(m_folder.get(), entry.c(), &status, AT_SYMLINK_NOFOLLOW) != 0)
            return {{}, lastError()};
        return {seen(status), {}};
    }

    FileError list(const Sink &sink) override
    {
        return eachEntry([&](int folder, const char *name) {
            struct stat status {};
            return ::fstatat(folder, name, &status, AT_SYMLINK_NOFOLLOW) != 0 ||
                   sink(nameFromNative(name), seen(status));
        });
    }

    FileError listNames(const NameSink &sink) override
    {
        return eachEntry([&sink](int, const char *name) { return sink(nameFromNative(name)); });
    }

    bool liesIn(FolderHandle &other) override
    {
        struct stat wanted {};
        bool isFound = false;
        if (::fstat(static_cast<UnixFolder &>(other).m_folder.get(), &wanted) == 0) {
            (void)eachUpwards([&](const FileIdentity &identity) {
                isFound = identity == identityOf(wanted);
                return !isFound;
            });
        }
        return isFound;
    }

    std::optional<std::vector<FileIdentity>> lineage() override
    {
        std::vector<FileIdentity> identities;
        const bool reachedTop = eachUpwards([&identities](const FileIdentity &identity) {
            identities.push_back(identity);
            return true;
        });
        return reachedTop ? std::optional(std::move(identities)) : std::nullopt;
    }

    FileError checkPath(const QString &path) override
    {
        const ReachablePath place(path);
        struct stat here {};
        struct stat there {};
        if (!place.isReachable() || ::fstatat(place.base(), place.name(), &there, 0) != 0 ||
            ::fstat(m_folder.get(), &here) != 0)
            return lastError();
        // While a folder is held even file systems without lasting identities give it one.
        return identityOf(here) == identityOf(there) ? FileError() : FileError{FileErrorKind::NotExpected, {}};
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
        return std::make_unique<UnixFolder>(std::move(folder), pathOf(entry.bytes()), m_identities);
    }

    std::unique_ptr<FolderHandle> openBelow(const QString &relative, FileError &error) override
    {
        if (isCleanRelative(relative)) {
            const std::string path = nativeName(relative);
            Descriptor folder(openWithoutLinks(m_folder.get(), path.c_str()));
            if (folder.isOpen())
                return std::make_unique<UnixFolder>(std::move(folder), pathOf(path), m_identities);
        }
        return FolderHandle::openBelow(relative, error); // can do it on older systems too, and tells what is in the way
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
                return std::make_unique<UnixSource>(std::move(file), m_identities);
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
        return std::make_unique<UnixSink>(std::move(file), m_identities);
    }

    FileError makeFolder(const QString &name, const NodeState *model) override
    {
        constexpr mode_t ownersRights =
            0700; // what mode bits give may be more than an access list that is still to come
        const mode_t mode = model ? ownersRights : permissionBits;
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

    FileError exchange(const QString &name, FolderHandle &to, const QString &newName) override
    {
        const NativeName target(newName);
        if (!target.isPlain())
            return notAllowed();
#ifdef RENAME_EXCHANGE
        const int folder = static_cast<UnixFolder &>(to).m_folder.get();
        const FileError error = onName(name, [&](const char *entry) {
            return ::renameat2(m_folder.get(), entry, folder, target.c(), RENAME_EXCHANGE);
        });
        // A volume that cannot says that the flag is not allowed.
        return error.kind == FileErrorKind::NameNotAllowed ? FileError{FileErrorKind::Unsupported, {}} : error;
#else
        return FolderHandle::exchange(name, to, newName);
#endif
    }

    FileError letOwnerWrite(bool may) override
    {
        struct stat status {};
        if (::fstat(m_folder.get(), &status) != 0)
            return lastError();
        const mode_t kept = status.st_mode & mode_t(07777) & ~mode_t(S_IWUSR);
        const mode_t mode = may ? kept | S_IWUSR : kept;
        return ::fchmodat(m_folder.get(), ".", mode, 0) == 0 ? FileError() : lastError();
    }

    FileError keepAttributes(const QString &name, const NodeState &model) override
    {
        const NativeName entry(name);
        if (!entry.isPlain())
            return notAllowed();
        if (model.kind == NodeKind::Link)
            return setLinkTime(m_folder.get(), entry.c(), model);
        const Descriptor folder = openToChange(entry);
        return folder.isOpen() ? setAttributes(folder.get(), model, {}) : lastError();
    }

    FileError keepFolderAttributes(const QString &name, FolderHandle &from, const QString &model) override
    {
        const NativeName entry(name);
        const NativeName modelEntry(model);
        if (!entry.isPlain() || !modelEntry.isPlain())
            return notAllowed();
        const Descriptor folder = openToChange(entry);
        if (!folder.isOpen())
            return lastError();
        const Descriptor modelFolder = static_cast<UnixFolder &>(from).openToChange(modelEntry);
        struct stat status {};
        if (!modelFolder.isOpen() || ::fstat(modelFolder.get(), &status) != 0)
            return lastError();
        const CarriedAttributes carried = carryAttributes({modelFolder.get()}, folder.get());
        return setAttributes(folder.get(), seen(status), carried);
    }

    FileError removeFile(const QString &name) override
    {
        return onName(name, [this](const char *entry) { return ::unlinkat(m_folder.get(), entry, 0); });
    }

    FileError removeFolder(const QString &name) override
    {
        return onName(name, [this](const char *entry) { return ::unlinkat(m_folder.get(), entry, AT_REMOVEDIR); });
    }

    RecycleResult recycle(const QString &name, const BinNotice &notice) override
    {
        const NativeName entry(name);
        if (!entry.isPlain())
            return {{}, notAllowed()};
        return recycleInto(m_folder.get(), m_path, entry.bytes(), notice);
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
    /// `take(folder, name)` for each entry until it returns false.
    template <typename Take>
    [[nodiscard]] FileError eachEntry(const Take &take) const
    {
        Descriptor folder(openAgain(m_folder.get(), ".", O_RDONLY | O_DIRECTORY));
        if (!folder.isOpen())
            return lastError();
        EntryReader entries(std::move(folder));
        if (!entries.isOpen())
            return lastError();
        while (const dirent *raw = entries.next()) {
            if (!take(entries.folder(), raw->d_name))
                return {};
        }
        return errno == 0 ? FileError() : lastError();
    }

    /// `take(identity)` for this folder and each that it lies in, until it returns false; whether the top was reached.
    template <typename Take>
    [[nodiscard]] bool eachUpwards(const Take &take) const
    {
        struct stat status {};
        Descriptor place(openAgain(m_folder.get(), ".", passThroughFlags));
        while (place.isOpen() && ::fstat(place.get(), &status) == 0) {
            if (!take(identityOf(status)))
                return false;
            Descriptor above(openAgain(place.get(), "..", passThroughFlags));
            struct stat higher {};
            if (!above.isOpen() || ::fstat(above.get(), &higher) != 0)
                return false;
            if (identityOf(higher) == identityOf(status))
                return true;
            place = std::move(above);
        }
        return false;
    }

    template <typename Call>
    static FileError onName(const QString &name, const Call &call)
    {
        const NativeName entry(name);
        if (!entry.isPlain())
            return notAllowed();
        return call(entry.c()) == 0 ? FileError() : lastError();
    }

    /// A folder by its handle: a change by name would follow a link.
    [[nodiscard]] Descriptor openToChange(const NativeName &entry) const
    {
        return Descriptor(openAgain(m_folder.get(), entry.c(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW));
    }

    [[nodiscard]] std::string pathOf(const std::string &below) const
    {
        return m_path == "/" ? '/' + below : m_path + '/' + below;
    }

    /// Of this folder or of an entry in it.
    [[nodiscard]] NodeState seen(const struct stat &status)
    {
        return stateOf(status, m_identities.of(m_folder.get(), status));
    }

    Descriptor m_folder;
    std::string m_path;
    LastingIdentities m_identities;
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

    bool isForThreads() const override { return true; }

    bool canSettle() const override
    {
#if defined(__linux__) && defined(__GLIBC__)
        return true;
#else
        return false;
#endif
    }

    NodeResult statInBin(const QString &binPath) override
    {
        BinEntry entry(binPath);
        const std::unique_ptr<UnixFolder> files = entry.open();
        return files ? files->stat(entry.name) : NodeResult{{}, entry.error};
    }

    FileError restore(const QString &binPath, FolderHandle &to, const QString &name,
                      const NodeTest &isExpected) override
    {
        BinEntry entry(binPath);
        const std::unique_ptr<UnixFolder> files = entry.open();
        if (!files)
            return entry.error;
        const NodeResult before = files->stat(entry.name);
        if (before.error.isError() || !isExpected(before.node))
            return before.error.isError() ? before.error : FileError{FileErrorKind::NotExpected, {}};
        FileError error = files->move(entry.name, to, name, FolderHandle::IfTaken::Fail);
        if (error.isError())
            return error;
        const NodeResult after = to.stat(name); // others may have been at the bin since
        if (after.error.isError() || !isExpected(after.node)) {
            error = to.move(name, *files, entry.name, FolderHandle::IfTaken::Fail);
            return error.isError() ? error : FileError{FileErrorKind::NotExpected, {}};
        }
        forgetInBin(files->descriptor(), nativeName(entry.name));
        return {};
    }

private:
    /// The folder of an entry in a bin, and its name there.
    struct BinEntry {
        explicit BinEntry(const QString &binPath)
            : folder(binPath.left(std::max<qsizetype>(binPath.lastIndexOf(u'/'), 0))),
              name(binPath.mid(folder.size() + 1))
        {}

        [[nodiscard]] std::unique_ptr<UnixFolder> open()
        {
            const ReachablePath place(folder);
            Descriptor files;
            if (place.isReachable() && !folder.isEmpty())
                files = Descriptor(openAgain(place.base(), place.name(), passThroughFlags));
            if (files.isOpen())
                return std::make_unique<UnixFolder>(std::move(files), nativeName(folder));
            error = folder.isEmpty() ? FileError{FileErrorKind::Missing, {}} : lastError();
            return nullptr;
        }

        QString folder;
        QString name;
        FileError error;
    };
};

} // namespace

FileLayer &FileLayer::native()
{
    static UnixLayer layer;
    return layer;
}

bool isProtected(const NodeState &node)
{
    return node.kind == NodeKind::File && (node.permissions & (S_IWUSR | S_IWGRP | S_IWOTH)) == 0;
}

bool isPlainName(QStringView name)
{
    return !name.isEmpty() && name != QLatin1String(".") && name != QLatin1String("..") && !name.contains(u'/') &&
           !name.contains(QChar(u'\0'));
}

} // namespace velmora
