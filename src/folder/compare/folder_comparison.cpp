#include "folder/compare/folder_comparison.h"

#include "folder/operations/folder_chain.h"

namespace velmora {

namespace {

/// What the first job of a comparison brings.
struct FirstLevel {
    FolderListing listing;
    Sides<std::optional<FileIdentity>> identities; ///< looked up before the folders were listed
};

bool isReadable(FolderRead read)
{
    return read == FolderRead::Complete || read == FolderRead::Stopped;
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
        [spec](const CancelFlag &cancel, Progress &progress) {
            FirstLevel level;
            level.identities = identitiesOf(FileLayer::native(), spec.roots);
            level.listing = listTopLevel(spec, cancel, progress);
            return level;
        },
        [this](RunOutcome<FirstLevel> &&outcome) {
            if (!outcome.value) {
                m_stage = Stage::None;
                Q_EMIT failed(outcome.fault);
                return;
            }
            if (m_isCancelled && !m_tree.isEmpty()) {
                endLoad(true); // what was there before is more than the beginning of a list
                return;
            }
            const Sides<FolderRead> roots = outcome.value->listing.roots;
            m_identities = outcome.value->identities;
            takeListing(std::move(outcome.value->listing));
            if (!isReadable(roots.left) || !isReadable(roots.right)) {
                m_stage = Stage::None;
                Q_EMIT runningChanged();
                Q_EMIT rootsUnreadable(roots);
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
    m_identities = {};
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
                Q_EMIT failed(outcome.fault);
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
                Q_EMIT failed(outcome.fault);
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

} // namespace velmora
