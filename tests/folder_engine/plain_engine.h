#pragma once

#include "folder/engine/folder_engine.h"

/// The folder comparison in its plainest form: step by step, recursive, on one thread, without regard to speed. What
/// the engine must agree with on every tree that both can read.
namespace velmora::plain {

[[nodiscard]] QList<FolderDiffItem> compareTree(const QString &left, const QString &right, const QString &prefix,
                                                CompareMethod method, qint32 toleranceSec,
                                                const QList<ManualAlignRule> &rules);
[[nodiscard]] QList<FolderDiffItem> compareLevel(const QString &left, const QString &right, CompareMethod method,
                                                 qint32 toleranceSec, const QList<ManualAlignRule> &rules);
[[nodiscard]] QList<FolderDiffItem> listStructure(const QString &left, const QString &right, bool recursive,
                                                  const QList<ManualAlignRule> &rules);
[[nodiscard]] FolderTotals countContents(const QString &folder);

[[nodiscard]] bool samePair(const QFileInfo &left, const QFileInfo &right, CompareMethod method, qint32 toleranceSec);
[[nodiscard]] bool sameByDigest(const QString &left, const QString &right);
[[nodiscard]] bool sameByBlocks(const QString &left, const QString &right);
[[nodiscard]] QByteArray crc32(const QString &path);

} // namespace velmora::plain
