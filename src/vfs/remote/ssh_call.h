#pragma once

#include "core/cancel_flag.h"
#include "core/child_process.h"
#include "core/progress.h"
#include "vfs/remote/remote_place.h"

#include <QByteArray>
#include <QString>

#include <chrono>

namespace velmora {

// The programs ssh and scp. They ask nothing: a password or a host that is not known makes them fail, unless the person
// has a program of their own for such questions (SSH_ASKPASS).

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
    NoFolder,    ///< there is no such folder on the host
    OtherThing,  ///< there is something of that name on the host, and no folder
    NoAccess,    ///< there is, and the user may not look into it
    NoListing,   ///< the host has not done what it was asked for
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

/// Why something of a host is not to be had.
struct RemoteFault {
    RemotePlace place;
    RemotePlaceFault inPlace = RemotePlaceFault::None; ///< nobody was asked then
    SshEnd end = {};

    [[nodiscard]] bool isError() const { return inPlace != RemotePlaceFault::None || !end.ok(); }
};

/// What a program wrote, and how it ended.
struct HostAnswer {
    SshEnd end;
    QByteArray output = {};
};

/// ssh with a command for the host, as `runChild` and `ChildTalk` take it; without a program where there is none.
[[nodiscard]] ChildCall sshCall(const SshTarget &target, const QString &command, std::chrono::milliseconds limit);

/// Runs a command on the host, which can read `input`. For a worker.
[[nodiscard]] HostAnswer askHost(const SshTarget &target, const QString &command, std::chrono::milliseconds limit,
                                 const CancelFlag &cancel, Progress &progress, const QByteArray &input = {});

/// Runs scp with these arguments. For a worker.
[[nodiscard]] SshEnd runScp(const SshTarget &target, const QStringList &arguments, std::chrono::milliseconds limit,
                            const CancelFlag &cancel, Progress &progress);

} // namespace velmora
