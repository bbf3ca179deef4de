#include "folder/operations/plan_builders.h"

#include "folder/operations/pair_plan.h"
#include "folder/operations/place_plan.h"

#include <QSet>

#include <algorithm>

namespace velmora {

namespace {

/// -1, 0, 1: the left file is older, neither is newer, the left is newer.
int newerSide(const FolderDiffItem &item, qint32 toleranceSec)
{
    const qint64 difference = item.leftTime.toMSecsSinceEpoch() - item.rightTime.toMSecsSinceEpoch();
    if (std::abs(difference) <= qint64(std::max(toleranceSec, 0)) * 1000)
        return 0;
    return difference < 0 ? -1 : 1;
}

EntryAction copyFrom(Side source)
{
    return source == Side::Left ? EntryAction::CopyToRight : EntryAction::CopyToLeft;
}

EntryAction deleteOn(Side side)
{
    return side == Side::Left ? EntryAction::DeleteLeft : EntryAction::DeleteRight;
}

void act(PairPlan &builder, int index, EntryAction action, DeleteManner manner, int movedFrom = -1)
{
    const PlanEntry &entry = builder.entries().at(index);
    switch (action) {
    case EntryAction::Nothing:
        break;
    case EntryAction::CopyToLeft:
    case EntryAction::CopyToRight:
        builder.copy(index, action == EntryAction::CopyToRight ? Side::Left : Side::Right);
        break;
    case EntryAction::DeleteLeft:
    case EntryAction::DeleteRight: {
        const Side side = action == EntryAction::DeleteLeft ? Side::Left : Side::Right;
        if (entry.isFileAgainstFolder())
            builder.leaveOut(entry, LeftOutReason::FileAgainstFolder, side);
        else if (!entry.isOnBoth())
            builder.remove(index, side, manner, true);
        break;
    }
    case EntryAction::MoveOnLeft:
    case EntryAction::MoveOnRight:
        if (movedFrom >= 0)
            builder.moveWithin(action == EntryAction::MoveOnLeft ? Side::Left : Side::Right, movedFrom, index);
        break;
    }
}

using ActionRule = std::function<EntryAction(const PlanEntry &)>;

/// The index of each entry of which `names` has the name.
QHash<QString, int> indexesOf(const PairPlan &builder, const QSet<QString> &names)
{
    QHash<QString, int> indexes;
    for (int i = 0; !names.isEmpty() && i < int(builder.entries().all().size()); ++i) {
        if (const QString &name = builder.entries().at(i).item->name; names.contains(name))
            indexes.insert(name, i);
    }
    return indexes;
}

OperationPlan planByRule(PairPlan &builder, const ActionRule &actionOf, DeleteManner manner,
                         const QHash<QString, QString> &movedFrom = {})
{
    if (!builder.needsSidesApart())
        return builder.finished();
    const auto isAsked = [](const PlanEntry &entry) {
        return !entry.isHidden && (!entry.isOnBoth() || entry.item->diffStatus() != FolderDiffStatus::Same);
    };
    const std::vector<PlanEntry> &all = builder.entries().all();
    builder.plan().steps.reserve(std::count_if(all.begin(), all.end(), isAsked));
    const QHash<QString, int> sources = indexesOf(builder, QSet(movedFrom.begin(), movedFrom.end()));
    for (int i = 0; i < int(all.size()); ++i) {
        const PlanEntry &entry = builder.entries().at(i);
        if (isAsked(entry))
            act(builder, i, actionOf(entry), manner, sources.value(movedFrom.value(entry.item->name), -1));
    }
    return builder.finished();
}

bool isOnlyOn(const PlanEntry &entry, Side side)
{
    return entry.on(side).isThere && !entry.on(otherSide(side)).isThere;
}

} // namespace

OperationPlan planActions(PlanInput input, const std::function<EntryAction(const FolderDiffItem &)> &actionOf,
                          DeleteManner manner, const QHash<QString, QString> &movedFrom)
{
    PairPlan builder(std::move(input));
    return planByRule(
        builder, [&](const PlanEntry &entry) { return actionOf(*entry.item); }, manner, movedFrom);
}

OperationPlan planMirror(const PlanInput &input, Side source, DeleteManner manner)
{
    PairPlan builder(input);
    builder.plan().sourceIsEmpty =
        std::none_of(input.items.begin(), input.items.end(),
                     [source](const FolderDiffItem &item) { return !pathOn(item, source).isEmpty(); });
    if (!builder.needsWritable(otherSide(source)))
        return builder.finished();
    return planByRule(
        builder,
        [source](const PlanEntry &entry) {
            return entry.on(source).isThere ? copyFrom(source) : deleteOn(otherSide(source));
        },
        manner);
}

OperationPlan planUpdate(const PlanInput &input, Side source)
{
    PairPlan builder(input);
    if (!builder.needsWritable(otherSide(source)))
        return builder.finished();
    return planByRule(
        builder,
        [&](const PlanEntry &entry) {
            const int newer = newerSide(*entry.item, input.toleranceSec);
            const bool isNewer = source == Side::Left ? newer > 0 : newer < 0;
            const bool copies =
                isOnlyOn(entry, source) || (entry.isOnBoth() && (isNewer || entry.isFileAgainstFolder()));
            return copies ? copyFrom(source) : EntryAction::Nothing;
        },
        DeleteManner::ToRecycleBin);
}

OperationPlan planUpdateBoth(const PlanInput &input)
{
    PairPlan builder(input);
    return planByRule(
        builder,
        [&](const PlanEntry &entry) {
            if (!entry.isOnBoth())
                return copyFrom(isOnlyOn(entry, Side::Left) ? Side::Left : Side::Right);
            if (entry.isFileAgainstFolder()) {
                builder.leaveOut(entry, LeftOutReason::FileAgainstFolder, Side::Left);
                return EntryAction::Nothing;
            }
            if (entry.isFolder())
                return EntryAction::Nothing;
            const int newer = newerSide(*entry.item, input.toleranceSec);
            if (newer == 0) {
                builder.leaveOut(entry, LeftOutReason::TimesAreEqual, Side::Left);
                return EntryAction::Nothing;
            }
            return copyFrom(newer > 0 ? Side::Left : Side::Right);
        },
        DeleteManner::ToRecycleBin);
}

OperationPlan planCopyToOtherSide(const PlanInput &input, const PlanSelection &selection, Side source)
{
    PairPlan builder(input);
    if (!builder.needsWritable(otherSide(source)) || !builder.needsSidesApart())
        return builder.finished();
    const std::vector<char> marks = builder.entries().covered(selection);
    for (int i = 0; i < int(marks.size()); ++i) {
        const PlanEntry &entry = builder.entries().at(i);
        const char mark = marks[std::size_t(i)];
        const bool isEqual = entry.isOnBoth() && entry.item->diffStatus() == FolderDiffStatus::Same;
        // What only the other side has is no part of what is copied.
        if (mark != 0 && !entry.isHidden && (mark == 2 || (entry.on(source).isThere && !isEqual)))
            builder.copy(i, source);
    }
    return builder.finished();
}

OperationPlan planMoveToOtherSide(const PlanInput &input, const PlanSelection &selection, Side source)
{
    PairPlan builder(input);
    if (!builder.needsWritable(otherSide(source)) || !builder.needsWritable(source) || !builder.needsSidesApart())
        return builder.finished();
    const std::vector<char> marks = builder.entries().covered(selection);
    for (int i = 0; i < int(marks.size()); ++i) {
        const PlanEntry &entry = builder.entries().at(i);
        const char mark = marks[std::size_t(i)];
        if (mark == 0 || entry.isHidden || (mark != 2 && !entry.on(source).isThere))
            continue;
        builder.copy(i, source, OperationKind::Move);
        if (entry.isFolder() && entry.on(source).isThere)
            builder.remove(i, source, DeleteManner::ForGood, false);
    }
    return builder.finished();
}

OperationPlan planCopyTo(const PlanInput &input, const PlanSelection &selection, Side source,
                         const QString &destination, IfPresent ifPresent)
{
    return PlacePlan(input, source, destination, OperationKind::Copy, ifPresent).build(selection);
}

OperationPlan planMoveTo(const PlanInput &input, const PlanSelection &selection, Side source,
                         const QString &destination, IfPresent ifPresent)
{
    return PlacePlan(input, source, destination, OperationKind::Move, ifPresent).build(selection);
}

OperationPlan planDelete(const PlanInput &input, const PlanSelection &selection, Side side, DeleteManner manner,
                         DeleteScope scope)
{
    PairPlan builder(input);
    if (!builder.needsWritable(side))
        return builder.finished();
    const std::vector<char> marks = builder.entries().covered(selection);
    std::vector<char> isGone(marks.size(), 0); // with a whole folder
    for (int i = 0; i < int(marks.size()); ++i) {
        const PlanEntry &entry = builder.entries().at(i);
        const bool goesWithFolder = entry.parent >= 0 && isGone[std::size_t(entry.parent)] != 0;
        isGone[std::size_t(i)] = goesWithFolder ? 1 : 0;
        if (goesWithFolder && entry.on(side).isThere)
            builder.plan().listed.append(PairPlan::placeOf(entry, side));
        if (marks[std::size_t(i)] == 0 || entry.isHidden || goesWithFolder ||
            (marks[std::size_t(i)] != 2 && !entry.on(side).isThere))
            continue;
        const qsizetype before = builder.deletions();
        builder.remove(i, side, manner, false);
        if (scope == DeleteScope::WholeFolder && entry.item->isDir && builder.deletions() > before) {
            builder.takeWholeFolder();
            isGone[std::size_t(i)] = 1;
        }
    }
    return builder.finished();
}

OperationPlan planRename(const PlanInput &input, qsizetype index, Side side, const QString &newName)
{
    PairPlan builder(input);
    if (!builder.needsWritable(side) || index < 0 || index >= input.items.size())
        return builder.finished();
    const PlanEntry &entry = builder.entries().at(int(index));
    if (!isPlainName(newName)) {
        builder.plan().refusal = PlanRefusal::NameNotAllowed;
    } else if (!entry.on(side).isThere) {
        builder.leaveOut(entry, LeftOutReason::NoPlaceOnThisSide, side);
    } else {
        OperationStep step;
        step.kind = OperationKind::Move;
        step.from = PairPlan::placeOf(entry, side);
        step.fromSeen = seenOn(entry, side);
        const qsizetype slash = step.from.relative.lastIndexOf(u'/');
        step.to = {step.from.root, step.from.relative.left(slash + 1) + newName};
        step.toSeen = SeenEntry::absent();
        builder.plan().steps.append(step);
    }
    return builder.finished();
}

OperationPlan planNewFolder(const PlanInput &input, Side side, const QString &relative)
{
    PairPlan builder(input);
    if (!builder.needsWritable(side))
        return builder.finished();
    if (!isCleanRelative(relative) || !isPlainName(QStringView(relative).mid(relative.lastIndexOf(u'/') + 1))) {
        builder.plan().refusal = PlanRefusal::NameNotAllowed;
        return builder.finished();
    }
    OperationStep step;
    step.kind = OperationKind::MakeFolder;
    step.to = {rootOf(side), relative};
    step.toSeen = SeenEntry::absent();
    builder.plan().steps.append(step);
    return builder.finished();
}

OperationPlan planDeleteFiles(const QString &root, const QStringList &paths, DeleteManner manner)
{
    OperationPlan plan;
    plan.roots = {{root, std::nullopt, true}};
    for (const QString &path : paths) {
        OperationStep step;
        step.kind = manner == DeleteManner::ToRecycleBin ? OperationKind::Recycle : OperationKind::Delete;
        step.from = {0, path.mid(root.endsWith(u'/') ? root.size() : root.size() + 1)};
        if (path != root && isOrIsInside(path, root) && isCleanRelative(step.from.relative))
            plan.steps.append(step);
        else
            plan.leftOut.append({LeftOutReason::NameNotAllowed, path, {}});
    }
    return plan;
}

} // namespace velmora
