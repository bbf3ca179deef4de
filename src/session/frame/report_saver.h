#pragma once

#include "core/runner.h"

#include <QObject>

#include <functional>

class QIODevice;

namespace velmora {

/// Writes reports and other exports of a session on a worker, one after the other, each beside its target, which it
/// replaces when it is whole.
class ReportSaver final : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// Writes all of a report and says whether the device took it. Runs on a worker, so it owns what it writes.
    using Writer = std::function<bool(QIODevice &device, const CancelFlag &cancel)>;

    /// Writes the file `path` and ends with one of the signals. One that is still being written is finished first.
    void write(const QString &path, Writer writer);

Q_SIGNALS:
    void written(const QString &path);
    /// `reason`: in the system's own words, if it has any.
    void failed(const QString &path, const QString &reason);

private:
    struct Order {
        QString path;
        Writer writer;
    };

    void startNext();

    QList<Order> m_orders; ///< the first one is being written while the runner runs
    Runner m_runner;
};

} // namespace velmora
