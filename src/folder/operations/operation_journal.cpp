#include "folder/operations/operation_journal.h"

#include "folder/operations/journal_folder.h"
#include "folder/operations/journal_lines.h"

namespace velmora {

namespace {

constexpr qint64 longestHeader = 64 << 10;

/// What the first line of a run's journal tells.
struct FirstLine {
    std::optional<JournalHeader> header;
    bool hasBegun = true; ///< false: a crash came before the line was there, and nothing has been done or kept
};

bool keepsNothing(FolderHandle &run)
{
    FileError error;
    const std::unique_ptr<FolderHandle> kept = run.openFolder(keptFolderName, error);
    bool isEmpty = kept || error.kind == FileErrorKind::Missing;
    if (kept) {
        error = kept->list([&isEmpty](const QString &, const NodeState &) {
            isEmpty = false;
            return false;
        });
        isEmpty = isEmpty && !error.isError();
    }
    return isEmpty;
}

FirstLine firstLineOf(FolderHandle &run)
{
    FileError error;
    const std::unique_ptr<FileSource> file = run.openFile(journalFileName, error);
    if (!file)
        return {std::nullopt, error.kind != FileErrorKind::Missing || !keepsNothing(run)};
    QByteArray bytes(longestHeader, Qt::Uninitialized);
    const FilePiece piece = file->read(bytes.data(), bytes.size());
    bytes.truncate(qsizetype(piece.length));
    const qsizetype end = bytes.indexOf('\n');
    if (end >= 0)
        return {readHeaderLine(bytes.left(end)), true};
    return {std::nullopt, piece.failed || bytes.size() == longestHeader || !keepsNothing(run)};
}

bool hasMark(FolderHandle &run, const QString &name)
{
    return !run.stat(name).error.isError();
}

void addMarks(JournalEntry &entry, FolderHandle &run, const QString &journalFolder)
{
    entry.undone = hasMark(run, undoneMarkName);
    entry.undoneInPart = !entry.undone && hasMark(run, partlyUndoneMarkName);
    entry.told = hasMark(run, toldMarkName);
    const bool isFinished = hasMark(run, keptBytesName);
    entry.isAtWork = !isFinished && !lockRun(journalFolder + u'/' + entry.id);
    const bool hasCrashed = isFinished ? hasMark(run, interruptedMarkName) : !entry.isAtWork;
    entry.continued = hasCrashed && hasMark(run, continuedMarkName);
    entry.interrupted = hasCrashed && !entry.continued;
}

} // namespace

OperationJournal::OperationJournal(FileLayer &files, QString folder, JournalLimits limits)
    : m_files(files), m_folder(std::move(folder)), m_limits(limits)
{}

OperationJournal::~OperationJournal() = default;

void OperationJournal::setNext(const QString &title, const QString &undoOf, const QString &restOf)
{
    m_nextTitle = title;
    m_nextUndoOf = undoOf;
    m_nextRestOf = restOf;
}

JournalList OperationJournal::entries() const
{
    JournalList list;
    FileError error;
    const std::unique_ptr<FolderHandle> folder = m_files.openRoot(m_folder, error);
    if (!folder)
        return list;
    const QStringList ids = runsIn(*folder, error);
    for (const QString &id : ids) {
        const std::unique_ptr<FolderHandle> run = folder->openFolder(id, error);
        const auto [header, hasBegun] = run ? firstLineOf(*run) : FirstLine();
        if (!header) {
            if (hasBegun)
                list.unreadable.append(id);
            continue;
        }
        JournalEntry entry;
        entry.id = id;
        entry.title = header->title;
        entry.started = QDateTime::fromMSecsSinceEpoch(header->startedMs, Qt::UTC);
        entry.undoOf = header->undoOf;
        addMarks(entry, *run, m_folder);
        list.entries.append(entry);
    }
    return list;
}

bool OperationJournal::mayUndo() const
{
    FileError error;
    const std::unique_ptr<FolderHandle> folder = m_files.openRoot(m_folder, error);
    const QStringList ids = folder ? runsIn(*folder, error) : QStringList();
    return std::any_of(ids.rbegin(), ids.rend(), [&](const QString &id) {
        const std::unique_ptr<FolderHandle> run = folder->openFolder(id, error);
        if (!run || hasMark(*run, undoneMarkName))
            return false;
        const auto [header, hasBegun] = firstLineOf(*run);
        return header ? header->undoOf.isEmpty() : hasBegun; // that a run is damaged is told when it is asked for
    });
}

void OperationJournal::markTold(const QString &id)
{
    markRun(id, toldMarkName);
}

void OperationJournal::markContinued(const QString &id)
{
    markRun(id, continuedMarkName);
}

void OperationJournal::markRun(const QString &id, const QString &name)
{
    FileError error;
    const std::unique_ptr<FolderHandle> folder = m_files.openRoot(m_folder, error);
    const std::unique_ptr<FolderHandle> run = folder ? folder->openFolder(id, error) : nullptr;
    if (run)
        (void)mark(*run, name);
}

void OperationJournal::prune()
{
    FileError error;
    const std::unique_ptr<FolderHandle> folder = m_files.openRoot(m_folder, error);
    if (!folder)
        return;
    const std::vector<OldRun> runs = oldRuns(*folder, error);
    qint64 bytes = 0;
    for (const OldRun &run : runs)
        bytes += run.keptBytes;
    const qint64 oldestMs = QDateTime::currentMSecsSinceEpoch() - qint64(m_limits.days) * 24 * 60 * 60 * 1000;
    auto left = qint64(runs.size());
    for (const OldRun &run : runs) {
        const bool isTooOld = run.modifiedNs / 1'000'000 < oldestMs;
        if (!isTooOld && bytes <= m_limits.keptBytes && left <= m_limits.runs)
            continue;
        if (!forget(*folder, m_folder, run))
            continue;
        bytes -= run.keptBytes;
        --left;
    }
}

} // namespace velmora
