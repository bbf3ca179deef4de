#pragma once

namespace velmora {

/// Has `act` called, on a thread made for it, when the system or a person tells this process to end by a signal
/// (SIGTERM, SIGHUP, SIGINT), which then ends it as if nobody had listened; a second one ends it at once. To be called
/// once. Does nothing where processes are not told to end that way.
void beforeEndBySignal(void (*act)());

} // namespace velmora
