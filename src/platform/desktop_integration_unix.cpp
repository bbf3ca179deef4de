#include "platform/desktop_integration.h"

#include <QDir>
#include <QProcess>
#include <QStandardPaths>

namespace velmora {

namespace {

constexpr int patience = 5000;

void runTool(const QString &name, const QString &folder)
{
    const QString program = QStandardPaths::findExecutable(name);
    if (program.isEmpty() || !QDir(folder).exists())
        return;
    QProcess tool;
    tool.setProcessChannelMode(QProcess::MergedChannels);
    tool.start(program, {folder});
    if (!tool.waitForFinished(patience))
        tool.kill();
}

} // namespace

QString desktopDataFolder()
{
    // Not through QStandardPaths, whose test mode leads elsewhere than the desktop looks.
    const QString named = QFile::decodeName(qgetenv("XDG_DATA_HOME"));
    return QDir::isAbsolutePath(named) ? QDir::cleanPath(named) : QDir::homePath() + QStringLiteral("/.local/share");
}

void refreshDesktopData(const QString &dataFolder)
{
    runTool(QStringLiteral("update-mime-database"), dataFolder + QStringLiteral("/mime"));
    runTool(QStringLiteral("update-desktop-database"), dataFolder + QStringLiteral("/applications"));
}

} // namespace velmora
