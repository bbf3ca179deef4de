#include "platform/folder_listing_unix.h"
#include "platform/space_listing.h"

#include <utility>

namespace velmora {

namespace {

constexpr qint64 blockSize = 512; ///< the unit of `st_blocks`, whatever the file system's own blocks are

enum class Known : quint8 { Nothing, Folder, Link, Left };

Known typeOf([[maybe_unused]] const dirent &raw)
{
#ifdef DT_UNKNOWN
    switch (raw.d_type) {
    case DT_DIR:
        return Known::Folder;
    case DT_LNK:
        return Known::Link;
    case DT_FIFO:
    case DT_SOCK:
    case DT_CHR:
    case DT_BLK:
        return Known::Left;
    default:
        break;
    }
#endif
    return Known::Nothing;
}

/// Fills `entry` save for its name; false when it does not count.
bool describe(int folder, const dirent &raw, SpaceEntry &entry)
{
    switch (typeOf(raw)) {
    case Known::Folder:
        entry.kind = SpaceEntry::Kind::Folder;
        return true;
    case Known::Link:
        entry.kind = SpaceEntry::Kind::Link;
        return true;
    case Known::Left:
        return false;
    case Known::Nothing:
        break;
    }
    struct stat status {};
    if (::fstatat(folder, raw.d_name, &status, AT_SYMLINK_NOFOLLOW) != 0)
        return false;
    if (S_ISDIR(status.st_mode) || S_ISLNK(status.st_mode)) {
        entry.kind = S_ISDIR(status.st_mode) ? SpaceEntry::Kind::Folder : SpaceEntry::Kind::Link;
        return true;
    }
    if (!S_ISREG(status.st_mode))
        return false;
    entry.size = status.st_size;
    entry.allocated = qint64(status.st_blocks) * blockSize;
    entry.links = quint64(status.st_nlink);
    entry.identity = identityOf(status);
    return true;
}

} // namespace

FolderRead readSpace(const QString &path, bool withHidden, const SpaceSink &sink)
{
    return listFolder(path, withHidden, [&sink](int folder, const dirent &raw) {
        SpaceEntry entry;
        if (!describe(folder, raw, entry))
            return true;
        entry.name = nameFromNative(raw.d_name);
        return sink(std::move(entry));
    });
}

} // namespace velmora
