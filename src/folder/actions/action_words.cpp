#include "folder/actions/action_words.h"

#include "core/visible_name.h"
#include "session/fault_text.h"
#include "session/translate.h"

#include <QDir>
#include <QLocale>
#include <QStringList>

namespace velmora {

namespace {

const char *reasonText(LeftOutReason reason)
{
    switch (reason) {
    case LeftOutReason::FileAgainstFolder:
        return QT_TRANSLATE_NOOP("Velmora", "A file on one side is a folder on the other; delete one of them first");
    case LeftOutReason::HiddenByFilter:
        return QT_TRANSLATE_NOOP("Velmora", "Hidden by a filter");
    case LeftOutReason::HoldsHiddenEntries:
        return QT_TRANSLATE_NOOP("Velmora", "The folder stays, since a filter hides something in it");
    case LeftOutReason::HoldsUnlistedEntries:
        return QT_TRANSLATE_NOOP("Velmora", "The folder stays, since it holds something that is not listed");
    case LeftOutReason::ReadOnlySide:
        return QT_TRANSLATE_NOOP("Velmora", "The side is read-only");
    case LeftOutReason::TimesAreEqual:
        return QT_TRANSLATE_NOOP("Velmora", "The files differ, and neither is newer");
    case LeftOutReason::NameTaken:
        return QT_TRANSLATE_NOOP("Velmora", "Another selected entry has the same name");
    case LeftOutReason::TargetExists:
        return QT_TRANSLATE_NOOP("Velmora", "Something of this name is there already");
    case LeftOutReason::IntoItself:
        return QT_TRANSLATE_NOOP("Velmora", "A folder cannot go into itself");
    case LeftOutReason::BelowLink:
        return QT_TRANSLATE_NOOP("Velmora", "It is reached through a link only");
    case LeftOutReason::ChangedSinceCompared:
        return QT_TRANSLATE_NOOP("Velmora", "It has changed since it was compared; refresh first");
    case LeftOutReason::NotReadable:
        return QT_TRANSLATE_NOOP("Velmora", "It cannot be read");
    case LeftOutReason::UnsupportedKind:
        return QT_TRANSLATE_NOOP("Velmora", "It is neither a file nor a folder nor a link");
    case LeftOutReason::NameNotAllowed:
        return QT_TRANSLATE_NOOP("Velmora", "The name is not allowed there");
    case LeftOutReason::OldContentsGone:
        return QT_TRANSLATE_NOOP("Velmora", "What was there before has not been kept");
    case LeftOutReason::InRecycleBin:
        return QT_TRANSLATE_NOOP("Velmora", "It is in the recycle bin; take it out there");
    case LeftOutReason::NotInRecycleBin:
        return QT_TRANSLATE_NOOP("Velmora", "It is no longer in the recycle bin");
    case LeftOutReason::OtherInRecycleBin:
        return QT_TRANSLATE_NOOP("Velmora", "Another entry lies at its place in the recycle bin; it stays there");
    case LeftOutReason::NoPlaceOnThisSide:
        return QT_TRANSLATE_NOOP("Velmora", "It is not on this side");
    }
    return "";
}

const char *errorText(OperationErrorCode code)
{
    switch (code) {
    case OperationErrorCode::None:
        return "";
    case OperationErrorCode::RootMissing:
        return QT_TRANSLATE_NOOP("Velmora", "The folder is gone or is another one now");
    case OperationErrorCode::SourceMissing:
        return QT_TRANSLATE_NOOP("Velmora", "It is no longer there");
    case OperationErrorCode::SourceChanged:
        return QT_TRANSLATE_NOOP("Velmora", "It has changed meanwhile");
    case OperationErrorCode::TargetChanged:
        return QT_TRANSLATE_NOOP("Velmora", "The file to be replaced has changed meanwhile");
    case OperationErrorCode::TargetAppeared:
        return QT_TRANSLATE_NOOP("Velmora", "Something of this name has appeared meanwhile");
    case OperationErrorCode::CounterpartAppeared:
        return QT_TRANSLATE_NOOP("Velmora", "It is on the other side by now, or cannot be looked for there");
    case OperationErrorCode::LeadsOutside:
        return QT_TRANSLATE_NOOP("Velmora", "A link stands where a folder was; links are not followed");
    case OperationErrorCode::FolderNotEmpty:
        return QT_TRANSLATE_NOOP("Velmora", "The folder is not empty");
    case OperationErrorCode::TroubleInBranch:
        return QT_TRANSLATE_NOOP("Velmora", "Nothing is deleted in a folder in which something went wrong");
    case OperationErrorCode::NameNotAllowed:
        return QT_TRANSLATE_NOOP("Velmora", "The name is not allowed there");
    case OperationErrorCode::NotReadable:
        return QT_TRANSLATE_NOOP("Velmora", "It cannot be read");
    case OperationErrorCode::NotWritable:
        return QT_TRANSLATE_NOOP("Velmora", "It cannot be written: protected, or in use by another program");
    case OperationErrorCode::NoSpace:
        return QT_TRANSLATE_NOOP("Velmora", "The disk is full");
    case OperationErrorCode::NotTheSame:
        return QT_TRANSLATE_NOOP("Velmora", "The copy was not the same and has been removed");
    case OperationErrorCode::NotKept:
        return QT_TRANSLATE_NOOP("Velmora", "The old contents could not be kept for undoing; nothing was changed");
    case OperationErrorCode::NotJournalled:
        return QT_TRANSLATE_NOOP("Velmora", "The journal of operations cannot be written; nothing was changed");
    case OperationErrorCode::NoRecycleBin:
        return QT_TRANSLATE_NOOP("Velmora", "There is no recycle bin for it");
    case OperationErrorCode::OtherInBin:
        return reasonText(LeftOutReason::OtherInRecycleBin);
    case OperationErrorCode::SourceStays:
        return QT_TRANSLATE_NOOP("Velmora", "The copy is in place, and the source could not be removed");
    case OperationErrorCode::AttributesLost:
        return QT_TRANSLATE_NOOP("Velmora", "Done, but its time or permissions could not be kept");
    case OperationErrorCode::NotOnDiskForSure:
        return QT_TRANSLATE_NOOP("Velmora", "Done, but the system could not confirm that it has reached the disk");
    case OperationErrorCode::Unsupported:
        return QT_TRANSLATE_NOOP("Velmora", "This cannot be done with such an entry");
    case OperationErrorCode::Cancelled:
        return QT_TRANSLATE_NOOP("Velmora", "Cancelled in the middle; what was begun has been taken back");
    }
    return "";
}

/// With the system's own words behind it.
QString withReason(const char *text, const QString &reason)
{
    const QString said = Velmora::tr(text);
    return reason.isEmpty() ? said : Velmora::tr("%1 (%2)").arg(said, reason);
}

QString filesText(qint64 files, qint64 bytes, const char *text)
{
    return Velmora::tr(text).arg(QLocale().toString(files), sizeText(bytes));
}

} // namespace

QString sizeText(qint64 bytes)
{
    // The locale has no translation of this one unit.
    constexpr qint64 kilobyte = 1024;
    if (bytes < kilobyte)
        return Velmora::tr("%1 bytes").arg(QLocale().toString(bytes));
    return QLocale().formattedDataSize(bytes, 1, QLocale::DataSizeTraditionalFormat);
}

QString entrySizeText(bool isFolder, qint64 bytes)
{
    return isFolder ? Velmora::tr("<folder>") : sizeText(bytes);
}

QString leftOutText(const LeftOutEntry &entry)
{
    return withReason(reasonText(entry.reason), entry.detail);
}

QString refusalText(PlanRefusal refusal)
{
    switch (refusal) {
    case PlanRefusal::ReadOnlySide:
        return Velmora::tr("The side to be written is read-only.");
    case PlanRefusal::OverlappingRoots:
        return Velmora::tr("The two folders are the same, or one lies in the other.");
    case PlanRefusal::RootMissing:
        return Velmora::tr("A folder is missing or cannot be opened.");
    case PlanRefusal::NameNotAllowed:
        return Velmora::tr("This name is not allowed.");
    case PlanRefusal::NoLocalFolder:
        return Velmora::tr("This works on files in folders of this computer only.");
    case PlanRefusal::None:
    case PlanRefusal::Cancelled:
        return {};
    }
    return {};
}

QString problemText(const OperationProblem &problem)
{
    if (problem.steps > 1)
        return Velmora::tr("Something went wrong in it, so %1 deletions have been left undone")
            .arg(QLocale().toString(problem.steps));
    return withReason(errorText(problem.code), problem.reason);
}

QString endText(RunEnd end, const RunFault &fault)
{
    if (end == RunEnd::Done)
        return {};
    return end == RunEnd::Cancelled ? Velmora::tr("Cancelled") : faultText(fault, Velmora::tr("Not enough memory"));
}

QString totalsText(const OperationTotals &totals)
{
    QStringList parts;
    if (totals.writtenFiles > 0)
        parts.append(
            filesText(totals.writtenFiles, totals.writtenBytes, QT_TRANSLATE_NOOP("Velmora", "New files: %1 (%2)")));
    if (totals.replacedFiles > 0)
        parts.append(
            filesText(totals.replacedFiles, totals.replacedBytes, QT_TRANSLATE_NOOP("Velmora", "Replaced: %1 (%2)")));
    if (totals.deletedFiles > 0)
        parts.append(
            filesText(totals.deletedFiles, totals.deletedBytes, QT_TRANSLATE_NOOP("Velmora", "Deleted: %1 (%2)")));
    if (totals.madeFolders > 0)
        parts.append(Velmora::tr("New folders: %1").arg(QLocale().toString(totals.madeFolders)));
    if (totals.deletedFolders > 0)
        parts.append(Velmora::tr("Deleted folders: %1").arg(QLocale().toString(totals.deletedFolders)));
    if (totals.deletedUnlisted > 0)
        parts.append(
            Velmora::tr("Deleted although hidden or not listed: %1").arg(QLocale().toString(totals.deletedUnlisted)));
    return parts.join(totalsSeparator);
}

QString shownPath(const QString &path)
{
    return visibleName(QDir::toNativeSeparators(path));
}

QString toolTipText(const QString &text)
{
    return QLatin1String("<p>") + text.toHtmlEscaped() + QLatin1String("</p>");
}

QString logTime(const QTime &time)
{
    return time.toString(QStringLiteral("hh:mm:ss"));
}

} // namespace velmora
