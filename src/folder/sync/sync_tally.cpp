#include "folder/sync/sync_tally.h"

#include "core/path_names.h"
#include "folder/actions/action_words.h"
#include "session/shown_path.h"

#include <QSet>

namespace velmora {

namespace {

Side changedSide(SyncAction action)
{
    const bool isLeft =
        action == SyncAction::CopyToLeft || action == SyncAction::DeleteLeft || action == SyncAction::MoveOnLeft;
    return isLeft ? Side::Left : Side::Right;
}

/// The places that the lines of a run name.
class RunPlaces {
public:
    explicit RunPlaces(const QList<PlanLine> &lines)
    {
        for (const PlanLine &line : lines)
            (line.done ? m_done : m_failed).insert(line.path);
    }

    [[nodiscard]] bool hasFailures() const { return !m_failed.isEmpty(); }
    [[nodiscard]] qint64 failedElsewhere() const { return m_failed.size() - m_named.size(); }

    /// `changed`: the place that the item changes; where it was left alone, one of its files may be named.
    [[nodiscard]] bool failed(const SyncPlanItem &item, const QString &changed)
    {
        return isNamed(changed) || isNamed(item.leftPath) || isNamed(item.rightPath) ||
               (!m_done.contains(shownPath(changed)) && isInFailed(changed));
    }

private:
    [[nodiscard]] bool isNamed(const QString &path)
    {
        const QString shown = shownPath(path);
        const bool isFailed = !path.isEmpty() && m_failed.contains(shown);
        if (isFailed)
            m_named.insert(shown);
        return isFailed;
    }

    /// A folder that should have gone whole has one line for all that is in it.
    [[nodiscard]] bool isInFailed(const QString &place)
    {
        QString folder = parentPath(place);
        while (folder.size() > 1 && !isNamed(folder)) // "/" is its own
            folder = parentPath(folder);
        return folder.size() > 1;
    }

    QSet<QString> m_done;
    QSet<QString> m_failed;
    QSet<QString> m_named; ///< of the failed ones, those that belong to items
};

} // namespace

SyncTally tallySync(const QList<SyncPlanItem> &plan, const Sides<QString> &folders, const PlanRunResult &result)
{
    if (!result.isWhole)
        return {result.succeeded, result.failed};
    SyncTally tally;
    RunPlaces places(result.lines);
    for (const SyncPlanItem &item : plan) {
        if (item.syncAction() == SyncAction::Skip)
            continue;
        const Side side = changedSide(item.syncAction());
        const QString &there = side == Side::Left ? item.leftPath : item.rightPath;
        const bool hasFailed = places.hasFailures() && isStep(item) &&
                               places.failed(item, there.isEmpty() ? joinedPath(folders[side], item.name) : there);
        ++(hasFailed ? tally.failed : tally.succeeded);
    }
    tally.failed += places.failedElsewhere();
    return tally;
}

} // namespace velmora
