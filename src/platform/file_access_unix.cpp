#include "platform/file_access.h"
#include "platform/folder_listing_unix.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace velmora {

namespace {

constexpr char16_t escapedByteBase = 0xDC00;

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

/// The length of the well-formed UTF-8 sequence at the begin of `bytes`, whose code point goes to `point`; 0 when there
/// is none. Table 3-7 of the Unicode Standard.
int utf8Sequence(std::string_view bytes, char32_t &point)
{
    const auto byteAt = [&](std::size_t i) { return i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0U; };
    const auto continues = [&](std::size_t i) { return (byteAt(i) & 0xC0U) == 0x80U; };
    const unsigned lead = byteAt(0);
    if (lead < 0x80) {
        point = lead;
        return 1;
    }
    if (lead >= 0xC2 && lead <= 0xDF && continues(1)) {
        point = (lead & 0x1FU) << 6U | (byteAt(1) & 0x3FU);
        return 2;
    }
    if ((lead & 0xF0U) == 0xE0U && continues(1) && continues(2)) {
        point = (lead & 0x0FU) << 12U | (byteAt(1) & 0x3FU) << 6U | (byteAt(2) & 0x3FU);
        return point >= 0x800 && (point < 0xD800 || point > 0xDFFF) ? 3 : 0;
    }
    if (lead >= 0xF0 && lead <= 0xF4 && continues(1) && continues(2) && continues(3)) {
        point = (lead & 0x07U) << 18U | (byteAt(1) & 0x3FU) << 12U | (byteAt(2) & 0x3FU) << 6U | (byteAt(3) & 0x3FU);
        return point >= 0x10000 && point <= 0x10FFFF ? 4 : 0;
    }
    return 0;
}

void appendUtf8(std::string &bytes, char32_t point)
{
    const auto append = [&bytes](char32_t value) {
        bytes.push_back(static_cast<char>(static_cast<unsigned char>(value)));
    };
    if (point < 0x80) {
        append(point);
    } else if (point < 0x800) {
        append(0xC0U | point >> 6U);
        append(0x80U | (point & 0x3FU));
    } else if (point < 0x10000) {
        append(0xE0U | point >> 12U);
        append(0x80U | (point >> 6U & 0x3FU));
        append(0x80U | (point & 0x3FU));
    } else {
        append(0xF0U | point >> 18U);
        append(0x80U | (point >> 12U & 0x3FU));
        append(0x80U | (point >> 6U & 0x3FU));
        append(0x80U | (point & 0x3FU));
    }
}

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

std::string nativeName(QStringView name)
{
    const auto isAscii = [](QChar unit) { return unit.unicode() < 0x80; };
    const qsizetype plain = std::find_if_not(name.begin(), name.end(), isAscii) - name.begin();
    std::string bytes(std::size_t(plain), '\0');
    std::transform(name.begin(), name.begin() + plain, bytes.begin(),
                   [](QChar unit) { return static_cast<char>(unit.unicode()); });
    for (qsizetype i = plain; i < name.size(); ++i) {
        const char16_t unit = name[i].unicode();
        if (QChar::isHighSurrogate(unit) && i + 1 < name.size() && name[i + 1].isLowSurrogate()) {
            appendUtf8(bytes, QChar::surrogateToUcs4(unit, name[i + 1].unicode()));
            ++i;
        } else if (unit >= escapedByteBase + 0x80 && unit <= escapedByteBase + 0xFF) {
            bytes.push_back(static_cast<char>(static_cast<unsigned char>(unit - escapedByteBase)));
        } else {
            appendUtf8(bytes, unit);
        }
    }
    return bytes;
}

QString nameFromNative(std::string_view bytes)
{
    const auto isAscii = [](char byte) { return static_cast<unsigned char>(byte) < 0x80; };
    if (std::all_of(bytes.begin(), bytes.end(), isAscii))
        return QString::fromLatin1(bytes.data(), qsizetype(bytes.size()));

    QString name;
    name.reserve(qsizetype(bytes.size()));
    while (!bytes.empty()) {
        char32_t point = 0;
        const int length = utf8Sequence(bytes, point);
        if (length == 0)
            name.append(QChar(char16_t(escapedByteBase + static_cast<unsigned char>(bytes.front()))));
        else if (QChar::requiresSurrogates(point))
            name.append(QChar(QChar::highSurrogate(point))).append(QChar(QChar::lowSurrogate(point)));
        else
            name.append(QChar(char16_t(point)));
        bytes.remove_prefix(std::size_t(std::max(length, 1)));
    }
    return name;
}

} // namespace velmora
