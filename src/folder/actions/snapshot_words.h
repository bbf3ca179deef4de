#pragma once

#include "vfs/place/snapshot_source.h"

#include <QString>

namespace velmora {

/// What is wrong with the form of a snapshot file, as a sentence; empty where nothing is.
[[nodiscard]] QString snapshotFormText(const FolderSnapshotReading &reading);

/// Why there is no tree at `path`, which is a snapshot file or a folder in one; empty where there is.
[[nodiscard]] QString snapshotFaultText(const QString &path, const SnapshotOpening &opening);

/// That files of a snapshot cannot be opened or copied.
[[nodiscard]] QString noContentsText();

} // namespace velmora
