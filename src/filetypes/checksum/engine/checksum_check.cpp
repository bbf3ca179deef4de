#include "filetypes/checksum/engine/checksum_check.h"

#include "core/crew.h"
#include "core/path_names.h"
#include "platform/file_access.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>

#include <algorithm>
#include <atomic>

namespace velmora {

namespace {

constexpr qint64 largestList = 256LL * 1024 * 1024;

/// Files with hidden ones among them, so that a list misses nothing.
const FileAccess &access()
{
    return FileAccess::nativeWithHidden();
}

/// One file to be read, and where its digests go.
struct ReadOrder {
    QString path;
    QList<ChecksumAlgorithm> algorithms;
    qint64 size = 0;
    FileDigests result;
};

/// Fills the results of all orders, several at a time. Returns false when it was cancelled.
bool readAll(std::vector<ReadOrder> &orders, const CancelFlag &cancel, Progress &progress)
{
    qint64 total = 0;
    for (const ReadOrder &order : orders)
        total += order.size;
    std::atomic<std::size_t> next = 0;
    std::atomic<qint64> done = 0;
    const auto work = [&](int worker) {
        for (std::size_t at = next++; at < orders.size(); at = next++) {
            if (cancel.isCancelled())
                return;
            ReadOrder &order = orders[at];
            qint64 read = 0;
            order.result = fileDigests(order.path, order.algorithms, access(), cancel, [&](qint64 bytes) {
                done += bytes - read;
                read = bytes;
                if (worker == 0)
                    progress.report(0, done, total, order.path);
            });
        }
    };
    runCrew(int(std::min(std::size_t(crewSize()), std::max<std::size_t>(orders.size(), 1))), work,
            [&] { progress.report(0, done, total); });
    return !cancel.isCancelled();
}

ChecksumCheck::Fault readList(const QString &path, ChecksumList &list)
{
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        return ChecksumCheck::Fault::NotOpened;
    if (file.size() > largestList)
        return ChecksumCheck::Fault::TooLarge;
    const QByteArray bytes = file.read(largestList);
    list = parseChecksumList(bytes);
    return list.entries.isEmpty() ? ChecksumCheck::Fault::NoList : ChecksumCheck::Fault::None;
}

ListedStatus statusOf(const ReadOrder &order, const ChecksumEntry &entry)
{
    if (!order.result.isWhole())
        return ListedStatus::Unreadable;
    return order.result.digests.first() == entry.digest ? ListedStatus::Ok : ListedStatus::Differs;
}

bool hasAnyOf(const QDir &folder, const QList<ChecksumEntry> &entries)
{
    constexpr qsizetype most = 100; // of those that a long list begins with, one will do
    return std::any_of(entries.cbegin(), entries.cbegin() + std::min(entries.size(), most), [&](const auto &entry) {
        const std::optional<QString> within = pathWithin(entry.name);
        return within && access().describe(folder.absoluteFilePath(*within));
    });
}

/// The folder of a list, or the nearest one above that has any of its files.
QDir folderOfFiles(const QString &list, const QList<ChecksumEntry> &entries)
{
    const QDir own(QFileInfo(list).absolutePath());
    for (QDir folder = own;;) {
        if (hasAnyOf(folder, entries))
            return folder;
        const QString below = folder.absolutePath();
        folder.setPath(QFileInfo(below).absolutePath());
        if (folder.absolutePath() == below)
            return own;
    }
}

/// Files beside those that a list names: relative paths, sorted.
QStringList unlistedFiles(const QDir &folder, const QSet<QString> &listed, const QString &list)
{
    QSet<QString> folders;
    for (const QString &path : listed)
        folders.insert(parentPath(path));
    QStringList found;
    for (const QString &part : folders) {
        const FolderRead read = access().readFolder(folder.absoluteFilePath(part), [&](FolderEntry &&entry) {
            if (const QString path = joinedPath(part, entry.name);
                path != list && entry.kind == EntryKind::File && !listed.contains(path))
                found.append(path);
            return true;
        });
        Q_UNUSED(read); // a folder that cannot be read has its files missing already
    }
    found.sort();
    return found;
}

/// All files below a folder.
class FolderSurvey {
public:
    FolderSurvey(const QString &root, const QString &except, const CancelFlag &cancel)
        : m_root(root), m_except(except), m_cancel(cancel)
    {}

