#include "platform/saved_file.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace velmora {

namespace {

constexpr mode_t accessBits = 07777;

QString systemWords(int error)
{
    return QString::fromStdString(std::generic_category().message(error));
}

} // namespace

QString takeAfter(QFileDevice &file, const QString &target)
{
    struct stat own = {};
    struct stat old = {};
    const int handle = file.handle();
    if (::stat(QFile::encodeName(target).constData(), &old) != 0 || ::fstat(handle, &own) != 0)
        return {};
    // The group may be the user's to give where the owner is not.
    if ((old.st_uid != own.st_uid || old.st_gid != own.st_gid) && ::fchown(handle, old.st_uid, old.st_gid) != 0)
        static_cast<void>(::fchown(handle, own.st_uid, old.st_gid));
    // Changing the owner clears some of the bits.
    if (::fstat(handle, &own) != 0 || ((own.st_mode ^ old.st_mode) & accessBits) == 0)
        return {};
    return ::fchmod(handle, old.st_mode & accessBits) == 0 ? QString() : systemWords(errno);
}

QString bringToDisk(QFileDevice &file)
{
    if (::fsync(file.handle()) == 0 || errno == EINVAL || errno == ENOSYS || errno == ENOTSUP || errno == EROFS)
        return {};
    return systemWords(errno);
}

void bringNameToDisk(const QString &path)
{
    const QByteArray folder = QFile::encodeName(QFileInfo(path).absolutePath());
    const int handle = ::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (handle < 0)
        return;
    static_cast<void>(::fsync(handle));
    ::close(handle);
}

} // namespace velmora
