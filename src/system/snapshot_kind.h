#pragma once

#include "core/cancel_flag.h"
#include "core/progress.h"
#include "system/engine/snapshot_capture.h"
#include "system/engine/snapshot_file.h"

#include <QString>

#include <functional>

namespace velmora {

/// What one kind of system snapshot has of its own. Texts are English sources of the "Velmora" context.
struct SnapshotKind {
    /// Captures the state of this system; called on a worker.
    using Capture = std::function<SnapshotCapture(const CancelFlag &, Progress &)>;

    QLatin1String id; ///< the session kind
    const char *heading;
    const char *leftLabel;
    const char *rightLabel;
    const char *liveText; ///< stands in the field of a side that was captured; as it is here also its path in records
    const char *placeholder = nullptr; ///< of empty fields
    const char *keyColumn;
    const char *hint;
    const char *fileFilter;
    const char *suggestedFile; ///< a name, not translated
    const char *saveHint;
    const char *capturing; ///< takes the seconds gone and those it may take
    const char *captured;  ///< takes a count
    const char *finished;  ///< takes a count
    const char *wrongShape;
    const char *cannotWrite; ///< takes the path if it has a place for it
    SnapshotForm form;
    SnapshotReaders readers = SnapshotReaders::Everybody;
    KeyMatch match = KeyMatch::Exact;
    bool emptyIsLive = false; ///< a side whose field is empty stands for this system at the time of comparing
    Capture capture;
};

[[nodiscard]] SnapshotKind environmentSnapshots();
[[nodiscard]] SnapshotKind serviceSnapshots();
[[nodiscard]] SnapshotKind startupSnapshots();

} // namespace velmora
