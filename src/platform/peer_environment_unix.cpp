#include "platform/peer_environment.h"

#include <QFile>
#include <QFileInfo>

#include <sys/socket.h>
#include <unistd.h>

namespace velmora {

#ifdef __linux__

namespace {

/// The name of the file that a process runs.
QString programOf(const QString &process)
{
    QString file = QFile::symLinkTarget(process + QStringLiteral("/exe"));
    // So the system says it once an update has put another file in its place.
    const QLatin1String replaced(" (deleted)");
    if (file.endsWith(replaced))
        file.chop(replaced.size());
    return QFileInfo(file).fileName();
}

} // namespace

bool peersShowTheirEnvironment() noexcept
{
    return true;
}

std::optional<QProcessEnvironment> environmentOfTwin(qintptr descriptor)
{
    ucred peer{};
    socklen_t size = sizeof peer;
    if (getsockopt(static_cast<int>(descriptor), SOL_SOCKET, SO_PEERCRED, &peer, &size) != 0 || peer.pid <= 0 ||
        peer.pid == getpid())
        return std::nullopt;
    const QString process = QStringLiteral("/proc/%1").arg(peer.pid);
    const QString program = programOf(process);
    if (program.isEmpty() || program != programOf(QStringLiteral("/proc/self")))
        return std::nullopt;
    QFile file(process + QStringLiteral("/environ"));
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    QProcessEnvironment environment;
    const QList<QByteArray> variables = file.readAll().split('\0');
    for (const QByteArray &variable : variables) {
        const qsizetype equals = variable.indexOf('=');
        if (equals > 0)
            environment.insert(QFile::decodeName(variable.first(equals)), QFile::decodeName(variable.mid(equals + 1)));
    }
    return environment;
}

#else

bool peersShowTheirEnvironment() noexcept
{
    return false;
}

std::optional<QProcessEnvironment> environmentOfTwin(qintptr /*descriptor*/)
{
    return std::nullopt;
}

#endif

} // namespace velmora
