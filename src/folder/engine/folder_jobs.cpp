#include "folder/engine/folder_jobs.h"

#include "core/crew.h"
#include "folder/engine/item_list.h"
#include "folder/engine/pair_decisions.h"

namespace velmora {

namespace {

/// The tree with what could not be read marked, and the filter's verdicts.
FolderTree marked(FolderTree tree, const FolderSpec &spec, const QList<FolderProblem> &problems)
{
    tree.markUnreadable(problems, {spec.roots.left.path, spec.roots.right.path});
    tree.setVerdicts(FolderTree::judge(tree.items(), spec.filter(), spec.filters.ignoredNames));
    tree.rollUp();
    return tree;
}

/// What a run that was cancelled has not come to.
struct Unreached {
    QString last; ///< the last entry that it did come to
    QSet<QString> names;
};

/// Adds the entries of `known` that `items` lacks, undecided where both sides are there.
Unreached addUnreached(QList<FolderDiffItem> &items, const QList<FolderDiffItem> &known)
{
    Unreached unreached;
    if (!items.isEmpty())
        unreached.last = items.last().name;
    QSet<QString> names;
    for (const FolderDiffItem &item : std::as_const(items))
        names.insert(item.name);
    for (const FolderDiffItem &item : known) {
        if (!names.contains(item.name)) {
            items.append(item);
            unreached.names.insert(item.name);
        }
    }
    return unreached;
}

void leaveFoldersUnloaded(FolderTree &tree)
{
    for (qint32 node = 0; node < tree.size(); ++node) {
        const FolderDiffItem &item = tree.item(node);
        const bool mixedKinds = isPair(item) && item.diffStatus() == FolderDiffStatus::Different;
        tree.setUnloaded(node, item.isDir && !mixedKinds);
    }
}

/// Leaves unloaded the folders that were not reached, and those that may hold more than was seen of them.
void leaveUnreachedUnloaded(FolderTree &tree, const Unreached &unreached)
{
    for (qint32 node = 0; node < tree.size(); node = tree.node(node).end) {
        if (tree.item(node).isDir && unreached.names.contains(tree.item(node).name))
            tree.setUnloaded(node, true);
    }
    for (qint32 node = tree.find(unreached.last); node >= 0; node = tree.node(node).parent) {
        if (tree.item(node).isDir)
            tree.setUnloaded(node, true);
    }
}

FolderListing listed(FolderTree tree, const FolderSpec &spec, QList<FolderProblem> problems)
{
    const TimeShifts shifts = countTimeShifts(tree.items());
    return {marked(std::move(tree), spec, problems), std::move(problems), shifts, {}};
}

/// What one side has of an entry, as a listing would see it.
std::optional<FolderEntry> seen(const TreeFolder &place, HiddenEntries hidden)
{
    std::optional<FolderEntry> entry = place.isThere() ? place.source->describe(place.path, hidden) : std::nullopt;
    const bool counts = entry.has_value() && entry->kind != EntryKind::Special;
    return counts ? entry : std::nullopt;
}

bool isFolder(const std::optional<FolderEntry> &entry)
{
    return entry && entry->kind == EntryKind::Folder;
}

void takeOver(const FolderEntry &entry, Side side, FolderDiffItem &item)
{
    (side == Side::Left ? item.leftSize : item.rightSize) = item.isDir ? 0 : entry.size;
    (side == Side::Left ? item.leftTime : item.rightTime) = QDateTime::fromMSecsSinceEpoch(entry.modifiedMs, Qt::UTC);
}

/// The status of two files by size and time, `UndecidedFiles` where the contents decide; marks `item` where nobody
/// needs to read it.
qint32 statusNow(FolderDiffItem &item, CompareMethod method, qint32 toleranceSec)
{
    const auto known = statusByAttributes(method, item.leftSize, item.rightSize, item.leftTime.toMSecsSinceEpoch(),
                                          item.rightTime.toMSecsSinceEpoch(), toleranceSec);
    item.isUnread = known == FolderDiffStatus::Same && item.leftSize > 0;
    return known ? qint32(*known) : qint32(UndecidedFiles);
}

/// Compares the entries of a task list one at a time.
class BranchRun {
public:
    BranchRun(const FolderSpec &spec, const CancelFlag &cancel, Progress &progress)
        : m_spec(spec),
          m_cancel(cancel),
          m_decider(sourcesOf(spec.roots), 1, compareMethod(spec.options.compareBasis), cancel),
          m_report{&progress, &m_problems}
    {}

