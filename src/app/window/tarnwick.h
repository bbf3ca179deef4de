#pragma once

#include "app/library/session_history.h"
#include "app/start/single_instance.h"
#include "core/recovery_store.h"
#include "session/session_host.h"
#include "session/session_record.h"

#include <QHash>
#include <QMainWindow>

#include <optional>

class QSplitter;
class QTreeWidgetItem;

namespace velmora {

class HomePage;
class SessionLibrary;
class SessionPanel;
class SessionTabs;
class SessionWidget;
class WaitReport;
struct CommandLine;
struct SessionKindRow;

/// The main window: tabs, panel, menus and status bar, and the ways in which a session comes to be opened.
///
/// There is one for the whole life of the process; it listens for later starts. It knows sessions as `SessionWidget`
/// and kinds as rows of the table, never by name.
class Tarnwick final : public QMainWindow, public SessionHost {
    Q_OBJECT
public:
    /// `darkThisRun` overrules the stored theme for this run.
    explicit Tarnwick(std::optional<bool> darkThisRun = {}, QWidget *parent = nullptr);
    ~Tarnwick() override;

    /// Does what a command line asks for. The first argument is a program's path and is passed over.
    void handleArguments(const QStringList &arguments);

    /// Opens a session on two paths in a new tab and starts it. A kind that does not open pairs becomes "folder" when
    /// both are existing folders, and "text" otherwise. A pending report path goes to this session.
    void openCompare(const QString &kind, const QString &leftPath, const QString &rightPath);

    /// Opens a remembered session in a new tab and starts it: under its name or, when it has none, under those of its
    /// paths.
    void openRecord(const SessionRecord &record);
    /// Adds a remembered session behind the other tabs, to be started when its tab is first shown.
    void restoreRecord(const SessionRecord &record);

    /// Remembers `path` as the left side of the comparison that the next right side opens.
    void setExplorerLeft(const QString &path);
    /// Opens the comparison with the remembered left side; without one, `path` becomes the left side.
    void setExplorerRight(const QString &path);

    /// Opens a session without inputs in a new tab, numbered across all kinds.
    void openEmpty(const SessionKindRow &kind);
    /// Opens a session on paths that were dropped for its kind; starts it when they suffice.
    void openDropped(const SessionKindRow &kind, const QStringList &paths);

    void openSession(const QString &kind, const SessionPaths &paths) override;
    /// The same without an `output`.
    void openMerge(const SessionPaths &paths, const QString &output) override;
    [[nodiscard]] QString kindFor(Purpose purpose) const override;
    [[nodiscard]] KindTest kindTest() const override;
    void showStatus(const QString &message, int milliseconds = 0) override;
    void showLegend() override;
    RecoveryStore *recovery() override { return &m_recovery; }

    /// Offers unsaved work that an earlier run has left.
    void offerRecovery();

