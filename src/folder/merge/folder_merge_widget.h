#pragma once

#include "core/runner.h"
#include "folder/actions/plan_run.h"
#include "folder/engine/folder_merge.h"
#include "session/session_widget.h"

#include <QModelIndex>

class QComboBox;
class QLabel;
class QSplitter;

namespace velmora {

class FolderActions;
class FolderLogPanel;
class FolderMergeBar;
class FolderMergeModel;
class PathsBar;
class PlanView;
class StatusLine;

/// The session that merges two versions of a folder over the one that both come from, file by file, into another
/// folder.
class FolderMergeWidget final : public SessionWidget {
    Q_OBJECT
public:
    explicit FolderMergeWidget(SessionHost &host, QWidget *parent = nullptr);
    ~FolderMergeWidget() override;

    [[nodiscard]] QString kind() const override { return QStringLiteral("foldermerge"); }
    [[nodiscard]] SessionPaths paths() const override;
    void setPaths(const SessionPaths &paths) override;
    void start() override { onCompare(); }
    [[nodiscard]] bool isReading() const override { return m_stage == Stage::Comparing; }
    [[nodiscard]] bool hasUnsavedChanges() const override { return m_stage == Stage::Merging; }
    void confirmClose(std::function<void(bool mayClose)> answered) override;
    [[nodiscard]] bool acceptsDroppedPaths() const override { return true; }
    void dropPaths(const QStringList &paths, QPoint position) override;
    void refreshTheme() override;

public Q_SLOTS:
    void onCompare();
    void onMergeTo();
    void onCancel();
    void onUndo();

Q_SIGNALS:
    /// A person wants to merge the three versions of one file; the path of a version that is missing is empty.
    void openThreeWayMerge(const QString &basePath, const QString &leftPath, const QString &rightPath);

private:
    enum class Stage { Idle, Comparing, Merging };

    void buildView();
    void buildLayout();
    void connectBar();
    void connectUndo();

    void takeResult(RunOutcome<FolderMergeResult> &&outcome);
    void showState();
    void showNotice();
    void changeSelected(const std::function<void(const QModelIndexList &)> &change);
    void openCurrent();
    void step(int direction);

    void considerTarget(const QString &target);
    void survey(const QString &target);
    void considerPlan(const OperationPlan &plan, const QString &target);
    void run(const OperationPlan &plan);
    void takeRun(RunOutcome<PlanRunResult> &&outcome);
    [[nodiscard]] QString title() const;

    FolderMergeBar *m_bar;
    PathsBar *m_inputs;
    QComboBox *m_filter;
    FolderMergeModel *m_model;
    PlanView *m_view;
    FolderLogPanel *m_log;
    QSplitter *m_splitter;
    StatusLine *m_status;
    QLabel *m_open; ///< how many conflicts nobody has decided
    FolderActions *m_undoing;

    Stage m_stage = Stage::Idle;
    bool m_hasResult = false;
    MergeVersions<QString> m_compared; ///< the folders of the result
    QString m_target;                  ///< the latest one
    QString m_journalId;               ///< of the latest run
    Runner m_runner;
};

} // namespace velmora
