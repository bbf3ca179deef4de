#include "cli/remote_words.h"

#include "core/visible_name.h"

namespace velmora::cli {

namespace {

QString placeText(RemotePlaceFault fault)
{
    switch (fault) {
    case RemotePlaceFault::BadHost:
        return QStringLiteral("this is no name or address of a host");
    case RemotePlaceFault::BadUser:
        return QStringLiteral("this is no name of a user");
    case RemotePlaceFault::BadPort:
        return QStringLiteral("a port is a number from 1 to 65535");
    case RemotePlaceFault::BadFolder:
        return QStringLiteral("there can be no line feed in the path");
    default:
        return QStringLiteral("no host is named");
    }
}

QString endText(const SshEnd &end)
{
    switch (end.fault) {
    case SshFault::NoProgram:
        return QStringLiteral("ssh is not on the search path");
    case SshFault::CannotStart:
        return QStringLiteral("ssh cannot be started: %1").arg(end.error);
    case SshFault::TimedOut:
        return QStringLiteral("the host did not answer in time");
    case SshFault::TooMuch:
        return QStringLiteral("the host lists more files than can be taken up");
    case SshFault::UnknownHost:
        return QStringLiteral("the key of the host is not known here; connect once with ssh, compare the fingerprint "
                              "with that of those who run the host, and accept it");
    case SshFault::ChangedHost:
        return QStringLiteral("the host has another key than before: it was set up anew, or somebody else answers; ask "
                              "those who run it, and remove the old key with ssh-keygen -R if the new one is right");
    case SshFault::NotLetIn:
        return QStringLiteral("the host does not let you in, neither by a key nor by the agent");
    case SshFault::NoFolder:
        return QStringLiteral("there is no such folder on the host");
    case SshFault::OtherThing:
        return QStringLiteral("this is a file on the host, and no folder");
    case SshFault::NoAccess:
        return QStringLiteral("you may not look into the folder on the host");
    case SshFault::NoListing:
        return QStringLiteral("the host does not list its files: it must have sh, find and stat");
    default:
        return QStringLiteral("ssh failed (code %1): %2").arg(end.exitCode).arg(visibleName(end.error));
    }
}

} // namespace

QString remoteFaultText(const RemoteFault &fault)
{
    const bool isOfPlace = fault.inPlace != RemotePlaceFault::None;
    return QStringLiteral("%1: %2").arg(visibleName(remoteAddress(fault.place)),
                                        isOfPlace ? placeText(fault.inPlace) : endText(fault.end));
}

} // namespace velmora::cli
