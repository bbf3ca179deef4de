#include "folder/operations/journal_run.h"

#include "folder/operations/copy_entry.h"

#include <QDateTime>

namespace velmora {

std::unique_ptr<JournalRun> JournalRun::start(OperationJournal &journal, const OperationPlan &plan, bool keepsOld,
                                              FileError &error)
{
    journal.prune();
    std::unique_ptr<FolderHandle> folder = openOrMakeFolder(journal.m_files, journal.m_folder, error);
    if (!folder)
        return nullptr;
    const std::vector<OldRun> older = oldRuns(*folder, error);
    qint64 olderBytes = 0;
    for (const OldRun &old : older) {
        olderBytes += old.keptBytes;
        if (!old.isFinished)
            removeLeftover(journal.m_files, *folder, journal.m_folder, old);
    }
    const QString id = makeRunFolder(*folder, older.empty() ? 1 : older.back().id.toLongLong() + 1, error);
    if (id.isEmpty())
        return nullptr;

    std::unique_ptr<JournalRun> run(new JournalRun(journal, id));
    run->m_olderBytes = olderBytes;
    run->m_journalFolder = std::move(folder);
    run->m_undoOf = std::exchange(journal.m_nextUndoOf, {});
    run->m_restOf = std::exchange(journal.m_nextRestOf, {});
    run->m_keepsOld = keepsOld;
    JournalHeader header{journal.m_nextTitle, QDateTime::currentMSecsSinceEpoch(), run->m_undoOf, {}, {}, 0};
    header.steps = plan.steps.size();
    for (const PlanRoot &root : plan.roots) {
        header.roots.append(root.path);
        header.rootNumbers.append(rootNumber(root.identity));
    }
    error = run->open(header, plan);
    if (error.isError()) {
        run->giveUp();
        return nullptr;
    }
    return run;
}

FileError JournalRun::open(const JournalHeader &header, const OperationPlan &plan)
{
    FileError error;
    m_folder = m_journalFolder->openFolder(m_id, error);
    if (!m_folder)
        return error;
    m_lock = lockRun(m_journal.m_folder + u'/' + m_id);
    if (!m_lock)
        return {FileErrorKind::InUse, {}};
    error = m_folder->makeFolder(keptFolderName, &ownersOnly);
    if (!error.isError())
        m_kept = m_folder->openFolder(keptFolderName, error);
    if (m_kept)
        m_lines = m_folder->createFile(journalFileName, error);
    if (m_lines)
        error = writeLine(headerLine(header));
    return error.isError() ? error : writePlan(plan);
}

/// Many lines at once: a call of the system for each would show in the time of copying.
FileError JournalRun::writePlan(const OperationPlan &plan)
{
    constexpr qsizetype block = 256 << 10;
    QByteArray lines;
    m_planned.reserve(std::size_t(plan.steps.size()));
    for (qsizetype i = 0; i < plan.steps.size(); ++i) {
        m_planned.push_back(plan.steps[i].kind);
        lines += planLine(i, plan.steps[i]);
        const bool isLast = i + 1 == plan.steps.size();
        if (!isLast && lines.size() < block) {
            lines += '\n';
            continue;
        }
        const FileError error = writeLine(std::exchange(lines, {}));
        if (error.isError())
            return error;
    }
    return {};
}

/// Not every system removes what is open.
void JournalRun::giveUp()
{
    m_lines.reset();
    m_kept.reset();
    m_lock.reset();
    m_folder.reset();
    (void)removeTree(*m_journalFolder, m_id);
}

FileError JournalRun::writeLine(const QByteArray &line)
{
    return write(std::exchange(m_late, {}) + line + '\n');
}

FileError JournalRun::write(const QByteArray &bytes)
{
    if (m_isBroken)
        return {FileErrorKind::Other, {}};
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
        if (forget(*m_journalFolder, m_journal.m_folder, old))
            m_olderBytes -= old.keptBytes;
    }
    return m_keptBytes + m_olderBytes + bytes <= limit;
}

FileError JournalRun::begin(qint64 number, const OperationStep &step, const NodeState *old)
{
    m_step = {};
    m_step.number = number;
    m_step.step = step;
    if (old && old->kind != NodeKind::Special && m_keepsOld) {
        const qint64 bytes = old->kind == NodeKind::File ? old->size : 0;
        m_step.isLost = !makeRoomFor(bytes);
        if (!m_step.isLost)
            m_step.kept = QString::number(m_nextKept++);
    } else {
        m_step.isLost = old != nullptr;
    }
    return writeLine(beginLine(m_step, m_planned[std::size_t(number)]));
}

FileError JournalRun::keep(FolderHandle &folder, const QString &name, const NodeState &old, Keep manner,
                           const FileSink::Tick &tick, bool &isMoved)
{
    isMoved = false;
    if (m_step.kept.isEmpty())
        return {};
    m_keptBytes += old.kind == NodeKind::File ? old.size : 0;
    if (old.kind == NodeKind::Folder) { // an empty one in its place remembers time and permissions
        FileError error = m_kept->makeFolder(m_step.kept, &old);
        if (!error.isError())
            error = m_kept->keepFolderAttributes(m_step.kept, folder, name);
        return error.kind == FileErrorKind::Unsupported ? FileError() : error; // as `copyEntry`
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
    if (m_step.step.kind != OperationKind::Copy)
        return writeLine(endLine(m_step));
    m_late = endLine(m_step) + '\n';
    return {};
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
    FileError error = m_late.isEmpty() ? FileError() : write(std::exchange(m_late, {}));
    if (!error.isError())
        error = m_lines->flush();
    if (!error.isError())
        error = writeSmallFile(*m_folder, keptBytesName, QByteArray::number(m_keptBytes));
    if (isComplete && !error.isError() && !m_restOf.isEmpty())
        m_journal.markContinued(m_restOf);
    return error.isError() || m_undoOf.isEmpty() ? error : markUndone(isComplete);
}

FileError JournalRun::markUndone(bool isComplete)
{
    FileError error;
    const std::unique_ptr<FolderHandle> undone = m_journalFolder->openFolder(m_undoOf, error);
    if (!undone)
        return error;
    countKeptAgain(*undone);
    return mark(*undone, isComplete ? undoneMarkName : partlyUndoneMarkName);
}

} // namespace velmora
