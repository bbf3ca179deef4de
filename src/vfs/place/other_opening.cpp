#include "vfs/place/other_opening.h"

#include "vfs/git/git_place.h"
#include "vfs/remote/remote_place.h"

#include <optional>
#include <type_traits>

namespace velmora {

namespace {

/// What was opened last, if it was of this sort.
template <typename Opening>
Opening lastOf(const OtherOpening &before)
{
    const auto *opening = std::get_if<Opening>(&before);
    return opening ? *opening : Opening();
}

} // namespace

OtherOpening openOther(const QString &path, const OtherOpening &before, const CancelFlag &cancel, Progress &progress,
                       const ArchiveLimits &limits)
{
    if (const std::optional<GitPlace> state = gitPlaceOf(path))
        return openState(*state, lastOf<StateOpening>(before), cancel, limits);
    if (const std::optional<RemotePlace> host = remotePlaceOf(path))
        return openRemote(*host, cancel, progress, limits);
    if (const std::optional<SnapshotPlace> snapshot = snapshotPlaceOf(path))
        return openSnapshot(*snapshot, lastOf<SnapshotOpening>(before), cancel, progress, limits);
    return {};
}

TreeFolder folderOf(const OtherOpening &opening)
{
    const auto folder = [](const auto &one) -> TreeFolder {
        if constexpr (std::is_same_v<decltype(one), const std::monostate &>)
            return {};
        else
            return one.folder();
    };
    return std::visit(folder, opening);
}

QList<ArchiveProblem> problemsOf(const OtherOpening &opening)
{
    const auto problems = [](const auto &one) -> QList<ArchiveProblem> {
        if constexpr (std::is_same_v<decltype(one), const std::monostate &>)
            return {};
        else
            return one.problems;
    };
    return std::visit(problems, opening);
}

std::shared_ptr<const ArchiveSource> archiveOf(const OtherOpening &opening)
{
    if (const auto *state = std::get_if<StateOpening>(&opening))
        return state->source;
    const auto *remote = std::get_if<RemoteOpening>(&opening);
    return remote ? remote->source : nullptr;
}

} // namespace velmora
