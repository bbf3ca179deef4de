#include "folder/operations/plan_builders.h"

#include <QDir>
#include <QSet>
#include <QStringBuilder>

#include <array>

namespace velmora {

namespace {

constexpr std::array<PlanSide, 2> bothSides{PlanSide::Left, PlanSide::Right};

int rootOf(PlanSide side)
{
    return side == PlanSide::Left ? 0 : 1;
}

QString joined(const QString &folder, const QString &name)
{
    return folder.isEmpty() ? name : QString(folder % u'/' % name);
}

bool liesIn(const QString &path, const QString &folder)
{
    return path == folder || path.startsWith(folder.endsWith(u'/') ? folder : QString(folder % u'/'));
}

QString bareName(const QString &path)
{
    return path.mid(path.lastIndexOf(u'/') + 1);
}

/// In the form that the paths of entries begin with.
QString cleanRoot(const QString &path)
{
    return QDir::cleanPath(QDir(path).absolutePath());
}

/// What a comparison says of one entry of one side.
struct SideEntry {
    QString relative; ///< where it is below its root, or would be
    bool isThere = false;
};

/// An item with what follows from its place in the list.
struct Entry {
    const FolderDiffItem *item = nullptr;
    std::array<SideEntry, 2> sides;
    int parent = -1;
    bool isHidden = false;
    bool holdsHidden = false;
    bool hasEntries = false;

    [[nodiscard]] const SideEntry &on(PlanSide side) const { return sides[std::size_t(rootOf(side))]; }
    [[nodiscard]] SideEntry &on(PlanSide side) { return sides[std::size_t(rootOf(side))]; }
    [[nodiscard]] bool isOnBoth() const { return sides[0].isThere && sides[1].isThere; }
    /// A comparison goes into folders that are on both sides, and those that differ hold what differs.
    [[nodiscard]] bool isFileAgainstFolder() const
    {
        return item->isDir && isOnBoth() && item->diffStatus() == FolderDiffStatus::Different && !hasEntries;
    }
    [[nodiscard]] bool isFolder() const { return item->isDir && !isFileAgainstFolder(); }
};

const QString &pathOn(const FolderDiffItem &item, PlanSide side)
{
    return side == PlanSide::Left ? item.leftPath : item.rightPath;
}

SeenEntry seenOn(const Entry &entry, PlanSide side)
{
    SeenEntry seen;
    if (entry.isFileAgainstFolder()) // which is which is not told
        return seen;
    const FolderDiffItem &item = *entry.item;
    const QDateTime &time = side == PlanSide::Left ? item.leftTime : item.rightTime;
    seen.state = SeenEntry::State::Listed;
    seen.kind = item.isDir ? NodeKind::Folder : NodeKind::File;
    seen.size = item.isDir ? 0 : (side == PlanSide::Left ? item.leftSize : item.rightSize);
    seen.files = item.isDir ? 0 : 1;
    seen.modifiedNs = time.isValid() ? time.toMSecsSinceEpoch() * 1'000'000 : 0;
    return seen;
}

/// The items as a tree.
class Entries {
public:
    explicit Entries(const PlanInput &input)
        : m_input(input), m_roots{cleanRoot(input.leftRoot), cleanRoot(input.rightRoot)}
    {
        m_entries.reserve(std::size_t(input.items.size()));
        std::vector<int> open; // the folders that the item lies in
        for (const FolderDiffItem &item : input.items) {
            while (!open.empty() && !liesIn(item.name, m_entries[std::size_t(open.back())].item->name))
                open.pop_back();
            Entry entry;
            entry.item = &item;
            entry.parent = open.empty() ? -1 : open.back();
            place(entry);
            hide(entry);
            m_entries.push_back(entry);
            if (item.isDir)
                open.push_back(int(m_entries.size()) - 1);
        }
    }

    [[nodiscard]] const std::vector<Entry> &all() const { return m_entries; }
    [[nodiscard]] const QString &root(PlanSide side) const { return m_roots[std::size_t(rootOf(side))]; }
    [[nodiscard]] const Entry &at(int index) const { return m_entries[std::size_t(index)]; }