    void visit(const QString &part)
    {
        QStringList folders;
        const FolderRead read = access().readFolder(joinedPath(m_root, part), [&](FolderEntry &&entry) {
            const QString path = joinedPath(part, entry.name);
            if (entry.kind == EntryKind::File && joinedPath(m_root, path) != m_except)
                files.append({path, entry.size});
            else if (entry.kind == EntryKind::Folder && !entry.isLink)
                folders.append(path);
            return !m_cancel.isCancelled();
        });
        if (read == FolderRead::Unreadable || read == FolderRead::Missing)
            unreadable.append(part.isEmpty() ? m_root : part);
        for (const QString &folder : folders)
            visit(folder);
    }

    QList<std::pair<QString, qint64>> files;
    QStringList unreadable;

private:
    QString m_root;
    QString m_except;
    const CancelFlag &m_cancel;
};

} // namespace

ChecksumCheck checkChecksumList(const QString &path, const QString &folder, const CancelFlag &cancel,
                                Progress &progress)
{
    ChecksumCheck check;
    ChecksumList list;
    check.fault = readList(path, list);
    if (check.fault != ChecksumCheck::Fault::None)
        return check;
    check.badLines = list.badLines;
    check.firstBadLine = list.firstBadLine;

    const QDir root = folder.isEmpty() ? folderOfFiles(path, list.entries) : QDir(QFileInfo(folder).absoluteFilePath());
    check.folder = root.absolutePath();
    QSet<QString> listed;
    std::vector<ReadOrder> orders;
    std::vector<qsizetype> readFiles; // of each order, its place in check.files
    for (const ChecksumEntry &entry : list.entries) {
        check.files.append({ListedStatus::Outside, entry, {}});
        const std::optional<QString> within = pathWithin(entry.name);
        if (!within)
            continue;
        listed.insert(*within);
        const QString target = root.absoluteFilePath(*within);
        const std::optional<FolderEntry> found = access().describe(target);
        check.files.last().status = !found ? ListedStatus::Missing : ListedStatus::Unreadable;
        if (!found || found->kind != EntryKind::File)
            continue;
        orders.push_back({target, {entry.algorithm}, found->size, {}});
        readFiles.push_back(check.files.size() - 1);
    }
    if (!readAll(orders, cancel, progress)) {
        check.fault = ChecksumCheck::Fault::Cancelled;
        return check;
    }
    for (std::size_t i = 0; i < orders.size(); ++i) {
        CheckedFile &file = check.files[readFiles[i]];
        file.status = statusOf(orders[i], file.entry);
        file.found = orders[i].result.digests.value(0);
    }
    if (!folder.isEmpty() || root == QDir(QFileInfo(path).absolutePath())) {
        const QString own = root.relativeFilePath(QFileInfo(path).absoluteFilePath());
        for (const QString &name : unlistedFiles(root, listed, own))
            check.files.append({ListedStatus::NotListed, {name, list.entries.first().algorithm, {}}, {}});
    }
    for (const CheckedFile &file : check.files)
        ++check.counts[std::size_t(file.status)];
    return check;
}

qsizetype looksLikeChecksumList(const QString &path)
{
    constexpr qint64 headSize = 64 * 1024;
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly) || file.size() > largestList)
        return 0;
    QByteArray head = file.read(headSize);
    if (head.size() == headSize)
        head.truncate(head.lastIndexOf('\n') + 1);
    const ChecksumList list = parseChecksumList(head);
    return list.entries.size() > list.badLines ? list.entries.size() : 0;
}

FolderChecksums folderChecksums(const QString &folder, const QList<ChecksumAlgorithm> &algorithms,
                                const QString &except, const CancelFlag &cancel, Progress &progress)
{
    const QString root = QFileInfo(folder).absoluteFilePath();
    FolderSurvey survey(root, except.isEmpty() ? QString() : QFileInfo(except).absoluteFilePath(), cancel);
    survey.visit({});
    std::sort(survey.files.begin(), survey.files.end());
    std::vector<ReadOrder> orders;
    for (const auto &[name, size] : survey.files)
        orders.push_back({joinedPath(root, name), algorithms, size, {}});

    FolderChecksums result;
    result.unreadable = survey.unreadable;
    result.cancelled = !readAll(orders, cancel, progress);
    for (std::size_t i = 0; i < orders.size(); ++i) {
        const QString &name = survey.files[qsizetype(i)].first;
        if (!orders[i].result.isWhole())
            result.unreadable.append(name);
        for (qsizetype k = 0; k < orders[i].result.digests.size(); ++k)
            result.entries.append({name, algorithms[k], orders[i].result.digests[k]});
    }
    return result;
}

} // namespace velmora
