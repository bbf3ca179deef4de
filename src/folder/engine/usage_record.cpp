#include "folder/engine/usage_record.h"

#include "folder/engine/snapshot_usage.h"
#include "vfs/snapshot/folder_snapshot_file.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>
#include <optional>
#include <vector>

namespace velmora {

namespace {

/// What a size may be at most, so that sums of very many do not pass the largest number.
constexpr double mostBytes = 1e15;
constexpr int mostDepth = 0xFFFF;
/// More than that is no list of folders but something else.
constexpr qint64 largestFile = qint64(2) << 30;

std::optional<qint64> wholeNumber(const QJsonValue &value, double most)
{
    const double number = value.toDouble(-1);
    if (number < 0 || number > most || std::floor(number) != number)
        return std::nullopt;
    return qint64(number);
}

/// Puts the nodes of a list into a tree; false when one of them cannot stand where it does.
bool appendNodes(const QJsonArray &nodes, UsageTree &tree)
{
    std::vector<qint32> around; // the folders that the next node may be in, by depth
    for (const QJsonValue &value : nodes) {
        const QJsonObject object = value.toObject();
        const std::optional<qint64> depth = wholeNumber(object.value(QLatin1String("depth")), mostDepth);
        const std::optional<qint64> size = wholeNumber(object.value(QLatin1String("size")), mostBytes);
        const QJsonValue name = object.value(QLatin1String("name"));
        const bool isRoot = tree.isEmpty();
        if (!depth || !size || !name.isString() || name.toString().size() > mostDepth ||
            std::size_t(*depth) > around.size() || (*depth == 0) != isRoot)
            return false;
        UsageTree::Node node;
        around.resize(std::size_t(*depth));
        node.parent = around.empty() ? -1 : around.back();
        node.size = *size;
        node.isFolder = object.value(QLatin1String("folder")).toBool();
        tree.append(node, name.toString());
        if (node.isFolder)
            around.push_back(tree.size() - 1);
    }
    return !tree.isEmpty();
}

UsageRecord faulty(UsageRecord::Fault fault, const QString &error = {})
{
    UsageRecord record;
    record.fault = fault;
    record.error = error;
    return record;
}

} // namespace

UsageRecord usageFromJson(const QByteArray &json)
{
    const QJsonObject object = QJsonDocument::fromJson(json).object();
    UsageRecord record;
    record.tree = UsageTree(object.value(QLatin1String("folder")).toString());
    record.listsFiles = object.value(QLatin1String("files")).toBool();
    record.withHidden = object.value(QLatin1String("hidden")).toBool();
    const std::optional<qint64> depth = wholeNumber(object.value(QLatin1String("depth")), mostDepth);
    if (!depth || !appendNodes(object.value(QLatin1String("nodes")).toArray(), record.tree))
        return faulty(UsageRecord::Fault::Unknown);
    record.maxDepth = int(*depth);
    record.tree.complete();
    return record;
}

UsageRecord loadUsageRecord(const QString &path, const CancelFlag &cancel, Progress &progress)
{
    const FolderSnapshotReading reading = loadFolderSnapshot(path, cancel, progress);
    if (reading.fault == FolderSnapshotFault::CannotOpen)
        return faulty(UsageRecord::Fault::CannotOpen, reading.error);
    if (reading.ok()) {
        UsageRecord record;
        record.tree = snapshotUsage(reading.snapshot);
        return record;
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return faulty(UsageRecord::Fault::CannotOpen, file.errorString());
    return file.size() > largestFile ? faulty(UsageRecord::Fault::Unknown) : usageFromJson(file.readAll());
}

} // namespace velmora
