#include "folder/compare/folder_comparison.h"

#include <QHash>

namespace velmora {

namespace {

/// Long enough for runs to be few, short enough for a view to seem alive.
constexpr auto fillBudget = std::chrono::milliseconds(200);

bool isReadable(FolderRead read)
{
    return read == FolderRead::Complete || read == FolderRead::Stopped;
}

QString joined(const QString &folder, QStringView name)
{
    return folder.isEmpty() ? QString() : folder + u'/' + name.toString();
}

} // namespace

FolderComparison::FolderComparison(QObject *parent) : QObject(parent)
{
    for (Runner *runner : {&m_loader, &m_branches, &m_contents})
        connect(runner, &Runner::runningChanged, this, &FolderComparison::runningChanged);
}

bool FolderComparison::isRunning() const
{
    return m_stage != Stage::None || m_branches.isRunning() || m_contents.isRunning();
}

bool FolderComparison::isCancelling() const
{
    return (m_isCancelled && m_stage != Stage::None) || m_branches.isCancelling() || m_contents.isCancelling();
}

bool FolderComparison::isWhole() const
{
    for (qint32 node = 0; node < m_tree.size(); ++node) {
        if (m_tree.node(node).unloaded)
            return false;
    }
    return canPatch();
}

// Loading -------------------------------------------------------------------------------------------------------------

void FolderComparison::load(const FolderSpec &spec, bool wholeTree)
{
    m_branches.abandon();
    m_contents.abandon();
    m_filterer.abandon();
    m_pending.clear();
    m_asked.clear();
    m_spec = spec;
    m_wholeTree = wholeTree;
    m_isCancelled = false;
    m_filterIsStale = false;
    m_problems.clear();
    m_shifts = {};
    m_stage = Stage::Listing;
    m_loader.start(
        [spec](const CancelFlag &cancel, Progress &progress) { return listTopLevel(spec, cancel, progress); },
        [this](RunOutcome<FolderListing> &&outcome) {
            if (!outcome.value) {
                m_stage = Stage::None;
                Q_EMIT failed();
                return;
            }
            if (m_isCancelled && !m_tree.isEmpty()) {
                endLoad(true); // what was there before is more than the beginning of a list
                return;
            }
            const FolderRead left = outcome.value->leftRead;
            const FolderRead right = outcome.value->rightRead;
            takeListing(std::move(*outcome.value));
            if (!isReadable(left) || !isReadable(right)) {
                m_stage = Stage::None;
                Q_EMIT runningChanged();
                Q_EMIT rootsUnreadable(left, right);
            } else if (m_isCancelled) {
                endLoad(true);
            } else {
                startLevel();
            }
        });
}

void FolderComparison::show(const FolderSpec &spec, FolderTree tree)
{
    clear();
    m_spec = spec;
    FolderListing listing;
    listing.tree = std::move(tree);
    takeListing(std::move(listing));
}

void FolderComparison::startLevel()
{
    m_stage = Stage::Level;
    m_loader.start(
        [spec = m_spec, known = m_tree.items(), whole = m_wholeTree](const CancelFlag &cancel, Progress &progress) {
            return whole ? compareWholeTree(spec, known, cancel, progress)
                         : compareTopLevel(spec, known, cancel, progress);
        },
        [this](RunOutcome<FolderListing> &&outcome) {
            if (!outcome.value) {
                endLoad(true);
                Q_EMIT failed();
                return;
            }
            takeListing(std::move(*outcome.value));
            Q_EMIT levelKnown();
            if (m_isCancelled)
                endLoad(true);
            else
                startFilling();
        },
        [this](const ProgressState &state) { report(state); });
}

void FolderComparison::replaceTree(FolderTree &&tree)
{
    m_disposer.start(
        [old = std::exchange(m_tree, std::move(tree))](const CancelFlag &, Progress &) mutable {
            old = FolderTree();
            return true;
        },
        [](RunOutcome<bool> &&) {});
}

void FolderComparison::takeListing(FolderListing &&listing)
{
    Q_EMIT treeAboutToBeReplaced();
    const QSet<QString> expanded = m_tree.expandedNames();
    replaceTree(std::move(listing.tree));
    m_tree.expand(expanded);
    m_problems.append(listing.problems);
    m_shifts = listing.shifts;
    ++m_revision;
    Q_EMIT treeReplaced();
    if (m_filterIsStale)
        startFilter();
}

void FolderComparison::startFilling()
{
    m_stage = Stage::Filling;
    m_pending.clear();
    // Open folders first: somebody is looking at them.
    for (const bool expanded : {true, false}) {
        for (qint32 node = 0; node < m_tree.size(); node = m_tree.node(node).end) {
            if (m_tree.node(node).unloaded && m_tree.node(node).expanded == expanded) {
                m_tree.setScanning(node, true);
                m_pending.append(taskFor(m_tree.item(node).name));
            }
        }
    }
    if (!m_pending.isEmpty()) {
        m_tree.rollUp();
        Q_EMIT statesChanged();
    }
    fillNext();
    startBranches();
}

void FolderComparison::fillNext()
{
    if (m_pending.isEmpty()) {
        endLoad(false);
        return;
    }
    m_loader.start(
        [spec = m_spec, tasks = m_pending](const CancelFlag &cancel, Progress &progress) {
            return compareBranches(spec, tasks, fillBudget, cancel, progress);
        },
        [this](RunOutcome<BranchResult> &&outcome) {
            if (!outcome.value) {
                endLoad(true);
                Q_EMIT failed();
                return;
            }
            m_pending = outcome.value->left;
            takeBranches(std::move(*outcome.value));
            if (m_isCancelled)
                endLoad(true);
            else
                fillNext();
        },
        [this](const ProgressState &state) { report(state); });
}

void FolderComparison::takeBranches(BranchResult &&branches)
{
    m_problems.append(branches.problems);
    m_shifts.hour += branches.shifts.hour;
    m_shifts.twoSeconds += branches.shifts.twoSeconds;
    if (branches.patches.empty())
        return;
    const std::vector<qint32> places = m_tree.apply(branches.patches);
    ++m_revision;
    Q_EMIT treeChanged(places);
    if (m_filterIsStale)
        startFilter();
}

void FolderComparison::endLoad(bool cancelled)
{
    m_stage = Stage::None;
    m_pending.clear();
    stopScanning();
    Q_EMIT runningChanged();
    Q_EMIT loadFinished(generation(), cancelled);
    startBranches();
}

void FolderComparison::stopScanning()
{
    bool any = false;
    for (qint32 node = 0; node < m_tree.size(); ++node) {
        if (m_tree.node(node).scanning) {
            m_tree.setScanning(node, false);
            any = true;
        }
    }
    if (any) {
        m_tree.rollUp();
        Q_EMIT statesChanged();
    }
}

void FolderComparison::cancel()
{
    m_asked.clear();
    m_isCancelled = true;
    m_loader.cancel();
    m_branches.cancel();
    m_contents.cancel();
}

void FolderComparison::clear()
{
    for (Runner *runner : {&m_loader, &m_branches, &m_contents, &m_filterer})
        runner->abandon();
    m_stage = Stage::None;
    m_pending.clear();
    m_asked.clear();
    m_problems.clear();
    m_shifts = {};
    Q_EMIT treeAboutToBeReplaced();
    replaceTree({});
    ++m_revision;
    Q_EMIT treeReplaced();
    Q_EMIT runningChanged();
}

// Single entries ------------------------------------------------------------------------------------------------------

BranchTask FolderComparison::taskFor(const QString &name) const
{
    const qsizetype slash = name.lastIndexOf(u'/');
    const qint32 node = m_tree.find(name);
    const qint32 parent = node >= 0 ? m_tree.node(node).parent : slash < 0 ? -1 : m_tree.find(name.left(slash));
    QString left = m_spec.left;
    QString right = m_spec.right;
    if (parent >= 0) {
        left = m_tree.item(parent).leftPath;
        right = m_tree.item(parent).rightPath;
        // A folder that is missing on one side may have been made there meanwhile.
        const BranchTask folder = left.isEmpty() || right.isEmpty() ? taskFor(m_tree.item(parent).name) : BranchTask();
        if (left.isEmpty())
            left = folder.left;
        if (right.isEmpty())
            right = folder.right;
    } else if (slash >= 0) {
        left = joined(left, QStringView(name).left(slash));
        right = joined(right, QStringView(name).left(slash));
    }
    BranchTask task{name, joined(left, bareNameOf(name)), joined(right, bareNameOf(name))};
    // Entries that were aligned have names of their own.
    if (node >= 0 && !m_tree.item(node).leftPath.isEmpty())
        task.left = m_tree.item(node).leftPath;
    if (node >= 0 && !m_tree.item(node).rightPath.isEmpty())
        task.right = m_tree.item(node).rightPath;
    return task;
}

void FolderComparison::setExpanded(qint32 node, bool expanded)
{
    m_tree.setExpanded(node, expanded);
    if (!expanded || !m_tree.node(node).unloaded || !canPatch())
        return;
    BranchTask task = taskFor(m_tree.item(node).name);
    task.contents = false;
    m_asked.append(task);
    startBranches();
}

void FolderComparison::setAllExpanded(bool expanded)
{
    m_tree.setAllExpanded(expanded);
}

void FolderComparison::recompare(const QStringList &names)
{
    QList<BranchTask> tasks;
    for (const QString &name : names)
        tasks.append(taskFor(name));
    recompare(tasks);
}

void FolderComparison::recompare(const QList<BranchTask> &tasks)
{
    m_asked.append(tasks);
    startBranches();
}

void FolderComparison::startBranches()
{
    if (m_asked.isEmpty() || m_branches.isRunning() || !canPatch())
        return;
    const QList<BranchTask> tasks = std::exchange(m_asked, {});
    m_branches.start(
        [spec = m_spec, tasks](const CancelFlag &cancel, Progress &progress) {
            return compareBranches(spec, tasks, fillBudget, cancel, progress);
        },
        [this, tasks](RunOutcome<BranchResult> &&outcome) {
            if (!outcome.value) {
                Q_EMIT failed();
                return;
            }
            const qsizetype done = tasks.size() - outcome.value->left.size();
            if (outcome.end != RunEnd::Cancelled)
                m_asked = outcome.value->left + m_asked;
            takeBranches(std::move(*outcome.value));
            QStringList names;
            for (const BranchTask &task : tasks.first(done)) {
                if (task.contents)
                    names.append(task.name);
                else
                    Q_EMIT folderRead(task.name);
            }
            if (!names.isEmpty())
                Q_EMIT recompared(names);
            startBranches();
        },
        [this](const ProgressState &state) { report(state); });
}

// Filters -------------------------------------------------------------------------------------------------------------

void FolderComparison::refilter(const FolderSpec &spec)
{
    m_spec.options = spec.options;
    m_spec.excludedNames = spec.excludedNames;
    m_spec.ignoredNames = spec.ignoredNames;
    m_spec.limits = spec.limits;
    m_filterIsStale = true;
    startFilter();
}

void FolderComparison::startFilter()
{
    m_filterer.start(
        [items = m_tree.items(), spec = m_spec](const CancelFlag &cancel, Progress &) {
            return FolderTree::judge(items, spec.filter(), spec.ignoredNames, cancel);
        },
        [this, revision = m_revision](RunOutcome<FolderTree::Verdicts> &&outcome) {
            if (!outcome.value) {
                Q_EMIT failed();
                return;
            }
            if (revision != m_revision) {
                startFilter();
                return;
            }
            m_tree.setVerdicts(*outcome.value);
            m_tree.rollUp();
            // A run that began before still brings entries judged by the filters of then.
            m_filterIsStale = isRunning();
            Q_EMIT filtered();
        });
}

// Contents ------------------------------------------------------------------------------------------------------------

void FolderComparison::compareContents(const QList<qint32> &nodes, CompareMethod method)
{
    QList<FolderDiffItem> pairs;
    m_contentsNodes.clear();
    qint32 reached = 0;
    for (const qint32 node : nodes) {
        for (qint32 i = std::max(node, reached); i < m_tree.node(node).end; ++i) {
            if (m_tree.node(i).hidden && i != node) {
                i = m_tree.node(i).end - 1;
            } else if (!m_tree.item(i).isDir && isPair(m_tree.item(i))) {
                pairs.append(m_tree.item(i));
                m_contentsNodes.push_back(i);
            }
        }
        reached = std::max(reached, m_tree.node(node).end);
    }
    m_contentsRevision = m_revision;
    m_contents.start(
        [pairs, method, tolerance = m_spec.options.timeToleranceSec](const CancelFlag &cancel, Progress &progress) {
            return compareContentsOf(pairs, method, tolerance, cancel, progress);
        },
        [this](RunOutcome<ContentsResult> &&outcome) {
            if (!outcome.value) {
                Q_EMIT failed();
                return;
            }
            const QList<FolderDiffItem> &decided = outcome.value->pairs;
            const bool sameNumbers = m_contentsRevision == m_revision;
            for (qsizetype i = 0; i < decided.size(); ++i) {
                const FolderDiffItem &pair = decided.at(i);
                const qint32 node = sameNumbers ? m_contentsNodes[std::size_t(i)] : m_tree.find(pair.name);
                if (node >= 0 && pair.status != FolderTree::unknownStatus && !m_tree.item(node).isDir)
                    m_tree.setItem(node, pair);
            }
            m_tree.rollUp();
            Q_EMIT statesChanged();
            Q_EMIT contentsCompared(*outcome.value, outcome.end == RunEnd::Cancelled);
        },
        [this](const ProgressState &state) { report(state); });
}

} // namespace velmora