    /// For each entry whether the selection covers it; 2 for those that are selected themselves.
    [[nodiscard]] std::vector<char> covered(const PlanSelection &selection) const
    {
        std::vector<char> marks(m_entries.size(), 0);
        for (const qsizetype index : selection) {
            if (index >= 0 && std::size_t(index) < marks.size())
                marks[std::size_t(index)] = 2;
        }
        for (std::size_t i = 0; i < marks.size(); ++i) {
            const int parent = m_entries[i].parent;
            if (marks[i] == 0 && parent >= 0 && marks[std::size_t(parent)] != 0)
                marks[i] = 1;
        }
        return marks;
    }

private:
    void place(Entry &entry) const
    {
        for (const PlanSide side : bothSides) {
            const QString &path = pathOn(*entry.item, side);
            const QString &root = this->root(side);
            SideEntry &here = entry.on(side);
            here.isThere = !path.isEmpty();
            if (here.isThere && liesIn(path, root)) {
                here.relative = path.mid(root.endsWith(u'/') ? root.size() : root.size() + 1);
                continue;
            }
            const QString &other = pathOn(*entry.item, otherSide(side));
            if (entry.parent >= 0)
                here.relative = joined(at(entry.parent).on(side).relative, bareName(here.isThere ? path : other));
            else
                here.relative = entry.item->name;
        }
    }

    void hide(Entry &entry)
    {
        if (entry.parent >= 0)
            m_entries[std::size_t(entry.parent)].hasEntries = true;
        entry.isHidden =
            (entry.parent >= 0 && at(entry.parent).isHidden) || (m_input.shows && !m_input.shows(*entry.item));
        if (!entry.isHidden)
            return;
        for (int parent = entry.parent; parent >= 0 && !at(parent).holdsHidden; parent = at(parent).parent)
            m_entries[std::size_t(parent)].holdsHidden = true;
    }

    const PlanInput &m_input;
    std::array<QString, 2> m_roots;
    std::vector<Entry> m_entries;
};

/// Puts steps together: what is made and copied first, deletions from the leaves up last.
class Builder {
public:
    explicit Builder(const PlanInput &input) : m_input(input), m_entries(input), m_made(m_entries.all().size(), 0)
    {
        m_plan.roots = {{m_entries.root(PlanSide::Left), std::nullopt, !input.leftReadOnly},
                        {m_entries.root(PlanSide::Right), std::nullopt, !input.rightReadOnly}};
    }

    [[nodiscard]] const Entries &entries() const { return m_entries; }
    [[nodiscard]] OperationPlan &plan() { return m_plan; }

    [[nodiscard]] bool isReadOnly(PlanSide side) const
    {
        return side == PlanSide::Left ? m_input.leftReadOnly : m_input.rightReadOnly;
    }

    /// False, with the refusal in the plan, when nothing can be done between the sides at all.
    bool needsSidesApart()
    {
        m_plan.rootsMustBeApart = true;
        const QString &left = m_plan.roots[0].path;
        const QString &right = m_plan.roots[1].path;
        if (liesIn(left, right) || liesIn(right, left))
            m_plan.refusal = PlanRefusal::OverlappingRoots;
        return m_plan.refusal == PlanRefusal::None;
    }

    bool needsWritable(PlanSide side)
    {
        if (isReadOnly(side))
            m_plan.refusal = PlanRefusal::ReadOnlySide;
        return m_plan.refusal == PlanRefusal::None;
    }

    void leaveOut(const Entry &entry, LeftOutReason reason, PlanSide side)
    {
        const QString &path = pathOn(*entry.item, side);
        m_plan.leftOut.append({reason, path.isEmpty() ? pathOn(*entry.item, otherSide(side)) : path, {}});
    }

