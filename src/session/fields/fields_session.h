#pragma once

#include "core/runner.h"
#include "core/sides.h"
#include "session/frame/notice_bar.h"
#include "session/frame/pair_inputs.h"
#include "session/frame/run_report.h"
#include "session/frame/status_line.h"
#include "session/list/list_pane.h"
#include "session/session_widget.h"

#include <functional>
#include <memory>

class QBoxLayout;
class QLabel;
class QSplitter;

namespace velmora {

class FieldsBar;

/// The frame of a session that compares the fields of two files row by row: its commands, both paths, what the
/// comparison came to in words, the list of rows with its filter and details, the status line, and one run at a time. A
/// kind says how two files are compared and what their rows show.
class FieldsSession : public SessionWidget {
    Q_OBJECT
public:
    ~FieldsSession() override;

    [[nodiscard]] SessionPaths paths() const override { return m_inputs->paths(); }
    void setPaths(const SessionPaths &paths) override;
    /// Compares, in place of a comparison that runs; only says what is missing while a path is.
    void start() override;
    [[nodiscard]] bool isReading() const override { return m_runner.isRunning(); }
    /// Which rows are shown, as `keepRowsView` has it.
    [[nodiscard]] QJsonObject options() const override;
    void setOptions(const QJsonObject &options) override;
    [[nodiscard]] bool acceptsDroppedPaths() const override { return true; }
    /// Fills the paths and compares when both are there.
    void dropPaths(const QStringList &paths, QPoint position) override;
    void refreshTheme() override;

    [[nodiscard]] const ListModel &rows() const { return m_list->model(); }

public Q_SLOTS:
    void onCancel();
    virtual void onSwapSides();

protected:
    /// What a kind brings along. Texts are translated.
    struct Parts {
        FieldsBar *bar;
        Sides<PairInputs::Field> fields;
        std::unique_ptr<const RowSource> headings; ///< without rows
        QString invitation;                        ///< in place of rows until there are some
    };

    /// `makeParts` is called with the session, whose bar it makes.
    FieldsSession(SessionHost &host, const std::function<Parts(QWidget *session)> &makeParts, QWidget *parent);

    /// Compares two files with `run`.
    virtual void compare(const Sides<QString> &files) = 0;

    /// Runs `job`, as `Runner::start` has it, in place of an earlier run, and hands what it returned to `done` when it
    /// came to its end. That it was cancelled or failed stands in the status line; what is shown stays then.
    template <typename Job, typename Done>
    void run(Job job, Done done);

    /// Shows the rows of a comparison of `files`, and `verdict` above them; names the tab and records the session.
    void showRows(const Sides<QString> &files, std::unique_ptr<const RowSource> rows, const QString &verdict,
                  NoticeBar::Tone tone);
    /// Names the tab after what is compared, with a star before files that are changed and not saved.
    void showTitle(const Sides<QString> &files, const Sides<bool> &changed = {});
    /// Says why there is nothing to show.
    void showFailure(const QString &text, const QString &detail = {});

    [[nodiscard]] PairInputs &inputs() const { return *m_inputs; }
    [[nodiscard]] StatusLine &status() { return *m_status; }
    [[nodiscard]] NoticeBar &verdictBar() { return *m_verdict; }
    [[nodiscard]] ListPane &list() { return *m_list; }
    /// Has the list; other views may stand beside it.
    [[nodiscard]] QSplitter &views() { return *m_views; }
    /// The column of everything; the paths are its second part.
    [[nodiscard]] QBoxLayout &column() { return *m_column; }
    [[nodiscard]] bool isRunning() const { return m_runner.isRunning(); }

private:
    void connectParts();
    void showRunning();

    FieldsBar *m_bar = nullptr;
    PairInputs *m_inputs = nullptr;
    NoticeBar *m_verdict;
    QSplitter *m_views;
    ListPane *m_list = nullptr;
    StatusLine *m_status;
    QLabel *m_counts;
    QBoxLayout *m_column;
    Runner m_runner;
};

template <typename Job, typename Done>
void FieldsSession::run(Job job, Done done)
{
    m_runner.start(
        std::move(job),
        [this, done = std::move(done)](auto &&outcome) {
            handOver(std::forward<decltype(outcome)>(outcome), *m_status, done);
        },
        [this](const ProgressState &state) { reportReading(*m_status, state); });
}

} // namespace velmora
