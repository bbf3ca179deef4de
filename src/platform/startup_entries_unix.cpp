#include "platform/startup_entries.h"

#include <QDir>

namespace velmora {

QList<StartupEntry> registryValues(RegistryRoot /*root*/, const QString & /*key*/)
{
    return {};
}

QList<StartupEntry> visibleFiles(const QString &folder)
{
    QList<StartupEntry> entries;
    for (const QFileInfo &file : QDir(folder).entryInfoList(QDir::Files, QDir::Name))
        entries.append({file.fileName(), file.absoluteFilePath()});
    return entries;
}

QString commonStartupFolder()
{
    return {};
}

} // namespace velmora
