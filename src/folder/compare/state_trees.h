#pragma once

#include "core/runner.h"
#include "core/sides.h"
#include "session/session_record.h"
#include "vfs/place/state_source.h"
#include "vfs/tree_source.h"

#include <QObject>
#include <QString>

#include <functional>

namespace velmora {

/// The states of repositories that stand on a side of a comparison of folders, read on a worker.
class StateTrees final : public QObject {
    Q_OBJECT
public:
    explicit StateTrees(QObject *parent);

    /// Whether one of the two is a state.
    [[nodiscard]] static bool isAny(const SessionPaths &paths);

    /// Finds what the states among the paths are now, and calls `done` with a sentence where one is not to be had.
    void open(const SessionPaths &paths, std::function<void(const QString &error)> done);
    /// The folder of a path as it was opened last; of the disk where it is no state.
    [[nodiscard]] TreeFolder folderAt(Side side, const QString &path) const;

    [[nodiscard]] bool isRunning() const { return m_runner.isRunning(); }
    void cancel() { m_runner.cancel(); }

Q_SIGNALS:
    void runningChanged();
    void logLine(const QString &line);

private:
    struct Opened {
        QString path;
        StateOpening state;
    };

    [[nodiscard]] QString take(Sides<Opened> &&opened);

    Sides<Opened> m_opened;
    Runner m_runner;
};

} // namespace velmora
