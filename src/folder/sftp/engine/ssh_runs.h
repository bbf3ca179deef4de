#pragma once

#include "core/cancel_flag.h"
#include "core/progress.h"
#include "folder/sftp/engine/remote_compare.h"
#include "vfs/remote/ssh_call.h"

#include <QStringList>

namespace velmora {

// What is done with a host on a worker. Progress counts as `runChild` does while the host works, and as the scans of
// `folder_snapshot.h` do while this side does.

/// How far the host's clock is ahead of this machine's.
struct ClockSkew {
    double seconds = 0;
    double uncertainty = 0; ///< half of the time that asking took, and of the second that clocks are told to
};

/// What comparing came to.
struct RemoteComparing {
    SshEnd end;
    bool isMissing = false; ///< there is no such local folder
    RemoteComparison comparison;
    qsizetype problems = 0;             ///< local folders that cannot be read
    std::optional<ClockSkew> skew = {}; ///< nothing where the host does not say
};

/// Lists both sides, hidden files too, without links, and compares them.
[[nodiscard]] RemoteComparing compareWithHost(const SshTarget &target, const QString &localFolder,
                                              const CancelFlag &cancel, Progress &progress);

/// Copies a file of the place's folder to `path`, which must not exist.
[[nodiscard]] SshEnd fetchFile(const SshTarget &target, const QString &file, const QString &path,
                               const CancelFlag &cancel, Progress &progress);

/// What fetching several files came to.
struct FetchedFiles {
    SshEnd end; ///< of the first that failed
    qsizetype fetched = 0;
    QStringList alreadyThere; ///< files that were left as they are
};

/// Copies files into `folder`, below which they get the paths that they have on the host. Each is fetched whole before
/// it takes its name; what has that name already stays. Ends with the first failure.
[[nodiscard]] FetchedFiles fetchFiles(const SshTarget &target, const QStringList &files, const QString &folder,
                                      const CancelFlag &cancel, Progress &progress);

/// Whether the contents of files are the same on both sides.
struct ContentsComparing {
    SshEnd end;
    QHash<QString, bool> same; ///< by path; lacks those that either side could not read
};

/// Compares files by SHA-256, each side computing its own.
[[nodiscard]] ContentsComparing compareContents(const SshTarget &target, const QString &localFolder,
                                                const QStringList &files, const CancelFlag &cancel, Progress &progress);

/// Whether a file of the host can get its name here: it leads nowhere but into the folder that it is put in.
[[nodiscard]] bool canBeNamedHere(const QString &path);

} // namespace velmora
