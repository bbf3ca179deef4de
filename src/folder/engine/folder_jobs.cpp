#include "folder/engine/folder_jobs.h"

#include "core/content_compare.h"
#include "folder/engine/folder_engine_internal.h"
#include "folder/engine/item_list.h"
#include "folder/engine/pair_decisions.h"

#include <QFileInfo>

#include <mutex>

namespace velmora {

namespace {

/// Items as a tree with the filter's verdicts.
FolderTree filtered(FolderTree tree, const FolderSpec &spec)
{
    tree.setVerdicts(FolderTree::judge(tree.items(), spec.filter(), spec.ignoredNames));
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
    tree.markUnreadable(problems, spec.left, spec.right);
    return {filtered(std::move(tree), spec), std::move(problems), shifts};
}

QDateTime timeOf(const FolderEntry &entry)
{
    return QDateTime::fromMSecsSinceEpoch(entry.modifiedMs, Qt::UTC);
}

/// What one side has of an entry, as a listing would see it.
std::optional<FolderEntry> seen(const FileAccess &files, const QString &path, HiddenEntries hidden)
{
    if (path.isEmpty() || (hidden == HiddenEntries::LeftOut && QFileInfo(path).isHidden()))
        return std::nullopt;
    std::optional<FolderEntry> entry = files.describe(path);
    const bool counts = entry.has_value() && entry->kind != EntryKind::Special;
    return counts ? entry : std::nullopt;
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
          m_resources(FolderRunResources::standard(hiddenEntries(spec.options))),
          m_cancel(cancel),
          m_comparer(m_resources.files, cancel),
          m_report{&progress, &m_problems}
    {
        m_comparer.setFailureListener([this](const QString &path) {
            m_problems.append({FolderProblem::Kind::UnreadableFile, path});
        });
    }

    [[nodiscard]] FolderTree::Patch compare(const BranchTask &task)
    {
        const std::optional<FolderEntry> left = seen(m_resources.files, task.left, hiddenEntries(m_spec.options));
        const std::optional<FolderEntry> right = seen(m_resources.files, task.right, hiddenEntries(m_spec.options));
        if (!left && !right)
            return {task.name, nullptr};
        FolderDiffItem item = itemFor(task, left, right);
        const bool leftIsFolder = left && left->kind == EntryKind::Folder;
        const bool rightIsFolder = right && right->kind == EntryKind::Folder;
        const bool goesIn = left && right ? leftIsFolder && rightIsFolder : item.isDir;
        if (!goesIn) {
            if (left && right)
                decide(item);
            return patch(task.name, FolderTree({item}));
        }
        return task.contents ? wholeFolder(task, std::move(item)) : level(task, std::move(item));
    }

    [[nodiscard]] QList<FolderProblem> takeProblems() { return std::exchange(m_problems, {}); }
    [[nodiscard]] const TimeShifts &shifts() const { return m_shifts; }

private:
    [[nodiscard]] static FolderDiffItem itemFor(const BranchTask &task, const std::optional<FolderEntry> &left,
                                                const std::optional<FolderEntry> &right)
    {
        FolderDiffItem item;
        item.name = task.name;
        item.isDir = (left && left->kind == EntryKind::Folder) || (right && right->kind == EntryKind::Folder);
        if (left) {
            item.leftPath = task.left;
            item.leftSize = item.isDir ? 0 : left->size;
            item.leftTime = timeOf(*left);
        }
        if (right) {
            item.rightPath = task.right;
            item.rightSize = item.isDir ? 0 : right->size;
            item.rightTime = timeOf(*right);
        }
        item.setDiffStatus(!right  ? FolderDiffStatus::LeftOnly
                           : !left ? FolderDiffStatus::RightOnly
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
        const CompareMethod method = compareMethod(m_spec.options.compareBasis);
        item.status = statusNow(item, method, m_spec.options.timeToleranceSec);
        if (item.status == UndecidedFiles)
            item.setDiffStatus(sameContent(m_comparer, method, item.leftPath, item.rightPath, OpenHint::Unknown)
                                   ? FolderDiffStatus::Same
                                   : FolderDiffStatus::Different);
    }

    void keepDecisions(QList<FolderDiffItem> &items) const
    {
        for (qsizetype i = 0; i < items.size() && !m_spec.decided.isEmpty(); ++i)
            (void)m_spec.takeDecision(items[i]);
    }

    [[nodiscard]] FolderTree::Patch wholeFolder(const BranchTask &task, FolderDiffItem item)
    {
        const FolderSessionOptions &options = m_spec.options;
        QList<FolderDiffItem> contents =
            compareFolderTree(item.leftPath, item.rightPath, task.name, compareMethod(options.compareBasis), m_cancel,
                              options.timeToleranceSec, options.alignOverrides, m_report, hiddenEntries(options));
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
        const FolderSessionOptions &options = m_spec.options;
        QList<FolderDiffItem> items{std::move(item)};
        QList<FolderDiffItem> contents = compareFolderLevel(
            items.first().leftPath, items.first().rightPath, compareMethod(options.compareBasis), m_cancel,
            options.timeToleranceSec, options.alignOverrides, m_report, hiddenEntries(options));
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
        tree.markUnreadable(m_problems, m_spec.left, m_spec.right);
        return {name, std::make_shared<const FolderTree>(filtered(std::move(tree), m_spec))};
    }

    const FolderSpec &m_spec;
    FolderRunResources m_resources;
    CancelFlag m_cancel;
    ContentComparer m_comparer;
    QList<FolderProblem> m_problems;
    FolderRunReport m_report;
    TimeShifts m_shifts;
};

} // namespace

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

SystemFileTest makeSharedSystemFileTest()
{
    struct Memory {
        std::mutex mutex;
        SystemFileTest test = makeCachedTest();
    };
    return [memory = std::make_shared<Memory>()](const QString &path) {
        const std::lock_guard lock(memory->mutex);
        return memory->test(path);
    };
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
    const FileAccess &files = FolderRunResources::standard().files;
    const auto probe = [&files](const QString &path) {
        return files.readFolder(path, [](FolderEntry &&) { return false; });
    };
    const auto isThere = [](FolderRead read) { return read == FolderRead::Complete || read == FolderRead::Stopped; };
    const FolderRead left = probe(spec.left);
    const FolderRead right = probe(spec.right);
    if (!isThere(left) || !isThere(right))
        return {{}, {}, {}, left, right};

    QList<FolderProblem> problems;
    QList<FolderDiffItem> items = listFolderStructure(spec.left, spec.right, false, cancel, spec.options.alignOverrides,
                                                      {&progress, &problems}, hiddenEntries(spec.options));
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
    QList<FolderDiffItem> items = compareFolderLevel(spec.left, spec.right, compareMethod(spec.options.compareBasis),
                                                     cancel, spec.options.timeToleranceSec, spec.options.alignOverrides,
                                                     {&progress, &problems}, hiddenEntries(spec.options));
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
    QList<FolderDiffItem> items = compareFolderTree(spec.left, spec.right, {}, compareMethod(spec.options.compareBasis),
                                                    cancel, spec.options.timeToleranceSec, spec.options.alignOverrides,
                                                    {&progress, &problems}, hiddenEntries(spec.options));
    if (!cancel.isCancelled())
        return listed(FolderTree(std::move(items)), spec, std::move(problems));
    const Unreached unreached = addUnreached(items, known);
    FolderTree tree(std::move(items));
    leaveUnreachedUnloaded(tree, unreached);
    return listed(std::move(tree), spec, std::move(problems));
}

BranchResult compareBranches(const FolderSpec &spec, QList<BranchTask> tasks, std::chrono::milliseconds budget,
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

ContentsResult compareContentsOf(QList<FolderDiffItem> pairs, std::optional<CompareMethod> method, qint32 toleranceSec,
                                 const CancelFlag &cancel, Progress &progress)
{
    const FolderRunResources resources = FolderRunResources::standard();
    std::vector<bool> isPairOfFiles(std::size_t(pairs.size()), false);
    for (qsizetype i = 0; i < pairs.size() && !cancel.isCancelled(); ++i) {
        FolderDiffItem &pair = pairs[i];
        const std::optional<FolderEntry> left = seen(resources.files, pair.leftPath, HiddenEntries::Listed);
        const std::optional<FolderEntry> right = seen(resources.files, pair.rightPath, HiddenEntries::Listed);
        if (!left || !right || left->kind != EntryKind::File || right->kind != EntryKind::File)
            continue;
        isPairOfFiles[std::size_t(i)] = true;
        pair.leftSize = left->size;
        pair.rightSize = right->size;
        pair.leftTime = timeOf(*left);
        pair.rightTime = timeOf(*right);
        pair.isUnread = false;
        pair.status = method ? statusNow(pair, *method, toleranceSec) : qint32(UndecidedFiles);
    }
    ContentsResult result;
    PairDecider decider(resources.files, resources.threads, method.value_or(CompareMethod::Rules), cancel);
    const FolderRunReport report{&progress, &result.problems};
    decider.decideRest(pairs, report);
    decider.tellProblems(report);
    QSet<QString> unreadable;
    for (const FolderProblem &problem : std::as_const(result.problems))
        unreadable.insert(problem.path);
    for (qsizetype i = 0; i < pairs.size(); ++i) {
        if (!isPairOfFiles[std::size_t(i)] || pairs.at(i).status == UndecidedFiles)
            pairs[i].status = FolderTree::unknownStatus;
        else if (!unreadable.contains(pairs.at(i).leftPath) && !unreadable.contains(pairs.at(i).rightPath))
            result.decided.insert(pairs.at(i).name, pairs.at(i));
    }
    result.pairs = std::move(pairs);
    return result;
}

} // namespace velmora
