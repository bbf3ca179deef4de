#pragma once

#include <QDateTime>
#include <QFileSystemWatcher>
#include <QHash>
#include <QObject>
#include <QTemporaryDir>

namespace velmora {

/// The folder with the merged texts of a folder merge, and the files in it that other sessions are to save.
class AwaitedTexts final : public QObject {
    Q_OBJECT
public:
    explicit AwaitedTexts(QObject *parent = nullptr);

    /// A new, empty folder; empty when there is none. Removed with this object.
    [[nodiscard]] QString folder() const { return m_folder.isValid() ? m_folder.path() : QString(); }

    /// Where the merged text of the file `relative` is to be saved, which is told by `saved` from now on; empty when
    /// there is no room for it.
    [[nodiscard]] QString await(const QString &relative);
    /// Looks whether anything has been saved, for where the system does not tell.
    void look();

Q_SIGNALS:
    void saved(const QString &relative);

private:
    [[nodiscard]] QString pathOf(const QString &relative) const;

    QTemporaryDir m_folder;
    QFileSystemWatcher m_watcher;
    QHash<QString, QDateTime> m_awaited; ///< relative paths, with the time of what is there; invalid: nothing is
};

} // namespace velmora
