#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace velmora {

/// A folder on another machine, as a person names it. Nothing of it is trusted: what could be taken for an option or
/// for more than one word is refused by `faultOf`.
struct RemotePlace {
    QString host; ///< a name or an address, one of IPv6 with or without brackets
    int port = 22;
    QString user;
    QString folder; ///< a relative one, and an empty one, begins in the user's home folder

    /// "user@host:folder".
    [[nodiscard]] QString text() const;
    /// The place that such a text names, at the port 22; without a host where it names none.
    [[nodiscard]] static RemotePlace ofText(const QString &text);

    friend bool operator==(const RemotePlace &, const RemotePlace &) = default;
};

enum class RemotePlaceFault : quint8 {
    None,
    Missing, ///< no host
    NoUser,  ///< otherwise it is in order: ssh knows a user itself
    BadHost, ///< has characters that names and addresses do not have, or begins with "-"
    BadUser, ///< begins with "-", or has characters that mean something to a shell
    BadPort,
    BadFolder, ///< has a line feed or a NUL in it
};

[[nodiscard]] RemotePlaceFault faultOf(const RemotePlace &place);

/// Whether a text is an address: "sftp://", a user and "@" if need be, a host, ":" and a port if need be, and a path.
/// That is absolute, and begins in the user's home folder where it begins with "/~". Nothing in it is escaped.
[[nodiscard]] bool isRemoteAddress(const QString &text);
/// The place; it may have a fault. Nothing for what is no address.
[[nodiscard]] std::optional<RemotePlace> remotePlaceOf(const QString &text);
/// The address of a place, without "/" at its end.
[[nodiscard]] QString remoteAddress(const RemotePlace &place);

/// `text` as one word of a POSIX shell.
[[nodiscard]] QString shellQuoted(const QString &text);

/// The folder as commands on the host are given it: what they could take for an option or an expression begins with
/// "./".
[[nodiscard]] QString commandFolder(const QString &folder);

/// `script` for the plain shell of the host, whichever its user has.
[[nodiscard]] QString shellCommand(const QString &script);
/// What lists the files of a folder on the host: with the find of GNU, or else with stat.
[[nodiscard]] QString listCommand(const QString &folder);
/// What computes the SHA-256 of files, whose names it reads, relative to the folder, each with a NUL behind it.
[[nodiscard]] QString digestCommand(const QString &folder);

/// The arguments of ssh. Precondition: the place has no fault.
[[nodiscard]] QStringList sshArguments(const RemotePlace &place, const QString &command);
/// The arguments of scp for copying a file, named relative to the place's folder, to `target`, an absolute path.
[[nodiscard]] QStringList scpArguments(const RemotePlace &place, const QString &file, const QString &target);

} // namespace velmora
