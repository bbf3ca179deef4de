#pragma once

#include "platform/file_layer.h"

namespace velmora {

/// Moves the entry at the absolute path `path`, a folder with everything in it, to the recycle bin of its volume.
///
/// Never destroys: what the bin cannot take (a volume without one, a file larger than the bin, a path that the shell
/// would shorten or take for another) stays, and the error is `Unsupported`. What belongs to the entry by its name
/// only, the "files" folder of a saved web page, stays as well. `binPath` is empty where the system does not tell the
/// place. For a thread without COM or with a single-threaded apartment. Waits for the shell.
[[nodiscard]] RecycleResult moveToRecycleBin(const QString &path);

/// Takes what had been at `binPath` off the bin's list, after it was moved out of there by its path.
void forgetInRecycleBin(const QString &binPath);

} // namespace velmora
