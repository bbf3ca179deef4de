#pragma once

#include "core/progress.h"
#include "system/snapshot_job.h"

namespace velmora {

/// Why a side got no snapshot, in words: what stands alone as the message, and what is said beside it. Both are empty
/// where nothing went wrong, and where it was cancelled.
struct SnapshotFailure {
    QString text;
    QString detail;
};

/// `place`: the file that was to be loaded.
[[nodiscard]] SnapshotFailure describeFailure(const SideResult &result, const SnapshotKind &kind, const QString &place);

/// What is said while the state of this system is captured.
[[nodiscard]] QString capturingText(const SnapshotKind &kind, const ProgressState &state);

} // namespace velmora
