#pragma once

#include "folder/engine/folder_diff_item.h"
#include "session/frame/report_saver.h"
#include "session/session_record.h"

namespace velmora {

/// Writes the HTML report of a comparison of these folders that shows `items`, in this order.
[[nodiscard]] ReportSaver::Writer folderReportWriter(const QList<FolderDiffItem> &items, const SessionPaths &folders);

} // namespace velmora
