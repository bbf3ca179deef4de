#pragma once

#include "core/cancel_flag.h"
#include "core/progress.h"
#include "folder/sftp/engine/remote_compare.h"
#include "folder/sftp/engine/remote_place.h"

#include <QStringList>

namespace velmora {

// What is done with a host, by the programs ssh and scp, on a worker. They ask nothing: a password or a host that is
// not known makes them fail, unless the person has a program of their own for such questions (SSH_ASKPASS). Progress
// counts as `runChild` does while the host works, and as the scans of `folder_snapshot.h` do while this side does.

/// Why a program did not do its work.
enum class SshFault : quint8 {
    None,
    NoProgram,   ///< it is not on the search path
    CannotStart, ///< `error` says why
    TimedOut,
    TooMuch,     ///< it wrote more than anybody can read
    UnknownHost, ///< the host's key is not known here
    ChangedHost, ///< the host has another key than before
    NotLetIn,    ///< the host accepts neither a key nor an agent
    Failed,      ///< with `exitCode` and `error`, what it wrote to the error stream
    LocalFault,  ///< a file of this side cannot be made; `error` says why
    Cancelled,
};

/// How a program ended.
struct SshEnd {
    SshFault fault = SshFault::None;
    int exitCode = 0;
    QString error = {};

    [[nodiscard]] bool ok() const noexcept { return fault == SshFault::None; }
};

/// Where the programs are looked for, and which place they go to.
struct SshTarget {
    RemotePlace place;  ///< without a fault
    QString searchPath; ///< as the environment variable PATH has it
};

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
