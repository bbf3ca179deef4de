#include "platform/end_signal.h"

namespace velmora {

void beforeEndBySignal(void (* /*act*/)()) {}

} // namespace velmora
