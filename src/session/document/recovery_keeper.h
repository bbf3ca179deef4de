#pragma once

#include "core/runner.h"
#include "session/document/text_recovery.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <chrono>
#include <functional>
#include <vector>

namespace velmora {

class RecoveryStore;

/// Keeps the unsaved texts of one session in a file of the recovery store for as long as they are unsaved.
///
/// The file is written by a worker a moment after an edit, seldom enough that it costs a tenth of the time at most, and
/// removed when nothing is unsaved any more and when the keeper goes. Lives on the interface thread.
class RecoveryKeeper final : public QObject {
    Q_OBJECT
public:
    /// Keeps nothing when `store` is null; otherwise it outlives the keeper.
    RecoveryKeeper(RecoveryStore *store, QObject *parent);
    ~RecoveryKeeper() override;

    /// What asks for the texts when they are about to be kept.
    void setSource(std::function<UnsavedTexts()> source) { m_source = std::move(source); }

    /// The texts have changed, and by now some are unsaved or none.
    void takeChange(bool unsaved);

    /// Keeps the texts at once and calls `kept` when they are on the disk; not at all when that fails.
    void keepNow(std::function<void()> kept);

Q_SIGNALS:
    /// The texts cannot be kept; in the system's own words. Told once.
    void failed(const QString &why);

private:
    void keep();
    void startPause(std::chrono::nanoseconds length);
    void takeOutcome(const RunOutcome<SaveResult> &outcome);
    void removeFile();

    RecoveryStore *m_store;
    std::function<UnsavedTexts()> m_source;
    QString m_file; ///< empty before the first time
    QTimer m_pause;
    QElapsedTimer m_clock; ///< since the running or the last write began
    Runner m_runner;
    std::vector<std::function<void()>> m_waiting; ///< for the next time that the texts are kept
    bool m_unsaved = false;
    bool m_changed = false; ///< since the texts were last collected
    bool m_failed = false;
};

} // namespace velmora