    void copy(int index, PlanSide source, OperationKind kind = OperationKind::Copy)
    {
        const Entry &entry = m_entries.at(index);
        const PlanSide target = otherSide(source);
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

    /// Deletions must be asked for in the order of the items. `followsCopy`: the entry goes because it is missing at
    /// the other side.
    void remove(int index, PlanSide side, DeleteManner manner, bool followsMissing)
    {
        const Entry &entry = m_entries.at(index);
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

    /// The latest deletion takes what the comparison does not list as well.
    void takeWholeFolder() { m_deletions.last().wholeTree = true; }
    [[nodiscard]] qsizetype deletions() const { return m_deletions.size(); }

    OperationPlan finished()
    {
        std::reverse(m_deletions.begin(), m_deletions.end());
        m_plan.steps.append(m_deletions);
        return std::move(m_plan);
    }

    [[nodiscard]] static Place placeOf(const Entry &entry, PlanSide side)
    {
        return {rootOf(side), entry.on(side).relative};
    }

private:
    bool canWrite(const Entry &entry, PlanSide side)
    {
        if (isReadOnly(side))
            leaveOut(entry, LeftOutReason::ReadOnlySide, side);
        return !isReadOnly(side);
    }

    /// Makes the folder `index` and those that it lies in where the other side lacks them.
    void makeFolders(int index, PlanSide source)
    {
        if (index < 0 || m_made[std::size_t(index)] != 0)
            return;
        const Entry &entry = m_entries.at(index);
        makeFolders(entry.parent, source);
        m_made[std::size_t(index)] = 1;
        if (entry.on(otherSide(source)).isThere)
            return;
        OperationStep step;
        step.kind = OperationKind::MakeFolder;
        step.from = placeOf(entry, source);
        step.fromSeen = seenOn(entry, source);
        step.to = placeOf(entry, otherSide(source));
        step.toSeen = SeenEntry::absent();
        m_plan.steps.append(step);
    }

    [[nodiscard]] bool isBelowProblem(const Entry &entry, PlanSide side) const
    {
        const QString path = m_plan.pathOf(placeOf(entry, side));
        return std::any_of(m_input.problems.begin(), m_input.problems.end(), [&](const FolderProblem &problem) {
            return problem.kind != FolderProblem::Kind::UnreadableFile && liesIn(path, problem.path);
        });
    }

    const PlanInput &m_input;
    Entries m_entries;
    OperationPlan m_plan;
    QList<OperationStep> m_deletions;
    std::vector<char> m_made;
};

/// -1, 0, 1: the left file is older, neither is newer, the left is newer.
int newerSide(const FolderDiffItem &item, qint32 toleranceSec)
{
    const qint64 difference = item.leftTime.toMSecsSinceEpoch() - item.rightTime.toMSecsSinceEpoch();
    if (std::abs(difference) <= qint64(std::max(toleranceSec, 0)) * 1000)
        return 0;
    return difference < 0 ? -1 : 1;
}

EntryAction copyFrom(PlanSide source)
{
    return source == PlanSide::Left ? EntryAction::CopyToRight : EntryAction::CopyToLeft;
}

EntryAction deleteOn(PlanSide side)
{
    return side == PlanSide::Left ? EntryAction::DeleteLeft : EntryAction::DeleteRight;
}

void act(Builder &builder, int index, EntryAction action, DeleteManner manner)
{
    const Entry &entry = builder.entries().at(index);
    switch (action) {
    case EntryAction::Nothing:
        break;
    case EntryAction::CopyToLeft:
    case EntryAction::CopyToRight:
        builder.copy(index, action == EntryAction::CopyToRight ? PlanSide::Left : PlanSide::Right);
        break;
    case EntryAction::DeleteLeft:
    case EntryAction::DeleteRight: {
        const PlanSide side = action == EntryAction::DeleteLeft ? PlanSide::Left : PlanSide::Right;
        if (entry.isFileAgainstFolder())
            builder.leaveOut(entry, LeftOutReason::FileAgainstFolder, side);
        else if (!entry.isOnBoth())
            builder.remove(index, side, manner, true);
        break;
    }
    }
}

using ActionRule = std::function<EntryAction(const Entry &)>;

OperationPlan planByRule(Builder &builder, const ActionRule &actionOf, DeleteManner manner)
{
    if (!builder.needsSidesApart())
        return builder.finished();
    for (int i = 0; i < int(builder.entries().all().size()); ++i) {
        const Entry &entry = builder.entries().at(i);
        const bool differs = !entry.isOnBoth() || entry.item->diffStatus() != FolderDiffStatus::Same;
        if (!entry.isHidden && differs)
            act(builder, i, actionOf(entry), manner);
    }
    return builder.finished();
}

bool isOnlyOn(const Entry &entry, PlanSide side)
{
    return entry.on(side).isThere && !entry.on(otherSide(side)).isThere;
}

/// Copies or moves a selection into a folder that no comparison knows.
class PlaceBuilder {
public:
    PlaceBuilder(const PlanInput &input, PlanSide source, const QString &destination, OperationKind kind,
                 IfPresent ifPresent)
        : m_entries(input), m_source(source), m_kind(kind), m_mayReplace(ifPresent == IfPresent::Replace)
    {
        const bool isLeft = source == PlanSide::Left;
        m_plan.roots = {{m_entries.root(source), std::nullopt, !(isLeft ? input.leftReadOnly : input.rightReadOnly)},
                        {cleanRoot(destination), std::nullopt, true}};
        if (kind == OperationKind::Move && !m_plan.roots[0].writable)
            m_plan.refusal = PlanRefusal::ReadOnlySide;
    }

    OperationPlan build(const PlanSelection &selection)
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

private:
    void take(std::size_t index, const std::vector<char> &marks)
    {
        const Entry &entry = m_entries.all()[index];
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
        const QString target = isInner ? joined(m_targets[std::size_t(entry.parent)], bareName(path)) : bareName(path);
        if (!isInner && m_names.contains(target)) {
            m_plan.leftOut.append({LeftOutReason::NameTaken, path, {}});
            return;
        }
        if (entry.isFolder() && liesIn(m_plan.roots[1].path, path)) {
            m_plan.leftOut.append({LeftOutReason::IntoItself, path, {}});
            return;
        }
        m_names.insert(target);
        m_targets[index] = target;
        append(entry, target);
    }

    void append(const Entry &entry, const QString &target)
    {
        OperationStep step;
        step.kind = entry.isFolder() ? OperationKind::MakeFolder : m_kind;
        step.from = {0, entry.on(m_source).relative};
        step.fromSeen = seenOn(entry, m_source);
        step.to = {1, target};
        step.mayReplace = m_mayReplace;
        m_plan.steps.append(step);
        if (!entry.isFolder() || m_kind != OperationKind::Move)
            return;
        OperationStep removal;
        removal.kind = OperationKind::Delete;
        removal.from = step.from;
        removal.fromSeen = step.fromSeen;
        m_deletions.append(removal);
    }

    Entries m_entries;
    PlanSide m_source;
    OperationKind m_kind;
    bool m_mayReplace;
    OperationPlan m_plan;
    QList<OperationStep> m_deletions;
    std::vector<QString> m_targets; ///< of each entry; empty: not taken
    QSet<QString> m_names;
};

} // namespace

OperationPlan planActions(const PlanInput &input, const std::function<EntryAction(const FolderDiffItem &)> &actionOf,
                          DeleteManner manner)
{
    Builder builder(input);
    return planByRule(
        builder, [&](const Entry &entry) { return actionOf(*entry.item); }, manner);
}

OperationPlan planMirror(const PlanInput &input, PlanSide source, DeleteManner manner)
{
    Builder builder(input);
    builder.plan().sourceIsEmpty =
        std::none_of(input.items.begin(), input.items.end(),
                     [source](const FolderDiffItem &item) { return !pathOn(item, source).isEmpty(); });
    if (!builder.needsWritable(otherSide(source)))
        return builder.finished();
    return planByRule(
        builder,
        [source](const Entry &entry) {
            return entry.on(source).isThere ? copyFrom(source) : deleteOn(otherSide(source));
        },
        manner);
}

OperationPlan planUpdate(const PlanInput &input, PlanSide source)
{
    Builder builder(input);
    if (!builder.needsWritable(otherSide(source)))
        return builder.finished();
    return planByRule(
        builder,
        [&](const Entry &entry) {
            const int newer = newerSide(*entry.item, input.toleranceSec);
            const bool isNewer = source == PlanSide::Left ? newer > 0 : newer < 0;
            const bool copies =
                isOnlyOn(entry, source) || (entry.isOnBoth() && (isNewer || entry.isFileAgainstFolder()));
            return copies ? copyFrom(source) : EntryAction::Nothing;
        },
        DeleteManner::ToRecycleBin);
}

OperationPlan planUpdateBoth(const PlanInput &input)
{
    Builder builder(input);
    return planByRule(
        builder,
        [&](const Entry &entry) {
            if (!entry.isOnBoth())
                return copyFrom(isOnlyOn(entry, PlanSide::Left) ? PlanSide::Left : PlanSide::Right);
            if (entry.isFileAgainstFolder()) {
                builder.leaveOut(entry, LeftOutReason::FileAgainstFolder, PlanSide::Left);
                return EntryAction::Nothing;
            }
            if (entry.isFolder())
                return EntryAction::Nothing;
            const int newer = newerSide(*entry.item, input.toleranceSec);
            if (newer == 0) {
                builder.leaveOut(entry, LeftOutReason::TimesAreEqual, PlanSide::Left);
                return EntryAction::Nothing;
            }
            return copyFrom(newer > 0 ? PlanSide::Left : PlanSide::Right);
        },
        DeleteManner::ToRecycleBin);
}

OperationPlan planCopyToOtherSide(const PlanInput &input, const PlanSelection &selection, PlanSide source)
{
    Builder builder(input);
    if (!builder.needsWritable(otherSide(source)) || !builder.needsSidesApart())
        return builder.finished();
    const std::vector<char> marks = builder.entries().covered(selection);
    for (int i = 0; i < int(marks.size()); ++i) {
        const Entry &entry = builder.entries().at(i);
        const char mark = marks[std::size_t(i)];
        const bool isEqual = entry.isOnBoth() && entry.item->diffStatus() == FolderDiffStatus::Same;
        // What only the other side has is no part of what is copied.
        if (mark != 0 && !entry.isHidden && (mark == 2 || (entry.on(source).isThere && !isEqual)))
            builder.copy(i, source);
    }
    return builder.finished();
}

OperationPlan planMoveToOtherSide(const PlanInput &input, const PlanSelection &selection, PlanSide source)
{
    Builder builder(input);
    if (!builder.needsWritable(otherSide(source)) || !builder.needsWritable(source) || !builder.needsSidesApart())
        return builder.finished();
    const std::vector<char> marks = builder.entries().covered(selection);
    for (int i = 0; i < int(marks.size()); ++i) {
        const Entry &entry = builder.entries().at(i);
        const char mark = marks[std::size_t(i)];
        if (mark == 0 || entry.isHidden || (mark != 2 && !entry.on(source).isThere))
            continue;
        builder.copy(i, source, OperationKind::Move);
        if (entry.isFolder() && entry.on(source).isThere)
            builder.remove(i, source, DeleteManner::ForGood, false);
    }
    return builder.finished();
}

OperationPlan planCopyTo(const PlanInput &input, const PlanSelection &selection, PlanSide source,
                         const QString &destination, IfPresent ifPresent)
{
    return PlaceBuilder(input, source, destination, OperationKind::Copy, ifPresent).build(selection);
}

OperationPlan planMoveTo(const PlanInput &input, const PlanSelection &selection, PlanSide source,
                         const QString &destination, IfPresent ifPresent)
{
    return PlaceBuilder(input, source, destination, OperationKind::Move, ifPresent).build(selection);
}

OperationPlan planDelete(const PlanInput &input, const PlanSelection &selection, PlanSide side, DeleteManner manner,
                         DeleteScope scope)
{
    Builder builder(input);
    if (!builder.needsWritable(side))
        return builder.finished();
    const std::vector<char> marks = builder.entries().covered(selection);
    std::vector<char> isGone(marks.size(), 0); // with a whole folder
    for (int i = 0; i < int(marks.size()); ++i) {
        const Entry &entry = builder.entries().at(i);
        const bool goesWithFolder = entry.parent >= 0 && isGone[std::size_t(entry.parent)] != 0;
        isGone[std::size_t(i)] = goesWithFolder ? 1 : 0;
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

OperationPlan planRename(const PlanInput &input, qsizetype index, PlanSide side, const QString &newName)
{
    Builder builder(input);
    if (!builder.needsWritable(side) || index < 0 || index >= input.items.size())
        return builder.finished();
    const Entry &entry = builder.entries().at(int(index));
    if (!isPlainName(newName)) {
        builder.plan().refusal = PlanRefusal::NameNotAllowed;
    } else if (!entry.on(side).isThere) {
        builder.leaveOut(entry, LeftOutReason::NoPlaceOnThisSide, side);
    } else {
        OperationStep step;
        step.kind = OperationKind::Move;
        step.from = Builder::placeOf(entry, side);
        step.fromSeen = seenOn(entry, side);
        const qsizetype slash = step.from.relative.lastIndexOf(u'/');
        step.to = {step.from.root, step.from.relative.left(slash + 1) + newName};
        step.toSeen = SeenEntry::absent();
        builder.plan().steps.append(step);
    }
    return builder.finished();
}

OperationPlan planNewFolder(const PlanInput &input, PlanSide side, const QString &relative)
{
    Builder builder(input);
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
        if (path != root && liesIn(path, root) && isCleanRelative(step.from.relative))
            plan.steps.append(step);
        else
            plan.leftOut.append({LeftOutReason::NameNotAllowed, path, {}});
    }
    return plan;
}

} // namespace velmora
