#pragma once

namespace velmora {

/// Lets what threads keep for themselves (`thread_local` objects) be destroyed before its memory is freed, when a
/// thread ends. To be called once, first thing in `main`.
///
/// The runtime of MinGW-w64 frees the memory of such objects and destroys them by two "keys" of a thread, in the order
/// in which the keys were made. The first use of such an object makes the one that frees. Destructors then run on freed
/// memory: whoever got hold of it meanwhile is damaged, or the thread ends by a fault that the system passes over, and
/// with the list of keys locked, so that the program cannot end. Qt Core has such an object for each thread that
/// matches regular expressions. Here the other key is made first. Does nothing where threads need no such help.
void orderEndOfThreads();

} // namespace velmora
