#include "platform/extended_attributes_unix.h"
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

/// The access bits of `old` for a file that belongs to `own`: who is another owner or group gains nothing by them.
mode_t bitsFor(const struct stat &own, const struct stat &old)
{
    mode_t bits = old.st_mode & accessBits;
    if (own.st_uid != old.st_uid)
        bits &= ~mode_t(S_ISUID);
    if (own.st_gid != old.st_gid) {
        const mode_t others = bits & S_IRWXO;
        bits &= ~mode_t(S_ISGID | S_IRWXG) | (others << 3U);
    }
    return bits;
}

} // namespace

QString takeAfter(QFileDevice &file, const QString &target)
{
    struct stat own = {};
    struct stat old = {};
    const int handle = file.handle();
    const QByteArray path = QFile::encodeName(target);
    if (::stat(path.constData(), &old) != 0 || ::fstat(handle, &own) != 0)
        return {};
    // The group may be the user's to give where the owner is not.
    if ((old.st_uid != own.st_uid || old.st_gid != own.st_gid) && ::fchown(handle, old.st_uid, old.st_gid) != 0)
        static_cast<void>(::fchown(handle, own.st_uid, old.st_gid));
    const CarriedAttributes carried = carryAttributes({-1, path.constData()}, handle);
    if (carried.error != 0)
        return systemWords(carried.error);
    // Changing the owner clears some of the bits, and an access list sets others.
    if (::fstat(handle, &own) != 0)
        return systemWords(errno);
    const mode_t bits = bitsFor(own, old);
    if ((own.st_mode & accessBits) == bits)
        return {};
    return ::fchmod(handle, bits) == 0 ? QString() : systemWords(errno);
}

QString bringToDisk(QFileDevice &file)
{
    if (::fsync(file.handle()) == 0 || errno == EINVAL || errno == ENOSYS || errno == ENOTSUP || errno == EROFS)
        return {};
    return systemWords(errno);
}

void awaitReplaceable(const QString & /*path*/) {}

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
