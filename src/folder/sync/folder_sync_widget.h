#pragma once

#include "core/runner.h"
#include "folder/actions/plan_run.h"
#include "folder/sync/sync_job.h"
#include "session/session_widget.h"

#include <QModelIndex>

class QCheckBox;
class QComboBox;
class QLabel;
class QSplitter;

namespace velmora {

class FolderActions;
class FolderLogPanel;
class PathsBar;
class PlanView;
class StatusLine;
class SyncBar;
class SyncPlanModel;

/// The session that makes two folders agree: both are compared, what is to be done is shown as a plan that can be
/// changed entry by entry, and carried out when a person says so. A run can be taken back.
class FolderSyncWidget final : public SessionWidget {
    Q_OBJECT
public:
    explicit FolderSyncWidget(SessionHost &host, QWidget *parent = nullptr);
    ~FolderSyncWidget() override;

    [[nodiscard]] QString kind() const override;
    [[nodiscard]] SessionPaths paths() const override;
    void setPaths(const SessionPaths &paths) override;
    void start() override { onAnalyze(); }
    [[nodiscard]] bool isReading() const override { return m_stage == Stage::Analysing; }
    [[nodiscard]] QJsonObject options() const override;
    void setOptions(const QJsonObject &options) override;
    void confirmClose(std::function<void(bool mayClose)> answered) override;
    [[nodiscard]] bool hasUnsavedChanges() const override { return m_stage == Stage::Running; }
    [[nodiscard]] bool acceptsDroppedPaths() const override { return true; }
    void dropPaths(const QStringList &paths, QPoint position) override;
    void refreshTheme() override;

public Q_SLOTS:
    void onAnalyze();
    void onSync();
    void onCancel();
    void onUndo();
    void onSwap();

private:
    enum class Stage { Idle, Analysing, Running };

    [[nodiscard]] QWidget *buildChoices();
    void buildView();
    void buildLayout();
    void connectBar();
    void connectUndo();

    [[nodiscard]] SyncMode mode() const;
    /// The folders that the plan is about.
    [[nodiscard]] Sides<QString> plannedFolders() const { return {m_found.roots.left.path, m_found.roots.right.path}; }
    [[nodiscard]] QString title() const;
    [[nodiscard]] QString problemOfPaths() const;
    /// What the status line says of a run, for as long as the folders are looked at again.
    struct Remark {
        QString text; ///< empty: what was found is said
        bool isFailure = false;
    };
    void analyse(const Sides<QString> &folders, const Remark &remark);
    void takeAnalysis(RunOutcome<SyncAnalysis> &&outcome, const Remark &remark);
    void tell(const Remark &remark);
    void planAgain();
    void showPlan();
    void showState();
    void showSummary();
    void showRowCommands();
    void showNotice();
    void changeSelected(void (SyncPlanModel::*change)(const QModelIndexList &));
    void setSelected(SyncAction action);
    void openCurrent();
    void step(int direction);

    [[nodiscard]] PlanInput inputForRun() const;
    [[nodiscard]] QString questionFor(qint64 actions) const;
    void askForLosses(const QList<SyncPlanItem> &plan);
    void run(const QList<SyncPlanItem> &plan);
    void takeRun(RunOutcome<PlanRunResult> &&outcome);
    void offerDeletingForGood();

    SyncBar *m_bar;
    PathsBar *m_inputs;
    QComboBox *m_direction;
    QComboBox *m_filter;
    QCheckBox *m_contents;
    SyncPlanModel *m_model;
    PlanView *m_view;
    FolderLogPanel *m_log;
    QSplitter *m_splitter;
    StatusLine *m_status;
    QLabel *m_summary;
    FolderActions *m_undoing; ///< takes runs back

    Stage m_stage = Stage::Idle;
    bool m_hasPlan = false;
    PlanInput m_found; ///< what the plan was made from
    DeleteManner m_manner = DeleteManner::ToRecycleBin;
    QString m_journalId; ///< of the last run
    QString m_undoText;  ///< what was said last of taking it back
    Runner m_runner;
};

} // namespace velmora
