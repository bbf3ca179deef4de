#pragma once

#include "folder/actions/plan_session.h"
#include "folder/sync/sync_job.h"

#include <QModelIndexList>

class QLabel;

namespace velmora {

class SyncBar;
class SyncChoices;
class SyncPlanModel;
class SyncRemarks;
struct SyncTally;

/// The session that makes two folders agree: both are compared, what is to be done is shown as a plan that can be
/// changed entry by entry, and carried out when a person says so. A run can be taken back.
class FolderSyncWidget final : public PlanSession {
    Q_OBJECT
public:
    explicit FolderSyncWidget(SessionHost &host, QWidget *parent = nullptr);
    ~FolderSyncWidget() override;

    [[nodiscard]] QString kind() const override;
    void start() override { onAnalyze(); }
    [[nodiscard]] QJsonObject options() const override;
    void setOptions(const QJsonObject &options) override;

public Q_SLOTS:
    void onAnalyze();
    void onSync();
    void onCancel();
    void onSwap();

protected:
    [[nodiscard]] QString closeQuestion() const override;
    [[nodiscard]] Sides<QString> writtenFolders() const override { return plannedFolders(); }
    void fillRowMenu(QMenu &menu) override;
    void openCurrent() override;

private:
    /// What the status line says of a run, for as long as the folders are looked at again.
    struct Remark {
        QString text; ///< empty: what was found is said
        bool isFailure = false;
    };

    void buildView();
    void connectBar();
    void connectChoices();

    /// The folders that the plan is about.
    [[nodiscard]] Sides<QString> plannedFolders() const
    {
        return {m_found.input.roots.left.path, m_found.input.roots.right.path};
    }
    [[nodiscard]] QString title() const;
    [[nodiscard]] QString problemOfPaths() const;
    void analyse(const Sides<QString> &folders, const Remark &remark);
    void takeAnalysis(RunOutcome<SyncAnalysis> &&outcome, const Remark &remark);
    void tell(const Remark &remark);
    void planAgain();
    void analyseAgain();
    void showPlan();
    void showState();
    void showSummary();
    void showRowCommands();
    void showRemarks();
    void showNotice();
    void listConflicts();
    void changeSelected(void (SyncPlanModel::*change)(const QModelIndexList &));
    void setSelected(SyncAction action);
    void step(int direction);

    [[nodiscard]] PlanInput inputForRun() const;
    [[nodiscard]] QString questionFor(const SyncCounts &counts) const;
    void askForLosses(const QList<SyncPlanItem> &plan);
    void run(const QList<SyncPlanItem> &plan);
    void takeRun(const PlanRunResult &result, const SyncTally &tally, bool wasCancelled);
    void offerDeletingForGood();

    SyncBar *m_bar;
    SyncChoices *m_choices;
    SyncRemarks *m_remarks;
    SyncPlanModel *m_model;
    QLabel *m_summary;

    bool m_hasPlan = false;
    SyncAnalysis m_found; ///< what the plan was made from, with the remarks of now
    DeleteManner m_manner = DeleteManner::ToRecycleBin;
};

} // namespace velmora
