#include "folder/actions/action_planner.h"

#include "core/path_names.h"
#include "folder/engine/folder_engine.h"
#include "folder/operations/plan_survey.h"

#include <algorithm>
#include <limits>

namespace velmora {

namespace {

/// The names selected, without those that lie in a selected folder.
QStringList outermost(const QList<FolderDiffItem> &selection)
{
    QStringList names;
    for (const FolderDiffItem &item : selection)
        names.append(item.name);
    // By parts, so that everything in a folder comes right after it.
    std::sort(names.begin(), names.end(), [](const QString &left, const QString &right) {
        return std::lexicographical_compare(
            left.begin(), left.end(), right.begin(), right.end(), [](QChar one, QChar other) {
                return (one == u'/' ? 0 : one.unicode() + 1) < (other == u'/' ? 0 : other.unicode() + 1);
            });
    });
    QStringList outer;
    for (const QString &name : names) {
        if (outer.isEmpty() || (name != outer.last() && !isInside(name, outer.last())))
            outer.append(name);
    }
    return outer;
}

/// Whether it matters for a command which files are the same.
bool needsContents(FolderCommand command)
{
    return isAboutRoots(command) || goesToOtherSide(command);
}

/// Lists what a context that is not whole lacks for a command.
class Completion {
public:
    Completion(FolderActionContext &context, FolderCommand command, const CancelFlag &cancel, Progress &progress)
        : m_context(context),
          m_cancel(cancel),
          m_report{&progress, &context.problems},
          m_readsFiles(needsContents(command))
    {}

    void listEverything()
    {
        m_context.items = compare(rootOn(m_context, Side::Left), rootOn(m_context, Side::Right), {});
        m_context.isWhole = true;
    }

    /// Puts what is in the selected folders in the place of what was known of it.
    void listWithin(const QList<FolderDiffItem> &selection)
    {
        const QStringList names = outermost(selection);
        const QSet<QString> listed(names.begin(), names.end());
        const ItemTree tree(m_context.items);
        QList<FolderDiffItem> items;
        QString within; // the folder listed last
        for (const FolderDiffItem &item : m_context.items) {
            if (!within.isEmpty() && isInside(item.name, within))
                continue;
            within.clear();
            items.append(item);
            if (!listed.contains(item.name) || !isFolderPair(item))
                continue;
            within = item.name;
            const QList<FolderDiffItem> contents =
                compare(tree.placeOf(item, Side::Left, rootOn(m_context, Side::Left)),
                        tree.placeOf(item, Side::Right, rootOn(m_context, Side::Right)), item.name);
            rollUp(items.last(), contents);
            items.append(contents);
        }
        m_context.items = items;
    }

private:
    QList<FolderDiffItem> compare(const QString &left, const QString &right, const QString &prefix)
    {
        FolderInput input = FolderInput::of(m_context.roots, m_context.options);
        input.roots.left.path = left;
        input.roots.right.path = right;
        input.prefix = prefix;
        if (!m_readsFiles) {
            // What is equal in size is taken for the same whatever its time.
            input.method = CompareMethod::Rules;
            input.toleranceSec = std::numeric_limits<qint32>::max();
        }
        return compareFolderTree(input, m_cancel, m_report);
    }

    /// A folder, on both sides if it is on both: a file against a folder has no contents to be compared.
    [[nodiscard]] bool isFolderPair(const FolderDiffItem &item) const
    {
        return std::all_of(bothSides.begin(), bothSides.end(), [&](Side side) {
            const QString &path = pathOn(item, side);
            const std::optional<FolderEntry> entry =
                path.isEmpty() ? std::nullopt : m_context.roots[side].source->describe(path, HiddenEntries::Listed);
            return path.isEmpty() || (entry && entry->kind == EntryKind::Folder);
        });
    }

    static void rollUp(FolderDiffItem &folder, const QList<FolderDiffItem> &contents)
    {
        folder.isDir = true;
        if (folder.leftPath.isEmpty() || folder.rightPath.isEmpty())
            return;
        const bool same = std::all_of(contents.begin(), contents.end(), [](const FolderDiffItem &item) {
            return item.diffStatus() == FolderDiffStatus::Same;
        });
        folder.setDiffStatus(same ? FolderDiffStatus::Same : FolderDiffStatus::Different);
    }