    [[nodiscard]] FolderTree::Patch compare(const BranchTask &task)
    {
        Sides<std::optional<FolderEntry>> entries;
        for (const Side side : bothSides)
            entries[side] = seen(placeOf(task, side), hiddenEntries(m_spec.options));
        if (!entries.left && !entries.right)
            return {task.name, nullptr};
        FolderDiffItem item = itemFor(task, entries);
        const bool isBoth = isPair(item);
        const bool goesIn = isBoth ? isFolder(entries.left) && isFolder(entries.right) : item.isDir;
        if (!goesIn) {
            if (isBoth)
                decide(item);
            return patch(task.name, FolderTree({item}));
        }
        return task.contents ? wholeFolder(task, std::move(item)) : level(task, std::move(item));
    }

    [[nodiscard]] QList<FolderProblem> takeProblems() { return std::exchange(m_problems, {}); }
    [[nodiscard]] const TimeShifts &shifts() const { return m_shifts; }

private:
    [[nodiscard]] TreeFolder placeOf(const BranchTask &task, Side side) const
    {
        return {m_spec.roots[side].source, task.paths[side]};
    }

    [[nodiscard]] static FolderDiffItem itemFor(const BranchTask &task,
                                                const Sides<std::optional<FolderEntry>> &entries)
    {
        FolderDiffItem item;
        item.name = task.name;
        item.isDir = isFolder(entries.left) || isFolder(entries.right);
        for (const Side side : bothSides) {
            if (!entries[side])
                continue;
            (side == Side::Left ? item.leftPath : item.rightPath) = task.paths[side];
            takeOver(*entries[side], side, item);
        }
        item.setDiffStatus(!entries.right  ? FolderDiffStatus::LeftOnly
                           : !entries.left ? FolderDiffStatus::RightOnly
                                           : FolderDiffStatus::Same);
        return item;
    }

    /// A pair that nobody goes into.
    void decide(FolderDiffItem &item)
    {
        if (item.isDir) {
            item.setDiffStatus(FolderDiffStatus::Different);
            return;
        }
        if (m_spec.takeDecision(item))
            return;
        item.status = statusNow(item, compareMethod(m_spec.options.compareBasis), m_spec.options.timeToleranceSec);
        m_decider.decideKnown({&item, 1});
        if (item.status != UndecidedFiles)
            return;
        m_decider.decide(0, item);
        m_decider.tellProblems(m_report);
    }

    /// What is to be compared of the folder that `item` is.
    [[nodiscard]] FolderInput within(const FolderDiffItem &item) const
    {
        FolderInput input = m_spec.input();
        for (const Side side : bothSides)
            input.roots[side].path = pathOn(item, side);
        return input;
    }

    void keepDecisions(QList<FolderDiffItem> &items) const
    {
        for (qsizetype i = 0; i < items.size() && !m_spec.decided.isEmpty(); ++i)
            (void)m_spec.takeDecision(items[i]);
    }

    [[nodiscard]] FolderTree::Patch wholeFolder(const BranchTask &task, FolderDiffItem item)
    {
        FolderInput input = within(item);
        input.prefix = task.name;
        QList<FolderDiffItem> contents = compareFolderTree(input, m_cancel, m_report);
        keepDecisions(contents);
        ItemList list;
        list.items.reserve(contents.size() + 1);
        list.items.append(std::move(item));
        list.items.append(std::move(contents));
        // Folders inside have their totals; that of the whole counts only what is directly in it.
        list.parents = parentsByName(list.items);
        for (qint32 &parent : list.parents) {
            if (parent > 0)
                parent = -1;
        }
        addChildTotals(list);
        return patch(task.name, FolderTree(std::move(list.items)));
    }

