#include "platform/file_error_unix.h"

#include <cerrno>
#include <cstdio>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace velmora {

namespace {

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

} // namespace velmora
