#include "folder/operations/operation_plan.h"

namespace velmora {

namespace {

/// Whole milliseconds, rounded down as comparisons have them.
qint64 milliseconds(qint64 ns)
{
    constexpr qint64 unit = 1'000'000;
    return (ns - (ns % unit + unit) % unit) / unit;
}

} // namespace

SeenEntry SeenEntry::absent()
{
    SeenEntry entry;
    entry.state = State::Absent;
    return entry;
}

SeenEntry SeenEntry::exactly(const NodeState &node)
{
    SeenEntry entry;
    entry.state = State::Exact;
    entry.kind = node.kind;
    entry.size = node.kind == NodeKind::File ? node.size : 0;
    entry.modifiedNs = node.modifiedNs;
    entry.identity = node.identity;
    return entry;
}

bool SeenEntry::isStill(const NodeState &node) const
{
    switch (state) {
    case State::Unknown:
        return true;
    case State::Absent:
        return false;
    case State::Listed:
        // A comparison looks through links: of the link itself it knows nothing.
        if (node.kind == NodeKind::Link)
            return true;
        if (kind != node.kind)
            return false;
        return kind != NodeKind::File ||
               (size == node.size && milliseconds(modifiedNs) == milliseconds(node.modifiedNs));
    case State::Exact:
        if (kind != node.kind || (identity && node.identity && identity != node.identity))
            return false;
        return kind == NodeKind::Folder ||
               (modifiedNs == node.modifiedNs && (kind != NodeKind::File || size == node.size));
    }
    return false;
}

bool SeenEntry::isUntouched(const NodeState &node) const
{
    return isStill(node) && (node.kind != NodeKind::Folder || modifiedNs == node.modifiedNs);
}

void OperationTotals::add(const OperationStep &step)
{
    const bool isFolder = step.fromSeen.kind == NodeKind::Folder;
    const qint64 bytes = step.fromSeen.size;
    switch (step.kind) {
    case OperationKind::MakeFolder:
        ++madeFolders;
        break;
    case OperationKind::Copy:
    case OperationKind::Move:
    case OperationKind::Restore:
        if (step.toSeen.isPresent()) {
            ++replacedFiles;
            replacedBytes += bytes;
        } else {
            writtenFiles += step.fromSeen.files;
            writtenBytes += bytes;
        }
        break;
    case OperationKind::Replace:
        ++replacedFiles;
        replacedBytes += bytes;
        break;
    case OperationKind::Recycle:
    case OperationKind::Delete:
        if (isFolder)
            ++deletedFolders;
        deletedUnlisted += step.unlisted;
        deletedFiles += step.fromSeen.files;
        deletedBytes += bytes;
        break;
    }
}

OperationTotals OperationPlan::totals() const
{
    OperationTotals totals;
    for (const OperationStep &step : steps)
        totals.add(step);
    return totals;
}

QString OperationPlan::pathOf(const Place &place) const
{
    if (!place.isSet() || place.root >= roots.size())
        return {};
    const QString &root = roots[place.root].path;
    if (place.relative.isEmpty())
        return root;
    return root.endsWith(u'/') ? root + place.relative : root + u'/' + place.relative;
}

} // namespace velmora
