#include "folder/operations/duplicate_plan.h"

#include "folder/operations/plan_entries.h"

namespace velmora {

namespace {

/// The copy that stays; -1 when there is none.
qsizetype keptOf(const ExtraCopies &copies)
{
    for (qsizetype i = 0; i < copies.group.copies.size(); ++i) {
        if (!copies.group.copies.at(i).isLink && !copies.extra.contains(i))
            return i;
    }
    return -1;
}

Place placeOf(const DuplicateCopy &copy, const QList<DuplicateRoot> &roots)
{
    const QString &root = roots.at(copy.root).folder.path;
    const QString relative = copy.path.mid(root.endsWith(u'/') ? root.size() : root.size() + 1);
    return isInside(copy.path, root) && isCleanRelative(relative) ? Place{copy.root, relative} : Place();
}

SeenEntry seenOf(const DuplicateCopy &copy, const DuplicateGroup &group)
{
    SeenEntry seen;
    seen.state = SeenEntry::State::Listed;
    seen.size = group.size;
    seen.modifiedNs = copy.modifiedMs * 1'000'000;
    return seen;
}

void addGroup(const ExtraCopies &copies, const QList<DuplicateRoot> &roots, DeleteManner manner, OperationPlan &plan)
{
    const qsizetype kept = keptOf(copies);
    for (const qsizetype index : copies.extra) {
        const DuplicateCopy &copy = copies.group.copies.at(index);
        OperationStep step;
        step.kind = manner == DeleteManner::ToRecycleBin ? OperationKind::Recycle : OperationKind::Delete;
        step.from = placeOf(copy, roots);
        step.fromSeen = seenOf(copy, copies.group);
        if (kept >= 0) {
            step.keptCopy = placeOf(copies.group.copies.at(kept), roots);
            step.keptCopySeen = seenOf(copies.group.copies.at(kept), copies.group);
        }
        if (copy.isReference)
            plan.leftOut.append({LeftOutReason::ReadOnlySide, copy.path, {}});
        else if (copy.isLink)
            plan.leftOut.append({LeftOutReason::BelowLink, copy.path, {}});
        else if (!step.from.isSet() || !step.keptCopy->isSet())
            plan.leftOut.append({LeftOutReason::NameNotAllowed, copy.path, {}});
        else
            plan.steps.append(step);
    }
}

} // namespace

bool keepsOne(const ExtraCopies &copies)
{
    return keptOf(copies) >= 0;
}

OperationPlan planDeleteCopies(const QList<DuplicateRoot> &roots, const QList<ExtraCopies> &deletions,
                               DeleteManner manner)
{
    OperationPlan plan;
    for (const DuplicateRoot &root : roots)
        plan.roots.append({root.folder.path, std::nullopt, !root.isReference});
    for (const ExtraCopies &copies : deletions)
        addGroup(copies, roots, manner, plan);
    return plan;
}

} // namespace velmora
