#include "session/document/recovery_keeper.h"

#include <QFile>

#include <algorithm>
#include <chrono>
#include <utility>

namespace velmora {

namespace {

using namespace std::chrono_literals;

constexpr std::chrono::nanoseconds shortestPause = 1s;
constexpr std::chrono::nanoseconds longestPause = 60s;
constexpr int pausePerWrite = 9;
constexpr std::chrono::nanoseconds pauseAfterFailure = 2s; // it may be another program that reads the file just now

} // namespace

RecoveryKeeper::RecoveryKeeper(RecoveryStore *store, QObject *parent) : QObject(parent), m_store(store)
{
    m_pause.setSingleShot(true);
    connect(&m_pause, &QTimer::timeout, this, &RecoveryKeeper::keep);
}

RecoveryKeeper::~RecoveryKeeper()
{
    m_runner.cancel(); // a worker that brings the file back from here on removes it
    removeFile();
}

void RecoveryKeeper::takeChange(bool unsaved)
{
    if (!m_store)
        return;
    m_unsaved = unsaved;
    m_changed = unsaved;
    if (unsaved) {
        // Not begun anew, or a person who never stops typing would not be safe.
        if (!m_pause.isActive() && !m_runner.isRunning())
            startPause(shortestPause);
    } else {
        m_pause.stop();
        m_runner.cancel(); // one that is too far gone brings the file back, which goes when that has ended
        removeFile();
    }
}

void RecoveryKeeper::keepNow(std::function<void()> kept)
{
    if (!m_store)
        return;
    m_unsaved = m_changed = true;
    m_waiting.push_back(std::move(kept));
    m_pause.stop();
    if (!m_runner.isRunning())
        keep();
}

void RecoveryKeeper::startPause(std::chrono::nanoseconds length)
{
    m_pause.start(std::chrono::duration_cast<std::chrono::milliseconds>(length));
}

void RecoveryKeeper::keep()
{
    if (m_file.isEmpty())
        m_file = m_store->newFile();
    m_changed = false;
    m_clock.start();
    m_runner.start(
        [texts = m_source(), file = m_file](const CancelFlag &cancel, Progress &) {
            const SaveResult result = writeRecoveryRecord(file, toRecoveryRecord(texts), cancel);
            if (cancel.isCancelled())
                QFile::remove(file); // nobody else may be left to do it
            return result;
        },
        [this](const RunOutcome<SaveResult> &outcome) { takeOutcome(outcome); });
}

void RecoveryKeeper::takeOutcome(const RunOutcome<SaveResult> &outcome)
{
    const bool kept = outcome.end == RunEnd::Done && outcome.value->ok();
    if (outcome.end == RunEnd::Done && !kept && !std::exchange(m_failed, true))
        Q_EMIT failed(outcome.value->error);
    if (!m_unsaved) {
        removeFile();
        return;
    }
    const std::chrono::nanoseconds pause(m_clock.nsecsElapsed() * pausePerWrite);
    if (!kept) {
        startPause(std::clamp(pause, pauseAfterFailure, longestPause));
        return;
    }
    if (m_changed)
        startPause(std::clamp(pause, shortestPause, longestPause));
    for (const auto &call : std::exchange(m_waiting, {}))
        call();
}

void RecoveryKeeper::removeFile()
{
    if (!m_file.isEmpty())
        QFile::remove(m_file);
}

} // namespace velmora
