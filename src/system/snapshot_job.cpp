#include "system/snapshot_job.h"

#include <QFileInfo>

namespace velmora {

namespace {

SideResult load(const QString &path, SnapshotForm form, const CancelFlag &cancel)
{
    SideResult result;
    result.stamp = SnapshotStamp::of(path); // of before: a change while it is read shows then
    SnapshotReading reading = loadSnapshot(path, form, cancel);
    result.loadFault = reading.fault;
    result.detail = reading.detail;
    result.repeated = reading.repeated;
    if (reading.ok())
        result.snapshot = std::move(reading.snapshot);
    return result;
}

SideResult capture(const SnapshotKind &kind, const CancelFlag &cancel, Progress &progress)
{
    SideResult result;
    SnapshotCapture captured = kind.capture(cancel, progress);
    result.captureFault = captured.fault;
    result.detail = captured.detail;
    if (captured.ok())
        result.snapshot = std::move(captured.snapshot);
    return result;
}

SideResult get(const SideOrder &order, const SnapshotKind &kind, const CancelFlag &cancel, Progress &progress)
{
    SideResult result;
    if (order.source == SideOrder::Source::Keep)
        result.snapshot = order.kept;
    else if (order.source == SideOrder::Source::Load)
        result = load(order.path, kind.form, cancel);
    else if (order.source == SideOrder::Source::Capture)
        result = capture(kind, cancel, progress);
    return result;
}

} // namespace

SnapshotStamp SnapshotStamp::of(const QString &path)
{
    const QFileInfo info(path);
    return info.exists() ? SnapshotStamp{info.lastModified(), info.size()} : SnapshotStamp();
}

SnapshotOutcome carryOut(const SnapshotOrder &order, const SnapshotKind &kind, const CancelFlag &cancel,
                         Progress &progress)
{
    using enum SideOrder::Source;
    SnapshotOutcome outcome;
    outcome.left = get(order.left, kind, cancel, progress);
    outcome.right = order.left.source == Capture && order.right.source == Capture
                        ? outcome.left
                        : get(order.right, kind, cancel, progress);
    if (order.compare && outcome.left.snapshot && outcome.right.snapshot)
        outcome.rows = compareSnapshots(*outcome.left.snapshot, *outcome.right.snapshot, kind.match);
    return outcome;
}

} // namespace velmora
