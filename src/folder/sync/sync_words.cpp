#include "folder/sync/sync_words.h"

#include "folder/actions/action_words.h"
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
    }
    return Velmora::tr("— Skip");
}

QString syncLogLine(const PlanLine &line)
{
    const QString what = line.reason.isEmpty() || line.path.isEmpty()
                             ? line.path + line.reason
                             : line.path + QLatin1String(" (") + line.reason + u')';
    if (line.isLeftOut)
        return QStringLiteral("  ✗ ") + what;
    if (!line.done)
        return (line.isDeletion ? Velmora::tr("  ✗ Delete failed: %1") : Velmora::tr("  ✗ Copy failed: %1")).arg(what);
    const bool isRight = line.root == 1;
    if (line.isDeletion)
        return (isRight ? Velmora::tr("  × Deleted on right: %1") : Velmora::tr("  × Deleted on left: %1")).arg(what);
    return QLatin1String("  ") + syncActionText(isRight ? SyncAction::CopyToRight : SyncAction::CopyToLeft) + u' ' +
           what;
}

QString syncSummary(const SyncCounts &counts)
{
    const QLocale locale;
    return Velmora::tr("Copy right: %1 | Copy left: %2 | Delete: %3 | Skip: %4 | Total: %5")
        .arg(locale.toString(counts.copyToRight), locale.toString(counts.copyToLeft), locale.toString(counts.deletions),
             locale.toString(counts.skipped), locale.toString(counts.total));
}

QString syncLossText(const Sides<SyncLoss> &losses, const Sides<QString> &folders)
{
    QStringList texts;
    const QLocale locale;
    for (const Side side : bothSides) {
        const SyncLoss &loss = losses[side];
        if (!loss.isSuspicious())
            continue;
        const QString text = loss.otherIsEmpty ? Velmora::tr("%4 has nothing in it, so that all %2 entries of %3 would "
                                                             "be deleted. Is a drive missing?")
                                               : Velmora::tr("%1 of the %2 entries of %3 would be deleted.");
        // All at once: a path may hold what looks like a place marker.
        texts.append(text.arg(locale.toString(loss.deleted), locale.toString(loss.present), shownPath(folders[side]),
                              shownPath(folders[otherSide(side)])));
    }
    return texts.join(QLatin1String("\n\n"));
}

} // namespace velmora
