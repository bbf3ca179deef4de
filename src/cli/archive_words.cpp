#include "cli/archive_words.h"

#include "cli/command.h"
#include "cli/git_words.h"
#include "cli/remote_words.h"
#include "cli/snapshot_words.h"
#include "core/visible_name.h"

#include <variant>

namespace velmora::cli {

const char *archiveProblemWords(ArchiveProblem::Kind kind)
{
    switch (kind) {
    case ArchiveProblem::Kind::NameLeadsOut:
        return "left out, their names lead out of the tree";
    case ArchiveProblem::Kind::NameUnfit:
        return "left out, no system can hold their names";
    case ArchiveProblem::Kind::TooDeep:
        return "left out, they are in more than 200 folders within each other";
    case ArchiveProblem::Kind::LinkLeadsOut:
        return "links left out, they lead out of the tree";
    case ArchiveProblem::Kind::SameName:
        return "hidden by later entries of the same name";
    case ArchiveProblem::Kind::Overlapping:
        return "not unpacked, they share bytes of the archive with others";
    case ArchiveProblem::Kind::Damaged:
        return "damaged";
    case ArchiveProblem::Kind::Incomplete:
        return "the archive is damaged or cut off here; what comes after is not known";
    case ArchiveProblem::Kind::EndsEncrypted:
        return "what comes after is encrypted in a way that cannot be read, names as well";
    case ArchiveProblem::Kind::Encrypted:
        return "encrypted, not read without the password";
    case ArchiveProblem::Kind::CannotDecrypt:
        return "encrypted in a way that cannot be read";
    case ArchiveProblem::Kind::TooManyEntries:
        return "there are more than 1,000,000 entries; the rest is left out";
    case ArchiveProblem::Kind::TooMuchContent:
        return "unpacking stopped here, at 4 GiB and 250 times the size of the archive";
    case ArchiveProblem::Kind::NestedUnreadable:
        return "archives within that stay files, being damaged, too many or too deep";
    case ArchiveProblem::Kind::NestedTooLarge:
        return "archives within that stay files, as they are opened up to 4 GiB in all";
    case ArchiveProblem::Kind::Unlisted:
        return "not listed, as their names have line feeds";
    case ArchiveProblem::Kind::NotAllListed:
        return "the host could not list everything";
    }
    return "";
}

QString archiveProblemLine(const ArchiveProblem &problem)
{
    QString line = QString::fromLatin1(archiveProblemWords(problem.kind));
    if (!problem.path.isEmpty())
        line += QStringLiteral(": %1").arg(visibleName(problem.path));
    if (problem.count > 1)
        line += QStringLiteral(" and %1 more").arg(problem.count - 1);
    if (!problem.detail.isEmpty())
        line += QStringLiteral(" (%1)").arg(visibleName(problem.detail));
    return line;
}

QString treeFaultText(const QString &path, const TreeAt &tree)
{
    if (const auto *state = std::get_if<StateOpening>(&tree.other))
        return gitFaultText(state->fault);
    if (const auto *remote = std::get_if<RemoteOpening>(&tree.other))
        return remoteFaultText(remote->fault);
    if (const auto *snapshot = std::get_if<SnapshotOpening>(&tree.other); snapshot && !snapshot->reading.ok())
        return QStringLiteral("%1: %2").arg(path, snapshotFaultText(snapshot->reading));
    switch (tree.opening.fault) {
    case ArchiveFault::Unreadable:
        return QStringLiteral("%1: cannot read the file").arg(path);
    case ArchiveFault::Damaged:
        return QStringLiteral("%1: the archive is damaged or cut off, and nothing of it can be read").arg(path);
    case ArchiveFault::HiddenNames:
        return QStringLiteral("%1: all of the archive is encrypted, names as well, in a way that cannot be read")
            .arg(path);
    case ArchiveFault::NoLibrary:
        return QStringLiteral("%1: cannot be read as an archive, as the library libarchive is not installed").arg(path);
    case ArchiveFault::NoArchive:
        return QStringLiteral("%1: is neither a folder nor an archive").arg(path);
    case ArchiveFault::WrongPassword:
        return QStringLiteral("%1: the password does not open the archive").arg(path);
    default:
        return QStringLiteral("%1: there is no such folder or archive").arg(path);
    }
}

bool complainAboutArchive(const Streams &streams, const QString &archive, const QList<ArchiveProblem> &problems)
{
    bool hides = false;
    for (const ArchiveProblem &problem : problems) {
        const bool isHarmless =
            problem.kind == ArchiveProblem::Kind::SameName || problem.kind == ArchiveProblem::Kind::LinkLeadsOut ||
            problem.kind == ArchiveProblem::Kind::NestedUnreadable || problem.kind == ArchiveProblem::Kind::Encrypted ||
            problem.kind == ArchiveProblem::Kind::NestedTooLarge || problem.kind == ArchiveProblem::Kind::CannotDecrypt;
        complain(streams, QStringLiteral("%1%2: %3")
                              .arg(isHarmless ? QStringLiteral("warning: ") : QString(), visibleName(archive),
                                   archiveProblemLine(problem)));
        hides = hides || !isHarmless;
    }
    return hides;
}

} // namespace velmora::cli
