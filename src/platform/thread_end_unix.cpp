#include "platform/thread_end.h"

namespace velmora {

void orderEndOfThreads() {}

} // namespace velmora
