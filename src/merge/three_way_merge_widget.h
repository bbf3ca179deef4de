#pragma once

#include "core/runner.h"
#include "merge/merge_job.h"
#include "session/document/edited_texts.h"
#include "session/session_widget.h"

class QLabel;

namespace velmora {

class ChangeList;
class ChangeWatcher;
class FindBar;
class FindController;
class LeftOutList;
class MergeBar;
class MergeEditing;
class MergeHeads;
class MergeView;
class NoticeBar;
class PaneOptions;
class ProgressStrip;
class RecoveryKeeper;
class ReplaceController;
class StatusLine;
struct UnsavedTexts;

/// The session of kind "merge": two versions of a text and the base that both come from, merged into a result, which is
/// edited directly.
///
/// With a left file alone, which has conflict markers, it takes that file apart, and the result goes back into it.
/// Options: "output" is the file that the result goes to; without it, saving asks for a name. "settleTouching": changes
/// of both versions that touch are settled line by line, where they can be.
class ThreeWayMergeWidget final : public SessionWidget {
    Q_OBJECT
public:
    explicit ThreeWayMergeWidget(SessionHost &host, QWidget *parent = nullptr);
    ~ThreeWayMergeWidget() override;

    [[nodiscard]] QString kind() const override { return QStringLiteral("merge"); }
    [[nodiscard]] SessionPaths paths() const override;
    void setPaths(const SessionPaths &paths) override;
    void start() override;
    [[nodiscard]] bool isReading() const override { return m_runner.isRunning(); }
    [[nodiscard]] QJsonObject options() const override;
    void setOptions(const QJsonObject &options) override;
    bool setOutput(const QString &path) override;
    /// 0 when the result was saved where it was to be saved and, the last time, without open conflicts.
    [[nodiscard]] int waitStatus() const override;
    [[nodiscard]] bool acceptsDroppedPaths() const override { return true; }
    void dropPaths(const QStringList &paths, QPoint position) override;
    void refreshTheme() override;
    [[nodiscard]] bool canEdit(EditCommand command) const override;
    void edit(EditCommand command) override;
    [[nodiscard]] bool hasUnsavedChanges() const override;
    void confirmClose(std::function<void(bool mayClose)> answered) override;
    void recover(const RecoveryRecord &record, std::function<void()> kept) override;

    [[nodiscard]] MergeView &view() { return *m_view; }
    [[nodiscard]] const MergeEditing &editing() const { return *m_editing; }

public Q_SLOTS:
    /// Starts a merge, or cancels the one that runs.
    void onMerge();
    void onSave();
    void onSaveAs();
    void onSaveMarked();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    using Done = std::function<void(bool)>;

    void buildLayout();
    void connectBar();
    void connectTaking();
    void connectEditing();
    void connectRecovery();

    /// Why the inputs cannot be merged, in words; empty when they can.
    [[nodiscard]] QString problem() const;
    /// Merges anew where there is no doubt that a person wants that.
    void settleTouching(bool settles);
    void mergeAnew(std::function<void()> start);
    void startMerge(ChangedFile changed, std::optional<KeptMerge> kept);
    void takeOutcome(RunOutcome<MergeResult> &&outcome);
    void takeResult(MergeResult &&result);
    void chooseSyntax();
    void showRunning();
    void showProgress(const ProgressState &state);
    void showMessage(const QString &message);
    void showCounts();
    void showPosition();
    void showTitle();
    void showContextMenu(PaneIndex pane, QPoint at);
    void take(bool taken);
    void goTo(bool found, const QString &none);
    [[nodiscard]] QString noConflictText(bool forward) const;

    /// Writes the result when no conflict is open, or after a person has said what is to stand in their place.
    void save(const Done &done);
    void saveWithout(Done done);
    /// Calls `go` when nothing is being saved: at once, or as soon as it is written.
    void whenSaved(std::function<void()> go);
    /// Asks what is to become of open conflicts, then calls the one or the other; at once without any.
    void askAboutOpen(std::function<void()> saveMarked, std::function<void()> saveAsItIs, const Done &refused);
    void takeSaved(bool isWhole);
    void writeMarked(Done done);
    void askWhereToWriteMarked(const Done &done);
    void writeMarkedTo(const QString &path, TextSaveRequest::Target target, Done done);
    void takeMarked(const QString &path, RunOutcome<TextSaveResult> &&outcome, const Done &done);
    [[nodiscard]] MarkerLabels labels() const;
    [[nodiscard]] UnsavedTexts unsavedTexts() const;

    MergeBar *m_bar;
    MergeHeads *m_heads;
    ChangeList *m_changes;
    LeftOutList *m_leftOut;
    MergeView *m_view;
    ProgressStrip *m_progress;
    EditedTexts *m_texts;
    MergeEditing *m_editing;
    FindBar *m_findBar;
    FindController *m_finder;
    ReplaceController *m_replacer;
    PaneOptions *m_paneOptions;
    NoticeBar *m_changeBar;
    ChangeWatcher *m_watcher;
    StatusLine *m_foot;
    QLabel *m_place;
    QLabel *m_format;
    RecoveryKeeper *m_keeper;
    std::function<void()> m_recovered; ///< to be called when a recovered merge is shown and kept again

    SessionPaths m_running;                                                ///< of the merge that was started last
    SessionPaths m_merged;                                                 ///< of the merge that is shown
    QString m_output;                                                      ///< empty while there is none
    std::array<std::optional<LoadedText>, mergeSourceCount> m_keptSources; ///< of an earlier run, instead of files
    MarkerLabels m_labels;
    QString m_title;
    QString m_wantedOutput; ///< where somebody waits for the result; empty when nobody said
    QString m_savedWhole;   ///< the file that holds the result without open conflicts; empty for none
    Runner m_runner;
    Runner m_markedSaver;
    std::vector<std::function<void()>> m_afterMarked; ///< until that has ended
};

} // namespace velmora
