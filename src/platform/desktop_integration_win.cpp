#include "platform/desktop_integration.h"

namespace velmora {

QString desktopDataFolder()
{
    return {};
}

void refreshDesktopData(const QString & /*dataFolder*/) {}

} // namespace velmora
