#include "folder/operations/journal_folder.h"

#include "folder/operations/folder_chain.h"
#include "folder/operations/journal_lines.h"
#include "folder/operations/temporary_name.h"
#include "folder/operations/tree_summary.h"

#include <QFile>

#include <chrono>

namespace velmora {

namespace {

constexpr int idDigits = 8;

bool isRunId(const QString &name)
{
    return name.size() == idDigits &&
           std::all_of(name.begin(), name.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

/// Of a run that has come to its end.
std::optional<qint64> notedBytesIn(FolderHandle &run)
{
    const std::optional<QByteArray> noted = readSmallFile(run, keptBytesName, 64);
    bool ok = false;
    const qint64 bytes = noted ? noted->toLongLong(&ok) : 0;
    return ok && bytes >= 0 ? std::optional(bytes) : std::nullopt;
}

qint64 countedBytesIn(FolderHandle &run)
{
    TreeSummary summary;
    FileError error;
    const std::unique_ptr<FolderHandle> kept = run.openFolder(keptFolderName, error);
    if (kept) {
        (void)visitTree(*kept, [&](const QString &name, const NodeState &node) {
            summary.add(name, node);
            return true;
        });
    }
    return summary.bytes;
}

/// True for what a run that copied to a temporary name has left there: its copy or, where the two have been swapped
/// already, the old entry, which the run keeps. Whatever else got there in between belongs to somebody.
bool isLeftBehind(const JournalRecord &record, const NodeState &node)
{
    if (node.kind != NodeKind::File && node.kind != NodeKind::Link)
        return false;
    if (record.lastCopyStep < 0) // nothing has taken the place of the unfinished copy
        return true;
    const OperationStep &step = record.steps[std::size_t(record.lastCopyStep)].step;
    const bool isCopy = node.kind == step.fromSeen.kind &&
                        (node.kind == NodeKind::Link ||
                         (node.size == step.fromSeen.size && node.modifiedNs == step.fromSeen.modifiedNs));
    return isCopy || (step.toSeen.isPresent() && step.toSeen.isStill(node));
}

/// True when no copy is left at the place. What has no name of a copy is nothing that a run has made.
bool removeCopy(FileLayer &files, const JournalRecord &record)
{
    const QStringView path(record.lastCopy.relative);
    if (!record.lastCopy.isSet() || !isTemporaryName(path.mid(path.lastIndexOf(u'/') + 1)))
        return true;
    QList<PlanRoot> roots;
    for (const QString &root : record.header.roots)
        roots.append({root, std::nullopt, true});
    const FolderChain chain(files, roots);
    const ReachedPlace reached = chain.reach(record.lastCopy);
    if (!reached.folder)
        return chain.root(record.lastCopy.root) && reached.error.kind == FileErrorKind::Missing;
    const NodeResult found = reached.folder->stat(reached.name);
    if (found.error.isError())
        return found.error.kind == FileErrorKind::Missing;
    return !isLeftBehind(record, found.node) || !reached.folder->removeFile(reached.name).isError();
}

} // namespace

std::unique_ptr<FolderHandle> openOrMakeFolder(FileLayer &files, const QString &path, FileError &error)
{
    error = {};
    std::unique_ptr<FolderHandle> folder = files.openRoot(path, error);
    const qsizetype slash = path.lastIndexOf(u'/');
    if (folder || error.kind != FileErrorKind::Missing || slash < 0 || slash + 1 == path.size())
        return folder;
    const QString above = slash == 0 ? QStringLiteral("/") : path.left(slash);
    const std::unique_ptr<FolderHandle> parent = openOrMakeFolder(files, above, error);
    if (!parent)
        return nullptr;
    error = parent->makeFolder(path.mid(slash + 1), &ownersOnly);
    if (error.isError() && error.kind != FileErrorKind::Exists)
        return nullptr;
    error = {};
    return parent->openFolder(path.mid(slash + 1), error);
}

FileError removeTree(FolderHandle &parent, const QString &name)
{
    FileError error;
    {
        const std::unique_ptr<FolderHandle> folder = parent.openFolder(name, error);
        if (!folder)
            return error;
        std::vector<std::pair<QString, bool>> entries;
        error = folder->list([&](const QString &entry, const NodeState &node) {
            entries.emplace_back(entry, node.kind == NodeKind::Folder);
            return true;
        });
        for (const auto &[entry, isFolder] : entries) {
            if (!error.isError())
                error = isFolder ? removeTree(*folder, entry) : folder->removeFile(entry);
        }
    }
    return error.isError() ? error : parent.removeFolder(name);
}

FileError writeSmallFile(FolderHandle &folder, const QString &name, const QByteArray &bytes)
{
    FileError error;
    const std::unique_ptr<FileSink> file = folder.createFile(name, error);
    return file ? file->write(bytes.constData(), bytes.size()) : error;
}

FileError mark(FolderHandle &folder, const QString &name)
{
    const FileError error = writeSmallFile(folder, name, {});
    return error.kind == FileErrorKind::Exists ? FileError() : error;
}

void countKeptAgain(FolderHandle &run)
{
    if (!run.removeFile(keptBytesName).isError())
        (void)writeSmallFile(run, keptBytesName, QByteArray::number(countedBytesIn(run)));
}

QStringList runsIn(FolderHandle &folder, FileError &error)
{
    QStringList ids;
    error = folder.list([&](const QString &name, const NodeState &node) {
        if (node.kind == NodeKind::Folder && isRunId(name))
            ids.append(name);
        return true;
    });
    std::sort(ids.begin(), ids.end());
    return ids;
}

std::vector<OldRun> oldRuns(FolderHandle &folder, FileError &error)
{
    std::vector<OldRun> runs;
    const QStringList ids = runsIn(folder, error);
    for (const QString &id : ids) {
        const std::unique_ptr<FolderHandle> run = folder.openFolder(id, error);
        if (!run)
            continue;
        const std::optional<qint64> noted = notedBytesIn(*run);
        // A lock in the folder changes the time of that.
        NodeResult dated = run->stat(journalFileName);
        if (dated.error.isError())
            dated = run->self();
        runs.push_back({id, noted ? *noted : countedBytesIn(*run), dated.node.modifiedNs, noted.has_value()});
    }
    return runs;
}

std::optional<QByteArray> readSmallFile(FolderHandle &folder, const QString &name, qint64 most)
{
    FileError error;
    const std::unique_ptr<FileSource> file = folder.openFile(name, error);
    if (!file)
        return std::nullopt;
    const NodeResult state = file->state();
    if (state.error.isError() || state.node.size > most)
        return std::nullopt;
    QByteArray bytes(qsizetype(state.node.size), Qt::Uninitialized);
    const FilePiece piece = file->read(bytes.data(), bytes.size());
    if (piece.failed)
        return std::nullopt;
    bytes.truncate(qsizetype(piece.length));
    return bytes;
}

/// Makes the folder of a run under the first free number from `number` on; empty when that fails.
QString makeRunFolder(FolderHandle &folder, qint64 number, FileError &error)
{
    for (;; ++number) {
        const QString id = QStringLiteral("%1").arg(number, idDigits, 10, QLatin1Char('0'));
        error = folder.makeFolder(id, &ownersOnly);
        if (!error.isError())
            return id;
        if (error.kind != FileErrorKind::Exists) // another run at the same time
            return {};
    }
}

bool takeLock(QLockFile &lock, int milliseconds)
{
    constexpr int longestNaming = 500; // between making a lock and writing the name lie some microseconds
    const auto isNameless = [&lock] {
        qint64 process = 0;
        QString host;
        QString program;
        return lock.error() == QLockFile::LockFailedError && !lock.getLockInfo(&process, &host, &program);
    };
    if (lock.tryLock(milliseconds))
        return true;
    if (!isNameless()) {
        // Who removes a stale lock holds another meanwhile, and may have died as well.
        const QString removing = lock.fileName() + QLatin1String(".rmlock");
        QLockFile remover(removing);
        if (!QFile::exists(removing) || !takeLock(remover, 0))
            return false;
        remover.unlock();
        return lock.tryLock(0);
    }
    if (lock.tryLock(longestNaming))
        return true;
    return isNameless() && QFile::remove(lock.fileName()) && lock.tryLock(0);
}

std::unique_ptr<QLockFile> lockRun(const QString &run)
{
    auto lock = std::make_unique<QLockFile>(run + u'/' + lockName);
    // That its process is gone makes a lock stale, and an age that no run reaches: the machine may have another name
    // by now, and then nobody can look for the process.
    lock->setStaleLockTime(std::chrono::hours(20 * 24));
    return takeLock(*lock, 0) ? std::move(lock) : nullptr;
}

bool forget(FolderHandle &folder, const QString &path, const OldRun &run)
{
    // The lock itself must not be held while its folder goes.
    const bool isAtWork = !run.isFinished && !lockRun(path + u'/' + run.id);
    return !isAtWork && !removeTree(folder, run.id).isError();
}

void removeLeftover(FileLayer &files, FolderHandle &folder, const QString &path, const OldRun &run)
{
    const std::unique_ptr<QLockFile> lock = lockRun(path + u'/' + run.id);
    FileError error;
    const std::unique_ptr<FolderHandle> ended = lock ? folder.openFolder(run.id, error) : nullptr;
    const std::unique_ptr<FileSource> file = ended ? ended->openFile(journalFileName, error) : nullptr;
    const std::optional<JournalRecord> record = file ? readJournal(*file, {}, error) : std::nullopt;
    if (!record || !removeCopy(files, *record))
        return;
    if (!mark(*ended, interruptedMarkName).isError())
        (void)writeSmallFile(*ended, keptBytesName, QByteArray::number(run.keptBytes));
}

void removeLeftovers(FileLayer &files, const QString &path)
{
    FileError error;
    const std::unique_ptr<FolderHandle> folder = files.openRoot(path, error);
    if (!folder)
        return;
    for (const OldRun &run : oldRuns(*folder, error)) {
        if (!run.isFinished)
            removeLeftover(files, *folder, path, run);
    }
}

} // namespace velmora
