#include "folder/operations/journal_folder.h"
#include "folder/operations/opened_run.h"
#include "folder/operations/operation_journal.h"
#include "folder/operations/place_look.h"
#include "folder/operations/plan_survey.h"

namespace velmora {

namespace {

bool isOfSameLook(const SeenEntry &seen, const NodeState &node)
{
    if (seen.kind != node.kind)
        return false;
    return node.kind != NodeKind::File || (seen.size == node.size && seen.modifiedNs == node.modifiedNs);
}

/// Turns the steps of a run round. What is as it was before the run needs no step: it was never done, or has been
/// undone before.
class Reversal {
public:
    Reversal(const JournalRecord &record, const QString &journalFolder, const QString &id, FileLayer &files)
        : m_record(record), m_files(files)
    {
        // What an earlier undoing took from the journal does not go back there.
        for (const QString &root : record.header.roots) {
            if (!root.startsWith(journalFolder + u'/'))
                m_plan.roots.append({root, std::nullopt, true});
        }
        m_keptRoot = int(m_plan.roots.size());
        m_plan.roots.append({journalFolder + u'/' + id + u'/' + keptFolderName, std::nullopt, true, true});
        m_plan.liftsProtection = true;
        m_look = std::make_unique<PlaceLook>(files, m_plan.roots);
    }

    OperationPlan plan()
    {
        refuseOtherRoots(m_record.header, changedRoots(), m_look->chain(), m_plan);
        if (m_plan.refusal != PlanRefusal::None)
            return m_plan;
        for (auto step = m_record.steps.rbegin(); step != m_record.steps.rend(); ++step) {
            if (step->end != JournalStep::End::Nothing)
                reverse(*step);
        }
        return m_plan;
    }

private:
    /// Where the run has, or may have, changed something.
    [[nodiscard]] std::set<int> changedRoots() const
    {
        std::set<int> roots;
        for (const JournalStep &done : m_record.steps) {
            const OperationStep &step = done.step;
            if (done.end == JournalStep::End::Nothing)
                continue;
            const bool takes = step.kind == OperationKind::Move || !step.to.isSet() || done.isMoved;
            for (const Place *place : {&step.to, takes ? &step.from : &step.to}) {
                if (place->isSet() && place->root < m_keptRoot)
                    roots.insert(place->root);
            }
        }
        return roots;
    }

    void reverse(const JournalStep &done)
    {
        switch (kindOf(done)) {
        case OperationKind::MakeFolder:
        case OperationKind::Copy:
            remove(done, OperationKind::Delete);
            break;
        case OperationKind::Move:
            moveBack(done);
            break;
        case OperationKind::Replace:
            bringBackTarget(done, made(done));
            break;
        case OperationKind::Delete:
            if (const std::optional<NodeState> node = m_look->at(done.step.from);
                !node || !isOfSameLook(done.step.fromSeen, *node))
                bringBack(done, done.step.from, done.step.fromSeen, SeenEntry::absent());
            break;
        case OperationKind::Recycle:
            restore(done);
            break;
        case OperationKind::Restore:
            remove(done, OperationKind::Recycle);
            break;
        }
    }

    /// As what a step counts when it is turned round.
    OperationKind kindOf(const JournalStep &done) const
    {
        const OperationStep &step = done.step;
        const bool moves = step.kind == OperationKind::Move || done.isMoved;
        const OperationKind asCopy = step.toSeen.isPresent() ? OperationKind::Replace : OperationKind::Copy;
        if (moves && step.from.root >= m_keptRoot)
            return asCopy;
        if (!done.isMoved)
            return step.kind;
        // Between the line that the source goes and its going there are two.
        const std::optional<NodeState> source = m_look->at(step.from);
        return source && step.fromSeen.isStill(*source) ? asCopy : OperationKind::Move;
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
        if (!m_look->at(done.step.to))
            return;
        OperationStep step;
        step.kind = kind;
        step.from = done.step.to;
        step.fromSeen = made(done);
        step.wholeTree = kind == OperationKind::Recycle && step.fromSeen.kind == NodeKind::Folder;
        m_plan.steps.append(step);
    }

    void moveBack(const JournalStep &done)
    {
        const std::optional<NodeState> source = m_look->at(done.step.from);
        const bool isBack = source && done.step.fromSeen.isStill(*source);
        if (isBack) {
            if (done.step.toSeen.isPresent())
                bringBackTarget(done, SeenEntry::absent());
            return;
        }
        // A crash after two entries were swapped: what was replaced is still there, and kept as well.
        if (source && done.step.toSeen.isPresent() && done.step.toSeen.isStill(*source)) {
            OperationStep replaced;
            replaced.kind = OperationKind::Delete;
            replaced.from = done.step.from;
            replaced.fromSeen = SeenEntry::exactly(*source);
            m_plan.steps.append(replaced);
        }
        OperationStep step;
        step.kind = OperationKind::Move;
        step.from = done.step.to;
        step.fromSeen = made(done);
        step.to = done.step.from;
        step.toSeen = SeenEntry::absent();
        m_plan.steps.append(step);
        if (done.step.toSeen.isPresent())
            bringBack(done, done.step.to, done.step.toSeen, SeenEntry::absent());
    }

