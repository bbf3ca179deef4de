#pragma once

#include "vfs/snapshot/folder_snapshot_file.h"

#include <QString>

namespace velmora::cli {

/// Why a snapshot file cannot be read, to stand behind its path; empty where it can.
[[nodiscard]] QString snapshotFaultText(const FolderSnapshotReading &reading);

} // namespace velmora::cli