    FolderActionContext &m_context;
    const CancelFlag &m_cancel;
    FolderRunReport m_report;
    bool m_readsFiles;
};

void complete(FolderActionContext &context, const ActionRequest &request, const CancelFlag &cancel, Progress &progress)
{
    const bool listsNothing = request.command == FolderCommand::NewFolder || request.command == FolderCommand::Rename;
    if (context.isWhole || listsNothing)
        return;
    Completion completion(context, request.command, cancel, progress);
    if (isAboutRoots(request.command) && request.selection.items.isEmpty())
        completion.listEverything();
    else
        completion.listWithin(request.selection.items);
}

PlanInput inputOf(const FolderActionContext &context)
{
    PlanInput input;
    input.items = context.items;
    input.roots = context.roots;
    input.identities = context.identities;
    for (const Side side : bothSides)
        input.readOnly[side] = isReadOnly(context, side);
    if (context.isHidden)
        input.shows = [isHidden = context.isHidden](const FolderDiffItem &item) { return !isHidden(item); };
    input.problems = context.problems;
    input.toleranceSec = context.options.timeToleranceSec;
    return input;
}

/// The selected entries with what is in them, and the folders that they lie in: a plan over these covers nothing else.
QList<FolderDiffItem> restrictedTo(const QList<FolderDiffItem> &selection, const QList<FolderDiffItem> &items)
{
    const QStringList names = outermost(selection);
    QSet<QString> ancestors;
    for (const QString &name : names) {
        for (qsizetype slash = name.indexOf(u'/'); slash >= 0; slash = name.indexOf(u'/', slash + 1))
            ancestors.insert(name.left(slash));
    }
    const QSet<QString> selected(names.begin(), names.end());
    QList<FolderDiffItem> covered;
    QString within;
    for (const FolderDiffItem &item : items) {
        if (selected.contains(item.name))
            within = item.name;
        const bool isCovered = item.name == within || (!within.isEmpty() && isInside(item.name, within));
        if (isCovered || ancestors.contains(item.name))
            covered.append(item);
    }
    return covered;
}

/// The selected entries that are on `side`, by their indexes; with `only`, those that are not on the other one, too.
PlanSelection indexesOn(const ActionRequest &request, const ItemTree &tree, Side side, bool only = false)
{
    PlanSelection selection;
    for (const FolderDiffItem &item : request.selection.items) {
        const qsizetype index = tree.indexOf(item.name);
        const bool isElsewhere = only && !pathOn(item, otherSide(side)).isEmpty();
        if (index >= 0 && !pathOn(item, side).isEmpty() && !isElsewhere)
            selection.append(index);
    }
    return selection;
}

OperationPlan planSynchronising(const ActionRequest &request, PlanInput input)
{
    if (!request.selection.items.isEmpty())
        input.items = restrictedTo(request.selection.items, input.items);
    const Side source = sourceOf(request.command);
    if (request.command == FolderCommand::UpdateBoth)
        return planUpdateBoth(input);
    return kindOf(request.command) == CommandKind::Mirror ? planMirror(input, source, request.manner)
                                                          : planUpdate(input, source);
}

OperationPlan planToFolder(const ActionRequest &request, const PlanInput &input, const PlanSelection &selection,
                           Side source)
{
    return request.command == FolderCommand::MoveTo
               ? planMoveTo(input, selection, source, request.destination, request.ifPresent)
               : planCopyTo(input, selection, source, request.destination, request.ifPresent);
}

/// The plan of one side, for the commands that mean one or both.
OperationPlan planOn(Side side, const ActionRequest &request, const PlanInput &input, const ItemTree &tree)
{
    switch (request.command) {
    case FolderCommand::CopyTo:
    case FolderCommand::MoveTo: {
        // Of a pair the left entry goes, where both are meant: they would get in each other's way.
        const bool leftFirst = !request.selection.side && side == Side::Right;
        return planToFolder(request, input, indexesOn(request, tree, side, leftFirst), side);
    }
    case FolderCommand::Rename:
        return planRename(input, indexesOn(request, tree, side).value(0, -1), side, request.name);
    case FolderCommand::NewFolder:
        return planNewFolder(input, side, newFolderPath(request, side));
    default:
        return planDelete(input, indexesOn(request, tree, side), side, request.manner, DeleteScope::WholeFolder);
    }
}

OperationPlan planOf(const ActionRequest &request, const FolderActionContext &context)
{
    const PlanInput input = inputOf(context);
    if (isAboutRoots(request.command))
        return planSynchronising(request, input);
    const ItemTree tree(context.items);
    if (goesToOtherSide(request.command)) {
        const Side source = sourceOf(request.command);
        const PlanSelection selection = indexesOn(request, tree, source);
        return isMove(request.command) ? planMoveToOtherSide(input, selection, source)
                                       : planCopyToOtherSide(input, selection, source);
    }
    OperationPlan plan;
    for (const Side side : sidesOf(request.selection)) {
        const bool needsEntry = request.command != FolderCommand::NewFolder;
        if (needsEntry && indexesOn(request, tree, side).isEmpty())
            continue;
        plan = joinedPlans(plan, planOn(side, request, input, tree));
    }
    return plan;
}

} // namespace

PreparedAction prepareAction(const ActionRequest &request, FileLayer &files, const CancelFlag &cancel,
                             Progress &progress)
{
    PreparedAction prepared{{}, request.context};
    complete(prepared.context, request, cancel, progress);
    if (!cancel.isCancelled())
        prepared.plan = surveyPlan(planOf(request, prepared.context), files, cancel, progress);
    if (cancel.isCancelled())
        prepared.plan.refusal = PlanRefusal::Cancelled;
    return prepared;
}

OperationPlan joinedPlans(OperationPlan first, const OperationPlan &second)
{
    if (first.roots.isEmpty())
        return second;
    QList<int> numbers; // of the second plan's roots in the first
    for (const PlanRoot &root : second.roots) {
        const auto same = std::find_if(first.roots.begin(), first.roots.end(),
                                       [&root](const PlanRoot &other) { return other.path == root.path; });
        numbers.append(int(same - first.roots.begin()));
        if (same == first.roots.end())
            first.roots.append(root);
        else
            same->writable = same->writable || root.writable;
    }
    for (OperationStep step : second.steps) {
        Place counterpart = step.counterpart;
        for (Place *place : {&step.from, &step.to, &counterpart}) {
            if (place->isSet())
                place->root = numbers[place->root];
        }
        step.counterpart = counterpart;
        first.steps.append(step);
    }
    for (const Place &place : second.listed)
        first.listed.append({numbers[place.root], place.relative});
    if (!first.showsUnlisted)
        first.showsUnlisted = second.showsUnlisted;
    first.leftOut.append(second.leftOut);
    first.rootsMustBeApart = first.rootsMustBeApart || second.rootsMustBeApart;
    if (first.refusal == PlanRefusal::None)
        first.refusal = second.refusal;
    return first;
}

} // namespace velmora
