#include "core/passing_folder.h"

#include "platform/file_layer.h"
#include "platform/private_folder.h"

#include <QDir>
#include <QFileInfo>
#include <QMutex>
#include <QMutexLocker>
#include <QSet>
#include <QTemporaryDir>

#include <vector>

namespace velmora {

namespace {

constexpr QLatin1String beginOfCopies("velmora-copies-");
constexpr QLatin1String beginOfFetched("velmora-scp-");
constexpr QLatin1String lockName("/lock");
constexpr QLatin1String filesName("/files");

/// Those of this process.
struct Living {
    QMutex mutex;
    QSet<QString> folders;
};

Living &living()
{
    // Never destroyed: folders of other threads may outlast what is.
    static auto *const all = new Living;
    return *all;
}

QString placeOf(QLatin1String begin)
{
    return QDir::tempPath() + u'/' + begin;
}

std::unique_ptr<QLockFile> lockOf(const QString &whole)
{
    auto lock = std::make_unique<QLockFile>(whole + lockName);
    // A window may stay open for weeks; only that its process is gone makes a lock stale.
    lock->setStaleLockTime(0);
    return lock;
}

void empty(FolderHandle &folder)
{
    (void)folder.letOwnerWrite(true);
    std::vector<std::pair<QString, NodeKind>> entries;
    (void)folder.list([&](const QString &name, const NodeState &node) {
        entries.emplace_back(name, node.kind);
        return true;
    });
    for (const auto &[name, kind] : entries) {
        if (kind != NodeKind::Folder) {
            (void)folder.removeFile(name);
            continue;
        }
        FileError error;
        if (const auto within = folder.openFolder(name, error))
            empty(*within);
        (void)folder.removeFolder(name);
    }
}

void removeFiles(const QString &whole)
{
    FileError error;
    const auto folder = FileLayer::native().openRoot(whole, error);
    if (!folder)
        return;
    if (const auto files = folder->openFolder(filesName.mid(1), error))
        empty(*files);
    (void)folder->removeFolder(filesName.mid(1));
}

/// The lock is held until there is nothing but itself; what could not be removed stays for the next sweep, with a lock
/// that nobody holds.
void removeWhole(const QString &whole, std::unique_ptr<QLockFile> lock)
{
    removeFiles(whole);
    lock.reset();
    QDir().rmdir(whole);
}

} // namespace

PassingFolder::PassingFolder(Purpose purpose)
{
    QTemporaryDir made(placeOf(purpose == Purpose::Fetched ? beginOfFetched : beginOfCopies) + QLatin1String("XXXXXX"));
    if (!made.isValid()) {
        m_error = made.errorString();
        return;
    }
    m_whole = made.path();
    m_lock = lockOf(m_whole);
    if (!m_lock->tryLock(0) || !QDir().mkdir(path())) {
        m_lock.reset();
        m_error = qt_error_string();
        return;
    }
    made.setAutoRemove(false);
    const QMutexLocker locker(&living().mutex);
    living().folders.insert(m_whole);
}

PassingFolder::~PassingFolder()
{
    if (!isValid())
        return;
    {
        const QMutexLocker locker(&living().mutex);
        living().folders.remove(m_whole);
    }
    removeWhole(m_whole, std::move(m_lock));
}

QString PassingFolder::path() const
{
    return m_whole + filesName;
}

void removePassingFolders()
{
    const QMutexLocker locker(&living().mutex);
    for (const QString &whole : std::as_const(living().folders)) {
        removeFiles(whole);
        QFile::remove(whole + lockName);
        QDir().rmdir(whole);
    }
}

void sweepPassingFolders()
{
    const QStringList names{beginOfCopies + QLatin1String("??????"), beginOfFetched + QLatin1String("??????")};
    const QDir place(QDir::tempPath());
    for (const QString &name : place.entryList(names, QDir::Dirs | QDir::NoSymLinks)) {
        const QString whole = place.filePath(name);
        // One without a lock was made this moment, or by whom nobody knows.
        if (!isOwnPrivateFolder(whole) || !QFileInfo(whole + lockName).isFile())
            continue;
        if (auto lock = lockOf(whole); lock->tryLock(0))
            removeWhole(whole, std::move(lock));
    }
}

bool isInPassingFolder(const QString &path)
{
    return path.startsWith(placeOf(beginOfCopies)) || path.startsWith(placeOf(beginOfFetched));
}

} // namespace velmora
