#include "folder/operations/place_plan.h"

namespace velmora {

PlacePlan::PlacePlan(const PlanInput &input, Side source, const QString &destination, OperationKind kind,
                     IfPresent ifPresent)
    : m_entries(input), m_source(source), m_kind(kind), m_mayReplace(ifPresent == IfPresent::Replace)
{
    m_plan.showsUnlisted = unlistedFilter(input);
    m_plan.roots = {{m_entries.root(source), input.identities[source], !input.isReadOnly(source)},
                    {Location::ofFolder(destination).place, std::nullopt, true}};
    if (!input.isLocal(source))
        m_plan.refusal = PlanRefusal::NoLocalFolder;
    if (kind == OperationKind::Move && !m_plan.roots[0].writable)
        m_plan.refusal = PlanRefusal::ReadOnlySide;
}

OperationPlan PlacePlan::build(const PlanSelection &selection)
{
    if (m_plan.refusal != PlanRefusal::None)
        return m_plan;
    const std::vector<char> marks = m_entries.covered(selection);
    m_targets.resize(marks.size());
    for (std::size_t i = 0; i < marks.size(); ++i) {
        if (marks[i] != 0)
            take(i, marks);
    }
    std::reverse(m_deletions.begin(), m_deletions.end());
    m_plan.steps.append(m_deletions);
    return m_plan;
}

void PlacePlan::take(std::size_t index, const std::vector<char> &marks)
{
    const PlanEntry &entry = m_entries.all()[index];
    const QString &path = pathOn(*entry.item, m_source);
    const bool isInner = entry.parent >= 0 && marks[std::size_t(entry.parent)] != 0;
    if (entry.isHidden || (isInner && m_targets[std::size_t(entry.parent)].isEmpty()))
        return;
    if (path.isEmpty()) {
        if (!isInner)
            m_plan.leftOut.append({LeftOutReason::NoPlaceOnThisSide, pathOn(*entry.item, otherSide(m_source)), {}});
        return;
    }
    if (entry.isFileAgainstFolder()) { // a folder's contents are not listed then
        m_plan.leftOut.append({LeftOutReason::FileAgainstFolder, path, {}});
        return;
    }
    const QString target = isInner ? joinedPath(m_targets[std::size_t(entry.parent)], bareName(path)) : bareName(path);
    if (!isInner && m_names.contains(target)) {
        m_plan.leftOut.append({LeftOutReason::NameTaken, path, {}});
        return;
    }
    if (entry.isFolder() && isOrIsInside(m_plan.roots[1].path, path)) {
        m_plan.leftOut.append({LeftOutReason::IntoItself, path, {}});
        return;
    }
    m_names.insert(target);
    m_targets[index] = target;
    append(entry, target);
}

void PlacePlan::append(const PlanEntry &entry, const QString &target)
{
    OperationStep step;
    step.kind = entry.isFolder() ? OperationKind::MakeFolder : m_kind;
    step.from = {0, entry.on(m_source).relative};
    step.fromSeen = seenOn(entry, m_source);
    step.to = {1, target};
    step.mayReplace = m_mayReplace;
    if (entry.isFolder()) // all that is shown in it is taken, or named as left out
        step.unlistedEntries = m_kind == OperationKind::Move ? UnlistedEntries::AreMoved : UnlistedEntries::AreCopied;
    m_plan.steps.append(step);
    if (!entry.isFolder() || m_kind != OperationKind::Move)
        return;
    OperationStep removal;
    removal.kind = OperationKind::Delete;
    removal.from = step.from;
    removal.fromSeen = step.fromSeen;
    m_deletions.append(removal);
}

} // namespace velmora
