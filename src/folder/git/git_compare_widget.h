#pragma once

#include "core/runner.h"
#include "folder/git/git_rows.h"
#include "session/session_widget.h"
#include "vfs/git/git_history.h"

#include <QModelIndex>

#include <memory>
#include <optional>

class QLabel;
class QSplitter;

namespace velmora {

class GitBar;
class GitCommitList;
class GitFilterBar;
class GitOpener;
class GitStateBox;
class GitView;
class NoticeBar;
class PathsBar;
class StatusLine;
class TreeModel;

/// The session of kind "git": two states of a repository, each a branch, tag, commit, stash, the index, the work tree
/// or a folder, as one tree with both sides, and the commits between them. Files open in the session that suits them;
/// those of the work tree and of folders can be changed there, and are compared anew when a person comes back.
class GitCompareWidget final : public SessionWidget {
    Q_OBJECT
public:
    explicit GitCompareWidget(SessionHost &host, QWidget *parent = nullptr);
    ~GitCompareWidget() override;

    [[nodiscard]] QString kind() const override { return QStringLiteral("git"); }
    /// The left path is one in the repository; the right one is that of a folder on the right side.
    [[nodiscard]] SessionPaths paths() const override;
    void setPaths(const SessionPaths &paths) override;
    void start() override;
    [[nodiscard]] bool isReading() const override { return m_runner.isRunning(); }
    /// "left", "right": the states as `gitSideText` has them; "sinceParting", "untracked", "unchanged", "commits".
    [[nodiscard]] QJsonObject options() const override;
    void setOptions(const QJsonObject &options) override;
    [[nodiscard]] bool acceptsDroppedPaths() const override { return true; }
    /// A path that lands on the field of a side becomes that side, any other the repository.
    void dropPaths(const QStringList &paths, QPoint position) override;
    void refreshTheme() override;

    [[nodiscard]] const std::shared_ptr<const GitComparison> &comparison() const { return m_comparison; }

protected:
    void showEvent(QShowEvent *event) override;

public Q_SLOTS:
    void onCompare() { start(); }
    void onCancel();
    void onSwapSides();
    void onBrowseLeft() { browse(Side::Left); }
    void onBrowseRight() { browse(Side::Right); }

private:
    /// What a run brings beside the comparison.
    struct Result {
        GitComparison comparison;
        GitNodes nodes;
        std::optional<GitRefs> refs; ///< of a repository whose refs are not known yet, or may be others by now
    };
    struct Details {
        GitComparison comparison;
        GitCommits commits;
        GitFault fault;
    };

    // Layout
    void buildLayout();
    [[nodiscard]] QWidget *makeStates();
    void connectBar();
    void connectViews();

    // Runs (git_compare_runs.cpp)
    [[nodiscard]] GitRequest request() const;
    void compare(const GitRequest &request);
    void take(Result &&result);
    void readDetails();
    void takeDetails(Details &&details);
    void showFault(const GitFault &fault);
    void showResult(GitNodes &&nodes);
    void showNotices();
    void showCounts();
    void showCommit(const GitCommit &commit);
    void backToSides();
    void showRunning();
    void showNothingYet();
    void remember();

    // Commands
    [[nodiscard]] GitStateBox &box(Side side) { return side == Side::Left ? *m_left : *m_right; }
    [[nodiscard]] const GitStateBox &box(Side side) const { return side == Side::Left ? *m_left : *m_right; }
    void browse(Side side);
    void openNode(qint32 node, const QString &kind = {});
    void openAsFolders();
    /// What stands for a side of the comparison that is shown where a folder is asked for.
    [[nodiscard]] QString folderOf(Side side) const;
    void goToPath(const QString &path);
    void goToDifference(bool forward);
    void filterStatuses();
    void copyPaths();
    void showMenu(const QModelIndex &index, QPoint global);

    GitBar *m_bar;
    PathsBar *m_inputs;
    GitStateBox *m_left;
    GitStateBox *m_right;
    NoticeBar *m_notice;
    GitFilterBar *m_filterBar;
    TreeModel *m_rows;
    GitRowTree *m_tree = nullptr; ///< the model's; null before the first comparison
    GitView *m_view;
    GitCommitList *m_commits;
    QSplitter *m_splitter;
    StatusLine *m_status;
    QLabel *m_counts;
    GitOpener *m_opener;
    std::shared_ptr<const GitComparison> m_comparison; ///< null before the first
    bool m_mayBeChanged = false;                       ///< files of the disk were opened elsewhere since
    std::optional<GitCommit> m_commit;                 ///< the one that is shown with its parent
    QString m_refsOf;                                  ///< the repository whose states are offered
    Runner m_runner;
    Runner m_details;
};

} // namespace velmora
