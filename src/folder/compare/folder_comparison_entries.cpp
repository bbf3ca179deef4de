#include "core/path_names.h"
#include "folder/compare/folder_comparison.h"

#include <algorithm>

namespace velmora {

BranchTask FolderComparison::taskFor(const QString &name) const
{
    const qsizetype slash = name.lastIndexOf(u'/');
    const qint32 node = m_tree.find(name);
    const qint32 parent = node >= 0 ? m_tree.node(node).parent : slash < 0 ? -1 : m_tree.find(name.left(slash));
    // A folder that is missing on one side may have been made there meanwhile.
    const BranchTask folder =
        parent >= 0 && !isPair(m_tree.item(parent)) ? taskFor(m_tree.item(parent).name) : BranchTask();
    BranchTask task{name, {}};
    for (const Side side : bothSides) {
        QString within = m_spec.roots[side].path;
        if (parent >= 0)
            within =
                pathOn(m_tree.item(parent), side).isEmpty() ? folder.paths[side] : pathOn(m_tree.item(parent), side);
        else if (slash >= 0)
            within = joinedPath(within, name.left(slash));
        task.paths[side] = within.isEmpty() ? QString() : joinedPath(within, bareName(name));
        // Entries that were aligned have names of their own.
        if (node >= 0 && !pathOn(m_tree.item(node), side).isEmpty())
            task.paths[side] = pathOn(m_tree.item(node), side);
    }
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

void FolderComparison::recheck(const QStringList &names)
{
    for (const QString &name : names) {
        const qint32 node = m_tree.find(name);
        const bool isDecided = node >= 0 && !m_tree.item(node).isDir && !m_tree.node(node).unreadable &&
                               m_tree.item(node).status != FolderTree::unknownStatus;
        if (isDecided)
            m_spec.decided.insert(name, m_tree.item(node));
    }
    recompare(names);
}

void FolderComparison::recompare(const QList<BranchTask> &tasks)
{
    m_asked.append(tasks);
    startBranches();
}

void FolderComparison::forgetProblems(const QList<BranchTask> &tasks)
{
    m_problems.removeIf([&tasks](const FolderProblem &problem) {
        return std::any_of(tasks.begin(), tasks.end(), [&problem](const BranchTask &task) {
            const QString &path = task.paths[problem.side];
            return !path.isEmpty() && (problem.path == path || isInside(problem.path, path));
        });
    });
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
                Q_EMIT failed(outcome.fault);
                return;
            }
            const qsizetype done = tasks.size() - outcome.value->left.size();
            forgetProblems(tasks.first(done));
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
    m_spec.filters = spec.filters;
    m_filterIsStale = true;
    startFilter();
}

void FolderComparison::startFilter()
{
    m_filterer.start(
        [items = m_tree.items(), spec = m_spec](const CancelFlag &cancel, Progress &) {
            return FolderTree::judge(items, spec.filter(), spec.filters.ignoredNames, cancel);
        },
        [this, revision = m_revision](RunOutcome<FolderTree::Verdicts> &&outcome) {
            if (!outcome.value) {
                Q_EMIT failed(outcome.fault);
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
    m_contentsNodes.clear();
    qint32 reached = 0;
    for (const qint32 node : nodes) {
        for (qint32 i = std::max(node, reached); i < m_tree.node(node).end; ++i) {
            if (m_tree.node(i).hidden && i != node) {
                i = m_tree.node(i).end - 1;
            } else if (!m_tree.item(i).isDir && isPair(m_tree.item(i))) {
                m_contentsNodes.push_back(i);
            }
        }
        reached = std::max(reached, m_tree.node(node).end);
    }
    startContents(method);
}

void FolderComparison::readUnread()
{
    m_contentsNodes.clear();
    for (qint32 i = 0; i < m_tree.size(); ++i) {
        if (m_tree.node(i).hidden)
            i = m_tree.node(i).end - 1;
        else if (!m_tree.item(i).isDir && m_tree.isUnread(i))
            m_contentsNodes.push_back(i);
    }
    startContents(std::nullopt);
}

void FolderComparison::startContents(std::optional<CompareMethod> method)
{
    QList<FolderDiffItem> pairs;
    for (const qint32 node : m_contentsNodes)
        pairs.append(m_tree.item(node));
    m_contentsRevision = m_revision;
    m_contents.start(
        [spec = m_spec, pairs, method](const CancelFlag &cancel, Progress &progress) {
            return compareContentsOf(spec, pairs, method, cancel, progress);
        },
        [this](RunOutcome<ContentsResult> &&outcome) {
            if (!outcome.value) {
                Q_EMIT failed(outcome.fault);
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
            // Of everything compared, which may be much, there was nothing before as a rule.
            if (m_spec.decided.isEmpty())
                m_spec.decided = outcome.value->decided;
            else
                m_spec.decided.insert(outcome.value->decided);
            m_tree.rollUp();
            Q_EMIT statesChanged();
            Q_EMIT contentsCompared(*outcome.value, outcome.end == RunEnd::Cancelled);
        },
        [this](const ProgressState &state) { report(state); });
}

} // namespace velmora
