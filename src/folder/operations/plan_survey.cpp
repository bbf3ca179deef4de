#include "folder/operations/plan_survey.h"

#include "folder/operations/folder_deletions.h"
#include "folder/operations/place_look.h"

#include <QStringBuilder>

#include <algorithm>
#include <deque>
#include <map>

namespace velmora {

namespace {

class Survey {
public:
    Survey(OperationPlan plan, FileLayer &files, const CancelFlag &cancel, Progress &progress)
        : m_plan(std::move(plan)),
          m_look(files, m_plan.roots),
          m_chain(m_look.chain()),
          m_cancel(cancel),
          m_progress(progress)
    {}

    OperationPlan run()
    {
        OperationPlan surveyed = m_plan;
        surveyed.isSurveyed = true;
        surveyed.steps = {};
        surveyed.refusal = checkRoots(surveyed);
        if (surveyed.refusal != PlanRefusal::None)
            return surveyed;
        m_leftOut = m_plan.leftOut;
        noteListed();
        m_steps = std::move(m_plan.steps);
        const qsizetype count = m_steps.size();
        qsizetype settled = 0;
        for (qsizetype i = 0; i < count; ++i) {
            if (m_cancel.isCancelled()) {
                surveyed.refusal = PlanRefusal::Cancelled;
                return surveyed;
            }
            m_progress.report(0, i, count);
            const OperationStep step = std::move(m_steps[i]);
            if (step.deletes())
                clearMovedFolders();
            surveyWithUnlisted(step);
            // In place of those that have been looked at: there may be a million.
            for (; settled <= i && !m_accepted.empty(); m_accepted.pop_front())
                m_steps[settled++] = std::move(m_accepted.front());
        }
        clearMovedFolders();
        m_steps.resize(settled);
        for (OperationStep &step : m_accepted)
            m_steps.append(std::move(step));
        m_accepted.clear();
        m_steps = FolderDeletions(m_plan, m_chain, m_cancel, m_vacated, m_leftOut).settled(std::move(m_steps));
        nameLinks();
        if (m_cancel.isCancelled()) {
            surveyed.refusal = PlanRefusal::Cancelled;
            return surveyed;
        }
        surveyed.steps = std::move(m_steps);
        surveyed.leftOut = m_leftOut;
        return surveyed;
    }

private:
    PlanRefusal checkRoots(OperationPlan &surveyed)
    {
        QSet<int> used;
        for (const OperationStep &step : m_plan.steps)
            used.unite({step.from.root, step.to.root, step.counterpart->root, step.keptCopy->root});
        for (int i = 0; i < surveyed.roots.size(); ++i) {
            FolderHandle *const root = m_chain.root(i);
            if (root)
                surveyed.roots[i].identity = root->self().node.identity;
            else if (used.contains(i))
                return missing(surveyed, i);
        }
        if (m_plan.rootsMustBeApart && m_chain.root(0) && m_chain.root(1) &&
            (m_chain.root(0)->liesIn(*m_chain.root(1)) || m_chain.root(1)->liesIn(*m_chain.root(0))))
            return PlanRefusal::OverlappingRoots;
        return PlanRefusal::None;
    }

    static PlanRefusal missing(OperationPlan &surveyed, int root)
    {
        surveyed.refusedAt = surveyed.roots[root].path;
        return PlanRefusal::RootMissing;
    }

    void leaveOut(LeftOutReason reason, const Place &place, const FileError &error = {})
    {
        m_leftOut.append({reason, m_plan.pathOf(place), error.reason});
    }

    /// What the plan itself knows of folders that go whole.
    void noteListed()
    {
        for (const Place &place : m_plan.listed)
            m_listed.add(place);
        const auto goesOver = [](const OperationStep &step) { return step.unlistedEntries != UnlistedEntries::Stay; };
        if (std::none_of(m_plan.steps.begin(), m_plan.steps.end(), goesOver))
            return;
        for (const OperationStep &step : m_plan.steps)
            m_listed.add(step.from);
        for (const LeftOutEntry &entry : m_plan.leftOut)
            m_leftOutPaths.insert(entry.path);
    }

    void surveyWithUnlisted(const OperationStep &first)
    {
        std::vector<OperationStep> waiting{first};
        while (!waiting.empty() && !m_cancel.isCancelled()) {
            const OperationStep step = waiting.back();
            waiting.pop_back();
            const auto namedSoFar = m_leftOut.size() + m_links.size();
            survey(step);
            const bool goes = m_leftOut.size() + m_links.size() == namedSoFar && !isDropped(step) &&
                              !m_droppedSources.contains(step.from);
            if (goes && step.unlistedEntries != UnlistedEntries::Stay)
                addUnlisted(step, waiting);
        }
    }

