#pragma once

#include "core/runner.h"
#include "folder/actions/plan_run.h"
#include "folder/duplicates/duplicate_tree.h"
#include "session/frame/report_saver.h"
#include "session/session_widget.h"

#include <QList>
#include <QSet>
#include <QStringList>
#include <QTimer>

#include <memory>

class QLabel;
class QLineEdit;
class QSplitter;

namespace velmora {

class DuplicateBar;
class DuplicateView;
class FolderActions;
class FolderLogPanel;
class MoreFolders;
class PathsBar;
class StatusLine;
class TickPanel;
class TreeModel;

/// The session that finds files of the same contents in folders, and deletes those that a person chooses. Each goes
/// only while another one that stays has the same bytes, and a deletion can be taken back.
class DuplicateFinderWidget final : public SessionWidget {
    Q_OBJECT
public:
    explicit DuplicateFinderWidget(SessionHost &host, QWidget *parent = nullptr);
    ~DuplicateFinderWidget() override;

    [[nodiscard]] QString kind() const override { return QStringLiteral("duplicate"); }
    /// The first folder is the left path.
    [[nodiscard]] SessionPaths paths() const override;
    void setPaths(const SessionPaths &paths) override;
    void start() override { onScan(); }
    [[nodiscard]] bool isReading() const override { return m_stage == Stage::Scanning; }
    /// "folders" and "references": the further folders, by what they are there for.
    [[nodiscard]] QJsonObject options() const override;
    void setOptions(const QJsonObject &options) override;
    [[nodiscard]] bool hasUnsavedChanges() const override { return m_stage == Stage::Deleting; }
    void confirmClose(std::function<void(bool mayClose)> answered) override;
    /// Undo takes the last deletion back.
    [[nodiscard]] bool canEdit(EditCommand command) const override;
    void edit(EditCommand command) override;
    [[nodiscard]] bool acceptsDroppedPaths() const override { return true; }
    /// The first one is the folder if there is none yet; the others are looked at, too.
    void dropPaths(const QStringList &paths, QPoint position) override;
    void refreshTheme() override;

public Q_SLOTS:
    void onScan();
    void onCancel();
    void onDelete();
    void onUndo();
    void onExport();

private:
    enum class Stage { Idle, Scanning, Deleting };

    void buildView();
    void buildLayout();
    void connectBar();
    void connectUndo();

    [[nodiscard]] DuplicateQuestion question() const;
    [[nodiscard]] QString problemOfPaths() const;
    void takeScan(RunOutcome<std::unique_ptr<DuplicateTree>> &&outcome);
    void focusRows();
    void tellScan(const DuplicateScan &scan);
    void showState();
    void showRowCommands();
    void showNotice();
    void showTicks();
    void setTicking(bool ticking);
    void tickByRule(KeepRule rule);
    void tick(const QList<qint32> &nodes, bool ticked);
    void toggleTicks();
    void ticksChanged();
    void tickFolder(bool ticked);
    void step(bool forward);
    void openMenu(QPoint at);

    void askToDelete();
    void deleteTicked();
    /// What became of a deletion, and what there is to see then.
    struct Deletion {
        PlanRunResult run;
        std::unique_ptr<DuplicateTree> left;
    };
    static Deletion deletedCopies(const DuplicateScan &scan, const DuplicateTicks &ticks, const QString &title,
                                  const CancelFlag &cancel, Progress &progress);
    void takeDeletion(RunOutcome<Deletion> &&outcome);

    void showTree(std::unique_ptr<DuplicateTree> tree);
    /// The groups of files that are shown.
    [[nodiscard]] QList<qint32> shownGroups() const;
    /// The selected nodes that stand for a file or folder.
    [[nodiscard]] QList<qint32> selectedPaths() const;
    void openFile();
    void reveal();
    void compareTwo();
    void copyPaths();
    void addFolder();
    void wantDigests();
    void computeDigests();

    DuplicateBar *m_bar;
    PathsBar *m_inputs;
    MoreFolders *m_more;
    QLineEdit *m_filter;
    DuplicateTree *m_tree; ///< the model has it
    TreeModel *m_model;
    DuplicateView *m_view;
    TickPanel *m_ticks;
    FolderLogPanel *m_log;
    QSplitter *m_splitter;
    StatusLine *m_status;
    QLabel *m_names; ///< how many names lead to files that are counted
    QLabel *m_count;
    FolderActions *m_undoing;

    Stage m_stage = Stage::Idle;
    bool m_hasScan = false;
    QString m_scanned;         ///< the folder of the scan
    QStringList m_keepFolders; ///< chosen last as those whose copies stay
    QString m_journalId;       ///< of the last deletion
    QString m_undoText;
    QTimer m_digestDelay;    ///< until the rows in sight stand still
    QSet<qint32> m_digested; ///< groups whose digests were asked for
    ReportSaver m_saver;
    Runner m_runner;
    Runner m_digests;
};

} // namespace velmora
