#include "folder/actions/archive_words.h"

#include "session/translate.h"

#include <QDir>
#include <QLocale>

namespace velmora {

namespace {

QString words(ArchiveProblem::Kind kind)
{
    switch (kind) {
    case ArchiveProblem::Kind::NameLeadsOut:
        return Velmora::tr("Left out, as the name leads out of the tree: %1");
    case ArchiveProblem::Kind::NameUnfit:
        return Velmora::tr("Left out, as no system can hold the name: %1");
    case ArchiveProblem::Kind::TooDeep:
        return Velmora::tr("Left out, in more than 200 folders within each other: %1");
    case ArchiveProblem::Kind::LinkLeadsOut:
        return Velmora::tr("Link left out, as it leads out of the tree: %1");
    case ArchiveProblem::Kind::SameName:
        return Velmora::tr("Hidden by a later entry of the same name: %1");
    case ArchiveProblem::Kind::Overlapping:
        return Velmora::tr("Not unpacked, as it shares bytes of the archive with another entry: %1");
    case ArchiveProblem::Kind::Damaged:
        return Velmora::tr("Damaged: %1");
    case ArchiveProblem::Kind::Incomplete:
        return Velmora::tr("The archive is damaged or cut off, and what comes next is not known: %1");
    case ArchiveProblem::Kind::EndsEncrypted:
        return Velmora::tr("What comes next is encrypted in a way that cannot be read, names as well: %1");
    case ArchiveProblem::Kind::Encrypted:
        return Velmora::tr("Encrypted, and not read without the password: %1");
    case ArchiveProblem::Kind::CannotDecrypt:
        return Velmora::tr("Encrypted in a way that cannot be read: %1");
    case ArchiveProblem::Kind::TooManyEntries:
        return Velmora::tr("There are more than 1,000,000 entries; the rest is left out: %1");
    case ArchiveProblem::Kind::TooMuchContent:
        return Velmora::tr("Unpacking stopped at 4 GiB and 250 times the size of the archive: %1");
    case ArchiveProblem::Kind::NestedUnreadable:
        return Velmora::tr("An archive within that stays a file, being damaged, one of too many or too deep: %1");
    case ArchiveProblem::Kind::NestedTooLarge:
        return Velmora::tr("An archive within that stays a file, as those within are opened up to 4 GiB in all: %1");
    case ArchiveProblem::Kind::Unlisted:
        return Velmora::tr("Not listed, for line feeds in the name");
    case ArchiveProblem::Kind::NotAllListed:
        return Velmora::tr("The host could not list everything");
    }
    return {};
}

} // namespace

QString archiveFaultText(const QString &path, const ArchiveOpening &opening)
{
    const QString shown = QDir::toNativeSeparators(path);
    switch (opening.fault) {
    case ArchiveFault::Unreadable:
        return Velmora::tr("Cannot read file: %1").arg(shown);
    case ArchiveFault::Damaged:
        return Velmora::tr("The archive is damaged or cut off, and nothing of it can be read: %1").arg(shown);
    case ArchiveFault::HiddenNames:
        return Velmora::tr("All of the archive is encrypted, names as well, in a way that cannot be read: %1")
            .arg(shown);
    case ArchiveFault::NoLibrary:
        return Velmora::tr("The library libarchive, which reads archives, is not installed: %1").arg(shown);
    case ArchiveFault::NoArchive:
        return Velmora::tr("Neither an archive nor a folder: %1").arg(shown);
    case ArchiveFault::WrongPassword:
        return Velmora::tr("The password does not open the archive: %1").arg(shown);
    case ArchiveFault::Stopped:
        return Velmora::tr("Compare cancelled");
    default:
        return Velmora::tr("There is no such archive or folder: %1").arg(shown);
    }
}

QString archiveProblemText(const ArchiveProblem &problem)
{
    QString text = words(problem.kind).arg(QDir::toNativeSeparators(problem.path));
    if (problem.count > 1)
        text = Velmora::tr("%1 and %2 more").arg(text, QLocale().toString(problem.count - 1));
    return problem.detail.isEmpty() ? text : Velmora::tr("%1 (%2)").arg(text, problem.detail);
}

} // namespace velmora
