#pragma once

#include "folder/compare/folder_comparison.h"
#include "folder/compare/folder_place.h"
#include "session/frame/report_saver.h"
#include "session/session_host.h"
#include "session/session_widget.h"
#include "settings/options/folder_session_options.h"

#include <QElapsedTimer>
#include <QModelIndex>
#include <QTimer>

class QMenu;
class QLabel;
class QSplitter;
class QToolButton;

namespace velmora {

class ContentsRun;
class EntryExtraction;
class EntryOpener;
class FileCommands;
class FolderCompareBar;
class FolderFilterBar;
class FolderLogPanel;
class FolderView;
class OtherTrees;
class StatusLine;
class TimeShiftBar;
enum class RowsView;

/// The session that compares folders: two are compared and shown side by side as one tree in three columns.
///
/// The folders of the level are shown first and filled in one after the other; expanding everything compares the whole
/// trees at once (tree mode) if they are not known yet. Results stay when a run is cancelled. What was touched by an
/// operation is compared again, and nothing else.
class FolderCompareWidget : public SessionWidget {
    Q_OBJECT
public:
    explicit FolderCompareWidget(SessionHost &host, QWidget *parent = nullptr);
    ~FolderCompareWidget() override;

    [[nodiscard]] QString kind() const override;
    [[nodiscard]] SessionPaths paths() const override;
    void setPaths(const SessionPaths &paths) override;
    void start() override;
    [[nodiscard]] bool isReading() const override { return isComparing(); }
    [[nodiscard]] QJsonObject options() const override;
    void setOptions(const QJsonObject &options) override;
    bool setPendingReport(const QString &path) override
    {
        m_pendingReport = path;
        return true;
    }
    [[nodiscard]] bool acceptsDroppedPaths() const override { return true; }
    void dropPaths(const QStringList &paths, QPoint position) override;
    void refreshTheme() override;
    /// Undoing is taking back the last operation on the two folders.
    [[nodiscard]] bool canEdit(EditCommand command) const override;
    void edit(EditCommand command) override;

    /// A command that is at work on files would be stopped halfway.
    [[nodiscard]] bool hasUnsavedChanges() const override;
    void confirmClose(std::function<void(bool mayClose)> answered) override;

