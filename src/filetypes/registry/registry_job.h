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

/// Reads a side: a live key where `place` names one and `live` is there, or else a file.
[[nodiscard]] RegistryReading readRegistrySide(const QString &place, const LiveRegistry *live, const CancelFlag &cancel,
                                               Progress &progress);

/// Reads both sides at the same time and compares them. On a worker.
[[nodiscard]] RegistryResult compareRegistrySides(const Sides<QString> &places, const LiveRegistry *live,
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
