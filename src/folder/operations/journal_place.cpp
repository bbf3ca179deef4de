#include "folder/operations/journal_place.h"

#include "core/settings_store.h"
#include "folder/operations/journal_folder.h"
#include "settings/options/kept_copies.h"

#include <QDir>
#include <QLockFile>
#include <QStandardPaths>

namespace velmora {

namespace {

constexpr int lockWait = 50; // milliseconds between two looks at the cancel flag

/// Keeps others from the journal while it lives. False when the wait was cancelled; where no lock can be had at all
/// the journal itself tells what is wrong.
bool lockJournal(QLockFile &lock, const CancelFlag &cancel)
{
    lock.setStaleLockTime(0); // runs may take hours; the lock of a program that has died is seen by its process
    while (!takeLock(lock, lockWait)) {
        if (cancel.isCancelled())
            return false;
        if (lock.error() != QLockFile::LockFailedError)
            break;
    }
    return true;
}

} // namespace

JournalPlace standardJournal()
{
    const KeptCopies kept = loadKeptCopies(SessionSettings());
    JournalPlace place{QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + QLatin1String("/journal"),
                       {}};
    place.limits.keptBytes = kept.bytes;
    place.limits.days = kept.days;
    return place;
}

ExecutionReport executeJournalled(OperationPlan plan, FileLayer &files, const JournalPlace &place,
                                  const JournalNote &note, const CancelFlag &cancel, Progress &progress)
{
    QDir().mkpath(place.folder);
    QLockFile lock(place.folder + QLatin1String("/lock"));
    if (!lockJournal(lock, cancel)) {
        ExecutionReport report;
        report.plan = std::move(plan);
        report.cancelled = true;
        return report;
    }
    OperationJournal journal(files, place.folder, place.limits);
    journal.setNext(note.title, note.undoOf, note.restOf);
    ExecutionOptions options;
    options.journal = note.isWritten ? &journal : nullptr;
    options.keepsOld = note.keepsOld;
    return executePlan(std::move(plan), files, options, cancel, progress);
}

} // namespace velmora