    [[nodiscard]] bool isComparing() const { return m_comparison.isRunning() || isOpening(); }
    [[nodiscard]] const FolderComparison &comparison() const { return m_comparison; }
    [[nodiscard]] FolderView &view() { return *m_view; }
    [[nodiscard]] QString logText() const;
    [[nodiscard]] QString status() const;

Q_SIGNALS:
    /// The window is asked for a session on two paths.
    void openTextCompare(const QString &leftPath, const QString &rightPath);
    void openFolderCompare(const QString &leftPath, const QString &rightPath);
    void openFolderSync(const QString &leftPath, const QString &rightPath);

public Q_SLOTS:
    void onBrowseLeft() { browse(Side::Left); }
    void onBrowseRight() { browse(Side::Right); }
    void onCompare();
    void onShowAll();
    void onShowDifferences();
    void onShowIdentical();
    void onRefresh() { onCompare(); }
    void onSwapSides();
    void onNavigateUp();
    /// Opens the row: a pair of folders in place, files in the session that suits them.
    void onItemDoubleClicked(const QModelIndex &item, int column);
    /// Opens the menu of the current row at a place of the screen.
    void onTreeContextMenu(const QPoint &point);
    void onCopyToRight() { copySelectedToSide(true); }
    void onCopyToLeft() { copySelectedToSide(false); }
    void onDeleteSelected();
    void copySelectedToSide(bool leftToRight);
    void onNameFilterChanged();
    void onAdvancedFilter();
    /// Opens the settings of this comparison at the tab of that index.
    void onSessionSettings(int initialTab);
    void onCancelCompare();
    /// Takes up the end of the load of number `generation`; one that is no longer the latest is dropped.
    void onFolderCompareFinished(quint64 generation, const QList<velmora::FolderDiffItem> &items, bool cancelled);
    void onContentsCompareStarted(velmora::CompareMethod method);
    void onExpandAll();
    void onCollapseAll();
    void onItemExpanded(const QModelIndex &item);
    void onItemCollapsed(const QModelIndex &item);
    void onExportHtml();
    void onManualAlign();

protected:
    void showEvent(QShowEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

    /// What a session asks for, in its own words.
    struct TreeWords {
        QString ready;
        QString choose; ///< two of them
        QString dropBoth;
        QString dropOther;
        QString refused; ///< with the path as %1: it is none
    };
    [[nodiscard]] virtual TreeWords words() const;
    /// What the paths mean; both are written.
    [[nodiscard]] virtual Sides<TreeFolder> trees(const SessionPaths &paths) const;
    /// Makes `trees` know the paths of the session. False when that takes a while, or is not possible: `loadOpened`
    /// then goes on.
    [[nodiscard]] virtual bool openTrees();
    [[nodiscard]] virtual bool isOpening() const;
    virtual void cancelOpening();
    [[nodiscard]] virtual bool takesPath(const QString &path) const;
    virtual void browse(Side side);
    /// What is known of the two as a whole; a sentence, or empty.
    [[nodiscard]] virtual QString verdict() const;
    /// What of the trees is not there to see, or not to be trusted: stands behind the counts. Empty when there is
    /// nothing.
    [[nodiscard]] virtual QString caution() const { return {}; }

    void loadOpened();
    void showSummary();
    void takeSidePath(Side side, const QString &path);
    /// Compares what has only the same size and time.
    void readUnread();
    /// Whether there is such a thing, and anybody can tell more of it.
    [[nodiscard]] bool mayReadUnread() const;
    void showRunning();
    void showMessage(const QString &message);
    void showReady();
    void tellUnopened(const QString &message);
    void log(const QString &line);
    [[nodiscard]] StatusLine &statusLine() { return *m_status; }
    [[nodiscard]] FolderCompareBar &bar() { return *m_bar; }
    [[nodiscard]] const FolderSessionOptions &sessionOptions() const { return m_options; }

private:
    void buildLayout();
    void connectBar();
    void connectView();
    void connectComparison();
    void connectCommands();
    void fillPresetMenu();

    // Inputs and loading
    [[nodiscard]] FolderSpec spec() const;
    void pathsChanged(Side written);
    void tellWritten(Side side);
    /// Loads what the two path fields say, or waits for the other one.
    void loadWritten();
    void loadCurrentLevel();
    void navigate(const QString &left, const QString &right);
    void showRootsUnreadable(const Sides<FolderRead> &roots);
    void tellProblems();
    void rememberPaths();
    void tellCancelled();
    void showNotice();
    void showCounts();
    /// How a comparison has gone, in numbers.
    [[nodiscard]] QString summary() const;
    void showProgress(const ProgressState &state);
    void showSelection();
    void logExpanded(qint32 node);

    // Commands
    void openNode(qint32 node);
    /// Where an entry is on a side, as a person would write it; empty where it is not.
    [[nodiscard]] QString writtenPath(const FolderDiffItem &item, Side side) const;
    [[nodiscard]] bool areLocal() const;
    /// Tells so where a side that the entry is on holds no contents.
    [[nodiscard]] bool canOpen(const FolderDiffItem &item);
    /// Asks for a session on the entry, which is compared anew when a person comes back.
    void openFor(SessionHost::Purpose purpose, const FolderDiffItem &item);
    void openIn(const QString &kind, const QString &left, const QString &right);
    void goToDifference(bool forward);
    void takeOptions(const FolderSessionOptions &options);
    void applyFilters() { m_comparison.refilter(spec()); }
    /// Puts the paths of the selected entries, one a line, into the clipboard.
    void copyPaths(Side side);
    [[nodiscard]] QStringList selectedBareNames() const;
    void fillEntryMenu(QMenu &menu, qint32 node);
    void setView(RowsView view);
    void fillActionsMenu();
    void alignPair(const QString &leftName, const QString &rightName, const QString &folder);

    FolderSessionOptions m_options;
    ViewFilters m_filters;
    QString m_pendingReport;
    FolderPlace m_place;
    bool m_treeMode = false;
    bool m_expandAllWhenLoaded = false; ///< folders that are still to come open as they come
    bool m_hasResult = false;
    bool m_cancelAsked = false; ///< and not yet told as done
    QString m_summary;          ///< the last one that was shown
    QString m_message;          ///< in the status line
    QTimer m_startTeller;

    FolderComparison m_comparison;
    FolderCompareBar *m_bar;
    FolderFilterBar *m_filterBar;
    TimeShiftBar *m_timeShifts;
    FolderView *m_view;
    FolderLogPanel *m_logPanel;
    StatusLine *m_status;
    QLabel *m_selection;
    QLabel *m_counts;
    QToolButton *m_readUnread;
    QSplitter *m_splitter;
    ReportSaver m_reports;
    FileCommands *m_fileCommands;
    ContentsRun *m_contents;
    EntryOpener *m_opener;
    EntryExtraction *m_extraction;
    OtherTrees *m_otherTrees;
    qint64 m_toldHidden = 0;        ///< what the log said last of the entries that filters hide
    QElapsedTimer m_comparingSince; ///< of the bytes that the progress counts
};

} // namespace velmora
