#include "folder/operations/pair_plan.h"

#include "folder/engine/short_path.h"

namespace velmora {

namespace {

/// What stands for the step that makes a folder where there is none.
constexpr qint32 notMade = -1; ///< nobody has asked for the folder
constexpr qint32 isThere = -2; ///< it needs none

} // namespace

PairPlan::PairPlan(PlanInput input) : m_input(std::move(input)), m_entries(m_input)
{
    const std::size_t count = m_entries.all().size();
    m_going.resize(count, UnlistedEntries::Stay);
    m_made.resize(count, notMade);
    m_plan.showsUnlisted = unlistedFilter(m_input);
    for (const Side side : bothSides)
        m_plan.roots.append({m_entries.root(side), m_input.identities[side], !m_input.isReadOnly(side)});
    forgetPaths();
}

/// Absolute paths are most of what a comparison takes, and steps come on top.
void PairPlan::forgetPaths()
{
    if (!m_input.items.isDetached())
        return;
    for (qsizetype i = 0; i < m_input.items.size(); ++i) {
        FolderDiffItem &item = m_input.items[i]; // where it was: nobody shares the list
        const PlanEntry &entry = m_entries.at(int(i));
        if (entry.sides.left.isThere && item.leftPath == m_plan.pathOf(placeOf(entry, Side::Left)))
            item.leftPath.clear();
        if (entry.sides.right.isThere && item.rightPath == m_plan.pathOf(placeOf(entry, Side::Right)))
            item.rightPath.clear();
    }
}

QString PairPlan::pathOf(const PlanEntry &entry, Side side) const
{
    const QString path = fullPathOn(*entry.item, side, m_entries.root(side));
    return path.isEmpty() ? m_plan.pathOf(placeOf(entry, side)) : path;
}

bool PairPlan::needsSidesApart()
{
    m_plan.rootsMustBeApart = true;
    const QString &left = m_plan.roots[0].path;
    const QString &right = m_plan.roots[1].path;
    const bool areLocal = m_input.isLocal(Side::Left) && m_input.isLocal(Side::Right);
    if (areLocal && (isOrIsInside(left, right) || isOrIsInside(right, left)))
        m_plan.refusal = PlanRefusal::OverlappingRoots;
    return m_plan.refusal == PlanRefusal::None;
}

bool PairPlan::needsWritable(Side side)
{
    if (m_input.isReadOnly(side))
        m_plan.refusal = PlanRefusal::ReadOnlySide;
    return m_plan.refusal == PlanRefusal::None;
}

void PairPlan::leaveOut(const PlanEntry &entry, LeftOutReason reason, Side side)
{
    m_plan.leftOut.append({reason, pathOf(entry, entry.on(side).isThere ? side : otherSide(side)), {}});
}

void PairPlan::copy(int index, Side source, OperationKind kind)
{
    const PlanEntry &entry = m_entries.at(index);
    const Side target = otherSide(source);
    if (!canWrite(entry, target))
        return;
    if (!entry.on(source).isThere) {
        leaveOut(entry, LeftOutReason::NoPlaceOnThisSide, source);
        return;
    }
    if (entry.isFileAgainstFolder()) {
        leaveOut(entry, LeftOutReason::FileAgainstFolder, target);
        return;
    }
    m_going[std::size_t(index)] = kind == OperationKind::Move ? UnlistedEntries::AreMoved : UnlistedEntries::AreCopied;
    if (entry.isFolder()) {
        makeFolders(index, source);
        return;
    }
    makeFolders(entry.parent, source);
    OperationStep step;
    const bool replaces = entry.on(target).isThere;
    step.kind = replaces && kind == OperationKind::Copy ? OperationKind::Replace : kind;
    step.from = placeOf(entry, source);
    step.fromSeen = seenOn(entry, source);
    step.to = placeOf(entry, target);
    step.toSeen = replaces ? seenOn(entry, target) : SeenEntry::absent();
    m_plan.steps.append(step);
}

void PairPlan::moveWithin(Side side, int from, int to)
{
    const PlanEntry &source = m_entries.at(from);
    const PlanEntry &target = m_entries.at(to);
    const Side other = otherSide(side);
    if (!canWrite(target, side))
        return;
    if (source.item->isDir || target.item->isDir || source.isOnBoth() || target.isOnBoth() ||
        !source.on(side).isThere || !target.on(other).isThere) {
        leaveOut(target, LeftOutReason::ChangedSinceCompared, other);
        return;
    }
    if (source.isHidden || isBelowProblem(source, other)) {
        leaveOut(source, source.isHidden ? LeftOutReason::HiddenByFilter : LeftOutReason::NotReadable, side);
        return;
    }
    m_going[std::size_t(to)] = UnlistedEntries::AreCopied;
    m_plan.listed.append(placeOf(target, other)); // no step comes from there, and yet it does not go with its folder
    makeFolders(target.parent, other);
    OperationStep step;
    step.kind = OperationKind::Move;
    step.from = placeOf(source, side);
    step.fromSeen = seenOn(source, side);
    step.to = placeOf(target, side);
    step.toSeen = SeenEntry::absent();
    // Where letters have no case, the other side's file has both names when only their case differs.
    if (step.from.relative.compare(step.to.relative, Qt::CaseInsensitive) != 0)
        step.counterpart = placeOf(source, other);
    m_plan.steps.append(step);
}

void PairPlan::remove(int index, Side side, DeleteManner manner, bool followsMissing)
{
    const PlanEntry &entry = m_entries.at(index);
    if (!canWrite(entry, side))
        return;
    if (!entry.on(side).isThere) {
        leaveOut(entry, LeftOutReason::NoPlaceOnThisSide, side);
        return;
    }
    if (entry.isFolder() && entry.holdsHidden) {
        leaveOut(entry, LeftOutReason::HoldsHiddenEntries, side);
        return;
    }
    OperationStep step;
    step.kind = manner == DeleteManner::ToRecycleBin ? OperationKind::Recycle : OperationKind::Delete;
    step.from = placeOf(entry, side);
    step.fromSeen = seenOn(entry, side);
    if (followsMissing) {
        if (isBelowProblem(entry, otherSide(side))) {
            leaveOut(entry, LeftOutReason::NotReadable, side);
            return;
        }
        step.counterpart = placeOf(entry, otherSide(side));
    }
    m_deletions.append(step);
}

OperationPlan PairPlan::finished()
{
    markWholeFolders();
    std::reverse(m_deletions.begin(), m_deletions.end());
    m_plan.steps.append(m_deletions);
    for (const Side side : bothSides) {
        const auto isAbout = [root = rootOf(side)](const OperationStep &step) {
            return step.from.root == root || step.to.root == root || step.counterpart->root == root;
        };
        if (!m_input.isLocal(side) && std::any_of(m_plan.steps.begin(), m_plan.steps.end(), isAbout))
            m_plan.refusal = PlanRefusal::NoLocalFolder;
    }
    if (m_plan.refusal == PlanRefusal::NoLocalFolder)
        m_plan.steps.clear();
    return std::move(m_plan);
}

Place PairPlan::placeOf(const PlanEntry &entry, Side side)
{
    return {rootOf(side), entry.on(side).relative};
}

bool PairPlan::canWrite(const PlanEntry &entry, Side side)
{
    const bool isReadOnly = m_input.isReadOnly(side);
    if (isReadOnly)
        leaveOut(entry, LeftOutReason::ReadOnlySide, side);
    return !isReadOnly;
}

void PairPlan::makeFolders(int index, Side source)
{
    if (index < 0 || m_made[std::size_t(index)] != notMade)
        return;
    const PlanEntry &entry = m_entries.at(index);
    makeFolders(entry.parent, source);
    m_made[std::size_t(index)] = isThere;
    if (entry.on(otherSide(source)).isThere)
        return;
    OperationStep step;
    step.kind = OperationKind::MakeFolder;
    step.from = placeOf(entry, source);
    step.fromSeen = seenOn(entry, source);
    step.to = placeOf(entry, otherSide(source));
    step.toSeen = SeenEntry::absent();
    m_made[std::size_t(index)] = qint32(m_plan.steps.size());
    m_plan.steps.append(step);
}

void PairPlan::markWholeFolders()
{
    for (std::size_t i = m_made.size(); i-- > 0;) {
        const PlanEntry &entry = m_entries.at(int(i));
        const bool stays = m_going[i] == UnlistedEntries::Stay;
        if (stays && !entry.isHidden && entry.parent >= 0)
            m_going[std::size_t(entry.parent)] = UnlistedEntries::Stay;
        if (m_made[i] >= 0)
            m_plan.steps[m_made[i]].unlistedEntries = m_going[i];
    }
}

bool PairPlan::isBelowProblem(const PlanEntry &entry, Side side) const
{
    const QString path = m_plan.pathOf(placeOf(entry, side));
    return std::any_of(m_input.problems.begin(), m_input.problems.end(), [&](const FolderProblem &problem) {
        return problem.side == side && problem.kind != FolderProblem::Kind::UnreadableFile &&
               isOrIsInside(path, problem.path);
    });
}

} // namespace velmora
