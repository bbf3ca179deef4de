#include "app/start/waiting_start.h"

#include "app/start/command_line.h"
#include "platform/peer_user.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QLocalSocket>
#include <QProcess>
#include <QThread>
#include <QTimer>
#include <QUuid>

#include <algorithm>

namespace velmora {

namespace {

constexpr char addressPrefix[] = "Ostrafen-Wait-";
constexpr int nothingOpened = 1;
/// How long a window may take from its start until it hears others.
constexpr qint64 startTime = 30000;
constexpr unsigned long lookInterval = 50;
constexpr int writeTime = 100;
constexpr int mostAttempts = 4;
/// Longer than any status.
constexpr qint64 longestStatus = 16;

/// Starts the program once more, on its own, for the window. It outlives this process, whose output somebody may read
/// to its end.
bool startWindow(const QStringList &arguments)
{
    QProcess window;
    window.setProgram(QCoreApplication::applicationFilePath());
    window.setArguments(windowArguments(arguments));
    window.setStandardInputFile(QProcess::nullDevice());
    window.setStandardOutputFile(QProcess::nullDevice());
    window.setStandardErrorFile(QProcess::nullDevice());
    return window.startDetached();
}

/// Hands over to a window that has just been started, once it can be heard.
bool handOverInTime(const QStringList &message, const std::function<bool(const QStringList &)> &handOver)
{
    QElapsedTimer timer;
    timer.start();
    while (!handOver(message)) {
        if (timer.elapsed() > startTime)
            return false;
        QThread::msleep(lookInterval);
    }
    return true;
}

} // namespace

WaitingStart::WaitingStart()
{
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
    const QString unique = QUuid::createUuid().toString(QUuid::WithoutBraces);
    m_server.listen(QLatin1String(addressPrefix) + unique);
}

WaitingStart::~WaitingStart() = default;

QString WaitingStart::address() const
{
    return m_server.fullServerName();
}

std::optional<int> WaitingStart::wait(std::chrono::milliseconds patience)
{
    QEventLoop loop;
    QTimer deadline;
    deadline.setSingleShot(true);
    QObject::connect(&deadline, &QTimer::timeout, &loop, &QEventLoop::quit);
    const auto accept = [&] {
        while (QLocalSocket *window = m_server.nextPendingConnection()) {
            if (!peerIsSameUser(window->socketDescriptor(), PeerEnd::Client)) {
                window->abort();
                continue;
            }
            deadline.stop();
            m_server.close();
            m_connected = true;
            QObject::connect(window, &QLocalSocket::readyRead, &loop, [this, window] { listenTo(window); });
            QObject::connect(window, &QLocalSocket::disconnected, &loop, [this, window, &loop] {
                listenTo(window);
                loop.quit();
            });
            listenTo(window);
            if (window->state() == QLocalSocket::UnconnectedState)
                QTimer::singleShot(0, &loop, &QEventLoop::quit);
        }
    };
    QObject::connect(&m_server, &QLocalServer::newConnection, &loop, accept);
    deadline.start(patience);
    accept();
    loop.exec();
    return m_status;
}

void WaitingStart::listenTo(QLocalSocket *window)
{
    m_heard += window->read(longestStatus - m_heard.size());
    if (!m_heard.endsWith('\n'))
        return;
    bool isNumber = false;
    const int status = m_heard.trimmed().toInt(&isNumber);
    if (isNumber && status >= 0)
        m_status = status;
}

WaitReport::WaitReport(const QString &address) : m_waiting(std::make_unique<QLocalSocket>())
{
    const qsizetype folder = std::max(address.lastIndexOf(u'/'), address.lastIndexOf(u'\\'));
    if (address.mid(folder + 1).startsWith(QLatin1String(addressPrefix)))
        m_waiting->connectToServer(address, QIODevice::ReadWrite);
    if (m_waiting->state() == QLocalSocket::ConnectedState &&
        !peerIsSameUser(m_waiting->socketDescriptor(), PeerEnd::Server))
        m_waiting->abort();
}

WaitReport::~WaitReport()
{
    if (m_waiting->state() != QLocalSocket::ConnectedState)
        return;
    m_waiting->write(QByteArray::number(m_status.value_or(nothingOpened)) + '\n');
    // Two bytes, which the system takes at once; where it writes in the background they must not be cut off.
    m_waiting->flush();
    m_waiting->waitForBytesWritten(writeTime);
}

void WaitReport::sessionClosed(int status)
{
    m_status = std::max(m_status.value_or(0), status);
}

std::optional<int> waitForWindow(const QStringList &arguments, const std::function<bool(const QStringList &)> &handOver,
                                 std::chrono::milliseconds patience)
{
    WaitingStart waiting;
    if (waiting.address().isEmpty())
        return std::nullopt;
    const QStringList message = withReportTo(arguments, waiting.address());
    for (int attempt = 0; attempt < mostAttempts && !waiting.isConnected(); ++attempt) {
        if (!handOver(message) && !(startWindow(arguments) && handOverInTime(message, handOver)))
            return std::nullopt;
        if (const std::optional<int> status = waiting.wait(patience))
            return status;
    }
    return std::nullopt;
}

} // namespace velmora
