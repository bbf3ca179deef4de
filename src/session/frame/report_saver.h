#pragma once

#include "core/runner.h"

#include <QObject>

#include <functional>

class QIODevice;
class QWidget;

namespace velmora {

class SessionHost;

/// Writes reports and other exports of a session on a worker, one after the other, each beside its target, which it
/// replaces when it is whole, and tells the person how that went.
class ReportSaver final : public QObject {
    Q_OBJECT
public:
    /// `window` is what warnings with this title belong to; it and `host` outlive the saver.
    ReportSaver(SessionHost &host, QWidget &window, const QString &title);

    /// Writes all of a report and says whether the device took it. Runs on a worker, so it owns what it writes.
    using Writer = std::function<bool(QIODevice &device, const CancelFlag &cancel)>;

    /// Writes the file `path`. One that is still being written is finished first.
    void write(const QString &path, Writer writer);

Q_SIGNALS:
    /// A report could not be written, for the session's status line.
    void failed(const QString &message);

private:
    struct Order {
        QString path;
        Writer writer;
    };

    void startNext();
    void tellWritten(const QString &path);
    /// `reason`: in the system's own words, if it has any.
    void tellFailure(const QString &path, const QString &reason);

    SessionHost &m_host;
    QWidget &m_window;
    QString m_title;
    QList<Order> m_orders; ///< the first one is being written while the runner runs
    Runner m_runner;
};

} // namespace velmora
