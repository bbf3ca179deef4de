#include "session/document/file_watch.h"

#include <QFileInfo>

#include <chrono>

namespace velmora {

namespace {

constexpr auto pauseBeforeTelling = std::chrono::milliseconds(200);

} // namespace

FileWatch::FileWatch(QObject *parent) : QObject(parent)
{
    m_pause.setSingleShot(true);
    m_pause.setInterval(pauseBeforeTelling);
    // Not started anew by each change: a log that is always written to would never be told of.
    const auto begin = [this] {
        if (!m_pause.isActive())
            m_pause.start();
    };
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, begin);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, begin);
    connect(&m_pause, &QTimer::timeout, this, [this] {
        addPaths();
        Q_EMIT changed();
    });
}

void FileWatch::watch(const QStringList &files)
{
    if (files == m_files)
        return;
    m_files = files;
    const QStringList watched = m_watcher.files() + m_watcher.directories();
    if (!watched.isEmpty())
        m_watcher.removePaths(watched);
    addPaths();
}

void FileWatch::addPaths()
{
    QStringList missing;
    for (const QString &file : std::as_const(m_files)) {
        const QFileInfo info(file);
        // A link and what it leads to may both be replaced.
        for (const QString &path : {info.absoluteFilePath(), info.absolutePath(), info.canonicalPath()}) {
            const bool isWatched = m_watcher.files().contains(path) || m_watcher.directories().contains(path);
            if (!path.isEmpty() && !isWatched && !missing.contains(path) && QFileInfo::exists(path))
                missing.append(path);
        }
    }
    if (!missing.isEmpty())
        m_watcher.addPaths(missing);
}

} // namespace velmora
