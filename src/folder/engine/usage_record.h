#pragma once

#include "core/cancel_flag.h"
#include "folder/engine/usage_tree.h"

#include <QByteArray>

namespace velmora {

class Progress;

/// What a folder took at an earlier time, to tell by how much it has grown since.
struct UsageRecord {
    enum class Fault : quint8 {
        None,
        CannotOpen,
        Unknown, ///< neither a folder snapshot nor what `usageFromJson` reads
    };

    UsageTree tree;
    int maxDepth = 0; ///< as in `DiskUsageRequest`, and so are the next
    bool listsFiles = true;
    bool withHidden = false;
    Fault fault = Fault::None;
    QString error; ///< of CannotOpen, in the system's own words

    [[nodiscard]] bool ok() const noexcept { return fault == Fault::None; }
};

/// Reads what `velmora-cli usage --format json` writes: an object with "folder", "depth", "files", "hidden" and the
/// list "nodes" of objects with "name", "depth", "folder" and "size", each folder before what is in it. Other keys are
/// passed over.
[[nodiscard]] UsageRecord usageFromJson(const QByteArray &json);

/// Reads a file with either a folder snapshot or such an object. Pipes and devices are not opened.
[[nodiscard]] UsageRecord loadUsageRecord(const QString &path, const CancelFlag &cancel, Progress &progress);

} // namespace velmora
