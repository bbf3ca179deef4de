#pragma once

#include "filetypes/registry/engine/registry_noise.h"

namespace velmora {

/// The profiles of noise as the settings of the sessions keep them, below "registryNoise": for each kind, by the name
/// of `noiseName`, "on" and its "masks", separated by ";". What is not kept there is as it comes.
[[nodiscard]] QList<NoiseProfile> storedNoiseProfiles();
void storeNoiseProfiles(const QList<NoiseProfile> &profiles);

} // namespace velmora
