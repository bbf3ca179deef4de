#include "folder/snapshot/folder_snapshot_words.h"

#include "folder/actions/snapshot_words.h"
#include "session/shown_path.h"
#include "session/translate.h"

#include <QDir>
#include <QLocale>

namespace velmora {

namespace {

QString number(qint64 value)
{
    return QLocale().toString(value);
}

QString timeText(const FolderSnapshotEntry &entry, IsoTimes &times)
{
    if (!entry.modifiedMs)
        return Velmora::tr("no time");
    return QString::fromLatin1(times.text(*entry.modifiedMs)).replace(u'T', u' ');
}

} // namespace

FolderSnapshotWords faultWords(const FolderSnapshotSide &side, const QString &path)
{
    if (side.isMissing)
        return {Velmora::tr("Folder does not exist"), QDir::toNativeSeparators(path)};
    switch (side.reading.fault) {
    case FolderSnapshotFault::None:
    case FolderSnapshotFault::Cancelled:
        return {};
    case FolderSnapshotFault::CannotOpen:
        return {Velmora::tr("Cannot open snapshot: %1").arg(QDir::toNativeSeparators(path)), side.reading.error};
    default:
        return {Velmora::tr("Invalid snapshot format"),
                QDir::toNativeSeparators(path) + QStringLiteral("  \u00b7  ") + snapshotFormText(side.reading)};
    }
}

QString problemsText(qsizetype problems)
{
    return problems > 0 ? Velmora::tr("Could not be read: %1").arg(number(problems)) : QString();
}

FolderSnapshotWords resultWords(const FolderSnapshotComparison &found, qsizetype problems, qsizetype repeated)
{
    const PairCounts &counts = found.counts;
    QStringList details;
    if (found.contentOnly > 0)
        details.append(
            Velmora::tr("Other contents, though size and time are the same: %1").arg(number(found.contentOnly)));
    if (found.moved > 0)
        details.append(Velmora::tr("Moved: %1").arg(number(found.moved)));
    if (problems > 0)
        details.append(problemsText(problems));
    if (repeated > 0)
        details.append(Velmora::tr("%1 name(s) more than once; the last one counts").arg(repeated));
    return {Velmora::tr("Compare finished — right only %1, left only %2, changed %3, same %4")
                .arg(counts.rightOnly)
                .arg(counts.leftOnly)
                .arg(counts.changed)
                .arg(counts.same),
            details.join(QStringLiteral("   "))};
}

QString progressText(const ProgressState &state)
{
    switch (FolderSnapshotPhase(state.phase)) {
    case FolderSnapshotPhase::Walking:
        return Velmora::tr("Reading folders: %1 entries").arg(number(state.done));
    case FolderSnapshotPhase::Hashing:
        return Velmora::tr("Computing SHA-256: %1").arg(shownPath(state.item));
    case FolderSnapshotPhase::Loading:
        return Velmora::tr("Reading a snapshot");
    }
    return {};
}

QString entryText(const FolderSnapshotEntry &entry, IsoTimes &times)
{
    return Velmora::tr("%1 bytes").arg(number(entry.size)) + QStringLiteral(",  ") + timeText(entry, times);
}

QString entryDetails(const FolderSnapshotEntry &entry, IsoTimes &times)
{
    QStringList lines{Velmora::tr("Size: %1 bytes").arg(number(entry.size)),
                      Velmora::tr("Modified: %1").arg(timeText(entry, times))};
    if (!entry.digest.isEmpty())
        lines.append(QStringLiteral("SHA-256: ") + QString::fromLatin1(entry.digest.toHex()));
    return lines.join(u'\n');
}

} // namespace velmora
