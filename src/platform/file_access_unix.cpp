#include "platform/file_access.h"
#include "platform/folder_listing_unix.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace velmora {

namespace {

qint64 modifiedMs(const struct stat &status)
{
#ifdef __APPLE__
    const timespec &time = status.st_mtimespec;
#else
    const timespec &time = status.st_mtim;
#endif
    return qint64(time.tv_sec) * 1000 + time.tv_nsec / 1'000'000;
}

class UnixFile final : public OpenFile {
public:
    UnixFile(Descriptor descriptor, const struct stat &status)
        : m_descriptor(std::move(descriptor)), m_identity(identityOf(status)), m_size(status.st_size)
    {}

    FilePiece readAt(qint64 offset, char *buffer, qint64 length) override
    {
        qint64 total = 0;
        while (total < length) {
            const ssize_t count =
                ::pread(m_descriptor.get(), buffer + total, std::size_t(length - total), offset + total);
            if (count < 0 && errno == EINTR)
                continue;
            if (count < 0)
                return {total, true};
            if (count == 0)
                break;
            total += count;
            if (offset + total == m_size)
                break; // nothing more to ask for, unless the file grows just now
        }
        return {total, false};
    }

    void expect([[maybe_unused]] qint64 offset, [[maybe_unused]] qint64 length) override
    {
#ifdef POSIX_FADV_WILLNEED
        (void)::posix_fadvise(m_descriptor.get(), offset, length, POSIX_FADV_WILLNEED);
#endif
    }

    std::optional<qint64> size() const override
    {
        struct stat status {};
        return ::fstat(m_descriptor.get(), &status) == 0 ? std::optional(qint64(status.st_size)) : std::nullopt;
    }

    qint64 nextData(qint64 offset) const override
    {
#ifdef SEEK_DATA
        const off_t found = ::lseek(m_descriptor.get(), offset, SEEK_DATA);
        if (found >= 0)
            return found;
        if (errno == ENXIO)
            return std::max(offset, size().value_or(offset));
#endif
        return offset;
    }

    std::optional<FileIdentity> identity() const override
    {
        return m_identity;
    }

private:
    Descriptor m_descriptor;
    FileIdentity m_identity;
    qint64 m_size;
};

class UnixOpener final : public FileOpener {
public:
    std::unique_ptr<OpenFile> open(const QString &path, OpenHint hint) override
    {
        const qsizetype slash = path.lastIndexOf(u'/');
        if (slash > 0 && holdsFolder(QStringView(path).left(slash))) {
            const std::string name = nativeName(QStringView(path).mid(slash + 1));
            return name.find('\0') == std::string::npos ? openAt(m_descriptor.get(), name.c_str(), hint) : nullptr;
        }
        const ReachablePath place(path);
        return place.isReachable() ? openAt(place.base(), place.name(), hint) : nullptr;
    }

private:
    /// True when `folder` is held open. It is from the second file in a row on: for one file it would not pay.
    bool holdsFolder(QStringView folder)
    {
        if (folder != m_folder) {
            m_folder = folder.toString();
            m_descriptor = Descriptor();
            return false;
        }
        if (!m_descriptor.isOpen()) {
            const ReachablePath place(m_folder);
            if (place.isReachable())
                m_descriptor = Descriptor(openAgain(place.base(), place.name(), passThroughFlags));
        }
        return m_descriptor.isOpen();
    }

    static std::unique_ptr<OpenFile> openAt(int base, const char *name, OpenHint hint)
    {
        struct stat status {};
        // Opening alone already does things to a pipe or a device.
        if (hint == OpenHint::Unknown && (::fstatat(base, name, &status, 0) != 0 || !S_ISREG(status.st_mode)))
            return nullptr;
        // Non-blocking for the case that a pipe has taken the file's place in the meantime.
        Descriptor file(openAgain(base, name, O_RDONLY | O_NONBLOCK | O_NOCTTY));
        if (!file.isOpen() || ::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode))
            return nullptr;
        return std::make_unique<UnixFile>(std::move(file), status);
    }

    QString m_folder;
    Descriptor m_descriptor;
};

void takeOver(const struct stat &status, FolderEntry &entry)
{
    entry.kind = S_ISDIR(status.st_mode)   ? EntryKind::Folder
                 : S_ISREG(status.st_mode) ? EntryKind::File
                                           : EntryKind::Special;
    entry.size = status.st_size;
    entry.modifiedMs = modifiedMs(status);
    entry.identity = identityOf(status);
}

/// Fills `entry` with what the entry `raw` of the folder `fd` is once links are followed; false when it does not count.
bool describeEntry(int fd, const dirent &raw, FolderEntry &entry)
{
    bool isLink = false;
#ifdef DT_UNKNOWN
    if (raw.d_type == DT_FIFO || raw.d_type == DT_SOCK || raw.d_type == DT_CHR || raw.d_type == DT_BLK)
        return false;
    isLink = raw.d_type == DT_LNK;
    const bool typeKnown = raw.d_type != DT_UNKNOWN;
#else
    const bool typeKnown = false;
#endif
    struct stat status {};
    if (!typeKnown) {
        if (::fstatat(fd, raw.d_name, &status, AT_SYMLINK_NOFOLLOW) != 0)
            return false;
        isLink = S_ISLNK(status.st_mode);
    }
    if ((typeKnown || isLink) && ::fstatat(fd, raw.d_name, &status, 0) != 0)
        return false;

    takeOver(status, entry);
    if (entry.kind == EntryKind::Special && !isLink)
        return false;
    entry.name = nameFromNative(raw.d_name);
    entry.isLink = isLink;
    return true;
}

class UnixAccess final : public FileAccess {
public:
    explicit UnixAccess(bool listsHidden) : m_listsHidden(listsHidden) {}

    FolderRead readFolder(const QString &path, const Sink &sink) const override
    {
        return listFolder(path, m_listsHidden, [&sink](int folder, const dirent &raw) {
            FolderEntry entry;
            return !describeEntry(folder, raw, entry) || sink(std::move(entry));
        });
    }

    std::unique_ptr<FileOpener> makeOpener() const override { return std::make_unique<UnixOpener>(); }

    std::optional<FolderEntry> describe(const QString &path) const override
    {
        const ReachablePath place(path);
        struct stat status {};
        if (!place.isReachable() || ::fstatat(place.base(), place.name(), &status, 0) != 0)
            return std::nullopt;
        FolderEntry entry;
        takeOver(status, entry);
        return entry;
    }

private:
    const bool m_listsHidden;
};

} // namespace

const FileAccess &FileAccess::native()
{
    static const UnixAccess access(false);
    return access;
}

const FileAccess &FileAccess::nativeWithHidden()
{
    static const UnixAccess access(true);
    return access;
}

} // namespace velmora