    void addUnlisted(const OperationStep &folder, std::vector<OperationStep> &waiting)
    {
        FileError error;
        const std::unique_ptr<FolderHandle> handle = m_chain.open(folder.from, error);
        if (handle) {
            error = handle->listNames([&](const QString &name) {
                const Place place{folder.from.root, QString(folder.from.relative % u'/' % name)};
                if (m_listed.contains(place) || m_leftOutPaths.contains(m_plan.pathOf(place)))
                    return true;
                const NodeResult found = handle->stat(name);
                if (found.error.isError()) {
                    if (found.error.kind != FileErrorKind::Missing)
                        leaveOut(LeftOutReason::NotReadable, place, found.error);
                    return true;
                }
                if (m_plan.showsUnlisted && !m_plan.showsUnlisted(m_plan.pathOf(place), found.node))
                    leaveOut(LeftOutReason::HiddenByFilter, place);
                else
                    take(unlistedStep(folder, name, found.node), waiting);
                return !m_cancel.isCancelled();
            });
        }
        if (error.isError())
            leaveOut(LeftOutReason::NotReadable, folder.from, error);
    }

    OperationStep unlistedStep(const OperationStep &folder, const QString &name, const NodeState &node)
    {
        const bool isMoved = folder.unlistedEntries == UnlistedEntries::AreMoved;
        OperationStep step;
        step.kind = isMoved ? OperationKind::Move : OperationKind::Copy;
        step.from = {folder.from.root, QString(folder.from.relative % u'/' % name)};
        step.fromSeen = SeenEntry::exactly(node);
        step.to = {folder.to.root, QString(folder.to.relative % u'/' % name)};
        step.toSeen = folder.toSeen;
        step.mayReplace = folder.mayReplace;
        if (node.kind == NodeKind::Folder) {
            step.kind = OperationKind::MakeFolder;
            step.unlistedEntries = folder.unlistedEntries;
        }
        return step;
    }

    void take(const OperationStep &step, std::vector<OperationStep> &waiting)
    {
        waiting.push_back(step);
        if (step.unlistedEntries != UnlistedEntries::AreMoved)
            return;
        OperationStep clearing;
        clearing.kind = OperationKind::Delete;
        clearing.from = step.from;
        clearing.fromSeen = step.fromSeen;
        m_clearings.push_back(clearing);
    }

    /// Folders that nobody listed are removed like those of the plan once what was in them has been moved.
    void clearMovedFolders()
    {
        for (; !m_clearings.empty(); m_clearings.pop_back())
            survey(m_clearings.back());
    }

    void survey(OperationStep step)
    {
        if (isDropped(step))
            return;
        if (step.kind != OperationKind::Restore && step.from.isSet() && !lookAtSource(step))
            return;
        if (step.counterpart->isSet() && !isStillMissing(step.counterpart))
            return;
        if (step.keptCopy->isSet() && !lookAtKeptCopy(step))
            return;
        if (step.to.isSet() && !lookAtTarget(step))
            return;
        if (step.wholeTree && step.fromSeen.kind == NodeKind::Folder && step.deletes()) {
            takeWholeTree(step);
            return;
        }
        accept(step);
    }

    void accept(const OperationStep &step)
    {
        if (step.vacates())
            m_vacated.add(step.from);
        if (step.to.isSet()) {
            m_vacated.remove(step.to);
            m_filled.add(step.to);
        }
        m_accepted.push_back(step);
    }

    /// True for what lies in a folder whose step has been left out or has become one for a link.
    bool isDropped(const OperationStep &step) const
    {
        return (step.to.isSet() && m_dropped.containsFolderOf(step.to)) ||
               (step.from.isSet() && m_droppedSources.containsFolderOf(step.from));
    }

    /// A link on the way is named once, however much is behind it.
    void leaveOutUnreadable(const Place &place, const FileError &error)
    {
        if (error.kind != FileErrorKind::LinkOnTheWay) {
            leaveOut(LeftOutReason::NotReadable, place, error);
            return;
        }
        const Place link = m_look.linkOnTheWay(place);
        if (!m_links.contains(link))
            m_links.append(link);
    }

    /// A link that has a step of its own is taken care of.
    void nameLinks()
    {
        PlaceSet handled;
        for (qsizetype i = 0; i < m_steps.size() && !m_links.isEmpty(); ++i)
            handled.add(m_steps.at(i).from);
        for (const Place &link : m_links) {
            if (!handled.contains(link))
                leaveOut(LeftOutReason::BelowLink, link);
        }
    }

