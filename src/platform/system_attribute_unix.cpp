#include "platform/system_attribute.h"

namespace velmora {

bool isSystemFile(const QString &)
{
    return false;
}

bool dotHides() noexcept
{
    return true;
}

} // namespace velmora
