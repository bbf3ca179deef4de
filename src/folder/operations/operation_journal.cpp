#include "folder/operations/operation_journal.h"

#include "folder/operations/journal_folder.h"
#include "folder/operations/journal_lines.h"

namespace velmora {

namespace {

constexpr qint64 longestHeader = 64 << 10;

/// The first line of a run's journal.
std::optional<JournalHeader> headerOf(FolderHandle &run)
{
    FileError error;
    const std::unique_ptr<FileSource> file = run.openFile(journalFileName, error);
    if (!file)
        return std::nullopt;
    QByteArray bytes(longestHeader, Qt::Uninitialized);
    const FilePiece piece = file->read(bytes.data(), bytes.size());
    bytes.truncate(qsizetype(piece.length));
    const qsizetype end = bytes.indexOf('\n');
    return end >= 0 ? readHeaderLine(bytes.left(end)) : std::nullopt;
}

} // namespace

OperationJournal::OperationJournal(FileLayer &files, QString folder, JournalLimits limits)
    : m_files(files), m_folder(std::move(folder)), m_limits(limits)
{}

OperationJournal::~OperationJournal() = default;

void OperationJournal::setNext(const QString &title, const QString &undoOf)
{
    m_nextTitle = title;
    m_nextUndoOf = undoOf;
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
        const std::optional<JournalHeader> header = run ? headerOf(*run) : std::nullopt;
        if (!header) {
            list.unreadable.append(id);
            continue;
        }
        JournalEntry entry;
        entry.id = id;
        entry.title = header->title;
        entry.started = QDateTime::fromMSecsSinceEpoch(header->startedMs, Qt::UTC);
        entry.undone = !run->stat(undoneMarkName).error.isError();
        entry.undoOf = header->undoOf;
        list.entries.append(entry);
    }
    return list;
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