    bool lookAtSource(OperationStep &step)
    {
        const FoundEntry found = m_look.entryAt(step.from);
        if (found.error.isError()) {
            leaveOutUnreadable(step.from, found.error);
            return false;
        }
        if (!found.isThere || !step.fromSeen.isStill(found.node)) {
            leaveOut(LeftOutReason::ChangedSinceCompared, step.from);
            dropBranch(step);
            return false;
        }
        if (found.node.kind == NodeKind::Special) {
            leaveOut(LeftOutReason::UnsupportedKind, step.from);
            return false;
        }
        if (found.node.kind == NodeKind::Link && step.kind == OperationKind::MakeFolder) {
            step.kind = step.toSeen.isPresent() ? OperationKind::Replace : OperationKind::Copy;
            m_droppedSources.add(step.from);
        }
        const bool isFolder = found.node.kind == NodeKind::Folder;
        if (isFolder && step.kind == OperationKind::MakeFolder && goesIntoItself(step, found.node)) {
            leaveOut(LeftOutReason::IntoItself, step.from);
            dropBranch(step);
            return false;
        }
        step.fromSeen = SeenEntry::exactly(found.node);
        if (isFolder)
            step.fromSeen.files = 0;
        return true;
    }

    bool goesIntoItself(const OperationStep &step, const NodeState &source)
    {
        FolderHandle &target = *m_chain.root(step.to.root);
        const auto [known, isNew] = m_lineages.try_emplace(step.to.root);
        std::optional<std::vector<FileIdentity>> &lineage = known->second;
        if (isNew)
            lineage = target.lineage();
        if (source.identity && lineage &&
            std::find(lineage->begin(), lineage->end(), *source.identity) == lineage->end())
            return false;
        FileError error;
        const std::unique_ptr<FolderHandle> folder = m_chain.open(step.from, error);
        return folder && target.liesIn(*folder);
    }

    void dropBranch(const OperationStep &step)
    {
        if (step.kind == OperationKind::MakeFolder)
            m_dropped.add(step.to);
    }

    bool isStillMissing(const Place &counterpart)
    {
        const FoundEntry found = m_look.entryAt(counterpart);
        if (found.error.isError() && found.error.kind != FileErrorKind::NotAFolder) {
            leaveOutUnreadable(counterpart, found.error);
            return false;
        }
        if (found.isThere)
            leaveOut(LeftOutReason::ChangedSinceCompared, counterpart);
        return !found.isThere;
    }

    bool lookAtKeptCopy(OperationStep &step)
    {
        const FoundEntry found = m_look.entryAt(step.keptCopy);
        if (found.error.isError()) {
            leaveOutUnreadable(step.keptCopy, found.error);
            return false;
        }
        const bool isFile = found.isThere && found.node.kind == NodeKind::File;
        if (!isFile || step.fromSeen.kind != NodeKind::File || !step.keptCopySeen->isStill(found.node) ||
            m_vacated.contains(step.keptCopy)) {
            leaveOut(LeftOutReason::ChangedSinceCompared, step.keptCopy);
            return false;
        }
        step.keptCopySeen = SeenEntry::exactly(found.node);
        return true;
    }

    bool lookAtTarget(OperationStep &step)
    {
        if (!m_plan.roots[step.to.root].writable || !isCleanRelative(step.to.relative) ||
            !isPlainName(QStringView(step.to.relative).mid(step.to.relative.lastIndexOf(u'/') + 1))) {
            leaveOut(LeftOutReason::NameNotAllowed, step.to);
            dropBranch(step);
            return false;
        }
        if (m_filled.contains(step.to)) {
            if (step.kind != OperationKind::MakeFolder)
                leaveOut(LeftOutReason::NameTaken, step.from.isSet() ? step.from : step.to);
            return false;
        }
        const bool willBeFree = m_vacated.contains(step.to) || m_filled.containsFolderOf(step.to);
        const FoundEntry found = willBeFree ? FoundEntry() : m_look.entryAt(step.to);
        if (found.error.isError()) {
            leaveOutUnreadable(step.to, found.error);
            dropBranch(step);
            return false;
        }
        return step.kind == OperationKind::MakeFolder ? settleFolder(step, found) : settleFile(step, found);
    }

    bool settleFolder(OperationStep &step, const FoundEntry &found)
    {
        step.toSeen = SeenEntry::absent();
        if (!found.isThere)
            return true;
        if (found.node.kind != NodeKind::Folder) {
            leaveOut(LeftOutReason::TargetExists, step.to);
            dropBranch(step);
        } else if (!step.from.isSet() && !step.mayReplace) {
            leaveOut(LeftOutReason::TargetExists, step.to); // asked for by itself
        }
        return false;
    }