    /// Shows what has been done with files, to look at it and to undo it.
    void showPastOperations();

public Q_SLOTS:
    void onNewTextCompare() { openEmptyOf("text"); }
    void onNewTextCompareEdit() { openEmptyOf("textedit"); }
    void onNewFolderCompare() { openEmptyOf("folder"); }
    void onNewBinaryCompare() { openEmptyOf("binary"); }
    void onNewThreeWayMerge() { openEmptyOf("merge"); }
    void onNewTableCompare() { openEmptyOf("table"); }
    void onNewImageCompare() { openEmptyOf("image"); }
    void onNewFolderSync() { openEmptyOf("sync"); }
    void onNewRegistryCompare() { openEmptyOf("registry"); }
    void onNewFolderMerge() { openEmptyOf("foldermerge"); }
    void onNewVersionCompare() { openEmptyOf("version"); }
    void onNewMp3Compare() { openEmptyOf("mp3"); }
    void onNewGitCompare() { openEmptyOf("git"); }
    void onNewArchiveCompare() { openEmptyOf("archive"); }
    void onNewArchiveBrowse() { openEmptyOf("archivebrowse"); }
    void onNewChecksumTool() { openEmptyOf("checksum"); }
    void onNewDuplicateFinder() { openEmptyOf("duplicate"); }
    void onNewFolderSnapshot() { openEmptyOf("snapshot"); }
    void onNewEnvSnapshot() { openEmptyOf("env"); }
    void onNewDiskUsage() { openEmptyOf("diskusage"); }
    void onNewServiceSnapshot() { openEmptyOf("service"); }
    void onNewStartupSnapshot() { openEmptyOf("startup"); }
    void onNewSftpCompare() { openEmptyOf("sftp"); }
    void onCloseTab(int index);
    void onOpenTextCompare(const QString &leftPath, const QString &rightPath);
    void onOpenBinaryCompare(const QString &leftPath, const QString &rightPath);
    void onOpenFolderCompare(const QString &leftPath, const QString &rightPath);
    void onOpenFolderSync(const QString &leftPath, const QString &rightPath);
    void onAbout();
    void onSessionItemClicked(QTreeWidgetItem *item, int column);
    void onSessionTreeContextMenu(const QPoint &point);
    void onFolderCompareStarted();
    void onSaveWorkspace();
    void onOpenWorkspace();
    void onOpenSessionFile();
    void onSaveSessionFile();
    void onEditRecentSession();
    void onCloseCurrentTab();
    void onOptions();
    /// Carries out what a later start has handed over and comes to the front.
    void onInstanceConnected();

protected:
    bool event(QEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    static constexpr int briefly = 3000; ///< milliseconds that a passing message stands

    void buildCentre();
    void buildPanelSwitch();
    void showPanel(bool shown);
    void connectLibrary();
    void openEmptyOf(const char *kind);
    /// Starts a session; the later start that asks for it waits until its files are read.
    void startSession(SessionWidget *session);
    void openPaths(const CommandLine &line);
    void openLonePath(const QString &mode, const QString &path);
    /// To whoever waits for a session on `paths`; null when nobody does. What is opened out of a folder that is waited
    /// for is waited for as well.
    [[nodiscard]] std::shared_ptr<WaitReport> reportOn(const SessionPaths &paths) const;
    /// Tells whoever waits for a session what has become of it.
    void reportClosing(const SessionWidget *session);
    /// Goes, if the window was opened for those who wait, when they have had their tabs.
    void closeWhenServed();
    SessionWidget *addSession(const SessionKindRow &kind, const QString &title, const SessionPaths &paths = {});
    /// For a session that has just been added: its paths, if any, are filled in and remembered.
    void fillSession(SessionWidget *session, const SessionKindRow &kind, const QString &title,
                     const SessionPaths &paths);
    /// Connects a session that has just been added: what it compares is remembered.
    void hookSession(SessionWidget *session, const SessionKindRow &kind);
    /// Remembers what a session compares, unless it is waited for and its files are gone when it is closed.
    void recordSession(const SessionWidget *session, const SessionKindRow &kind, const QString &name,
                       const SessionPaths &paths);
    void showHistory();
    void applyWindowTheme(bool dark);

    RecoveryStore m_recovery;
    SessionTabs *m_tabs;
    HomePage *m_home;
    SessionPanel *m_panel;
    QSplitter *m_centre = nullptr;
    QAction *m_panelShown; ///< checked while the sessions panel is
    SessionHistory m_history;
    SessionLibrary *m_library;
    SingleInstanceServer m_instances;
    std::shared_ptr<QLocalSocket> m_sender; ///< of the command line that is being carried out, if it was handed over
    std::shared_ptr<WaitReport> m_report;   ///< to whoever waits for what the command line opens
    QHash<const SessionWidget *, std::shared_ptr<WaitReport>> m_reports; ///< by the sessions that are waited for
    QDate m_historyDay;                                                  ///< which the panel calls "Today"
    QString m_explorerLeft;
    QString m_pendingReport;
    int m_tabCounter = 0;
    int m_panelWidth = 0; ///< while the panel was last seen
    bool m_explorerLeftIsFolder = false;
    bool m_darkTheme = false;
    bool m_shown = false;
    bool m_closing = false;
    bool m_servesWaiting = false; ///< nothing has been opened but for those who wait
};

} // namespace velmora
