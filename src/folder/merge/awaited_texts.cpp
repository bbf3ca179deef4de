#include "folder/merge/awaited_texts.h"

#include "core/path_names.h"

#include <QDir>
#include <QFileInfo>

namespace velmora {

namespace {

QDateTime timeOf(const QString &path)
{
    const QFileInfo info(path);
    return info.exists() ? info.lastModified() : QDateTime();
}

} // namespace

AwaitedTexts::AwaitedTexts(QObject *parent) : QObject(parent)
{
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, &AwaitedTexts::look);
}

QString AwaitedTexts::pathOf(const QString &relative) const
{
    return joinedPath(m_folder.path(), relative);
}

QString AwaitedTexts::await(const QString &relative)
{
    const QString path = pathOf(relative);
    if (!m_folder.isValid() || !QDir().mkpath(parentPath(path)))
        return {};
    m_watcher.addPath(parentPath(path));
    m_awaited.insert(relative, timeOf(path));
    return path;
}

void AwaitedTexts::look()
{
    for (auto awaited = m_awaited.begin(); awaited != m_awaited.end(); ++awaited) {
        const QDateTime now = timeOf(pathOf(awaited.key()));
        if (now.isValid() && now != awaited.value()) {
            awaited.value() = now;
            Q_EMIT saved(awaited.key());
        }
    }
}

} // namespace velmora
