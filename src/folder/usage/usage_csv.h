#pragma once

#include "folder/usage/usage_rows.h"

class QIODevice;

namespace velmora {

/// Writes all rows of a scan as "name,size,percent,files,folders,path", the names with as many blanks before them as
/// they are deep, in UTF-8. Fields stand as they are shown, without quotes. False when the device took not all, or it
/// was cancelled.
[[nodiscard]] bool writeUsageCsv(const UsageResult &result, QIODevice &device, const CancelFlag &cancel);

} // namespace velmora
