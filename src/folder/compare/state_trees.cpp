#include "folder/compare/state_trees.h"

#include "folder/actions/archive_words.h"
#include "folder/actions/git_fault_text.h"
#include "folder/actions/remote_words.h"
#include "folder/actions/snapshot_words.h"
#include "session/translate.h"
#include "vfs/local_folder.h"
#include "vfs/place/other_tree.h"

#include <optional>
#include <utility>

namespace velmora {

StateTrees::StateTrees(QObject *parent) : QObject(parent)
{
    connect(&m_runner, &Runner::runningChanged, this, &StateTrees::runningChanged);
}

bool StateTrees::isAny(const SessionPaths &paths)
{
    return isGitPlace(paths.left) || isGitPlace(paths.right);
}

bool StateTrees::isAnyOther(const SessionPaths &paths)
{
    const auto isOther = [](const QString &path) { return isOtherTree(path) || snapshotPlaceOf(path); };
    return isOther(paths.left) || isOther(paths.right);
}

Sides<StateTrees::Opened> StateTrees::openBoth(const SessionPaths &paths, const Sides<Opened> &before,
                                               const CancelFlag &cancel, Progress &progress)
{
    Sides<Opened> opened{{paths.left, {}, {}, {}}, {paths.right, {}, {}, {}}};
    for (const Side side : bothSides) {
        if (const std::optional<GitPlace> place = gitPlaceOf(opened[side].path))
            opened[side].state = openState(*place, before[side].state, cancel);
        else if (const std::optional<RemotePlace> host = remotePlaceOf(opened[side].path))
            opened[side].remote = openRemote(*host, cancel, progress);
        else if (const std::optional<SnapshotPlace> snapshot = snapshotPlaceOf(opened[side].path))
            opened[side].snapshot = openSnapshot(*snapshot, before[side].snapshot, cancel, progress);
    }
    return opened;
}

void StateTrees::open(const SessionPaths &paths, std::function<void(const QString &error)> done)
{
    m_runner.start([paths, before = m_opened](const CancelFlag &cancel,
                                              Progress &progress) { return openBoth(paths, before, cancel, progress); },
                   [this, done = std::move(done)](RunOutcome<Sides<Opened>> &&outcome) {
                       if (outcome.end == RunEnd::Done && outcome.value)
                           done(take(std::move(*outcome.value)));
                       else
                           done(outcome.end == RunEnd::Cancelled
                                    ? Velmora::tr("Compare cancelled")
                                    : Velmora::tr("Not enough memory to compare these folders"));
                   });
}

QString StateTrees::take(Sides<Opened> &&opened)
{
    for (const Side side : bothSides) {
        const StateOpening &state = opened[side].state;
        if (state.fault.isError())
            return gitFaultText(state.fault);
        const RemoteOpening &remote = opened[side].remote;
        if (remote.fault.isError())
            return remoteFaultText(remote.fault);
        const SnapshotOpening &snapshot = opened[side].snapshot;
        if (!snapshot.source && (snapshot.stamp || !snapshot.reading.ok()))
            return snapshotFaultText(opened[side].path, snapshot);
        for (const ArchiveProblem &problem : state.problems + remote.problems + snapshot.problems)
            Q_EMIT logLine(opened[side].path + QLatin1String(": ") + archiveProblemText(problem));
    }
    m_opened = std::move(opened);
    return {};
}

TreeFolder StateTrees::folderAt(Side side, const QString &path) const
{
    const Opened &opened = m_opened[side];
    if (opened.path == path && opened.snapshot.source)
        return opened.snapshot.folder();
    if (!isOtherTree(path))
        return snapshotPlaceOf(path) ? TreeFolder() : localFolder(path);
    if (opened.path == path && opened.remote.source)
        return {opened.remote.source, QStringLiteral("/")};
    if (opened.path != path || !opened.state.source)
        return {};
    return {opened.state.source, opened.state.inside.isEmpty() ? QStringLiteral("/") : opened.state.inside};
}

} // namespace velmora
