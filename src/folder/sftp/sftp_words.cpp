#include "folder/sftp/sftp_words.h"

#include "session/translate.h"

#include <QDir>
#include <QLocale>

#include <cmath>

namespace velmora {

namespace {

QString number(qint64 value)
{
    return QLocale().toString(value);
}

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
        return Velmora::tr("Enter host, user, and local folder");
    case RemotePlaceFault::BadHost:
        return Velmora::tr("This is no name or address of a host");
    case RemotePlaceFault::BadUser:
        return Velmora::tr("This is no name of a user");
    case RemotePlaceFault::BadFolder:
        return Velmora::tr("There can be no line feed in the path of the remote folder");
    }
    return {};
}

SftpWords faultWords(const SshEnd &end, const QString &program, const RemotePlace &place)
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

SftpWords resultWords(const RemoteComparing &comparing)
{
    const RemoteComparison &found = comparing.comparison;
    QStringList details;
    if (found.unlisted > 0)
        details.append(
            Velmora::tr("Not listed, for line feeds or tabs in their names: %1").arg(number(found.unlisted)));
    if (comparing.problems > 0)
        details.append(Velmora::tr("Could not be read: %1").arg(number(comparing.problems)));
    if (found.files.right == 0 && found.unlisted == 0)
        details.append(Velmora::tr("If the remote folder is a link, put a / behind it."));
    return {
        Velmora::tr("Compare finished — %1 local file(s), %2 remote file(s). Double-click a \"Different size\" row to "
                    "fetch remote file and compare content.")
            .arg(found.files.left)
            .arg(found.files.right),
        details.join(QStringLiteral("   "))};
}

QString clockText(const std::optional<ClockSkew> &skew)
{
    if (!skew)
        return {};
    const auto seconds = qint64(std::llround(std::abs(skew->seconds)));
    if (std::abs(skew->seconds) <= skew->uncertainty)
        return Velmora::tr("Host clock: as here");
    const QString around = QLocale().toString(skew->uncertainty, 'f', 1);
    return (skew->seconds > 0 ? Velmora::tr("Host clock: %1 s ahead (± %2)")
                              : Velmora::tr("Host clock: %1 s behind (± %2)"))
        .arg(number(seconds), around);
}

QString hashingText(const QString &path)
{
    return Velmora::tr("Computing SHA-256: %1").arg(QDir::toNativeSeparators(path));
}

QString countsText(const PairCounts &counts, qsizetype hidden, qsizetype unlisted)
{
    QStringList parts{Velmora::tr("Same: %1").arg(number(counts.same)),
                      Velmora::tr("Different: %1").arg(number(counts.changed)),
                      Velmora::tr("Local only: %1").arg(number(counts.leftOnly)),
                      Velmora::tr("Remote only: %1").arg(number(counts.rightOnly))};
    if (hidden > 0)
        parts.append(Velmora::tr("Hidden: %1").arg(number(hidden)));
    if (unlisted > 0)
        parts.append(Velmora::tr("Not listed: %1").arg(number(unlisted)));
    return parts.join(QStringLiteral("   "));
}

} // namespace velmora
