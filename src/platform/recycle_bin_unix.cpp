#include "platform/recycle_bin_unix.h"

#include <QByteArray>
#include <QDateTime>

#include <cstdio>
#include <cstdlib>

namespace velmora {

namespace {

constexpr std::string_view infoSuffix = ".trashinfo";
constexpr std::size_t longestName = 255;

Descriptor openFolderIn(int base, const char *name)
{
    return Descriptor(openAgain(base, name, passThroughFlags | O_NOFOLLOW));
}

/// Opens a folder that only its owner may use; makes it when it is missing.
Descriptor openPrivateFolder(int base, const char *name)
{
    if (::mkdirat(base, name, 0700) != 0 && errno != EEXIST)
        return Descriptor();
    return openFolderIn(base, name);
}

bool isOwn(int folder)
{
    struct stat status {};
    return ::fstat(folder, &status) == 0 && status.st_uid == ::getuid();
}

/// A bin: its folder, its path and the path that the paths of its entries are relative to.
struct Bin {
    Descriptor folder = Descriptor();
    std::string path;
    std::string top; ///< empty: entries have absolute paths
};

Bin homeBin(dev_t volume)
{
    const char *const data = std::getenv("XDG_DATA_HOME");
    const char *const home = std::getenv("HOME");
    std::string path;
    if (data && data[0] == '/')
        path = data;
    else if (home && home[0] == '/')
        path = std::string(home) + "/.local/share";
    else
        return {};
    // Made as far as it is missing; what is there may be a link, as anything in a home may.
    for (std::size_t slash = path.find('/', 1); slash != std::string::npos; slash = path.find('/', slash + 1))
        (void)::mkdir(path.substr(0, slash).c_str(), 0700);
    (void)::mkdir(path.c_str(), 0700);
    path += "/Trash";
    (void)::mkdir(path.c_str(), 0700);

    Bin bin{Descriptor(openAgain(AT_FDCWD, path.c_str(), passThroughFlags)), path, {}};
    struct stat status {};
    if (!bin.folder.isOpen() || ::fstat(bin.folder.get(), &status) != 0 || status.st_dev != volume)
        return {};
    return bin;
}

/// The highest folder of a volume.
struct VolumeTop {
    Descriptor folder = Descriptor();
    std::string path;
};

VolumeTop volumeTop(int folder, const std::string &folderPath)
{
    struct stat status {};
    if (::fstat(folder, &status) != 0)
        return {};
    VolumeTop top{openFolderIn(folder, "."), {}};
    const std::unique_ptr<char, decltype(&std::free)> real(::realpath(folderPath.c_str(), nullptr), &std::free);
    if (!real || !top.folder.isOpen())
        return {};
    top.path = real.get();
    while (top.path != "/") {
        struct stat above {};
        Descriptor parent = openFolderIn(top.folder.get(), "..");
        if (!parent.isOpen() || ::fstat(parent.get(), &above) != 0 || above.st_dev != status.st_dev)
            break;
        top.folder = std::move(parent);
        const std::size_t slash = top.path.rfind('/');
        top.path.resize(slash == 0 ? 1 : slash);
    }
    return top;
}

std::string ownBinName()
{
    return ".Trash-" + std::to_string(::getuid());
}

/// Removes a bin that was made at the top of a volume and has nothing in it any more. `files`: its folder of entries.
void removeEmptyBin(int files)
{
    const Descriptor bin = openFolderIn(files, "..");
    const Descriptor top = bin.isOpen() ? openFolderIn(bin.get(), "..") : Descriptor();
    const std::string name = ownBinName();
    struct stat held {};
    struct stat named {};
    if (!top.isOpen() || ::fstat(bin.get(), &held) != 0 ||
        ::fstatat(top.get(), name.c_str(), &named, AT_SYMLINK_NOFOLLOW) != 0 || identityOf(held) != identityOf(named))
        return;
    if (::unlinkat(bin.get(), "info", AT_REMOVEDIR) == 0 && ::unlinkat(bin.get(), "files", AT_REMOVEDIR) == 0)
        (void)::unlinkat(top.get(), name.c_str(), AT_REMOVEDIR);
}

/// The bin at the top of the volume: the one that the administrator made for all if it is safe, else an own one.
Bin volumeBin(int folder, const std::string &folderPath)
{
    const VolumeTop top = volumeTop(folder, folderPath);
    if (!top.folder.isOpen())
        return {};
    const std::string user = std::to_string(::getuid());
    const std::string prefix = top.path == "/" ? "/" : top.path + '/';
    const Descriptor shared = openFolderIn(top.folder.get(), ".Trash");
    struct stat status {};
    if (shared.isOpen() && ::fstat(shared.get(), &status) == 0 && (status.st_mode & S_ISVTX) != 0) {
        Bin bin{openPrivateFolder(shared.get(), user.c_str()), prefix + ".Trash/" + user, prefix};
        if (bin.folder.isOpen() && isOwn(bin.folder.get()))
            return bin;
    }
    const std::string own = ownBinName();
    Bin bin{openPrivateFolder(top.folder.get(), own.c_str()), prefix + own, prefix};
    return bin.folder.isOpen() && isOwn(bin.folder.get()) ? std::move(bin) : Bin();
}

std::string infoText(const Bin &bin, const std::string &folderPath, const std::string &name)
{
    const std::unique_ptr<char, decltype(&std::free)> real(::realpath(folderPath.c_str(), nullptr), &std::free);
    std::string path = real ? real.get() : folderPath;
    if (path.empty() || path.back() != '/')
        path += '/';
    path += name;
    if (!bin.top.empty() && path.compare(0, bin.top.size(), bin.top) == 0)
        path.erase(0, bin.top.size());
    const QByteArray encoded = QByteArray(path.data(), qsizetype(path.size())).toPercentEncoding("/");
    return "[Trash Info]\nPath=" + encoded.toStdString() +
           "\nDeletionDate=" + QDateTime::currentDateTime().toString(Qt::ISODate).toStdString() + '\n';
}

bool writeWhole(int base, const char *name, const std::string &text)
{
    const Descriptor file(::openat(base, name, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0600));
    if (!file.isOpen())
        return false;
    if (::write(file.get(), text.data(), text.size()) == ssize_t(text.size()))
        return true;
    (void)::unlinkat(base, name, 0);
    return false;
}

/// A name for the bin that is probably free: the entry's own, then with ever larger numbers.
std::string binName(const std::string &name, unsigned attempt)
{
    const std::string number = attempt == 0 ? std::string() : '.' + std::to_string(attempt);
    return name.substr(0, longestName - infoSuffix.size() - number.size()) + number;
}

} // namespace

RecycleResult recycleInto(int folder, const std::string &folderPath, const std::string &name,
                          const FolderHandle::BinNotice &notice)
{
    struct stat status {};
    if (::fstatat(folder, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0)
        return {{}, fileErrorOf(errno)};
    Bin bin = homeBin(status.st_dev);
    if (!bin.folder.isOpen())
        bin = volumeBin(folder, folderPath);
    if (!bin.folder.isOpen())
        return {{}, {FileErrorKind::Unsupported, {}}};
    const Descriptor info = openPrivateFolder(bin.folder.get(), "info");
    const Descriptor files = openPrivateFolder(bin.folder.get(), "files");
    if (!info.isOpen() || !files.isOpen())
        return {{}, fileErrorOf(errno)};

    const std::string text = infoText(bin, folderPath, name);
    unsigned step = 1;
    for (unsigned attempt = 0; attempt < 1'000'000'000; attempt += step) {
        const std::string kept = binName(name, attempt);
        const std::string infoName = kept + std::string(infoSuffix);
        if (!writeWhole(info.get(), infoName.c_str(), text)) {
            if (errno != EEXIST)
                return {{}, fileErrorOf(errno)};
            step = std::min(attempt + 1, 1U << 20U) + unsigned(::getpid()) % 7; // many of one name do not queue up
            continue;
        }
        const QString place = nameFromNative(bin.path + "/files/" + kept);
        const FileError refused = notice(place);
        if (!refused.isError() && renameToFree(folder, name.c_str(), files.get(), kept.c_str()))
            return {place, {}};
        const int number = errno;
        (void)::unlinkat(info.get(), infoName.c_str(), 0);
        if (refused.isError())
            return {{}, refused};
        if (number == EXDEV)
            return {{}, {FileErrorKind::Unsupported, fileErrorOf(number).reason}};
        if (number != EEXIST)
            return {{}, fileErrorOf(number)};
    }
    return {{}, {FileErrorKind::Exists, {}}};
}

void forgetInBin(int files, const std::string &name)
{
    const Descriptor info = openFolderIn(files, "../info");
    if (info.isOpen()) // what remains there without its entry is of no harm
        (void)::unlinkat(info.get(), (name + std::string(infoSuffix)).c_str(), 0);
    removeEmptyBin(files);
}

} // namespace velmora
