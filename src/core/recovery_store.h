#pragma once

#include "core/cancel_flag.h"
#include "core/safe_file.h"

#include <QByteArray>
#include <QJsonObject>
#include <QList>
#include <QLockFile>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>
#include <vector>

namespace velmora {

/// Unsaved work as it is kept on disk while the program runs: what it belongs to, and the texts themselves. What both
/// mean is up to who keeps it.
struct RecoveryRecord {
    QJsonObject description;
    QList<QByteArray> texts;

    friend bool operator==(const RecoveryRecord &, const RecoveryRecord &) = default;
};

/// No more than so many bytes of texts are kept in one record.
inline constexpr qint64 recoveryLimit = 128 * 1024 * 1024;

/// Writes a record to the file `path` in one step; only this user may read it. An error when the texts are longer than
/// `recoveryLimit` or when `cancel` is set at any time before the last step: a record that nobody wants any more, since
/// the texts have been saved, does not appear while the disk is waited for. Reentrant.
[[nodiscard]] SaveResult writeRecoveryRecord(const QString &path, const RecoveryRecord &record,
                                             const CancelFlag &cancel = {});

/// The record in the file `path`; nothing when it cannot be read or is not whole.
[[nodiscard]] std::optional<RecoveryRecord> readRecoveryRecord(const QString &path);

/// The place of recovery files: a folder with one folder for each running instance of the program, each locked by its
/// instance, so that what nobody holds a lock on has been left by one that did not end well.
///
/// Lives on one thread; the files may be written on any. Its folder is made with the first file and goes, when nothing
/// is left in it, with the store.
class RecoveryStore {
public:
    explicit RecoveryStore(const QString &folder);
    ~RecoveryStore();
    RecoveryStore(const RecoveryStore &) = delete;
    RecoveryStore &operator=(const RecoveryStore &) = delete;

    /// The path for one more file of this instance; empty when the folder cannot be made.
    [[nodiscard]] QString newFile();

    /// The files that instances which no longer run have left, oldest first. No other instance is given them for as
    /// long as this store lives.
    [[nodiscard]] QStringList abandonedFiles();

    /// Puts a file that cannot be restored where it is not found again; returns its new path, or the old one when it
    /// cannot be moved.
    QString setAside(const QString &file) const;

private:
    struct Locked {
        QString folder;
        std::unique_ptr<QLockFile> lock;
    };

    /// Takes the lock of an instance's folder; null when it is another's.
    [[nodiscard]] static std::unique_ptr<QLockFile> tryLock(const QString &folder);
    static void leave(Locked &locked);

    QString m_folder;
    Locked m_own;
    std::vector<Locked> m_abandoned;
};

} // namespace velmora
