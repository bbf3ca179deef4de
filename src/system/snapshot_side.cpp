#include "system/snapshot_side.h"

#include "session/frame/path_edit.h"
#include "session/frame/paths_bar.h"
#include "session/translate.h"

#include <QLineEdit>

namespace velmora {

SnapshotSide::SnapshotSide(const SnapshotKind &kind, Side side, const SnapshotBar::SideActions &actions, PathsBar &bar,
                           QObject *parent)
    : QObject(parent),
      m_live(QLatin1String(kind.liveText)),
      m_shownLive(Velmora::tr(kind.liveText)),
      m_emptyIsLive(kind.emptyIsLive),
      m_field(bar.edit(int(side)))
{
    QLineEdit &line = m_field.lineEdit();
    line.setObjectName(side == Side::Left ? QStringLiteral("leftSnapshot") : QStringLiteral("rightSnapshot"));
    line.setAccessibleName(Velmora::tr(side == Side::Left ? kind.leftLabel : kind.rightLabel));
    bar.addBehind(int(side), actions.capture, Qt::ToolButtonTextBesideIcon);
    bar.addBehind(int(side), actions.load);
    bar.addBehind(int(side), actions.save);

    connect(&line, &QLineEdit::textChanged, this, [this, &line] {
        line.setToolTip(line.text());
        Q_EMIT edited();
    });
    connect(&m_field, &PathEdit::submitted, this, &SnapshotSide::submitted);
}

QString SnapshotSide::place() const
{
    const QString place = m_field.path();
    return place == m_shownLive ? m_live : place;
}

void SnapshotSide::setPlace(const QString &place)
{
    m_field.setPath(place == m_live ? m_shownLive : place);
    m_field.lineEdit().setCursorPosition(0);
}

SideOrder SnapshotSide::orderForCompare() const
{
    const QString here = place();
    if (here.isEmpty())
        return {SideOrder::Source::Capture, {}, {}};
    const SnapshotStamp now = SnapshotStamp::of(here);
    // A file that is gone by now, with the drive it was on perhaps, is still what was loaded from it.
    const bool isUpToDate = isLive() || !now.exists() || now == m_stamp;
    if (holdsSnapshot() && isUpToDate)
        return {SideOrder::Source::Keep, {}, *m_snapshot};
    return isLive() ? SideOrder{SideOrder::Source::Capture, {}, {}} : SideOrder{SideOrder::Source::Load, here, {}};
}

void SnapshotSide::take(const QString &place, const SideResult &result)
{
    m_snapshot = result.snapshot;
    m_snapshotPlace = place;
    m_stamp = result.stamp;
    setPlace(place);
    Q_EMIT edited();
}

void SnapshotSide::takeCompared(const SideResult &result)
{
    const bool wasKept = holdsSnapshot() && !result.stamp.exists();
    if (!result.snapshot || place().isEmpty() || wasKept)
        return;
    m_snapshot = result.snapshot;
    m_snapshotPlace = place();
    m_stamp = result.stamp;
    Q_EMIT edited();
}

void SnapshotSide::setBusy(bool busy)
{
    m_field.lineEdit().setReadOnly(busy);
}

} // namespace velmora
