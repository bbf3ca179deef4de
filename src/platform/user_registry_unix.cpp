#include "platform/user_registry.h"

namespace velmora {

UserRegistry *UserRegistry::system()
{
    return nullptr;
}

} // namespace velmora
