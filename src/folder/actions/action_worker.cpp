#include "folder/actions/action_worker.h"

#include "core/settings_store.h"
#include "folder/actions/command_words.h"
#include "folder/operations/journal_folder.h"
#include "session/translate.h"
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

ActionOutcome runAction(const ActionRequest &request, const OperationPlan &plan, FileLayer &files,
                        const JournalPlace &place, const CancelFlag &cancel, Progress &progress)
{
    QDir().mkpath(place.folder);
    QLockFile lock(place.folder + QLatin1String("/lock"));
    ExecutionReport report;
    report.plan = plan;
    if (lockJournal(lock, cancel)) {
        OperationJournal journal(files, place.folder, place.limits);
        journal.setNext(actionTitle(request), request.undoOf);
        ExecutionOptions options;
        options.journal = request.keeping == Keeping::NoNotes ? nullptr : &journal;
        options.keepsOld = request.keeping == Keeping::OldContents;
        report = executePlan(plan, files, options, cancel, progress);
    } else {
        report.cancelled = true;
    }
    return outcomeOf(request, report, QTime::currentTime());
}

PreparedUndo prepareUndoing(FileLayer &files, const JournalPlace &place, const QString &id, const CancelFlag &cancel)
{
    const OperationJournal journal(files, place.folder, place.limits);
    PreparedUndo prepared{journal.planUndo(id, cancel), {}};
    for (const JournalEntry &entry : journal.entries().entries) {
        if (entry.id == prepared.undo.id)
            prepared.entry = entry;
    }
    return prepared;
}

} // namespace velmora
