#pragma once

#include "core/runner.h"
#include "session/fault_text.h"
#include "session/frame/paths_bar.h"
#include "session/frame/run_report.h"
#include "session/frame/status_line.h"
#include "session/session_widget.h"
#include "session/translate.h"

class QHBoxLayout;
class QPushButton;
class QVBoxLayout;

namespace velmora {

/// The frame of a session on one to three files: a row of commands below the paths, room for what the kind shows, the
/// status line, and one run at a time with its progress and its button to cancel. A kind adds its views to `content`,
/// its commands with `addCommand`, and starts its work with `run`.
class FilesSession : public SessionWidget {
    Q_OBJECT
public:
    [[nodiscard]] SessionPaths paths() const override { return m_inputs->paths(); }
    void setPaths(const SessionPaths &paths) override { m_inputs->setPaths(paths); }
    [[nodiscard]] bool acceptsDroppedPaths() const override { return true; }
    /// Fills the paths and starts.
    void dropPaths(const QStringList &paths, QPoint position) override;
    [[nodiscard]] bool isReading() const override { return m_runner.isRunning(); }
    void refreshTheme() override;

public Q_SLOTS:
    /// Asks the run to stop; what is shown stays.
    virtual void onCancel();

protected:
    /// `fields` as in `PathsBar`.
    FilesSession(SessionHost &host, const QList<PathsBar::Field> &fields, QWidget *parent);

    [[nodiscard]] PathsBar &inputs() { return *m_inputs; }
    [[nodiscard]] StatusLine &status() { return *m_status; }
    /// The column between the commands and the status line.
    [[nodiscard]] QVBoxLayout &content() { return *m_content; }

    /// Adds a button before the one that cancels, found by its object name.
    QPushButton *addCommand(const QString &text, const QString &objectName);

    /// Runs `job`, as `Runner::start` has it, in place of an earlier run, and hands what it returned to `done` when it
    /// came to its end. That it was cancelled or failed stands in the status line.
    template <typename Job, typename Done>
    void run(Job job, Done done);

    /// The same for a job whose result counts, too, when it was cancelled: `ended` then finds the words.
    template <typename Job, typename Ended>
    void runToEnd(Job job, Ended ended);

    /// Whether there is something to cancel. A kind that works beside its runs says so, and calls `showRunning` when
    /// that begins and ends.
    [[nodiscard]] virtual bool isBusy() const { return m_runner.isRunning(); }
    void showRunning();

private:
    PathsBar *m_inputs;
    QHBoxLayout *m_commands;
    QVBoxLayout *m_content;
    QPushButton *m_cancel;
    StatusLine *m_status;
    Runner m_runner;
};

template <typename Job, typename Done>
void FilesSession::run(Job job, Done done)
{
    m_runner.start(
        std::move(job),
        [this, done = std::move(done)](auto &&outcome) {
            handOver(std::forward<decltype(outcome)>(outcome), *m_status, done);
        },
        [this](const ProgressState &state) { reportReading(*m_status, state); });
}

template <typename Job, typename Ended>
void FilesSession::runToEnd(Job job, Ended ended)
{
    m_runner.start(
        std::move(job),
        [this, ended = std::move(ended)](auto &&outcome) {
            if (outcome.value)
                ended(*outcome.value);
            else
                m_status->showFailure(faultText(outcome.fault, Velmora::tr("Not enough memory")));
        },
        [this](const ProgressState &state) { reportReading(*m_status, state); });
}

} // namespace velmora
