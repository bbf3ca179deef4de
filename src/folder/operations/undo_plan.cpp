#include "folder/operations/journal_folder.h"
#include "folder/operations/journal_lines.h"
#include "folder/operations/operation_journal.h"
#include "folder/operations/plan_survey.h"

namespace velmora {

namespace {

/// Turns the steps of a run round.
class Reversal {
public:
    Reversal(const JournalRecord &record, const QString &keptFolder) : m_record(record)
    {
        for (const QString &root : record.header.roots)
            m_plan.roots.append({root, std::nullopt, true});
        m_plan.roots.append({keptFolder, std::nullopt, false});
    }

    OperationPlan plan()
    {
        for (auto step = m_record.steps.rbegin(); step != m_record.steps.rend(); ++step) {
            if (step->end != JournalStep::End::Nothing)
                reverse(*step);
        }
        return m_plan;
    }

private:
    void reverse(const JournalStep &done)
    {
        switch (done.step.kind) {
        case OperationKind::MakeFolder:
            remove(done, OperationKind::Delete);
            break;
        case OperationKind::Copy:
        case OperationKind::Replace:
        case OperationKind::Move:
            if (done.isMoved || done.step.kind == OperationKind::Move)
                moveBack(done);
            else if (done.step.kind == OperationKind::Replace)
                bringBack(done, done.step.to, done.step.toSeen, OperationKind::Replace);
            else
                remove(done, OperationKind::Delete);
            break;
        case OperationKind::Delete:
            bringBack(done, done.step.from, done.step.fromSeen,
                      done.step.fromSeen.kind == NodeKind::Folder ? OperationKind::MakeFolder : OperationKind::Copy);
            break;
        case OperationKind::Recycle:
            restore(done);
            break;
        case OperationKind::Restore:
            remove(done, OperationKind::Recycle);
            break;
        }
    }

    /// What stands where the step has made something. Of a step that a crash ended: what it would have made.
    static SeenEntry made(const JournalStep &done)
    {
        if (done.now.isPresent())
            return done.now;
        SeenEntry seen = done.step.fromSeen;
        seen.state = SeenEntry::State::Listed;
        seen.identity.reset();
        if (done.step.kind == OperationKind::MakeFolder)
            seen.kind = NodeKind::Folder;
        return seen;
    }

    void remove(const JournalStep &done, OperationKind kind)
    {
        OperationStep step;
        step.kind = kind;
        step.from = done.step.to;
        step.fromSeen = made(done);
        step.wholeTree = kind == OperationKind::Recycle && step.fromSeen.kind == NodeKind::Folder;
        m_plan.steps.append(step);
    }

    void moveBack(const JournalStep &done)
    {
        OperationStep step;
        step.kind = OperationKind::Move;
        step.from = done.step.to;
        step.fromSeen = made(done);
        step.to = done.step.from;
        step.toSeen = SeenEntry::absent();
        m_plan.steps.append(step);
        if (done.step.toSeen.isPresent())
            bringBack(done, done.step.to, done.step.toSeen, OperationKind::Copy);
    }

    void bringBack(const JournalStep &done, const Place &place, const SeenEntry &old, OperationKind kind)
    {
        if (done.kept.isEmpty()) {
            m_plan.leftOut.append({LeftOutReason::OldContentsGone, m_plan.pathOf(place), {}});
            return;
        }
        OperationStep step;
        step.kind = kind;
        step.from = {int(m_plan.roots.size()) - 1, done.kept};
        if (old.kind == NodeKind::File) {
            step.fromSeen = old;
            step.fromSeen.identity.reset(); // it may be a copy
        }
        step.to = place;
        step.toSeen = kind == OperationKind::Replace ? made(done) : SeenEntry::absent();
        m_plan.steps.append(step);
    }

    void restore(const JournalStep &done)
    {
        if (done.binPath.isEmpty()) {
            const bool isInBin = done.end == JournalStep::End::Done;
            m_plan.leftOut.append({isInBin ? LeftOutReason::InRecycleBin : LeftOutReason::OldContentsGone,
                                   m_plan.pathOf(done.step.from),
                                   {}});
            return;
        }
        OperationStep step;
        step.kind = OperationKind::Restore;
        step.binPath = done.binPath;
        step.fromSeen = done.step.fromSeen;
        step.to = done.step.from;
        step.toSeen = SeenEntry::absent();
        m_plan.steps.append(step);
    }

    const JournalRecord &m_record;
    OperationPlan m_plan;
};

/// The last run that can be undone; empty when there is none.
QString lastRun(const JournalList &list)
{
    for (auto entry = list.entries.rbegin(); entry != list.entries.rend(); ++entry) {
        if (!entry->undone && entry->undoOf.isEmpty())
            return entry->id;
    }
    return {};
}

} // namespace

UndoPlan OperationJournal::planUndo(const QString &id, const CancelFlag &cancel, Progress progress) const
{
    UndoPlan undo;
    const JournalList list = entries();
    undo.id = id.isEmpty() ? lastRun(list) : id;
    // A damaged run that is younger than the last readable one is the last: undoing an older one instead would
    // surprise.
    if (id.isEmpty() && !list.unreadable.isEmpty() && list.unreadable.last() > undo.id)
        undo.id = list.unreadable.last();
    if (undo.id.isEmpty()) {
        undo.refusal = UndoRefusal::NothingToUndo;
        return undo;
    }
    FileError error;
    const std::unique_ptr<FolderHandle> folder = m_files.openRoot(m_folder, error);
    const std::unique_ptr<FolderHandle> run = folder ? folder->openFolder(undo.id, error) : nullptr;
    if (!run) {
        undo.refusal = error.kind == FileErrorKind::Missing ? UndoRefusal::NothingToUndo : UndoRefusal::Unreadable;
        return undo;
    }
    const std::unique_ptr<FileSource> file = run->openFile(journalFileName, error);
    const std::optional<JournalRecord> record = file ? readJournal(*file, cancel, error) : std::nullopt;
    if (error.kind == FileErrorKind::Stopped) {
        undo.plan.refusal = PlanRefusal::Cancelled;
        return undo;
    }
    if (!record) {
        undo.refusal = error.isError() ? UndoRefusal::Unreadable : UndoRefusal::Damaged;
        return undo;
    }
    const QString kept = m_folder + u'/' + undo.id + u'/' + keptFolderName;
    undo.plan = surveyPlan(Reversal(*record, kept).plan(), m_files, cancel, progress);
    return undo;
}

} // namespace velmora
