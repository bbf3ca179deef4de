#include "folder/operations/opened_run.h"
#include "folder/operations/operation_journal.h"
#include "folder/operations/place_look.h"

namespace velmora {

namespace {

/// What a run that did not come to its end still has to do.
class Rest {
public:
    Rest(const JournalRecord &record, FileLayer &files) : m_record(record)
    {
        for (const QString &root : record.header.roots)
            m_plan.roots.append({root, std::nullopt, true});
        m_look = std::make_unique<PlaceLook>(files, m_plan.roots);
        for (int i = 0; i < m_plan.roots.size(); ++i) {
            if (FolderHandle *const root = m_look->chain().root(i))
                m_plan.roots[i].identity = root->self().node.identity;
        }
        for (const JournalStep &step : record.steps) // of two tries the second counts
            m_begun.insert(step.number, &step);
    }

    OperationPlan plan()
    {
        m_plan.isSurveyed = true;
        std::set<int> needed;
        for (const OperationStep &step : m_record.planned)
            needed.insert({step.from.root, step.to.root});
        needed.erase(Place().root);
        refuseOtherRoots(m_record.header, needed, m_look->chain(), m_plan);
        if (m_plan.refusal != PlanRefusal::None || qint64(m_record.planned.size()) != m_record.header.steps)
            return m_plan;
        for (std::size_t i = 0; i < m_record.planned.size(); ++i) {
            const JournalStep *const begun = m_begun.value(qint64(i), nullptr);
            const bool isHalf = begun && begun->step.kind != m_record.planned[i].kind && !begun->isMoved;
            if (begun && begun->end == JournalStep::End::Done && !isHalf)
                finish(m_record.planned[i]);
            else
                add(m_record.planned[i]);
        }
        return m_plan;
    }

private:
    /// A folder that was made gets its time and permissions only when everything is in it.
    void finish(OperationStep step)
    {
        const std::optional<NodeState> made = m_look->at(step.to);
        if (step.kind != OperationKind::MakeFolder || !step.from.isSet() || !made || made->kind != NodeKind::Folder ||
            !m_look->at(step.from))
            return;
        step.toSeen = SeenEntry::exactly(*made);
        m_plan.steps.append(step);
    }

    void add(const OperationStep &step)
    {
        const std::optional<NodeState> source = m_look->at(step.from);
        const std::optional<NodeState> target = m_look->at(step.to);
        const bool isAtTarget = target && isMade(step, *target);
        const bool isMove = step.kind == OperationKind::Move;
        if (step.kind == OperationKind::MakeFolder && isAtTarget) {
            finish(step);
        } else if (step.to.isSet() ? isAtTarget && !(isMove && source) : !source) {
            return; // a crash came between the doing and the writing down
        } else if (isMove && isAtTarget) {
            addRemoval(step, *source);
        } else if (isExpected(step, source, target)) {
            m_plan.steps.append(step);
        } else {
            m_plan.leftOut.append(
                {LeftOutReason::ChangedSinceCompared, m_plan.pathOf(step.from.isSet() ? step.from : step.to), {}});
        }
    }

    static bool isMade(const OperationStep &step, const NodeState &target)
    {
        if (step.kind == OperationKind::MakeFolder || target.kind == NodeKind::Folder)
            return target.kind == NodeKind::Folder &&
                   (step.kind == OperationKind::MakeFolder || step.fromSeen.isStill(target));
        if (step.toSeen.isPresent() && step.toSeen.isStill(target))
            return false;
        SeenEntry like = step.fromSeen;
        like.identity.reset();
        return like.isStill(target);
    }

    /// What was copied to another volume, or swapped with what it replaces: only its old place is still to be cleared.
    void addRemoval(const OperationStep &step, const NodeState &source)
    {
        const bool isOurs = step.fromSeen.isStill(source) || (step.toSeen.isPresent() && step.toSeen.isStill(source));
        if (!isOurs || source.kind == NodeKind::Folder) {
            m_plan.leftOut.append({LeftOutReason::ChangedSinceCompared, m_plan.pathOf(step.from), {}});
            return;
        }
        OperationStep removal;
        removal.kind = OperationKind::Delete;
        removal.from = step.from;
        removal.fromSeen = SeenEntry::exactly(source);
        m_plan.steps.append(removal);
    }

    static bool isExpected(const OperationStep &step, const std::optional<NodeState> &source,
                           const std::optional<NodeState> &target)
    {
        if (step.from.isSet() && (!source || !step.fromSeen.isStill(*source)))
            return false;
        return step.toSeen.isPresent() ? target && step.toSeen.isStill(*target) : !target;
    }

    const JournalRecord &m_record;
    OperationPlan m_plan;
    std::unique_ptr<PlaceLook> m_look;
    QHash<qint64, const JournalStep *> m_begun;
};

OperationPlan doneBy(const JournalRecord &record)
{
    OperationPlan plan;
    plan.isSurveyed = true;
    for (const QString &root : record.header.roots)
        plan.roots.append({root, std::nullopt, true});
    for (const JournalStep &step : record.steps) {
        if (step.end == JournalStep::End::Done)
            plan.steps.append(step.step);
    }
    return plan;
}

} // namespace

PastRun OperationJournal::readRun(const QString &id, const CancelFlag &cancel) const
{
    PastRun past;
    const OpenedRun run = openRun(m_files, m_folder, id, cancel);
    past.refusal = run.refusal;
    if (run.isCancelled)
        past.done.refusal = PlanRefusal::Cancelled;
    if (!run.record)
        return past;
    past.done = doneBy(*run.record);
    for (PlanRoot &root : past.done.roots)
        root.isKept = root.path.startsWith(m_folder + u'/');
    past.rest = Rest(*run.record, m_files).plan();
    return past;
}

} // namespace velmora
