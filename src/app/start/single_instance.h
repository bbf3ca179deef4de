#pragma once

#include <QLocalServer>
#include <QLockFile>
#include <QObject>
#include <QQueue>
#include <QStringList>

#include <chrono>
#include <memory>
#include <optional>

class QLocalSocket;
class QProcessEnvironment;

namespace velmora {

/// The longest hand-over message, in bytes. A longer one is neither sent nor accepted.
inline constexpr qint64 handOverLimit = 1024 * 1024;

/// The name of the local socket under which the running instance of this user can be reached.
[[nodiscard]] QString singleInstanceServerName();

/// The names to look for a running instance under, and to listen under, in this order: the user's own and, where the
/// system can tell instances apart, one for this display and profile. The second is for a start that finds the first
/// taken by an instance which its window would not be seen beside.
[[nodiscard]] QStringList singleInstanceServerNames();

/// Whether two processes with these environments show their windows on one display and keep their settings in one
/// place. A variable of the display that only one of them has says nothing as long as both have another.
[[nodiscard]] bool shareAPlace(const QProcessEnvironment &one, const QProcessEnvironment &other);

/// The message that hands an argument list over: each argument as UTF-8, followed by one zero byte.
[[nodiscard]] QByteArray encodeArguments(const QStringList &arguments);

/// The argument list of a message; nothing when it is too long, not UTF-8, or does not end with a zero byte.
[[nodiscard]] std::optional<QStringList> decodeArguments(const QByteArray &message);

/// Hands `arguments` to the instance that listens under `server`. False when there is none, when it belongs to another
/// user, display or profile, or when the message would be too long: then this process has to do the work itself.
///
/// Returns when the instance hangs up, which it does when it has read what the arguments name: whoever started this
/// process may remove the files once it has ended. Blocks for up to 500 ms for the connection, 1000 ms for the message
/// and `patience` for the reading; meant for a process that shows no window yet.
[[nodiscard]] bool handOver(const QString &server, const QStringList &arguments,
                            std::chrono::milliseconds patience = std::chrono::seconds(1));

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

/// What a later start has handed over. It waits for as long as `sender` is held anywhere, though not for ever.
struct HandedOver {
    QStringList arguments; ///< empty for a start that connected and said nothing
    std::shared_ptr<QLocalSocket> sender;
};

/// The running instance's end: takes the argument lists that later starts hand over.
///
/// Lives on the interface thread and never blocks it. A connection has 2000 ms for its message, which is whole when the
/// other side hangs up, or pauses behind an argument. Processes of other users, and starts
/// that have another display or profile, are not heard, and a message that `decodeArguments` refuses is dropped.
class SingleInstanceServer final : public QObject {
    Q_OBJECT
public:
    explicit SingleInstanceServer(std::chrono::milliseconds patience = std::chrono::seconds(2),
                                  QObject *parent = nullptr);
    ~SingleInstanceServer() override;

    /// Begins to listen under the first of `names` that is free.
    [[nodiscard]] bool listen(const QStringList &names);
    /// Begins to listen under `name`, where the remains of an instance that crashed are cleared away first. False when
    /// a living instance answers there or the system refuses.
    [[nodiscard]] bool listen(const QString &name);

    /// Whether a start is being heard, or has been and is not taken yet.
    [[nodiscard]] bool isHearing() const;
    /// Listens no longer: a start that comes now does its work itself. For a window that is about to close.
    void stop() { m_server.close(); }

    /// The oldest start not taken yet; nothing in it when there is none.
    [[nodiscard]] HandedOver take();

Q_SIGNALS:
    /// A later start has been heard out: `take` has one more.
    void instanceConnected();

private:
    void acceptConnections();

    QLocalServer m_server;
    std::chrono::milliseconds m_patience;
    QQueue<HandedOver> m_starts;
};

} // namespace velmora
