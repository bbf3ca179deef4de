#include "app/start/single_instance.h"

#include "platform/peer_environment.h"
#include "platform/peer_user.h"
#include "platform/window_chrome.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QLocalSocket>
#include <QProcessEnvironment>
#include <QStandardPaths>
#include <QStringDecoder>
#include <QTimer>

#include <algorithm>
#include <array>

namespace velmora {

namespace {

constexpr int connectTime = 500;
constexpr int writeTime = 1000;
constexpr int disconnectTime = 1000;
constexpr int turnTime = 10000;
// The other side sends its message in one go and then waits, so that only a pause tells where it ends. A message cut
// in two by the system continues much sooner, and almost never between two arguments.
constexpr std::chrono::milliseconds pauseTime{50};

/// Hears one connection out: to its end, to a pause behind an argument, or until the time is over.
class HandOverReceiver final : public QObject {
public:
    using Received = std::function<void(const HandedOver &start)>;

    HandOverReceiver(QLocalSocket *socket, std::chrono::milliseconds patience, QObject *parent, Received received)
        : QObject(parent), m_socket(socket), m_received(std::move(received))
    {
        socket->setParent(this);
        connect(socket, &QLocalSocket::readyRead, this, &HandOverReceiver::read);
        connect(socket, &QLocalSocket::disconnected, this, &HandOverReceiver::finish);
        m_deadline.setSingleShot(true);
        connect(&m_deadline, &QTimer::timeout, this, &HandOverReceiver::finish);
        m_deadline.start(patience);
        m_pause.setSingleShot(true);
        connect(&m_pause, &QTimer::timeout, this, &HandOverReceiver::finish);
        // Both may have happened before anybody was connected to the signals.
        read();
        if (!m_finished && socket->state() == QLocalSocket::UnconnectedState)
            finish();
    }

private:
    void read()
    {
        if (m_finished)
            return;
        m_message += m_socket->read(handOverLimit + 1 - m_message.size());
        if (m_message.size() > handOverLimit)
            end();
        else if (m_message.endsWith('\0'))
            m_pause.start(pauseTime);
        else
            m_pause.stop();
    }

    void finish()
    {
        if (m_finished)
            return;
        read();
        if (m_finished)
            return;
        m_socket->disconnect(this);
        m_socket->setParent(nullptr);
        const std::shared_ptr<QLocalSocket> sender(std::exchange(m_socket, nullptr), hangUp);
        end();
        if (const auto arguments = decodeArguments(m_message))
            m_received({*arguments, sender});
    }

    void end()
    {
        m_finished = true;
        m_deadline.stop();
        m_pause.stop();
        if (m_socket)
            m_socket->abort();
        deleteLater();
    }

    /// Later than now: the last one may let go of the socket while it reports.
    static void hangUp(QLocalSocket *socket)
    {
        socket->abort();
        socket->deleteLater();
    }

