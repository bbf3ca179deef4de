#pragma once

#include "core/cancel_flag.h"
#include "core/progress.h"
#include "filetypes/registry/engine/registry_compare.h"
#include "filetypes/registry/engine/registry_live.h"
#include "filetypes/registry/engine/registry_noise.h"
#include "filetypes/registry/registry_key_tree.h"

#include <memory>

namespace velmora {

/// What a comparison of two sides came to. Where one could not be read there is nothing to compare.
struct RegistryResult {
    Sides<RegistryReading> readings; ///< without their trees, which the comparison has
    std::shared_ptr<RegistryComparison> comparison;
    RegistryKeyNodes nodes;
};

/// What a side is read from: a live key where its text names one, or else a file, and what that is encoded in.
struct RegistryPlace {
    QString text;
    TextEncoding encoding = {};
};

/// `live`: null where no text names a live key.
[[nodiscard]] RegistryReading readRegistrySide(const RegistryPlace &place, const LiveRegistry *live,
                                               const CancelFlag &cancel, Progress &progress);

/// Reads both sides at the same time and compares them. On a worker.
[[nodiscard]] RegistryResult compareRegistrySides(const Sides<RegistryPlace> &places, const LiveRegistry *live,
                                                  const QList<NoiseProfile> &noise, const CancelFlag &cancel,
                                                  Progress &progress);

/// What became of writing to the live registry.
struct RegistryWriteResult {
    enum class End : quint8 { Done, Changed, NotKept, Failed };

    End end = End::Done;
    RegistryWriting writing;
    QString error; ///< in the system's own words
};

/// What is to be written, and where.
struct RegistryWriteOrder {
    LiveKey key;
    RegistryTree before; ///< the key when it was compared
    RegistryTree patch;
    QString keptPath; ///< takes what brings it back, before anything is written
};

/// Looks again whether the key is as it was compared, keeps what brings it back, and writes. On a worker.
[[nodiscard]] RegistryWriteResult writeRegistry(LiveRegistry &live, const RegistryWriteOrder &order,
                                                const CancelFlag &cancel, Progress &progress);

} // namespace velmora
