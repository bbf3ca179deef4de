#include "folder/operations/journal_run.h"

#include "folder/operations/tree_summary.h"

#include <QDateTime>

namespace velmora {

namespace {

constexpr int idDigits = 8;
const NodeState ownersOnly{NodeKind::Folder, 0, 0, std::nullopt, 0700, false};

bool isRunId(const QString &name)
{
    return name.size() == idDigits &&
           std::all_of(name.begin(), name.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

/// A journal on a volume that has no access lists is no reason not to keep the contents.
FileError attributesError(const FileError &error)
{
    return error.kind == FileErrorKind::Unsupported ? FileError() : error;
}

FileError copyLink(FolderHandle &from, const QString &name, const NodeState &node, FolderHandle &to,
                   const QString &newName)
{
    QString target;
    FileError error = from.linkTarget(name, target);
    if (!error.isError())
        error = to.makeLink(newName, target, node.leadsToFolder);
    if (!error.isError())
        (void)to.keepAttributes(newName, node); // not every system dates links
    return error;
}

qint64 keptBytesIn(FolderHandle &run)
{
    if (const std::optional<QByteArray> noted = readSmallFile(run, keptBytesName, 64)) {
        bool ok = false;
        const qint64 bytes = noted->toLongLong(&ok);
        if (ok && bytes >= 0)
            return bytes;
    }
    // The run did not come to its end.
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

FileError writeSmallFile(FolderHandle &folder, const QString &name, const QByteArray &bytes)
{
    FileError error;
    const std::unique_ptr<FileSink> file = folder.createFile(name, error);
    return file ? file->write(bytes.constData(), bytes.size()) : error;
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

FileError copyEntry(FolderHandle &from, const QString &name, const NodeState &node, FolderHandle &to,
                    const QString &newName, const FileSink::Tick &tick)
{
    if (node.kind == NodeKind::Link)
        return copyLink(from, name, node, to, newName);
    FileError error;
    const std::unique_ptr<FileSource> source = from.openFile(name, error);
    if (!source)
        return error;
    const std::unique_ptr<FileSink> sink = to.createFile(newName, error);
    if (!sink)
        return error;
    error = sink->copyFrom(*source, tick);
    if (!error.isError())
        error = attributesError(sink->keepAttributes(node));
    if (!error.isError() && sink->state().node.size != node.size)
        error = {FileErrorKind::ReadFailed, {}};
    return error;
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
        if (run)
            runs.push_back({id, keptBytesIn(*run), run->self().node.modifiedNs});
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

std::unique_ptr<JournalRun> JournalRun::start(OperationJournal &journal, const OperationPlan &plan, FileError &error)
{
    journal.prune();
    std::unique_ptr<FolderHandle> folder = openOrMakeFolder(journal.m_files, journal.m_folder, error);
    if (!folder)
        return nullptr;
    const std::vector<OldRun> older = oldRuns(*folder, error);
    const QString id = makeRunFolder(*folder, older.empty() ? 1 : older.back().id.toLongLong() + 1, error);
    if (id.isEmpty())
        return nullptr;
    std::unique_ptr<JournalRun> run(new JournalRun(journal, id));
    for (const OldRun &old : older)
        run->m_olderBytes += old.keptBytes;

    run->m_folder = folder->openFolder(run->m_id, error);
    if (run->m_folder)
        error = run->m_folder->makeFolder(keptFolderName, &ownersOnly);
    if (run->m_folder && !error.isError())
        run->m_kept = run->m_folder->openFolder(keptFolderName, error);
    if (run->m_kept)
        run->m_lines = run->m_folder->createFile(journalFileName, error);
    const auto giveUp = [&](JournalRun &begun) {
        begun.m_lines.reset();
        begun.m_kept.reset();
        begun.m_folder.reset();
        (void)removeTree(*folder, begun.m_id);
    };
    if (!run->m_lines) {
        giveUp(*run);
        return nullptr;
    }

    JournalHeader header{journal.m_nextTitle, QDateTime::currentMSecsSinceEpoch(), journal.m_nextUndoOf, {}};
    for (const PlanRoot &root : plan.roots)
        header.roots.append(root.path);
    run->m_undoOf = journal.m_nextUndoOf;
    journal.m_nextUndoOf.clear();
    error = run->writeLine(headerLine(header));
    if (error.isError()) {
        giveUp(*run);
        return nullptr;
    }
    run->m_journalFolder = std::move(folder);
    return run;
}

FileError JournalRun::writeLine(const QByteArray &line)
{
    if (m_isBroken)
        return {FileErrorKind::Other, {}};
    const QByteArray bytes = line + '\n';
    const FileError error = m_lines->write(bytes.constData(), bytes.size());
    m_isBroken = error.isError();
    return error;
}

/// Older runs make room, the oldest first.
bool JournalRun::makeRoomFor(qint64 bytes)
{
    const qint64 limit = m_journal.m_limits.keptBytes;
    if (m_keptBytes + bytes > limit)
        return false;
    if (m_keptBytes + m_olderBytes + bytes <= limit)
        return true;
    FileError error;
    for (const OldRun &old : oldRuns(*m_journalFolder, error)) {
        if (old.id >= m_id || m_keptBytes + m_olderBytes + bytes <= limit)
            break;
        if (!removeTree(*m_journalFolder, old.id).isError())
            m_olderBytes -= old.keptBytes;
    }
    return m_keptBytes + m_olderBytes + bytes <= limit;
}

FileError JournalRun::begin(qint64 number, const OperationStep &step, const NodeState *old)
{
    m_step = {};
    m_step.number = number;
    m_step.step = step;
    if (old && old->kind != NodeKind::Special) {
        const qint64 bytes = old->kind == NodeKind::File ? old->size : 0;
        m_step.isLost = !makeRoomFor(bytes);
        if (!m_step.isLost)
            m_step.kept = QString::number(m_nextKept++);
    } else {
        m_step.isLost = old != nullptr;
    }
    return writeLine(beginLine(m_step));
}

FileError JournalRun::keep(FolderHandle &folder, const QString &name, const NodeState &old, Keep manner,
                           const FileSink::Tick &tick, bool &isMoved)
{
    isMoved = false;
    if (m_step.kept.isEmpty())
        return {};
    m_keptBytes += old.kind == NodeKind::File ? old.size : 0;
    if (old.kind == NodeKind::Folder) { // an empty one in its place remembers time and permissions
        const FileError error = m_kept->makeFolder(m_step.kept, &old);
        return error.isError() ? error : attributesError(m_kept->keepFolderAttributes(m_step.kept, folder, name));
    }
    FileError error = manner == Keep::Away ? folder.move(name, *m_kept, m_step.kept, FolderHandle::IfTaken::Fail)
                                           : folder.makeHardLink(name, *m_kept, m_step.kept);
    if (!error.isError()) {
        isMoved = manner == Keep::Away;
        return {};
    }
    return copyEntry(folder, name, old, *m_kept, m_step.kept, tick);
}

FileError JournalRun::endDone(const SeenEntry &now, const QString &binPath)
{
    m_step.end = JournalStep::End::Done;
    m_step.now = now;
    m_step.binPath = binPath;
    return writeLine(endLine(m_step));
}

void JournalRun::endNothing()
{
    m_step.end = JournalStep::End::Nothing;
    if (writeLine(endLine(m_step)).isError())
        return; // without that line the kept contents may be asked for
    if (!m_step.kept.isEmpty()) {
        if (m_kept->removeFile(m_step.kept).isError())
            (void)m_kept->removeFolder(m_step.kept);
    }
}

FileError JournalRun::moved(qint64 number, bool stays)
{
    return writeLine(movedLine(number, stays));
}

FileError JournalRun::finish(bool isComplete)
{
    FileError error = m_lines->flush();
    if (!error.isError())
        error = writeSmallFile(*m_folder, keptBytesName, QByteArray::number(m_keptBytes));
    if (error.isError() || m_undoOf.isEmpty() || !isComplete)
        return error;
    const std::unique_ptr<FolderHandle> undone = m_journalFolder->openFolder(m_undoOf, error);
    return undone ? writeSmallFile(*undone, undoneMarkName, {}) : error;
}

} // namespace velmora
