#pragma once

#include "core/runner.h"
#include "session/pane/row_layout.h"
#include "session/session_widget.h"
#include "settings/options/text_session_options.h"
#include "text/result/text_report_content.h"
#include "text/text_compare_job.h"

class QLabel;

namespace velmora {

class ChangeWatcher;
class ConflictNotice;
class DiffView;
class FindBar;
class FindController;
class ManualAlignment;
class NoticeBar;
class PatchCopy;
class ProgressStrip;
class RecoveryKeeper;
class ReplaceController;
class ResultPresenter;
class StatusLine;
class TextCompareBar;
class TextEditing;
class TextInputs;
class TextInput;
class TextViewOptions;
struct UnsavedTexts;
enum class ChangedFile;

/// The session of kind "text": two files, or one file and an empty side, are compared line by line and shown side by
/// side.
///
/// A comparison reads and compares on a worker; the result stays shown until the next one has completed, also when that
/// fails or is cancelled. Differences are numbered as blocks, runs of rows that differ, while the status line counts
/// rows; the foot says how many rows the blocks have.
class TextCompareWidget final : public SessionWidget {
    Q_OBJECT
public:
    explicit TextCompareWidget(SessionHost &host, QWidget *parent = nullptr);
    ~TextCompareWidget() override;

    [[nodiscard]] QString kind() const override { return QStringLiteral("text"); }
    [[nodiscard]] SessionPaths paths() const override;
    void setPaths(const SessionPaths &paths) override;
    /// Starts anew when a comparison runs already.
    void start() override;
    [[nodiscard]] bool isReading() const override { return m_runner.isRunning(); }
    [[nodiscard]] QJsonObject options() const override;
    void setOptions(const QJsonObject &options) override;
    bool setPendingReport(const QString &path) override;
    [[nodiscard]] bool acceptsDroppedPaths() const override { return true; }
    void dropPaths(const QStringList &paths, QPoint position) override;
    void refreshTheme() override;
    [[nodiscard]] bool canEdit(EditCommand command) const override;
    void edit(EditCommand command) override;
    [[nodiscard]] bool canEnableEditing() const override { return true; }
    [[nodiscard]] bool isEditingEnabled() const override;
    void setEditingEnabled(bool enabled) override;
    [[nodiscard]] bool hasUnsavedChanges() const override;
    void confirmClose(std::function<void(bool mayClose)> answered) override;
    void recover(const RecoveryRecord &record, std::function<void()> kept) override;

    /// Takes the clipboard's text as `side`, which then has no file, and compares.
    void useClipboardText(Side side);

    [[nodiscard]] bool isComparing() const { return m_runner.isRunning(); }
    [[nodiscard]] bool isSaving() const;
    [[nodiscard]] DiffView &view() { return *m_view; }

public Q_SLOTS:
    void onBrowseLeft();
    void onBrowseRight();
    /// Starts a comparison, or cancels the one that runs.
    void onCompare();
    void onNextDiff();
    void onPrevDiff();
    /// Copies the selected lines, or else the current difference, to the other side. Copying unlocks the texts unless
    /// the other side is read-only.
    void onCopyLeftToRight();
    void onCopyRightToLeft();
    /// The same for the difference that holds row `lineIndex` of the result, from 0.
    void onArrowCopyLeftToRight(int lineIndex);
    void onArrowCopyRightToLeft(int lineIndex);
    void onShowAll();
    void onShowDifferences();
    void onShowIdentical();
    /// Counts unimportant differences as equal, or as differences when they were; the status line names them apart from
    /// the rows that differ.
    void onIgnoreMinor();
    void onSwapSides();
    void onSaveLeft();
    void onSaveRight();
    /// Reading again asks first when a side would lose its edits.
    void onReloadLeft();
    void onReloadRight();
    void onReloadBoth();
    void onFind();
    void onFindNext();
    void onFindPrev();
    void onFindClose();
    void onFindTextChanged(const QString &text);
    void onGotoLine();
    void onExportHtml();
    /// Opens the settings of this comparison at the tab of that index.
    void onSessionSettings(int initialTabIndex);
    /// Takes up what the run of number `generation` found; one that is no longer the current run is dropped.
    void onTextCompareFinished(quint64 generation, const std::shared_ptr<const velmora::DiffDocument> &diff,
                               const QString &encodingLabel, const QString &leftSuffix, const QString &rightSuffix,
                               bool cancelled, const velmora::LoadedText &leftRaw, const velmora::LoadedText &rightRaw);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    /// A comparison as it was started.
    struct Request {
        SessionPaths paths;
        TextSessionOptions options;
    };

    void buildLayout();
    void connectBar();
    void connectInputs();
    void browse(Side side);
    void chooseEncoding(Side side);
    void swapSides();
    void addPresets();
    /// The name of the line ends that the side's file has; empty when no file is shown.
    [[nodiscard]] QString ownLineEnds(Side side) const;
    void addReportForms();
    /// Asks for the file and writes the report there; the usual one without a form.
    void exportReport(const std::optional<MarkedReportForm> &form);
    void takeSettings(const TextSessionOptions &chosen);
    [[nodiscard]] Side sideUnder(QPoint position) const;

    /// False, with the reason in the status line, when the inputs cannot be compared.
    [[nodiscard]] bool checkInputs();
    void checkExternalChange();
    void startComparison(ChangedFile changed);
    void connectEditing();
    void connectRecovery();
    void connectAlignment();
    void keepRecovered();
    [[nodiscard]] UnsavedTexts unsavedTexts() const;
    /// Who goes to a difference is done with the paths: keys are for the texts.
    void focusTexts();
    void copyFrom(Side from);
    void copyDifference(Side from, qsizetype row);
    void copyRows(Side from, RowRange rows);
    void takeSaved(PaneIndex pane);
    void reload(bool left, bool right);
    [[nodiscard]] QString title() const;
    void showCounts();
    void takeOutcome(RunOutcome<TextCompareResult> &&outcome);
    void showProgress(const ProgressState &state);
    void showRunning();
    void showSaving();
    void showMessage(const QString &message);
    void showPosition();
    void showCaret();
    /// Says so where lines are too long to be wrapped.
    void tellOfUnwrapped();
    void showContextMenu(PaneIndex index, QPoint at);
    /// The differences of the selected lines, or all.
    void copyAsPatch();

    TextSessionOptions m_options;
    Request m_running;            ///< the comparison that was started last
    TextReportContent m_compared; ///< the result that is shown, without a document before the first
    QString m_pendingReport;
    QString m_formatText;
    QString m_message; ///< in the status line
    QString m_title;
    QString m_replaced; ///< to be told once more beside the comparison that follows

    TextCompareBar *m_bar;
    TextInputs *m_inputs;
    ProgressStrip *m_progress;
    NoticeBar *m_verdict;
    DiffView *m_view;
    ResultPresenter *m_presenter;
    TextEditing *m_editing;
    TextViewOptions *m_viewOptions;
    PatchCopy *m_patches;
    FindBar *m_findBar;
    FindController *m_finder;
    ReplaceController *m_replacer;
    ManualAlignment *m_alignment;
    NoticeBar *m_changeBar;
    ConflictNotice *m_conflicts;
    ChangeWatcher *m_changes;
    StatusLine *m_foot;
    QLabel *m_blocks;
    QLabel *m_place;
    QLabel *m_format;
    RecoveryKeeper *m_keeper;
    std::function<void()> m_recovered; ///< to be called when recovered texts are shown and kept again
    ReportSaver m_reports;
    Runner m_runner;
};

} // namespace velmora
