#pragma once

#include "folder/engine/folder_engine.h"
#include "support/files.h"
#include "vfs/local_folder.h"

namespace velmora::test {

/// Two local folders as the engine takes them.
[[nodiscard]] inline FolderInput between(const QString &left, const QString &right,
                                         CompareMethod method = CompareMethod::Rules, qint32 toleranceSec = 0,
                                         const QList<ManualAlignRule> &rules = {})
{
    return {.roots = localFolders(left, right), .method = method, .toleranceSec = toleranceSec, .alignRules = rules};
}

/// Entries of a comparison of "/l" and "/r", in parts between "|": a sign for the status ("=", "<", ">", "!"), the
/// name, a "/" after folders. Behind it " LEFT RIGHT" may give the times, in seconds, of an entry that is on both sides
/// whatever its status. Sizes are 1 on the left and 2 on the right.
[[nodiscard]] inline QList<FolderDiffItem> madeItems(const char *listing)
{
    QList<FolderDiffItem> items;
    for (const QString &line : words(listing)) {
        const QStringList parts = line.mid(1).split(u' ');
        FolderDiffItem item;
        item.name = parts.first();
        item.isDir = item.name.endsWith(u'/');
        if (item.isDir)
            item.name.chop(1);
        item.setDiffStatus(FolderDiffStatus(QStringLiteral("=<>!").indexOf(line.front())));
        const auto time = [&parts](int side) {
            return QDateTime::fromSecsSinceEpoch(parts.value(side, QStringLiteral("1")).toInt(), Qt::UTC);
        };
        if (parts.size() > 1 || item.diffStatus() != FolderDiffStatus::RightOnly) {
            item.leftPath = QStringLiteral("/l/") + item.name;
            item.leftTime = time(1);
            item.leftSize = 1;
        }
        if (parts.size() > 1 || item.diffStatus() != FolderDiffStatus::LeftOnly) {
            item.rightPath = QStringLiteral("/r/") + item.name;
            item.rightTime = time(2);
            item.rightSize = 2;
        }
        items.append(item);
    }
    return items;
}

} // namespace velmora::test