    [[nodiscard]] FolderTree::Patch level(const BranchTask &task, FolderDiffItem item)
    {
        QList<FolderDiffItem> contents = compareFolderLevel(within(item), m_cancel, m_report);
        QList<FolderDiffItem> items{std::move(item)};
        for (FolderDiffItem &entry : contents) {
            entry.name.prepend(task.name + u'/');
            items.append(std::move(entry));
        }
        keepDecisions(items);
        FolderTree tree(std::move(items));
        leaveFoldersUnloaded(tree);
        tree.setUnloaded(0, false);
        tree.rollUp();
        return patch(task.name, std::move(tree));
    }

    [[nodiscard]] FolderTree::Patch patch(const QString &name, FolderTree tree)
    {
        const TimeShifts shifts = countTimeShifts(tree.items());
        m_shifts.hour += shifts.hour;
        m_shifts.twoSeconds += shifts.twoSeconds;
        return {name, std::make_shared<const FolderTree>(marked(std::move(tree), m_spec, m_problems))};
    }

    const FolderSpec &m_spec;
    CancelFlag m_cancel;
    PairDecider m_decider;
    QList<FolderProblem> m_problems;
    FolderRunReport m_report;
    TimeShifts m_shifts;
};

} // namespace

FolderFilter FolderSpec::filter() const
{
    return FolderFilter(options, filters, [sources = sourcesOf(roots)](Side side, const QString &path) {
        return sources[side] && sources[side]->isSystemFile(path);
    });
}

bool FolderSpec::takeDecision(FolderDiffItem &pair) const
{
    const auto at = pair.isDir ? decided.constEnd() : decided.constFind(pair.name);
    if (at == decided.constEnd())
        return false;
    const bool holds = at->leftPath == pair.leftPath && at->rightPath == pair.rightPath &&
                       at->leftSize == pair.leftSize && at->rightSize == pair.rightSize &&
                       at->leftTime == pair.leftTime && at->rightTime == pair.rightTime;
    if (holds) {
        pair.status = at->status;
        pair.isUnread = at->isUnread;
    }
    return holds;
}

TimeShifts countTimeShifts(const QList<FolderDiffItem> &items)
{
    constexpr qint64 hourMs = 3'600'000;
    constexpr qint64 roundedMs = 2'000;
    TimeShifts shifts;
    for (const FolderDiffItem &item : items) {
        if (item.isDir || item.diffStatus() != FolderDiffStatus::Same || !item.leftTime.isValid() ||
            !item.rightTime.isValid() || item.leftSize != item.rightSize)
            continue;
        const qint64 apart = std::abs(item.leftTime.toMSecsSinceEpoch() - item.rightTime.toMSecsSinceEpoch());
        if (apart == hourMs)
            ++shifts.hour;
        else if (apart > 0 && apart <= roundedMs)
            ++shifts.twoSeconds;
    }
    return shifts;
}

FolderListing listTopLevel(const FolderSpec &spec, const CancelFlag &cancel, Progress &progress)
{
    Sides<FolderRead> reads;
    for (const Side side : bothSides) {
        const TreeFolder &root = spec.roots[side];
        reads[side] = root.source->readFolder(root.path, HiddenEntries::LeftOut, [](FolderEntry &&) { return false; });
    }
    const auto isThere = [](FolderRead read) { return read == FolderRead::Complete || read == FolderRead::Stopped; };
    if (!isThere(reads.left) || !isThere(reads.right))
        return {{}, {}, {}, reads};

    QList<FolderProblem> problems;
    QList<FolderDiffItem> items = listFolderStructure(spec.input(), false, cancel, {&progress, &problems});
    for (FolderDiffItem &item : items) {
        if (isPair(item))
            item.status = FolderTree::unknownStatus;
    }
    FolderTree tree(std::move(items));
    leaveFoldersUnloaded(tree);
    for (qint32 node = 0; node < tree.size(); ++node)
        tree.setScanning(node, true);
    return listed(std::move(tree), spec, {});
}

FolderListing compareTopLevel(const FolderSpec &spec, const QList<FolderDiffItem> &known, const CancelFlag &cancel,
                              Progress &progress)
{
    QList<FolderProblem> problems;
    QList<FolderDiffItem> items = compareFolderLevel(spec.input(), cancel, {&progress, &problems});
    if (cancel.isCancelled())
        addUnreached(items, known);
    FolderTree tree(std::move(items));
    leaveFoldersUnloaded(tree);
    return listed(std::move(tree), spec, std::move(problems));
}

FolderListing compareWholeTree(const FolderSpec &spec, const QList<FolderDiffItem> &known, const CancelFlag &cancel,
                               Progress &progress)
{
    QList<FolderProblem> problems;
    QList<FolderDiffItem> items = compareFolderTree(spec.input(), cancel, {&progress, &problems});
    if (!cancel.isCancelled())
        return listed(FolderTree(std::move(items)), spec, std::move(problems));
    const Unreached unreached = addUnreached(items, known);
    FolderTree tree(std::move(items));
    leaveUnreachedUnloaded(tree, unreached);
    return listed(std::move(tree), spec, std::move(problems));
}

BranchResult compareBranches(const FolderSpec &spec, const QList<BranchTask> &tasks, std::chrono::milliseconds budget,
                             const CancelFlag &cancel, Progress &progress)
{
    const auto end = std::chrono::steady_clock::now() + budget;
    BranchRun run(spec, cancel, progress);
    BranchResult result;
    qsizetype done = 0;
    for (; done < tasks.size() && !cancel.isCancelled(); ++done) {
        if (done > 0 && std::chrono::steady_clock::now() >= end)
            break;
        FolderTree::Patch patch = run.compare(tasks.at(done));
        if (cancel.isCancelled())
            break; // half an entry would look like the whole
        result.patches.push_back(std::move(patch));
    }
    result.left = tasks.mid(done);
    result.problems = run.takeProblems();
    result.shifts = run.shifts();
    return result;
}

ContentsResult compareContentsOf(const FolderSpec &spec, QList<FolderDiffItem> pairs,
                                 std::optional<CompareMethod> method, const CancelFlag &cancel, Progress &progress)
{
    std::vector<bool> isPairOfFiles(std::size_t(pairs.size()), false);
    for (qsizetype i = 0; i < pairs.size() && !cancel.isCancelled(); ++i) {
        FolderDiffItem &pair = pairs[i];
        Sides<std::optional<FolderEntry>> entries;
        for (const Side side : bothSides)
            entries[side] = seen({spec.roots[side].source, pathOn(pair, side)}, HiddenEntries::Listed);
        if (!entries.left || !entries.right || isFolder(entries.left) || isFolder(entries.right))
            continue;
        isPairOfFiles[std::size_t(i)] = true;
        for (const Side side : bothSides)
            takeOver(*entries[side], side, pair);
        pair.isUnread = false;
        pair.status = method ? statusNow(pair, *method, spec.options.timeToleranceSec) : qint32(UndecidedFiles);
    }
    ContentsResult result;
    PairDecider decider(sourcesOf(spec.roots), crewSize(), method.value_or(CompareMethod::Rules), cancel);
    const FolderRunReport report{&progress, &result.problems};
    decider.decideKnown(pairs);
    decider.decideRest(pairs, report);
    decider.tellProblems(report);
    Sides<QSet<QString>> unreadable;
    for (const FolderProblem &problem : std::as_const(result.problems))
        unreadable[problem.side].insert(problem.path);
    for (qsizetype i = 0; i < pairs.size(); ++i) {
        if (!isPairOfFiles[std::size_t(i)] || pairs.at(i).status == UndecidedFiles)
            pairs[i].status = FolderTree::unknownStatus;
        else if (!unreadable.left.contains(pairs.at(i).leftPath) && !unreadable.right.contains(pairs.at(i).rightPath))
            result.decided.insert(pairs.at(i).name, pairs.at(i));
    }
    result.pairs = std::move(pairs);
    return result;
}

} // namespace velmora
