#include "platform/system_attribute.h"

namespace velmora {

bool isSystemFile(const QString &)
{
    return false;
}

} // namespace velmora
