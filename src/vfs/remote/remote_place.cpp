#include "vfs/remote/remote_place.h"

#include "core/path_names.h"

#include <QDir>

#include <algorithm>
#include <limits>

namespace velmora {

namespace {

bool isAsciiLetterOrDigit(QChar c)
{
    return c < QChar(0x80) && c.isLetterOrNumber();
}

/// What ssh itself refuses in user names since version 9.6: its configuration may hand them to a shell.
bool isPlainUserCharacter(QChar c)
{
    return c > u' ' && c != QChar(0x7F) && !QStringView(u"'`\";&<>|(){}").contains(c);
}

bool isHostCharacter(QChar c)
{
    // The last two of addresses: "fe80::1%eth0".
    return isAsciiLetterOrDigit(c) || QStringView(u".-_:%").contains(c);
}

QString withoutBrackets(const QString &host)
{
    return host.startsWith(u'[') && host.endsWith(u']') ? host.mid(1, host.size() - 2) : host;
}

QString login(const RemotePlace &place)
{
    return place.user.isEmpty() ? withoutBrackets(place.host) : place.user + u'@' + withoutBrackets(place.host);
}

constexpr QLatin1String scheme("sftp://");

/// "host:port", where either may be odd.
void takeHost(const QString &text, RemotePlace &place)
{
    const qsizetype bracket = text.startsWith(u'[') ? text.indexOf(u']') : 0;
    const qsizetype colon = text.indexOf(u':', std::max<qsizetype>(0, bracket));
    place.host = text.left(colon < 0 ? text.size() : colon);
    if (colon >= 0)
        place.port = text.sliced(colon + 1).toInt();
}

/// The folder that the path of an address means.
QString addressedFolder(const QString &path)
{
    if (path == u"/~" || path.startsWith(QLatin1String("/~/"))) {
        const QString below = QDir::cleanPath(path.mid(3));
        return below == u"." ? QString() : below;
    }
    // Two of them at the beginning mean something to QDir on Windows.
    qsizetype from = 0;
    while (path.mid(from + 1, 1) == u"/")
        ++from;
    return QDir::cleanPath(path.isEmpty() ? QStringLiteral("/") : path.sliced(from));
}

/// A path as scp wants it. An older scp hands it to the shell of the host, a newer one takes it for a pattern: both
/// take a character behind a backslash as it is.
QString scpPath(const QString &path)
{
    QString escaped;
    for (const QChar c : path) {
        if (c < QChar(0x80) && !isAsciiLetterOrDigit(c) && !QStringView(u"/._-").contains(c))
            escaped += u'\\';
        escaped += c;
    }
    return escaped;
}

} // namespace

QString RemotePlace::text() const
{
    return user + u'@' + host + u':' + folder;
}

RemotePlace RemotePlace::ofText(const QString &text)
{
    const qsizetype at = text.lastIndexOf(u'@', text.indexOf(u'/') >= 0 ? text.indexOf(u'/') : -1);
    if (at < 0)
        return {};
    const QString rest = text.mid(at + 1);
    const qsizetype bracket = rest.startsWith(u'[') ? rest.indexOf(u']') : 0;
    const qsizetype colon = rest.indexOf(u':', std::max<qsizetype>(0, bracket));
    return {.host = colon < 0 ? rest : rest.left(colon),
            .user = text.left(at),
            .folder = colon < 0 ? QString() : rest.mid(colon + 1)};
}

RemotePlaceFault faultOf(const RemotePlace &place)
{
    const QString host = withoutBrackets(place.host);
    if (host.isEmpty())
        return RemotePlaceFault::Missing;
    if (host.startsWith(u'-') || !std::all_of(host.begin(), host.end(), isHostCharacter))
        return RemotePlaceFault::BadHost;
    if (place.port < 1 || place.port > std::numeric_limits<quint16>::max())
        return RemotePlaceFault::BadPort;
    if (place.user.startsWith(u'-') || place.user.endsWith(u'\\') ||
        !std::all_of(place.user.begin(), place.user.end(), isPlainUserCharacter))
        return RemotePlaceFault::BadUser;
    const bool isOneLine = std::none_of(place.folder.begin(), place.folder.end(),
                                        [](QChar c) { return c == QChar::Null || c == u'\n' || c == u'\r'; });
    if (!isOneLine)
        return RemotePlaceFault::BadFolder;
    return place.user.isEmpty() ? RemotePlaceFault::NoUser : RemotePlaceFault::None;
}

bool isRemoteAddress(const QString &text)
{
    return text.startsWith(scheme, Qt::CaseInsensitive);
}

std::optional<RemotePlace> remotePlaceOf(const QString &text)
{
    if (!isRemoteAddress(text))
        return std::nullopt;
    const QString rest = text.sliced(scheme.size());
    const qsizetype slash = rest.indexOf(u'/');
    const QString authority = rest.left(slash < 0 ? rest.size() : slash);
    const qsizetype at = authority.lastIndexOf(u'@');
    RemotePlace place;
    place.user = authority.left(std::max<qsizetype>(0, at));
    takeHost(authority.sliced(at + 1), place);
    place.folder = addressedFolder(slash < 0 ? QString() : rest.sliced(slash));
    return place;
}

QString remoteAddress(const RemotePlace &place)
{
    QString text = scheme;
    if (!place.user.isEmpty())
        text += place.user + u'@';
    text += place.host;
    if (place.port != RemotePlace().port)
        text += u':' + QString::number(place.port);
    if (!place.folder.startsWith(u'/'))
        text += QLatin1String("/~");
    if (place.folder != u"/" && !place.folder.isEmpty())
        text += (place.folder.startsWith(u'/') ? QString() : QStringLiteral("/")) + place.folder;
    return text;
}

QString shellQuoted(const QString &text)
{
    QString inside = text;
    inside.replace(u'\'', QLatin1String("'\\''"));
    return u'\'' + inside + u'\'';
}

QString commandFolder(const QString &folder)
{
    if (folder.isEmpty())
        return QStringLiteral(".");
    return QStringView(u"-()!,").contains(folder.front()) ? QLatin1String("./") + folder : folder;
}

QString shellCommand(const QString &script)
{
    return QLatin1String("exec sh -c ") + shellQuoted(script);
}

QString listCommand(const QString &folder)
{
    const QString quoted = shellQuoted(commandFolder(folder));
    return QLatin1String("find ") + quoted + QLatin1String(R"( -type f -printf '%P\t%s\n' 2>/dev/null || find )") +
           quoted + QLatin1String(R"( -type f -exec stat -c '%n\t%s' {} \; 2>/dev/null)");
}

QString digestCommand(const QString &folder)
{
    return QLatin1String("cd ") + shellQuoted(commandFolder(folder)) + QLatin1String(" && xargs -0 sha256sum --");
}

QStringList sshArguments(const RemotePlace &place, const QString &command)
{
    return {QStringLiteral("-p"), QString::number(place.port), login(place), command};
}

QStringList scpArguments(const RemotePlace &place, const QString &file, const QString &target)
{
    const QString host = withoutBrackets(place.host);
    const QString scpHost = host.contains(u':') ? u'[' + host + u']' : host;
    return {QStringLiteral("-P"), QString::number(place.port),
            (place.user.isEmpty() ? QString() : place.user + u'@') + scpHost + u':' +
                scpPath(joinedPath(commandFolder(place.folder), file)),
            target};
}

} // namespace velmora
