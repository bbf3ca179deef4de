#include "app/desktop/shell_menu.h"

#include "app/desktop/desktop_menu.h"
#include "app/desktop/explorer_menu.h"
#include "platform/desktop_integration.h"
#include "platform/user_registry.h"

namespace velmora {

ShellMenu registryShellMenu(UserRegistry &registry)
{
    return {[&registry] { return isExplorerMenuRegistered(registry); },
            [&registry](const QString &program) { return registerExplorerMenu(registry, program); },
            [&registry] { return unregisterExplorerMenu(registry); },
            {}};
}

ShellMenu desktopShellMenu(const QString &dataFolder)
{
    return {
        [dataFolder] { return DesktopFiles(dataFolder, desktopMenuFiles({})).areInstalled(); },
        [dataFolder](const QString &program) { return DesktopFiles(dataFolder, desktopMenuFiles(program)).install(); },
        [dataFolder] { return DesktopFiles(dataFolder, desktopMenuFiles({})).remove(); }, dataFolder};
}

ShellMenu systemShellMenu()
{
    if (UserRegistry *registry = UserRegistry::system())
        return registryShellMenu(*registry);
    const QString folder = desktopDataFolder();
    return folder.isEmpty() ? ShellMenu() : desktopShellMenu(folder);
}

} // namespace velmora
