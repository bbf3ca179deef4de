#include "vfs/place/state_source.h"

#include "vfs/git/git_objects.h"
#include "vfs/place/state_contents.h"

#include <QDir>

#include <utility>
#include <vector>

namespace velmora {

namespace {

/// Makes entries of what a tree lists.
class StateReader {
public:
    StateReader(const GitTree &tree, const ArchiveLimits &limits, StateOpening &opening, const CancelFlag &cancel)
        : m_limits(limits),
          m_opening(opening),
          m_cancel(cancel),
          m_timeMs(tree.timeMs),
          m_objects(tree.repository.caller(), tree.extras().variables)
    {}

    /// False when there are more than are taken up.
    bool add(const SizedGitFile &sized)
    {
        const QString &path = sized.file.path;
        if (qint64(entries.size()) == m_limits.entries) {
            note(ArchiveProblem::Kind::TooManyEntries, path);
            return false;
        }
        if (leadsElsewhere(path)) {
            note(ArchiveProblem::Kind::NameLeadsOut, path);
            return true;
        }
        const std::string bytes = nativeName(path);
        ArchiveEntry entry;
        entry.name = {bytes.data(), qsizetype(bytes.size())};
        entry.size = qMax<qint64>(sized.size, 0);
        entry.modifiedMs = m_timeMs;
        entry.position = qint64(entries.size());
        entry.mode = sized.file.entry.mode & 0777U;
        if (sized.file.entry.isSubmodule()) {
            entry.kind = ArchiveEntryKind::Folder;
            entry.name += '/';
        } else if (sized.file.entry.isLink()) {
            entry.kind = ArchiveEntryKind::Link;
            entry.target = targetOf(sized);
        } else if (sized.size < 0) {
            note(ArchiveProblem::Kind::Damaged, path);
        }
        names.push_back(sized.file.entry.name);
        entries.push_back(std::move(entry));
        return true;
    }

    std::vector<ArchiveEntry> entries;
    std::vector<QByteArray> names; ///< of their contents

private:
    QByteArray targetOf(const SizedGitFile &link)
    {
        constexpr qint64 longest = 4096; // a system takes no longer one
        QByteArray target;
        const auto take = [&target](QByteArrayView bytes) {
            target += bytes.toByteArray();
            return true;
        };
        const bool isRead = link.size > 0 && link.size <= longest && !m_cancel.isCancelled() &&
                            m_objects.read(link.file.entry.name, link.size, take, m_cancel);
        if (!isRead)
            note(ArchiveProblem::Kind::Damaged, link.file.path);
        return isRead ? target : QByteArray();
    }

    void note(ArchiveProblem::Kind kind, const QString &path) { noteProblem(m_opening.problems, kind, path); }

    const ArchiveLimits &m_limits;
    StateOpening &m_opening;
    const CancelFlag &m_cancel;
    qint64 m_timeMs;
    GitObjects m_objects;
};

std::shared_ptr<const ArchiveSource> sourceOf(const GitTree &tree, const GitPlace &place, StateReader &&read,
                                              const ArchiveLimits &limits, QList<ArchiveProblem> &problems)
{
    ArchiveParts parts;
    parts.location.kind = Location::Kind::OtherTree;
    parts.location.place = gitPlaceText({place.side, tree.repository.place()});
    parts.location.shown = gitPlaceText({place.side, QDir::toNativeSeparators(tree.repository.place())});
    parts.format = "Git tree";
    parts.entries = std::make_shared<const std::vector<ArchiveEntry>>(std::move(read.entries));
    parts.tree = std::make_shared<const ArchiveTree>(*parts.entries, ArchiveNames(), limits, problems);
    parts.hasFileTimes = false; // all have that of the commit
    parts.digestKind = tree.repository.algorithm;
    for (std::size_t i = 0; i < read.names.size(); ++i) {
        if ((*parts.entries)[i].kind == ArchiveEntryKind::File)
            parts.digests.insert(qint32(i), QByteArray::fromHex(read.names[i]));
    }
    parts.contents = std::make_shared<StateContents>(tree, parts.entries, std::move(read.names), limits.unpacked);
    return std::make_shared<const ArchiveSource>(std::move(parts));
}

} // namespace

TreeFolder StateOpening::folder() const
{
    return source ? TreeFolder{source, inside.isEmpty() ? QStringLiteral("/") : inside} : TreeFolder();
}

StateOpening openState(const GitPlace &place, const StateOpening &before, const CancelFlag &cancel,
                       const ArchiveLimits &limits)
{
    StateOpening opening;
    const GitTree tree = findGitTree(place, cancel);
    opening.inside = tree.inside;
    opening.tree = tree.name;
    opening.fault = tree.fault;
    if (tree.fault.isError())
        return opening;
    const QString shown = gitPlaceText({place.side, tree.repository.place()});
    if (before.source && before.tree == tree.name && before.source->location().place == shown) {
        opening.source = before.source;
        opening.problems = before.problems;
    } else {
        const GitTreeFiles listed = listGitTree(tree, cancel);
        StateReader reader(tree, limits, opening, cancel);
        for (const SizedGitFile &file : listed.files) {
            if (!reader.add(file))
                break;
        }
        opening.fault = cancel.isCancelled() ? GitFault{GitFaultKind::Stopped, {}, {}} : listed.fault;
        if (opening.fault.isError())
            return opening;
        opening.source = sourceOf(tree, place, std::move(reader), limits, opening.problems);
    }
    const std::optional<FolderEntry> folder = opening.source->describe(opening.inside, HiddenEntries::Listed);
    if (opening.inside.isEmpty())
        return opening;
    if (!folder || folder->kind != EntryKind::Folder) {
        opening.fault = {GitFaultKind::NoFolder, place.path, {}};
        opening.source = nullptr;
    }
    return opening;
}

} // namespace velmora
