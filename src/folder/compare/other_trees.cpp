#include "folder/compare/other_trees.h"

#include "folder/actions/archive_words.h"
#include "folder/actions/other_words.h"
#include "session/translate.h"
#include "vfs/local_folder.h"
#include "vfs/place/other_tree.h"

#include <utility>

namespace velmora {

OtherTrees::OtherTrees(QObject *parent) : QObject(parent)
{
    connect(&m_runner, &Runner::runningChanged, this, &OtherTrees::runningChanged);
}

bool OtherTrees::isAnyState(const SessionPaths &paths)
{
    return isGitPlace(paths.left) || isGitPlace(paths.right);
}

bool OtherTrees::isAny(const SessionPaths &paths)
{
    const auto isOther = [](const QString &path) { return isOtherTree(path) || snapshotPlaceOf(path); };
    return isOther(paths.left) || isOther(paths.right);
}

Sides<OtherTrees::Opened> OtherTrees::openBoth(const SessionPaths &paths, const Sides<Opened> &before,
                                               const CancelFlag &cancel, Progress &progress)
{
    return {{paths.left, openOther(paths.left, before.left.tree, cancel, progress)},
            {paths.right, openOther(paths.right, before.right.tree, cancel, progress)}};
}

void OtherTrees::open(const SessionPaths &paths, std::function<void(const QString &error)> done)
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

QString OtherTrees::take(Sides<Opened> &&opened)
{
    for (const Side side : bothSides) {
        const Opened &one = opened[side];
        if (const QString fault = otherFaultText(one.path, one.tree); !fault.isEmpty())
            return fault;
        const QList<ArchiveProblem> problems = problemsOf(one.tree);
        for (const ArchiveProblem &problem : problems)
            Q_EMIT logLine(one.path + QLatin1String(": ") + archiveProblemText(problem));
    }
    m_opened = std::move(opened);
    return {};
}

TreeFolder OtherTrees::folderAt(Side side, const QString &path) const
{
    const Opened &opened = m_opened[side];
    if (opened.path == path && isThere(opened.tree))
        return folderOf(opened.tree);
    return isOtherTree(path) || snapshotPlaceOf(path) ? TreeFolder() : localFolder(path);
}

} // namespace velmora
