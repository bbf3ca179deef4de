#pragma once

#include <QtGlobal>

namespace velmora {

/// Which end of a local socket is asked about.
enum class PeerEnd { Server, Client };

/// Whether the process at the `end` of a connected local socket runs as the same user as this one.
///
/// `descriptor` is the socket's native descriptor: a file descriptor, or a pipe handle on Windows. False when that
/// cannot be found out. Any thread.
[[nodiscard]] bool peerIsSameUser(qintptr descriptor, PeerEnd end);

} // namespace velmora
