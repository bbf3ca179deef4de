#include "vfs/remote/ssh_call.h"

#include <utility>

namespace velmora {

namespace {

/// Some million files; what is longer could not be shown.
constexpr qint64 longestListing = qint64(512) * 1024 * 1024;

/// A program of the person's own may ask; without one nothing does, and above all no terminal that nobody looks at.
QMap<QString, QString> askingNobody()
{
    const QString askpass = qEnvironmentVariable("SSH_ASKPASS");
    return {{QStringLiteral("SSH_ASKPASS_REQUIRE"), QStringLiteral("force")},
            {QStringLiteral("SSH_ASKPASS"), askpass.isEmpty() ? QStringLiteral("false") : askpass}};
}

SshFault faultOfErrors(const QByteArray &errors)
{
    if (errors.contains("REMOTE HOST IDENTIFICATION HAS CHANGED"))
        return SshFault::ChangedHost;
    if (errors.contains("Host key verification failed"))
        return SshFault::UnknownHost;
    return errors.contains("Permission denied (") ? SshFault::NotLetIn : SshFault::Failed;
}

SshEnd endOf(const ChildRun &run)
{
    constexpr int sshOwnFault = 255;
    switch (run.end) {
    case ChildEnd::CannotStart:
        return {SshFault::CannotStart, 0, run.reason};
    case ChildEnd::TimedOut:
        return {SshFault::TimedOut};
    case ChildEnd::TooMuchOutput:
        return {SshFault::TooMuch};
    case ChildEnd::Stopped:
        return {SshFault::Cancelled};
    case ChildEnd::Finished:
    case ChildEnd::Crashed:
        break;
    }
    if (run.end == ChildEnd::Finished && run.exitCode == 0)
        return {};
    // What the command on the host writes is its own; only ssh itself knows of host keys. scp passes that on as 255
    // or 1.
    const bool isOfSsh = run.exitCode == sshOwnFault || run.output.isEmpty();
    return {isOfSsh ? faultOfErrors(run.errors) : SshFault::Failed, run.exitCode,
            QString::fromLocal8Bit(run.errors).trimmed()};
}

QString programOf(const SshTarget &target, const char *name)
{
    const QString plain = findProgram(QLatin1String(name), target.searchPath);
    return plain.isEmpty() ? findProgram(QLatin1String(name) + QLatin1String(".exe"), target.searchPath) : plain;
}

HostAnswer runProgram(ChildCall &&call, const CancelFlag &cancel, Progress &progress)
{
    if (call.program.isEmpty())
        return {{SshFault::NoProgram}};
    const ChildRun run = runChild(call, cancel, progress);
    return {endOf(run), run.output};
}

} // namespace

ChildCall sshCall(const SshTarget &target, const QString &command, std::chrono::milliseconds limit)
{
    ChildCall call{programOf(target, "ssh"), sshArguments(target.place, command), limit, longestListing};
    call.variables = askingNobody();
    return call;
}

HostAnswer askHost(const SshTarget &target, const QString &command, std::chrono::milliseconds limit,
                   const CancelFlag &cancel, Progress &progress, const QByteArray &input)
{
    ChildCall call = sshCall(target, command, limit);
    call.input = input;
    return runProgram(std::move(call), cancel, progress);
}

SshEnd runScp(const SshTarget &target, const QStringList &arguments, std::chrono::milliseconds limit,
              const CancelFlag &cancel, Progress &progress)
{
    ChildCall call{programOf(target, "scp"), arguments, limit};
    call.variables = askingNobody();
    return runProgram(std::move(call), cancel, progress).end;
}

} // namespace velmora
