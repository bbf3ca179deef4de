#pragma once

#include <QLocalServer>
#include <QString>
#include <QStringList>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

class QLocalSocket;

namespace velmora {

/// The waiting end of `--wait`: a process that shows nothing itself and ends when the tabs are closed that the window
/// has opened for it.
///
/// It listens under an address of its own, which the hand-over message names in an added argument. The window connects
/// to it at once, and says the exit status, as a number and a line feed, when the tabs are closed. A window that hangs
/// up without having said it has gone down. Only processes of the same user are heard.
class WaitingStart final {
public:
    WaitingStart();
    ~WaitingStart();

    /// Empty when the system gave no address, and waiting is impossible.
    [[nodiscard]] QString address() const;

    /// Runs the event loop until the window has told the status; nothing when it went down, or did not connect within
    /// `patience`, which `isConnected` tells apart.
    [[nodiscard]] std::optional<int> wait(std::chrono::milliseconds patience);
    [[nodiscard]] bool isConnected() const noexcept { return m_connected; }

private:
    void listenTo(QLocalSocket *window);

    QLocalServer m_server;
    QByteArray m_heard;
    std::optional<int> m_status;
    bool m_connected = false;
};

/// The window's end: tells a waiting process what has become of the sessions that were opened for it.
///
/// Held by those for whom it speaks; says the status when the last of them lets go: the greatest that was told, or 1
/// when nothing was opened at all.
class WaitReport final {
public:
    /// Connects to `address`. What is no address of a `WaitingStart` is left alone.
    explicit WaitReport(const QString &address);
    ~WaitReport();
    WaitReport(const WaitReport &) = delete;
    WaitReport &operator=(const WaitReport &) = delete;

    void sessionClosed(int status);

private:
    std::unique_ptr<QLocalSocket> m_waiting;
    std::optional<int> m_status;
};

/// Runs what `--wait` asks for: has `arguments`, whose paths are absolute, carried out by the window that is open or by
/// one that is opened for it, and returns the exit status once the tabs are closed; nothing when no window could be
/// reached or when it went down. `handOver` hands an argument list to a window that is open. A window that took the
/// arguments but does not connect within `patience` was closing: they are handed to another.
[[nodiscard]] std::optional<int> waitForWindow(const QStringList &arguments,
                                               const std::function<bool(const QStringList &)> &handOver,
                                               std::chrono::milliseconds patience = std::chrono::seconds(5));

} // namespace velmora
