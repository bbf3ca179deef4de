#include "app/single_instance.h"

#include "platform/peer_user.h"
#include "platform/window_chrome.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QLocalSocket>
#include <QStandardPaths>
#include <QStringDecoder>
#include <QTimer>

namespace velmora {

namespace {

constexpr int connectTime = 500;
constexpr int writeTime = 1000;
constexpr int disconnectTime = 1000;
constexpr int turnTime = 10000;

/// Hears one connection out and ends it: with its message, or, when the time is over before the other side has closed,
/// with what has arrived by then.
class HandOverReceiver final : public QObject {
public:
    using Received = std::function<void(const QStringList &arguments)>;

    HandOverReceiver(QLocalSocket *socket, std::chrono::milliseconds patience, QObject *parent, Received received)
        : QObject(parent), m_socket(socket), m_received(std::move(received))
    {
        socket->setParent(this);
        connect(socket, &QLocalSocket::readyRead, this, &HandOverReceiver::read);
        connect(socket, &QLocalSocket::disconnected, this, &HandOverReceiver::finish);
        m_deadline.setSingleShot(true);
        connect(&m_deadline, &QTimer::timeout, this, &HandOverReceiver::finish);
        m_deadline.start(patience);
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
    }

    void finish()
    {
        if (m_finished)
            return;
        read();
        if (m_finished)
            return;
        end();
        if (const auto arguments = decodeArguments(m_message))
            m_received(*arguments);
    }

    void end()
    {
        m_finished = true;
        m_deadline.stop();
        m_socket->abort();
        deleteLater();
    }

    QLocalSocket *m_socket;
    Received m_received;
    QTimer m_deadline;
    QByteArray m_message;
    bool m_finished = false;
};

} // namespace

QString singleInstanceServerName()
{
    QString user = QString::fromLocal8Bit(qgetenv("USERNAME"));
    if (user.isEmpty())
        user = QStringLiteral("default");
    return QStringLiteral("Ostrafen-SingleInstance-%1").arg(qHash(user, 0));
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

bool handOver(const QString &server, const QStringList &arguments)
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
    allowOthersToActivate();
    socket.write(message);
    socket.flush();
    QElapsedTimer timer;
    timer.start();
    while (socket.bytesToWrite() > 0 && timer.elapsed() < writeTime) {
        if (!socket.waitForBytesWritten(static_cast<int>(writeTime - timer.elapsed())))
            break;
    }
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

QStringList SingleInstanceServer::takeArguments()
{
    return m_arguments.isEmpty() ? QStringList() : m_arguments.dequeue();
}

void SingleInstanceServer::acceptConnections()
{
    while (QLocalSocket *socket = m_server.nextPendingConnection()) {
        if (!peerIsSameUser(socket->socketDescriptor(), PeerEnd::Client)) {
            socket->abort();
            socket->deleteLater();
            continue;
        }
        new HandOverReceiver(socket, m_patience, this, [this](const QStringList &arguments) {
            m_arguments.enqueue(arguments);
            Q_EMIT instanceConnected();
        });
    }
}

} // namespace velmora
