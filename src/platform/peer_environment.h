#pragma once

#include <QProcessEnvironment>

#include <optional>

namespace velmora {

/// Whether this system tells one process the environment of another: then a program can know an instance of itself that
/// serves another display or another profile. Windows has one of each for a user who is logged on.
[[nodiscard]] bool peersShowTheirEnvironment() noexcept;

/// The environment that the process at the other end of a connected local socket was started with, when it runs this
/// same program. Nothing for another program, for this process itself, and when it cannot be found out.
///
/// `descriptor` is the socket's native descriptor: a file descriptor, or a pipe handle on Windows. Any thread.
[[nodiscard]] std::optional<QProcessEnvironment> environmentOfTwin(qintptr descriptor);

} // namespace velmora
