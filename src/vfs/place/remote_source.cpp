#include "vfs/place/remote_source.h"

#include "vfs/place/remote_contents.h"
#include "vfs/remote/remote_tree_listing.h"

#include <utility>
#include <vector>

namespace velmora {

namespace {

constexpr std::chrono::seconds listingLimit{180};

/// The command ends with a status of its own where there is nothing to be listed.
SshEnd listingEnd(SshEnd end)
{
    if (end.fault == SshFault::Failed && end.exitCode == noFolderStatus)
        end.fault = SshFault::NoFolder;
    if (end.fault == SshFault::Failed && end.exitCode == otherThanFolderStatus)
        end.fault = SshFault::OtherThing;
    if (end.fault == SshFault::Failed && end.exitCode == noAccessStatus)
        end.fault = SshFault::NoAccess;
    return end;
}

std::shared_ptr<const ArchiveSource> sourceOf(const SshTarget &target, std::vector<ArchiveEntry> &&entries,
                                              const ArchiveLimits &limits, QList<ArchiveProblem> &problems)
{
    ArchiveParts parts;
    parts.location.kind = Location::Kind::OtherTree;
    parts.location.place = remoteAddress(target.place);
    parts.location.shown = parts.location.place;
    parts.format = "SFTP";
    parts.entries = std::make_shared<const std::vector<ArchiveEntry>>(std::move(entries));
    parts.tree = std::make_shared<const ArchiveTree>(*parts.entries, ArchiveNames(), limits, problems);
    parts.contents = std::make_shared<RemoteContents>(target, parts.entries, limits.unpacked);
    return std::make_shared<const ArchiveSource>(std::move(parts));
}

} // namespace

TreeFolder RemoteOpening::folder() const
{
    return source ? TreeFolder{source, QStringLiteral("/")} : TreeFolder();
}

RemoteOpening openRemote(const RemotePlace &place, const CancelFlag &cancel, Progress &progress,
                         const ArchiveLimits &limits)
{
    RemoteOpening opening;
    const RemotePlaceFault fault = faultOf(place);
    opening.fault.place = place;
    opening.fault.inPlace = fault == RemotePlaceFault::NoUser ? RemotePlaceFault::None : fault;
    if (opening.fault.isError())
        return opening;
    const SshTarget target{place, qEnvironmentVariable("PATH")};
    const HostAnswer answer = askHost(target, treeCommand(place.folder), listingLimit, cancel, progress);
    opening.fault.end = listingEnd(answer.end);
    if (opening.fault.isError())
        return opening;
    RemoteTreeListing listing = parseTreeListing(answer.output, limits.entries);
    if (!listing.isMarked) {
        opening.fault.end.fault = SshFault::NoListing;
        return opening;
    }
    if (qint64(listing.entries.size()) > limits.entries) {
        listing.entries.resize(std::size_t(limits.entries));
        noteProblem(opening.problems, ArchiveProblem::Kind::TooManyEntries, {});
    } else if (!listing.isWhole) {
        noteProblem(opening.problems, ArchiveProblem::Kind::NotAllListed, {});
    }
    for (qint64 i = 0; i < listing.unlisted; ++i)
        noteProblem(opening.problems, ArchiveProblem::Kind::Unlisted, {});
    opening.source = sourceOf(target, std::move(listing.entries), limits, opening.problems);
    return opening;
}

} // namespace velmora
