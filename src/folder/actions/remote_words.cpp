#include "folder/actions/remote_words.h"

#include "session/translate.h"

#include <QDir>

namespace velmora {

namespace {

QString failedText(const QString &program, int exitCode)
{
    return Velmora::tr("%1 failed (code %2)").arg(program).arg(exitCode);
}

/// What a person can do about a key that does not fit.
QString hostKeyText(SshFault fault, const RemotePlace &place)
{
    if (fault == SshFault::ChangedHost)
        return Velmora::tr("The host has another key than before: it was set up anew, or somebody else answers. Ask "
                           "those who run it. If the new key is right, remove the old one: ssh-keygen -R %1")
            .arg(place.port == RemotePlace().port ? place.host
                                                  : QStringLiteral("\"[%1]:%2\"").arg(place.host).arg(place.port));
    return Velmora::tr("The key of this host is not known here. Connect once in a terminal, compare the fingerprint "
                       "with that of those who run the host, and accept it: ssh -p %1 %2@%3")
        .arg(place.port)
        .arg(place.user, place.host);
}

} // namespace

QString faultText(RemotePlaceFault fault)
{
    switch (fault) {
    case RemotePlaceFault::None:
        break;
    case RemotePlaceFault::Missing:
    case RemotePlaceFault::NoUser:
        return Velmora::tr("Enter host, user, and local folder");
    case RemotePlaceFault::BadHost:
        return Velmora::tr("This is no name or address of a host");
    case RemotePlaceFault::BadUser:
        return Velmora::tr("This is no name of a user");
    case RemotePlaceFault::BadPort:
        return Velmora::tr("A port is a number from 1 to 65535");
    case RemotePlaceFault::BadFolder:
        return Velmora::tr("There can be no line feed in the path of the remote folder");
    }
    return {};
}

RemoteWords faultWords(const SshEnd &end, const QString &program, const RemotePlace &place)
{
    switch (end.fault) {
    case SshFault::None:
        break;
    case SshFault::NoProgram:
        return {Velmora::tr("%1 executable not found").arg(program), {}};
    case SshFault::CannotStart:
        return {Velmora::tr("%1 cannot be started").arg(program), end.error};
    case SshFault::TimedOut:
        return {Velmora::tr("%1 timed out").arg(program), {}};
    case SshFault::TooMuch:
        return {Velmora::tr("The host lists more files than can be shown"), {}};
    case SshFault::UnknownHost:
    case SshFault::ChangedHost:
        return {failedText(program, end.exitCode), hostKeyText(end.fault, place)};
    case SshFault::NotLetIn:
        return {failedText(program, end.exitCode),
                Velmora::tr("The host does not let you in. Put your key into its list of authorized keys, or into the "
                            "agent: ssh-add")};
    case SshFault::NoFolder:
        return {Velmora::tr("There is no such folder on the host"), {}};
    case SshFault::OtherThing:
        return {Velmora::tr("This is a file on the host, and no folder"), {}};
    case SshFault::NoAccess:
        return {Velmora::tr("You may not look into the folder on the host"), {}};
    case SshFault::NoListing:
        return {Velmora::tr("The host does not list its files: it must have sh, find and stat"), {}};
    case SshFault::Failed:
        return {failedText(program, end.exitCode),
                end.error.isEmpty() ? Velmora::tr("The folder may be missing there, or hold one that may not be read.")
                                    : end.error};
    case SshFault::LocalFault:
        return {Velmora::tr("Cannot write: %1").arg(QDir::toNativeSeparators(end.error)), {}};
    case SshFault::Cancelled:
        return {Velmora::tr("Cancelled"), {}};
    }
    return {};
}

QString remoteFaultText(const RemoteFault &fault)
{
    const QString where = remoteAddress(fault.place);
    if (fault.inPlace == RemotePlaceFault::Missing)
        return Velmora::tr("%1: no host is named").arg(where);
    if (fault.inPlace != RemotePlaceFault::None)
        return Velmora::tr("%1: %2").arg(where, faultText(fault.inPlace));
    const RemoteWords words = faultWords(fault.end, QStringLiteral("ssh"), fault.place);
    const bool isToldWhole = fault.end.fault == SshFault::UnknownHost || fault.end.fault == SshFault::ChangedHost ||
                             fault.end.fault == SshFault::NotLetIn;
    if (isToldWhole)
        return Velmora::tr("%1: %2").arg(where, words.detail);
    const QString told = words.detail.isEmpty() ? words.text : Velmora::tr("%1 (%2)").arg(words.text, words.detail);
    return fault.end.fault == SshFault::Cancelled ? words.text : Velmora::tr("%1: %2").arg(where, told);
}

} // namespace velmora