    QLocalSocket *m_socket;
    Received m_received;
    QTimer m_deadline;
    QTimer m_pause;
    QByteArray m_message;
    bool m_finished = false;
};

/// Where the process of this environment keeps its settings; empty when that does not say it.
QString settingsPlace(const QProcessEnvironment &environment)
{
    const QString own = environment.value(QStringLiteral("XDG_CONFIG_HOME"));
    const QString home = environment.value(QStringLiteral("HOME"));
    if (own.isEmpty() && home.isEmpty())
        return {};
    const QString folder = own.isEmpty() ? home + QStringLiteral("/.config") : own;
    const QString real = QFileInfo(folder).canonicalFilePath();
    return real.isEmpty() ? QDir::cleanPath(folder) : real;
}

/// The displays that the process of this environment can open windows on, X11 first; empty where there is none.
std::array<QString, 2> displays(const QProcessEnvironment &environment)
{
    QString x11 = environment.value(QStringLiteral("DISPLAY"));
    // A display may have several screens, behind a dot: ":0.1". Dots before the colon belong to the host's name.
    const qsizetype colon = x11.lastIndexOf(u':');
    const qsizetype screen = colon < 0 ? -1 : x11.indexOf(u'.', colon);
    if (screen > 0)
        x11.truncate(screen);
    return {x11, environment.value(QStringLiteral("WAYLAND_DISPLAY"))};
}

/// Whether an instance of this program at another place is at the other end.
bool isElsewhere(const QLocalSocket &socket)
{
    const auto twin = environmentOfTwin(socket.socketDescriptor());
    return twin && !shareAPlace(*twin, QProcessEnvironment::systemEnvironment());
}

bool isAnywhere(const std::array<QString, 2> &displays)
{
    return !displays[0].isEmpty() || !displays[1].isEmpty();
}

} // namespace

QString singleInstanceServerName()
{
    QString user = QString::fromLocal8Bit(qgetenv("USERNAME"));
    if (user.isEmpty())
        user = QStringLiteral("default");
    return QStringLiteral("Ostrafen-SingleInstance-%1").arg(qHash(user, 0));
}

QStringList singleInstanceServerNames()
{
    const QString name = singleInstanceServerName();
    if (!peersShowTheirEnvironment())
        return {name};
    const QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    const auto [x11, wayland] = displays(environment);
    const QString place = QStringList{settingsPlace(environment), x11, wayland}.join(u'\n');
    return {name, name + u'-' + QString::number(qHash(place, 0))};
}

bool shareAPlace(const QProcessEnvironment &one, const QProcessEnvironment &other)
{
    const QString settings = settingsPlace(one);
    const QString otherSettings = settingsPlace(other);
    if (!settings.isEmpty() && !otherSettings.isEmpty() && settings != otherSettings)
        return false;
    const std::array<QString, 2> here = displays(one);
    const std::array<QString, 2> there = displays(other);
    bool isKnown = false;
    for (std::size_t i = 0; i < here.size(); ++i) {
        const bool both = !here[i].isEmpty() && !there[i].isEmpty();
        if (both && here[i] != there[i])
            return false;
        isKnown = isKnown || both;
    }
    return isKnown || !isAnywhere(here) || !isAnywhere(there);
}

QByteArray encodeArguments(const QStringList &arguments)
{
    QByteArray message;
    for (const QString &argument : arguments) {
        message += argument.toUtf8();
        message += '\0';
    }
    return message;
}

std::optional<QStringList> decodeArguments(const QByteArray &message)
{
    if (message.isEmpty())
        return QStringList();
    if (message.size() > handOverLimit || !message.endsWith('\0'))
        return std::nullopt;
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder.decode(message);
    if (decoder.hasError())
        return std::nullopt;
    return text.chopped(1).split(QChar(u'\0'));
}

bool handOver(const QString &server, const QStringList &arguments, std::chrono::milliseconds patience)
{
    const QByteArray message = encodeArguments(arguments);
    if (message.size() > handOverLimit)
        return false;
    QLocalSocket socket;
    socket.connectToServer(server, QIODevice::ReadWrite);
    if (!socket.waitForConnected(connectTime))
        return false;
    // Anybody may have put a socket of this name into a folder that all users share.
    if (!peerIsSameUser(socket.socketDescriptor(), PeerEnd::Server))
        return false;
    if (isElsewhere(socket))
        return false;
    allowOthersToActivate();
    socket.write(message);
    socket.flush();
    QElapsedTimer timer;
    timer.start();
    while (socket.bytesToWrite() > 0 && timer.elapsed() < writeTime) {
        if (!socket.waitForBytesWritten(static_cast<int>(writeTime - timer.elapsed())))
            break;
    }
    if (socket.state() == QLocalSocket::ConnectedState)
        socket.waitForDisconnected(static_cast<int>(patience.count()));
    socket.disconnectFromServer();
    if (socket.state() != QLocalSocket::UnconnectedState)
        socket.waitForDisconnected(disconnectTime);
    return true;
}

StartTurn::StartTurn(const QString &server)
{
    // Not in a folder that all users share, where anybody could hold it, if there is another.
    const QString own = QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation);
    const QString folder = QFileInfo(own).isDir() ? own : QDir::tempPath();
    m_lock = std::make_unique<QLockFile>(folder + u'/' + server + QStringLiteral(".lock"));
    m_lock->tryLock(turnTime);
}

void StartTurn::end()
{
    if (m_lock)
        m_lock->unlock();
}

SingleInstanceServer::SingleInstanceServer(std::chrono::milliseconds patience, QObject *parent)
    : QObject(parent), m_patience(patience)
{
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
    connect(&m_server, &QLocalServer::newConnection, this, &SingleInstanceServer::acceptConnections);
}

SingleInstanceServer::~SingleInstanceServer() = default;

bool SingleInstanceServer::listen(const QStringList &names)
{
    return std::any_of(names.begin(), names.end(), [this](const QString &name) { return listen(name); });
}

bool SingleInstanceServer::listen(const QString &name)
{
    // Removing the socket of a living instance would make it deaf for good.
    QLocalSocket probe;
    probe.connectToServer(name, QIODevice::ReadWrite);
    if (probe.waitForConnected(connectTime))
        return false;
    QLocalServer::removeServer(name);
    return m_server.listen(name);
}

bool SingleInstanceServer::isHearing() const
{
    return m_server.hasPendingConnections() || !m_starts.isEmpty() || !children().isEmpty();
}

HandedOver SingleInstanceServer::take()
{
    return m_starts.isEmpty() ? HandedOver() : m_starts.dequeue();
}

void SingleInstanceServer::acceptConnections()
{
    while (QLocalSocket *socket = m_server.nextPendingConnection()) {
        if (!peerIsSameUser(socket->socketDescriptor(), PeerEnd::Client) || isElsewhere(*socket)) {
            socket->abort();
            socket->deleteLater();
            continue;
        }
        new HandOverReceiver(socket, m_patience, this, [this](const HandedOver &start) {
            m_starts.enqueue(start);
            Q_EMIT instanceConnected();
        });
    }
}

} // namespace velmora
