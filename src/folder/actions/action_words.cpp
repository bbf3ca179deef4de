#include "folder/actions/action_words.h"

#include "session/fault_text.h"
#include "session/shown_path.h"
#include "session/translate.h"

#include <QLocale>
#include <QStringList>

#include <array>

namespace velmora {

namespace {

/// By `LeftOutReason`.
constexpr std::array<const char *, 19> reasonTexts{
    QT_TRANSLATE_NOOP("Velmora", "A file on one side is a folder on the other; delete one of them first"),
    QT_TRANSLATE_NOOP("Velmora", "Hidden by a filter"),
    QT_TRANSLATE_NOOP("Velmora", "The folder stays, since a filter hides something in it"),
    QT_TRANSLATE_NOOP("Velmora", "The folder stays, since it holds something that is not listed"),
    QT_TRANSLATE_NOOP("Velmora", "The side is read-only"),
    QT_TRANSLATE_NOOP("Velmora", "The files differ, and neither is newer"),
    QT_TRANSLATE_NOOP("Velmora", "Another selected entry has the same name"),
    QT_TRANSLATE_NOOP("Velmora", "Something of this name is there already"),
    QT_TRANSLATE_NOOP("Velmora", "A folder cannot go into itself"),
    QT_TRANSLATE_NOOP("Velmora", "It is reached through a link only"),
    QT_TRANSLATE_NOOP("Velmora", "It has changed since it was compared; refresh first"),
    QT_TRANSLATE_NOOP("Velmora", "It cannot be read"),
    QT_TRANSLATE_NOOP("Velmora", "It is neither a file nor a folder nor a link"),
    QT_TRANSLATE_NOOP("Velmora", "The name is not allowed there"),
    QT_TRANSLATE_NOOP("Velmora", "It is not on this side"),
    QT_TRANSLATE_NOOP("Velmora", "What was there before has not been kept"),
    QT_TRANSLATE_NOOP("Velmora", "It is in the recycle bin; take it out there"),
    QT_TRANSLATE_NOOP("Velmora", "It is no longer in the recycle bin"),
    QT_TRANSLATE_NOOP("Velmora", "Another entry lies at its place in the recycle bin; it stays there"),
};
static_assert(reasonTexts.size() == std::size_t(LeftOutReason::OtherInRecycleBin) + 1);

/// By `OperationErrorCode`.
constexpr std::array<const char *, 25> errorTexts{
    "",
    "", // has more to say
    QT_TRANSLATE_NOOP("Velmora", "It is no longer there"),
    QT_TRANSLATE_NOOP("Velmora", "It has changed meanwhile"),
    QT_TRANSLATE_NOOP("Velmora", "The file to be replaced has changed meanwhile"),
    QT_TRANSLATE_NOOP("Velmora", "Something of this name has appeared meanwhile"),
    QT_TRANSLATE_NOOP("Velmora", "It is on the other side by now, or cannot be looked for there"),
    QT_TRANSLATE_NOOP("Velmora", "It is no longer the same as the copy that was to go, which stays"),
    QT_TRANSLATE_NOOP("Velmora", "A link stands where a folder was; links are not followed"),
    QT_TRANSLATE_NOOP("Velmora", "The folder is not empty"),
    QT_TRANSLATE_NOOP("Velmora", "Nothing is deleted in a folder in which something went wrong"),
    QT_TRANSLATE_NOOP("Velmora", "The name is not allowed there"),
    QT_TRANSLATE_NOOP("Velmora", "It cannot be read"),
    QT_TRANSLATE_NOOP("Velmora", "It cannot be written: protected, or in use by another program"),
    QT_TRANSLATE_NOOP("Velmora", "The disk is full"),
    QT_TRANSLATE_NOOP("Velmora", "The copy was not the same and has been removed"),
    QT_TRANSLATE_NOOP("Velmora", "The old contents could not be kept for undoing; nothing was changed"),
    QT_TRANSLATE_NOOP("Velmora", "The journal of operations cannot be written; nothing was changed"),
    QT_TRANSLATE_NOOP("Velmora", "There is no recycle bin for it"),
    reasonTexts[std::size_t(LeftOutReason::OtherInRecycleBin)],
    QT_TRANSLATE_NOOP("Velmora", "The copy is in place, and the source could not be removed"),
    QT_TRANSLATE_NOOP("Velmora", "Done, but its time or permissions could not be kept"),
    QT_TRANSLATE_NOOP("Velmora", "Done, but the system could not confirm that it has reached the disk"),
    QT_TRANSLATE_NOOP("Velmora", "This cannot be done with such an entry"),
    QT_TRANSLATE_NOOP("Velmora", "Cancelled in the middle; what was begun has been taken back"),
};
static_assert(errorTexts.size() == std::size_t(OperationErrorCode::Cancelled) + 1);

/// By `PlanRefusal`.
constexpr std::array<const char *, 7> refusalTexts{
    "",
    QT_TRANSLATE_NOOP("Velmora", "The side to be written is read-only."),
    QT_TRANSLATE_NOOP("Velmora", "The two folders are the same, or one lies in the other."),
    QT_TRANSLATE_NOOP("Velmora", "A folder is missing or cannot be opened."),
    QT_TRANSLATE_NOOP("Velmora", "This name is not allowed."),
    QT_TRANSLATE_NOOP("Velmora", "This works on files in folders of this computer only."),
    "",
};
static_assert(refusalTexts.size() == std::size_t(PlanRefusal::Cancelled) + 1);

/// Why a run has ended before its time.
QString lostText(const OperationProblem &problem)
{
    const QString path = shownPath(problem.path);
    const QString text =
        problem.reason.isEmpty()
            ? Velmora::tr("The folder %1 is no longer where it was: another one is there now.").arg(path)
            : Velmora::tr("The folder %1 is no longer where it was: %2.").arg(path, problem.reason);
    return text + u' ' + Velmora::tr("The run has been stopped. Not done: %1").arg(QLocale().toString(problem.steps));
}

/// With the system's own words behind it.
QString withReason(const char *text, const QString &reason)
{
    const QString said = Velmora::tr(text);
    return reason.isEmpty() ? said : Velmora::tr("%1 (%2)").arg(said, reason);
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
    return withReason(reasonTexts[std::size_t(entry.reason)], entry.detail);
}

QString refusalText(const OperationPlan &plan)
{
    if (!plan.refusedAt.isEmpty())
        return Velmora::tr("The folder %1 is missing, cannot be opened, or is another one than it was.")
            .arg(shownPath(plan.refusedAt));
    const char *const text = refusalTexts[std::size_t(plan.refusal)];
    return *text ? Velmora::tr(text) : QString();
}

QString problemText(const OperationProblem &problem)
{
    if (problem.code == OperationErrorCode::RootMissing)
        return lostText(problem);
    if (problem.steps > 1)
        return Velmora::tr("Something went wrong in it, so %1 deletions have been left undone")
            .arg(QLocale().toString(problem.steps));
    return withReason(errorTexts[std::size_t(problem.code)], problem.reason);
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
    const auto add = [&parts](qint64 number, const char *text, qint64 bytes) {
        if (number > 0)
            parts.append(Velmora::tr(text).arg(QLocale().toString(number), sizeText(bytes)));
    };
    add(totals.writtenFiles, QT_TRANSLATE_NOOP("Velmora", "New files: %1 (%2)"), totals.writtenBytes);
    add(totals.replacedFiles, QT_TRANSLATE_NOOP("Velmora", "Replaced: %1 (%2)"), totals.replacedBytes);
    add(totals.deletedFiles, QT_TRANSLATE_NOOP("Velmora", "Deleted: %1 (%2)"), totals.deletedBytes);
    const auto addPlain = [&parts](qint64 number, const char *text) {
        if (number > 0)
            parts.append(Velmora::tr(text).arg(QLocale().toString(number)));
    };
    addPlain(totals.madeFolders, QT_TRANSLATE_NOOP("Velmora", "New folders: %1"));
    addPlain(totals.deletedFolders, QT_TRANSLATE_NOOP("Velmora", "Deleted folders: %1"));
    addPlain(totals.deletedUnlisted, QT_TRANSLATE_NOOP("Velmora", "Deleted although hidden or not listed: %1"));
    return parts.join(totalsSeparator);
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