    /// What was replaced comes back, over what is `there`.
    void bringBackTarget(const JournalStep &done, const SeenEntry &there)
    {
        const SeenEntry &old = done.step.toSeen;
        const std::optional<NodeState> node = m_look->at(done.step.to);
        const bool isIt = node && old.identity && old.identity == node->identity;
        // Where old and new look alike, that the old is no longer kept tells that it is back.
        const bool isLike =
            node && isOfSameLook(old, *node) && (!made(done).isStill(*node) || !m_look->at({m_keptRoot, done.kept}));
        if (!isIt && !isLike)
            bringBack(done, done.step.to, old, there);
    }

    void bringBack(const JournalStep &done, const Place &place, const SeenEntry &old, const SeenEntry &there)
    {
        const Place kept{m_keptRoot, done.kept};
        if (done.kept.isEmpty() || !m_look->at(kept)) {
            m_plan.leftOut.append({LeftOutReason::OldContentsGone, m_plan.pathOf(place), {}});
            return;
        }
        OperationStep step;
        step.kind = old.kind == NodeKind::Folder ? OperationKind::MakeFolder : OperationKind::Move;
        step.from = kept;
        if (old.kind == NodeKind::File) {
            step.fromSeen = old;
            step.fromSeen.identity.reset(); // it may be a copy
        }
        step.to = place;
        step.toSeen = there;
        m_plan.steps.append(step);
    }

    void restore(const JournalStep &done)
    {
        const std::optional<NodeState> node = m_look->at(done.step.from);
        if (node && done.step.fromSeen.isStill(*node))
            return;
        if (done.binPath.isEmpty()) {
            if (!node || done.end == JournalStep::End::Done)
                m_plan.leftOut.append({LeftOutReason::InRecycleBin, m_plan.pathOf(done.step.from), {}});
            return;
        }
        const SeenEntry &recycled = done.now.isPresent() ? done.now : done.step.fromSeen;
        const NodeResult found = m_files.statInBin(done.binPath);
        if (found.error.isError() || !recycled.isUntouched(found.node)) {
            const LeftOutReason reason =
                found.error.isError() ? LeftOutReason::NotInRecycleBin : LeftOutReason::OtherInRecycleBin;
            m_plan.leftOut.append({reason, m_plan.pathOf(done.step.from), found.error.reason});
            return;
        }
        OperationStep step;
        step.kind = OperationKind::Restore;
        step.binPath = done.binPath;
        step.fromSeen = recycled;
        step.fromSeen.size = done.step.fromSeen.size; // of all that is in a folder
        step.fromSeen.files = done.step.fromSeen.files;
        step.to = done.step.from;
        step.toSeen = SeenEntry::absent();
        m_plan.steps.append(step);
    }

    const JournalRecord &m_record;
    FileLayer &m_files;
    OperationPlan m_plan;
    int m_keptRoot = 0;
    std::unique_ptr<PlaceLook> m_look;
};

} // namespace

UndoPlan OperationJournal::planUndo(const QString &id, const CancelFlag &cancel, Progress progress) const
{
    // A copy that a crash has left would keep its folder from being removed.
    removeLeftovers(m_files, m_folder);
    if (!id.isEmpty())
        return planUndoOf(id, cancel, progress);
    const JournalList list = entries();
    // A damaged run that is younger than the last readable one is the last: undoing an older one instead would
    // surprise.
    QHash<QString, bool> candidates; // and whether undoing has been tried
    for (const QString &unreadable : list.unreadable)
        candidates.insert(unreadable, false);
    for (const JournalEntry &entry : list.entries) {
        if (!entry.undone && entry.undoOf.isEmpty() && !entry.isAtWork)
            candidates.insert(entry.id, entry.undoneInPart);
    }
    QStringList ids = candidates.keys();
    std::sort(ids.begin(), ids.end(), std::greater<>());
    for (const QString &candidate : std::as_const(ids)) {
        UndoPlan undo = planUndoOf(candidate, cancel, progress);
        const bool isOver = undo.plan.steps.isEmpty() && (candidates[candidate] || undo.plan.leftOut.isEmpty());
        if (!isOver || undo.refusal != UndoRefusal::None || undo.plan.refusal != PlanRefusal::None)
            return undo;
    }
    return {{}, {}, UndoRefusal::NothingToUndo};
}

UndoPlan OperationJournal::planUndoOf(const QString &id, const CancelFlag &cancel, Progress &progress) const
{
    UndoPlan undo;
    undo.id = id;
    const OpenedRun run = openRun(m_files, m_folder, id, cancel);
    undo.refusal = run.refusal;
    if (run.isCancelled)
        undo.plan.refusal = PlanRefusal::Cancelled;
    else if (run.record)
        undo.plan = surveyPlan(Reversal(*run.record, m_folder, id, m_files).plan(), m_files, cancel, progress);
    return undo;
}

} // namespace velmora
