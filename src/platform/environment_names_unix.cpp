#include "platform/environment_names.h"

namespace velmora {

bool environmentNamesIgnoreCase()
{
    return false;
}

} // namespace velmora
