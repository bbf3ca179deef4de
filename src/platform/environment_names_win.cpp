#include "platform/environment_names.h"

namespace velmora {

bool environmentNamesIgnoreCase()
{
    return true;
}

} // namespace velmora
