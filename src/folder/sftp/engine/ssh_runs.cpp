#include "folder/sftp/engine/ssh_runs.h"

#include "core/path_names.h"
#include "filetypes/checksum/engine/checksum_list.h"
#include "folder/engine/folder_snapshot.h"
#include "platform/file_access.h"
#include "vfs/local_folder.h"
#include "vfs/safe_name.h"

#include <QDateTime>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <algorithm>

namespace velmora {

namespace {

using namespace std::chrono_literals;

constexpr auto listingLimit = 180s;
constexpr auto copyingLimit = 120s;
constexpr auto clockLimit = 20s;
/// The host computes for as long as there are files; a minute in which nothing is answered is not told from that.
constexpr auto digestLimit = 3600s;

std::optional<ClockSkew> measureClock(const SshTarget &target, const CancelFlag &cancel)
{
    Progress silent;
    QElapsedTimer time;
    time.start();
    const HostAnswer answer = askHost(target, QStringLiteral("date +%s"), clockLimit, cancel, silent);
    const double took = double(time.elapsed()) / 1000;
    const double now = double(QDateTime::currentMSecsSinceEpoch()) / 1000;
    bool isNumber = false;
    const qint64 seconds = answer.output.trimmed().toLongLong(&isNumber);
    if (!answer.end.ok() || !isNumber)
        return std::nullopt;
    // The host answers somewhen while it is asked, and leaves the fraction of the second out.
    constexpr double halfSecond = 0.5;
    return ClockSkew{double(seconds) + halfSecond - (now - took / 2), took / 2 + halfSecond};
}

/// Puts what was fetched to `temporary` in its place. Never replaces.
bool place(const QString &temporary, const QString &path)
{
    return QDir().mkpath(parentPath(path)) && QFile::rename(temporary, path);
}

} // namespace

RemoteComparing compareWithHost(const SshTarget &target, const QString &folder, const CancelFlag &cancel,
                                Progress &progress)
{
    RemoteComparing comparing;
    comparing.isMissing = !QFileInfo(folder).isDir();
    if (comparing.isMissing)
        return comparing;
    const HostAnswer answer = askHost(target, listCommand(target.place.folder), listingLimit, cancel, progress);
    comparing.end = answer.end;
    if (!answer.end.ok())
        return comparing;
    const FolderSnapshotScan local = scanOwnFiles(localFolder(folder), cancel, progress);
    if (local.cancelled) {
        comparing.end = {SshFault::Cancelled};
        return comparing;
    }
    std::vector<ListedSize> files;
    files.reserve(local.snapshot.entries.size());
    for (const FolderSnapshotEntry &entry : local.snapshot.entries)
        files.push_back({entry.path, entry.size});
    comparing.problems = local.problems.size();
    comparing.comparison =
        compareListings(files, parseRemoteListing(answer.output, commandFolder(target.place.folder)));
    comparing.skew = measureClock(target, cancel);
    return comparing;
}

SshEnd fetchFile(const SshTarget &target, const QString &file, const QString &path, const CancelFlag &cancel,
                 Progress &progress)
{
    const SshEnd end = runScp(target, scpArguments(target.place, file, QDir::toNativeSeparators(path)), copyingLimit,
                              cancel, progress);
    if (!end.ok())
        QFile::remove(path); // what there is of it
    return end;
}

FetchedFiles fetchFiles(const SshTarget &target, const QStringList &files, const QString &folder,
                        const CancelFlag &cancel, Progress &progress)
{
    FetchedFiles result;
    const QTemporaryDir own(folder + QLatin1String("/velmora-scp-XXXXXX"));
    if (!own.isValid()) {
        result.end = {SshFault::LocalFault, 0, own.errorString()};
        return result;
    }
    for (const QString &file : files) {
        const QString path = joinedPath(folder, file);
        if (!canBeNamedHere(file) || QFileInfo::exists(path) || QFileInfo(path).isSymLink()) {
            result.alreadyThere.append(file);
            continue;
        }
        const QString temporary = own.filePath(QStringLiteral("fetched"));
        result.end = fetchFile(target, file, temporary, cancel, progress);
        if (!result.end.ok())
            return result;
        if (!place(temporary, path)) {
            result.end = {SshFault::LocalFault, 0, path};
            return result;
        }
        ++result.fetched;
    }
    return result;
}

ContentsComparing compareContents(const SshTarget &target, const QString &folder, const QStringList &files,
                                  const CancelFlag &cancel, Progress &progress)
{
    QByteArray names;
    std::vector<FolderSnapshotEntry> local;
    for (const QString &file : files) {
        const std::string name = "./" + nativeName(file);
        names.append(name.c_str(), qsizetype(name.size() + 1)); // with its NUL
        local.push_back({file, QFileInfo(joinedPath(folder, file)).size(), {}});
    }
    ContentsComparing result;
    if (names.isEmpty())
        return result;
    const HostAnswer answer = askHost(target, digestCommand(target.place.folder), digestLimit, cancel, progress, names);
    const ChecksumList list = parseChecksumList(answer.output);
    // A file that has gone meanwhile makes the command fail, and says nothing about the others.
    if (!answer.end.ok() && list.entries.isEmpty()) {
        result.end = answer.end;
        return result;
    }
    (void)computeDigests(localFolder(folder), local, cancel, progress);
    if (cancel.isCancelled()) {
        result.end = {SshFault::Cancelled};
        return result;
    }
    QHash<QString, QByteArray> remote;
    for (const ChecksumEntry &entry : list.entries)
        remote.insert(entry.name.mid(2), entry.digest);
    for (const FolderSnapshotEntry &entry : local) {
        if (!entry.digest.isEmpty() && remote.contains(entry.path))
            result.same.insert(entry.path, remote.value(entry.path) == entry.digest);
    }
    return result;
}

bool canBeNamedHere(const QString &path)
{
    // Where "\\" parts names too, a name of the host with one, or with the ":" of drives, leads elsewhere.
    const bool isOdd = QDir::separator() == u'\\' && (path.contains(u'\\') || path.contains(u':'));
    return !isOdd && staysInFolder(path);
}

} // namespace velmora
