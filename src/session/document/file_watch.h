#pragma once

#include <QFileSystemWatcher>
#include <QObject>
#include <QStringList>
#include <QTimer>

namespace velmora {

/// Tells soon when somebody may have written, replaced, removed or brought back one of a few files.
///
/// Watches the files and the folders that they are in, so that a file that another one took the place of is watched
/// again. Where the system tells nothing (network folders) nothing is told; the owner looks for itself now and then.
/// Lives on the interface thread.
class FileWatch final : public QObject {
    Q_OBJECT
public:
    explicit FileWatch(QObject *parent = nullptr);

    /// Watches these files, whether they exist or not, instead of those before.
    void watch(const QStringList &files);

Q_SIGNALS:
    /// Some file may be another one than before.
    void changed();

private:
    void addPaths();

    QFileSystemWatcher m_watcher;
    QTimer m_pause; ///< a program that saves a file takes several steps
    QStringList m_files;
};

} // namespace velmora
