#pragma once

#include <QLockFile>
#include <QString>

#include <memory>

namespace velmora {

/// A private temporary folder, empty at first, for what nobody keeps, such as copies of what has no path of its own. It
/// goes with this object. Where the process ends without destroying it, it goes with `removePassingFolders`, or else
/// with `sweepPassingFolders` of a later process. Made, used and destroyed on any thread.
///
/// On the disk it is a folder "velmora-copies-XXXXXX" in the system's place for temporary files, which holds "lock", a
/// lock that tells that the process lives, and "files", which is the folder that is used.
class PassingFolder {
public:
    /// What it is for, which stands in its name. Check `isValid`.
    enum class Purpose : quint8 {
        Copies,
        Fetched, ///< from a host by scp: "velmora-scp-XXXXXX"
    };

    explicit PassingFolder(Purpose purpose = Purpose::Copies);
    ~PassingFolder();
    PassingFolder(const PassingFolder &) = delete;
    PassingFolder &operator=(const PassingFolder &) = delete;

    [[nodiscard]] bool isValid() const noexcept { return m_error.isEmpty(); }
    /// The system's own words for why it is not valid.
    [[nodiscard]] const QString &errorString() const noexcept { return m_error; }
    /// Absolute, with "/".
    [[nodiscard]] QString path() const;
    [[nodiscard]] QString filePath(const QString &name) const { return path() + u'/' + name; }

private:
    QString m_whole; ///< with the lock
    QString m_error;
    std::unique_ptr<QLockFile> m_lock;
};

/// Removes those of this process as they stand, for an end without destructors. Any thread.
void removePassingFolders();

/// Removes those that processes of this user have left behind: of its name, private, and with a lock that nobody living
/// holds. No link is followed. May take long: for a worker.
void sweepPassingFolders();

/// Whether a path leads into such a folder, of this process or of an earlier one: nobody can come back to it.
[[nodiscard]] bool isInPassingFolder(const QString &path);

} // namespace velmora
