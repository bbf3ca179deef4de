#include "folder/sync/sync_words.h"

#include "core/visible_name.h"
#include "folder/actions/action_words.h"
#include "session/shown_path.h"
#include "session/translate.h"

#include <QLocale>

namespace velmora {

QString syncActionName(SyncAction action)
{
    switch (action) {
    case SyncAction::Skip:
        break;
    case SyncAction::CopyToRight:
        return Velmora::tr("Copy to right");
    case SyncAction::CopyToLeft:
        return Velmora::tr("Copy to left");
    case SyncAction::DeleteRight:
        return Velmora::tr("Delete right");
    case SyncAction::DeleteLeft:
        return Velmora::tr("Delete left");
    case SyncAction::MoveOnRight:
        return Velmora::tr("Move on right");
    case SyncAction::MoveOnLeft:
        return Velmora::tr("Move on left");
    }
    return Velmora::tr("Skip");
}

QString syncActionText(SyncAction action)
{
    switch (action) {
    case SyncAction::Skip:
        break;
    case SyncAction::CopyToRight:
        return Velmora::tr("→ Copy to right");
    case SyncAction::CopyToLeft:
        return Velmora::tr("← Copy to left");
    case SyncAction::DeleteRight:
        return Velmora::tr("× Delete right");
    case SyncAction::DeleteLeft:
        return Velmora::tr("× Delete left");
    case SyncAction::MoveOnRight:
        return Velmora::tr("↷ Move on right");
    case SyncAction::MoveOnLeft:
        return Velmora::tr("↷ Move on left");
    }
    return Velmora::tr("— Skip");
}

namespace {

/// What a failed step was to do, and a done one has done; with "%1" for the path.
QString outcomeText(const PlanLine &line)
{
    const bool isRight = line.root == 1;
    switch (line.kind) {
    case OperationKind::Recycle:
    case OperationKind::Delete:
        if (!line.done)
            return Velmora::tr("  ✗ Delete failed: %1");
        return isRight ? Velmora::tr("  × Deleted on right: %1") : Velmora::tr("  × Deleted on left: %1");
    case OperationKind::Move:
        if (!line.done)
            return Velmora::tr("  ✗ Move failed: %1");
        return isRight ? Velmora::tr("  ↷ Moved on right: %1") : Velmora::tr("  ↷ Moved on left: %1");
    default:
        break;
    }
    if (!line.done)
        return Velmora::tr("  ✗ Copy failed: %1");
    return QLatin1String("  ") + syncActionText(isRight ? SyncAction::CopyToRight : SyncAction::CopyToLeft) +
           QLatin1String(" %1");
}

} // namespace

QString syncLogLine(const PlanLine &line)
{
    const QString what = line.reason.isEmpty() || line.path.isEmpty()
                             ? line.path + line.reason
                             : line.path + QLatin1String(" (") + line.reason + u')';
    return line.isLeftOut ? QStringLiteral("  ✗ ") + what : outcomeText(line).arg(what);
}

QString syncSummary(const SyncCounts &counts)
{
    const QLocale locale;
    const QString summary =
        Velmora::tr("Copy right: %1 | Copy left: %2 | Delete: %3 | Skip: %4 | Total: %5")
            .arg(locale.toString(counts.copyToRight), locale.toString(counts.copyToLeft),
                 locale.toString(counts.deletions), locale.toString(counts.skipped), locale.toString(counts.total));
    return counts.moves == 0 ? summary : summary + Velmora::tr(" | Move: %1").arg(locale.toString(counts.moves));
}

QString nameConflictText(const NameConflict &conflict)
{
    const QString name = visibleName(conflict.name);
    switch (conflict.kind) {
    case NameConflict::Kind::Case:
        break;
    case NameConflict::Kind::Form:
        return Velmora::tr("%1 looks like %2, and is written in other Unicode characters")
            .arg(name, visibleName(conflict.other));
    case NameConflict::Kind::NotAllowed:
        return Velmora::tr("%1 has a name that Windows cannot hold").arg(name);
    case NameConflict::Kind::TooLong:
        return Velmora::tr("%1 has a name that is too long for most file systems").arg(name);
    }
    return Velmora::tr("%1 and %2 are one name where the case of letters does not count")
        .arg(name, visibleName(conflict.other));
}

QString syncLossText(const Sides<SyncLoss> &losses, const Sides<QString> &folders)
{
    QStringList texts;
    const QLocale locale;
    for (const Side side : bothSides) {
        const SyncLoss &loss = losses[side];
        if (!loss.isSuspicious())
            continue;
        const QString present = locale.toString(loss.present);
        const QString folder = shownPath(folders[side]);
        // All at once: a path may hold what looks like a place marker.
        texts.append(
            loss.otherIsEmpty
                ? Velmora::tr("%1 has nothing in it, so that all %2 entries of %3 would be deleted. Is a drive "
                              "missing?")
                      .arg(shownPath(folders[otherSide(side)]), present, folder)
                : Velmora::tr("%1 of the %2 entries of %3 would be deleted.")
                      .arg(locale.toString(loss.deleted), present, folder));
    }
    return texts.join(QLatin1String("\n\n"));
}

} // namespace velmora
