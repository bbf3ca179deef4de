#include "platform/live_registry.h"

namespace velmora {

LiveRegistry *LiveRegistry::system()
{
    return nullptr;
}

} // namespace velmora
