#pragma once

#include <QtGlobal>

#include <functional>

namespace velmora {

/// What saving a file consists of, in this order; `Write` comes once for each piece that is written.
enum class SaveStep : quint8 {
    Open, ///< of the file beside the target
    Write,
    Flush,   ///< to the disk
    Access,  ///< owner and access bits of the target
    Replace, ///< of the target, in one step
};

/// Stands in for a file system that fails: asked before each step, which fails when the answer is false. Called on the
/// thread that saves.
using SaveProbe = std::function<bool(SaveStep)>;

/// Lets `probe` into every save of this process from now on; an empty one lets all steps be. For tests: to be called
/// while nothing is being saved.
void installSaveProbe(SaveProbe probe);

} // namespace velmora