    bool settleFile(OperationStep &step, const FoundEntry &found)
    {
        const bool expectsNothing = step.toSeen.state == SeenEntry::State::Absent;
        const bool isAnything = step.toSeen.state == SeenEntry::State::Unknown;
        if (!found.isThere) {
            if (!expectsNothing && !isAnything) {
                leaveOut(LeftOutReason::ChangedSinceCompared, step.to);
                return false;
            }
            step.toSeen = SeenEntry::absent();
            return true;
        }
        if (isSameEntry(step, found.node)) { // another spelling of the same name
            step.toSeen = SeenEntry::absent();
            return true;
        }
        if (found.node.identity && found.node.identity == step.fromSeen.identity) {
            leaveOut(LeftOutReason::IntoItself, step.to);
            return false;
        }
        const bool isReplaceable = (found.node.kind == NodeKind::File || found.node.kind == NodeKind::Link) &&
                                   step.fromSeen.kind != NodeKind::Folder;
        if (expectsNothing || !isReplaceable || (isAnything && !step.mayReplace)) {
            leaveOut(LeftOutReason::TargetExists, step.to);
            return false;
        }
        if (!step.toSeen.isStill(found.node)) {
            leaveOut(LeftOutReason::ChangedSinceCompared, step.to);
            return false;
        }
        step.toSeen = SeenEntry::exactly(found.node);
        step.replacesProtected = isProtected(found.node);
        if (step.kind == OperationKind::Copy)
            step.kind = OperationKind::Replace;
        return true;
    }

    static bool isSameEntry(const OperationStep &step, const NodeState &target)
    {
        return step.kind == OperationKind::Move && step.from.root == step.to.root && target.identity &&
               step.fromSeen.identity == target.identity &&
               step.from.relative.compare(step.to.relative, Qt::CaseInsensitive) == 0;
    }

    void takeWholeTree(OperationStep step)
    {
        step.unlisted = 0;
        FileError error;
        const std::unique_ptr<FolderHandle> folder = m_chain.open(step.from, error);
        TreeSummary summary;
        QList<OperationStep> single;
        if (folder) {
            error = visitTree(*folder, [&](const QString &relative, const NodeState &node) {
                summary.add(relative, node);
                OperationStep inner;
                inner.kind = OperationKind::Delete;
                inner.from = {step.from.root, QString(step.from.relative % u'/' % relative)};
                inner.fromSeen = SeenEntry::exactly(node);
                inner.fromSeen.files = node.kind == NodeKind::Folder ? 0 : 1;
                inner.unlisted = m_listed.contains(inner.from) ? 0 : 1;
                step.unlisted += inner.unlisted;
                single.append(inner);
                return !m_cancel.isCancelled();
            });
        }
        if (error.isError()) {
            leaveOut(LeftOutReason::NotReadable, step.from, error);
            return;
        }
        if (step.kind == OperationKind::Recycle) {
            FolderDeletions::makeWhole(step, summary);
        } else {
            for (const OperationStep &inner : single)
                accept(inner);
            step.wholeTree = false;
            step.unlisted = 0; // the single steps say it
        }
        accept(step);
    }

    std::map<int, std::optional<std::vector<FileIdentity>>> m_lineages; ///< of the roots that folders are made in
    OperationPlan m_plan;                                               ///< without its steps once they are looked at
    PlaceLook m_look;
    const FolderChain &m_chain;
    const CancelFlag &m_cancel;
    Progress &m_progress;
    QList<OperationStep> m_steps;
    std::deque<OperationStep> m_accepted; ///< that have no place among them yet
    QList<LeftOutEntry> m_leftOut;
    PlaceSet m_listed;            ///< what the comparison lists in folders that go whole
    QSet<QString> m_leftOutPaths; ///< what the plan left out from the start
    std::vector<OperationStep> m_clearings;
    PlaceSet m_vacated;
    PlaceSet m_filled;
    PlaceSet m_dropped;        ///< target folders that will not be made
    PlaceSet m_droppedSources; ///< links that stand for folders
    QList<Place> m_links;      ///< that hid something from the plan
};

} // namespace

OperationPlan surveyPlan(OperationPlan plan, FileLayer &files, const CancelFlag &cancel, Progress &progress)
{
    if (plan.refusal != PlanRefusal::None || plan.isSurveyed)
        return plan;
    return Survey(std::move(plan), files, cancel, progress).run();
}

} // namespace velmora
