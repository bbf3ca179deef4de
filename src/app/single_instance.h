#pragma once

#include <QLocalServer>
#include <QLockFile>
#include <QObject>
#include <QQueue>
#include <QStringList>

#include <chrono>
#include <memory>
#include <optional>

namespace velmora {

/// The longest hand-over message, in bytes. A longer one is neither sent nor accepted.
inline constexpr qint64 handOverLimit = 1024 * 1024;

/// The name of the local socket under which the running instance of this user can be reached.
[[nodiscard]] QString singleInstanceServerName();

/// The message that hands an argument list over: each argument as UTF-8, followed by one zero byte.
[[nodiscard]] QByteArray encodeArguments(const QStringList &arguments);

/// The argument list of a message; nothing when it is too long, not UTF-8, or does not end with a zero byte.
[[nodiscard]] std::optional<QStringList> decodeArguments(const QByteArray &message);

/// Hands `arguments` to the instance that listens under `server`. False when there is none, when it belongs to another
/// user or when the message would be too long: then this process has to do the work itself. Blocks for up to 500 ms for
/// the connection and 1000 ms each for the message and the end; meant for a process that shows no window yet.
[[nodiscard]] bool handOver(const QString &server, const QStringList &arguments);

/// The turn of one start between the look for a running instance and being one: starts at the same time take it one
/// after the other.
///
/// Waits for its turn up to 10 seconds. A start that died in its turn does not hold the others up. Where the turn
/// cannot be taken, as in a folder without write permission, the start goes on without.
class StartTurn final {
public:
    explicit StartTurn(const QString &server);
    /// Ends the turn. The destructor does so too.
    void end();

private:
    std::unique_ptr<QLockFile> m_lock;
};

/// The running instance's end: takes the argument lists that later starts hand over.
///
/// Lives on the interface thread and never blocks it. Whatever a connection does, it is over after 2000 ms. Processes
/// of other users are not heard, and a message that `decodeArguments` refuses is dropped.
class SingleInstanceServer final : public QObject {
    Q_OBJECT
public:
    explicit SingleInstanceServer(std::chrono::milliseconds patience = std::chrono::seconds(2),
                                  QObject *parent = nullptr);
    ~SingleInstanceServer() override;

    /// Begins to listen under `name`, where the remains of an instance that crashed are cleared away first. False when
    /// a living instance answers there or the system refuses.
    [[nodiscard]] bool listen(const QString &name);

    /// The oldest argument list not taken yet; empty for a start that connected and said nothing.
    [[nodiscard]] QStringList takeArguments();

Q_SIGNALS:
    /// A later start has been heard out: `takeArguments` has one list more.
    void instanceConnected();

private:
    void acceptConnections();

    QLocalServer m_server;
    std::chrono::milliseconds m_patience;
    QQueue<QStringList> m_arguments;
};

} // namespace velmora
