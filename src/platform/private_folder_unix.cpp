#include "platform/private_folder.h"

#include <QFile>

#include <sys/stat.h>
#include <unistd.h>

namespace velmora {

bool isOwnPrivateFolder(const QString &path)
{
    struct stat folder {};
    constexpr mode_t ofOthers = S_IRWXG | S_IRWXO;
    return lstat(QFile::encodeName(path).constData(), &folder) == 0 && S_ISDIR(folder.st_mode) &&
           folder.st_uid == geteuid() && (folder.st_mode & ofOthers) == 0;
}

} // namespace velmora
