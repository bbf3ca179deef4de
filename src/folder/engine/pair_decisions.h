#pragma once

#include "core/cancel_flag.h"
#include "folder/engine/item_list.h"
#include "platform/file_access.h"
#include "settings/options/folder_session_options.h"

namespace velmora {

class ContentComparer;
struct FolderRunReport;

/// True when two modification times, in milliseconds, are at most `toleranceSec` whole seconds apart, or equal when it
/// is not above 0.
[[nodiscard]] bool timesMatch(qint64 leftMs, qint64 rightMs, qint32 toleranceSec);

/// What sizes and times alone say of two files; nothing when the contents must be read. Both times are valid.
[[nodiscard]] std::optional<FolderDiffStatus> statusByAttributes(CompareMethod method, qint64 leftSize,
                                                                 qint64 rightSize, qint64 leftMs, qint64 rightMs,
                                                                 qint32 toleranceSec);

/// True when the contents of two files are equal under `method`.
[[nodiscard]] bool sameContent(ContentComparer &comparer, CompareMethod method, const QString &left,
                               const QString &right, OpenHint hint);

/// Reads the pairs of `items` that are undecided, on up to `threads` threads, and gives them their status. When
/// cancelled, the rest stays undecided.
void decidePairs(QList<FolderDiffItem> &items, CompareMethod method, const FileAccess &files, const CancelFlag &cancel,
                 int threads, const FolderRunReport &report);

} // namespace velmora
