#include "platform/memory_hint.h"

namespace velmora {

// Large pages need a privilege here that programs do not have.
void expectFullUse(void *, size_t) {}

void expectUse(size_t) {}

} // namespace velmora
