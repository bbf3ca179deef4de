#pragma once

#include "cli/command_line.h"

#include <QString>

#include <functional>
#include <optional>

class QIODevice;

namespace velmora::cli {

/// How writing in one of the formats went.
struct Written {
    bool ok = true;
    bool differences = false;
};

/// Runs `write` on the file of this path, which is replaced in one step, or on standard output, and returns the exit
/// status that follows. Errors are told on the error stream.
[[nodiscard]] int writeTo(const std::optional<QString> &path, const Streams &streams,
                          const std::function<Written(QIODevice &device)> &write);

} // namespace velmora::cli
