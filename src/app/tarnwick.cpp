#include "app/tarnwick.h"

#include "app/about.h"
#include "app/build_stamp.h"
#include "app/command_line.h"
#include "app/drop_router.h"
#include "app/home_page.h"
#include "app/legend_dialog.h"
#include "app/main_menu.h"
#include "app/options_dialog.h"
#include "app/recovery_offer.h"
#include "app/restore_progress.h"
#include "app/session_kinds.h"
#include "app/session_library.h"
#include "app/session_panel.h"
#include "app/session_tabs.h"
#include "app/shell_menu.h"
#include "app/window_fit.h"
#include "core/settings_store.h"
#include "platform/window_chrome.h"
#include "session/dialogs.h"
#include "session/session_widget.h"
#include "session/theme.h"
#include "session/translate.h"

#include <QHBoxLayout>
#include <QLoggingCategory>
#include <QStandardPaths>
#include <QStatusBar>
#include <QTabBar>
#include <QTimer>
#include <QTreeWidget>

namespace velmora {

namespace {

Q_LOGGING_CATEGORY(shellLog, "velmora.shell")

constexpr QSize leastSize(1280, 800);
constexpr QSize firstSize(1280, 600);
constexpr int briefly = 3000;
constexpr int frameTime = 200;

QString absoluteForm(const QString &path)
{
    return QFileInfo(path).absoluteFilePath();
}

/// The kind in which two paths are compared when nobody said which.
const SessionKindRow &kindForPair(const SessionPaths &paths)
{
    const bool folders = QFileInfo(paths.left).isDir() && QFileInfo(paths.right).isDir();
    return sessionKind(folders ? QLatin1String("folder") : QLatin1String("text"));
}

const SessionKindRow &kindOf(const SessionRecord &record)
{
    const SessionKindRow *known = findSessionKind(record.type);
    return known ? *known : kindForPair(record.paths);
}

QString titleOf(const SessionRecord &record)
{
    return record.name.isEmpty() ? sessionTitle(kindOf(record), record.paths) : record.name;
}

bool storedDarkTheme()
{
    return InterfaceSettings().value(QStringLiteral("theme"), 0).toInt() == 1;
}

/// Beside whatever else the program keeps for this user on this computer.
QString recoveryFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation) + QStringLiteral("/recovery");
}

/// The dropped paths as the sides of a session: left, right; or base, left, right where the kind has a base and three
/// came.
SessionPaths sidesOf(const SessionKindRow &kind, const QStringList &paths)
{
    if (kind.sides == 3 && paths.size() >= 3)
        return {.left = paths[1], .right = paths[2], .base = paths[0]};
    return {.left = paths.value(0), .right = kind.sides > 1 ? paths.value(1) : QString(), .base = {}};
}

} // namespace

Tarnwick::Tarnwick(std::optional<bool> darkThisRun, QWidget *parent)
    : QMainWindow(parent),
      m_recovery(recoveryFolder()),
      m_tabs(new SessionTabs),
      m_home(new HomePage),
      m_panel(new SessionPanel),
      m_library(new SessionLibrary(*m_tabs, m_history, this))
{
    setWindowTitle(QStringLiteral("%1 %2").arg(QGuiApplication::applicationDisplayName(), applicationVersion()));
    setAcceptDrops(true);
    buildCentre();
    buildMainMenu(*this, *m_tabs);
    applyWindowTheme(darkThisRun.value_or(storedDarkTheme()));
    showStatus(Velmora::tr("Ready"));

    connect(&m_instances, &SingleInstanceServer::instanceConnected, this, &Tarnwick::onInstanceConnected);
    if (!m_instances.listen(singleInstanceServerName()))
        qCDebug(shellLog, "SingleInstance: QLocalServer listen failed");
    new DropRouter(*m_tabs, this);
    qCDebug(shellLog, "build %s | Qt %s | exe %s", qPrintable(buildStamp()), qVersion(),
            qPrintable(QCoreApplication::applicationFilePath()));

    m_home->setFocus();
    setMinimumSize(leastSize);
    resize(firstSize);
}

Tarnwick::~Tarnwick()
{
    // Sessions may report to the window for as long as they live, so they go while it is still whole.
    const QList<SessionWidget *> sessions = m_tabs->sessions();
    m_tabs->disconnect();
    qDeleteAll(sessions);
}

void Tarnwick::buildCentre()
{
    auto *centre = new QWidget(this);
    auto *row = new QHBoxLayout(centre);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    row->addWidget(m_panel);
    row->addWidget(m_tabs, 1);
    setCentralWidget(centre);

    m_tabs->addHome(m_home, QApplication::windowIcon(), Velmora::tr("Home"));
    connect(m_tabs, &QTabWidget::tabCloseRequested, this, &Tarnwick::onCloseTab);
    connect(m_tabs, &SessionTabs::currentSessionChanged, this, [this](const SessionWidget *session) {
        // What is typed then finds a session; but whoever walks along the tabs by keys goes on to do so.
        if (!session && !m_tabs->tabBar()->hasFocus())
            m_home->setFocus();
    });
    connect(m_home, &HomePage::kindChosen, this, &Tarnwick::openEmpty);
    connect(m_home, &HomePage::pathsDropped, this, &Tarnwick::openDropped);
    connect(m_home, &HomePage::entryChosen, m_library, &SessionLibrary::openEntry);
    connect(m_panel, &SessionPanel::itemChosen, this, &Tarnwick::onSessionItemClicked);
    connect(m_panel, &SessionPanel::editRequested, this, [this](const QTreeWidgetItem *item) {
        if (const auto entry = SessionPanel::entryOf(item))
            m_library->editEntry(*entry);
        else
            onEditRecentSession();
    });
    connect(m_panel, &SessionPanel::deleteRequested, m_library, &SessionLibrary::deleteEntry);
    connect(m_panel->tree(), &QWidget::customContextMenuRequested, this, &Tarnwick::onSessionTreeContextMenu);
    connectLibrary();
    connect(&m_history, &SessionHistory::changed, this, &Tarnwick::showHistory);
    showHistory();
}

void Tarnwick::connectLibrary()
{
    connect(m_library, &SessionLibrary::recordOpened, this, &Tarnwick::openRecord);
    connect(m_library, &SessionLibrary::recordRestored, this, &Tarnwick::restoreRecord);
    connect(m_library, &SessionLibrary::statusMessage, this, [this](const QString &message) { showStatus(message); });

    auto *progress = new RestoreProgress(statusBar());
    statusBar()->addPermanentWidget(progress);
    connect(m_library, &SessionLibrary::restoreProgressed, progress, &RestoreProgress::show);
    connect(m_library, &SessionLibrary::restoreFinished, progress, &QWidget::hide);
    connect(progress, &RestoreProgress::stopRequested, m_library, &SessionLibrary::stopRestoring);
}

void Tarnwick::handleArguments(const QStringList &arguments)
{
    const CommandLine line = parseCommandLine(arguments);
    if (!line.report.isEmpty())
        m_pendingReport = absoluteForm(line.report);
    for (const ExplorerPick &pick : line.picks) {
        if (pick.side == ExplorerPick::Side::Left)
            setExplorerLeft(absoluteForm(pick.path));
        else
            setExplorerRight(absoluteForm(pick.path));
    }
    if (!line.sessionFile.isEmpty()) {
        m_library->offerSessionFile(absoluteForm(line.sessionFile));
    } else if (!line.workspace.isEmpty()) {
        m_library->openWorkspace(absoluteForm(line.workspace));
    } else if (line.paths.size() == 2) {
        openCompare(line.mode, absoluteForm(line.paths[0]), absoluteForm(line.paths[1]));
        m_explorerLeft.clear();
    } else if (line.paths.size() == 1) {
        openLonePath(line.mode, absoluteForm(line.paths[0]));
    }
}

void Tarnwick::openLonePath(const QString &mode, const QString &path)
{
    const SessionKindRow *kind = findSessionKind(mode);
    const LonePath wanted = kind ? kind->lonePath : LonePath::None;
    const QFileInfo info(path);
    if (wanted == LonePath::Any || (wanted == LonePath::Folder && info.isDir()) ||
        (wanted == LonePath::File && info.isFile()))
        openSession(kind->id, {.left = path, .right = {}, .base = {}});
    else
        setExplorerLeft(path);
}

void Tarnwick::openCompare(const QString &kind, const QString &leftPath, const QString &rightPath)
{
    const SessionPaths paths{.left = leftPath, .right = rightPath, .base = {}};
    const SessionKindRow *known = findSessionKind(kind);
    const SessionKindRow &row = known && known->opensPairs ? *known : kindForPair(paths);
    SessionWidget *session = addSession(row, sessionTitle(row, paths), paths);
    // The report belongs to this comparison; a kind that writes none must not leave it to a later one.
    if (!m_pendingReport.isEmpty())
        session->setPendingReport(std::exchange(m_pendingReport, {}));
    session->start();
}

void Tarnwick::openSession(const QString &kind, const SessionPaths &paths)
{
    const SessionKindRow *known = findSessionKind(kind);
    const SessionKindRow &row = known ? *known : kindForPair(paths);
    openRecord({.name = {}, .type = row.id, .paths = paths, .options = {}, .timestamp = {}});
}

void Tarnwick::openRecord(const SessionRecord &record)
{
    const SessionKindRow &row = kindOf(record);
    SessionWidget *session = addSession(row, titleOf(record), record.paths);
    if (!record.options.isEmpty())
        session->setOptions(record.options);
    session->start();
}

void Tarnwick::restoreRecord(const SessionRecord &record)
{
    const SessionKindRow &row = kindOf(record);
    const QString title = titleOf(record);
    SessionWidget *session = row.create(*this, row, nullptr);
    m_tabs->addWaitingSession(session, sessionKindIcon(row.id), title);
    fillSession(session, row, title, record.paths);
    if (!record.options.isEmpty())
        session->setOptions(record.options);
}

void Tarnwick::offerRecovery()
{
    velmora::offerRecovery(m_recovery, this, [this](const SessionKindRow &kind, const SessionPaths &paths) {
        return addSession(kind, sessionTitle(kind, paths));
    });
}

void Tarnwick::openEmpty(const SessionKindRow &kind)
{
    addSession(kind, Velmora::tr(kind.tabTitle).arg(++m_tabCounter));
}

void Tarnwick::openEmptyOf(const char *kind)
{
    openEmpty(sessionKind(QLatin1String(kind)));
}

void Tarnwick::openDropped(const SessionKindRow &kind, const QStringList &paths)
{
    const SessionPaths sides = sidesOf(kind, paths);
    SessionWidget *session = addSession(kind, sessionTitle(kind, sides), sides);
    if (kind.sides == 1 || kind.lonePath == LonePath::Any || !sides.right.isEmpty())
        session->start();
    if (paths.size() > kind.sides)
        showStatus(Velmora::tr("%1 paths dropped; this session takes %2").arg(paths.size()).arg(kind.sides));
}

SessionWidget *Tarnwick::addSession(const SessionKindRow &kind, const QString &title, const SessionPaths &paths)
{
    SessionWidget *session = kind.create(*this, kind, nullptr);
    m_tabs->addSession(session, sessionKindIcon(kind.id), title);
    fillSession(session, kind, title, paths);
    return session;
}

void Tarnwick::fillSession(SessionWidget *session, const SessionKindRow &kind, const QString &title,
                           const SessionPaths &paths)
{
    if (paths != SessionPaths()) {
        session->setPaths(paths);
        recordSession(kind.id, title, paths);
    }
    hookSession(session, kind);
}

void Tarnwick::hookSession(SessionWidget *session, const SessionKindRow &kind)
{
    connect(session, &SessionWidget::comparisonStarted, this, &Tarnwick::onFolderCompareStarted);
    connect(session, &SessionWidget::comparisonFinished, this,
            [this, session, &kind](const QString &left, const QString &right) {
                const QString title = m_tabs->titleAt(m_tabs->indexOf(session));
                recordSession(kind.id, title, {.left = left, .right = right, .base = session->paths().base});
            });
}

void Tarnwick::recordSession(const QString &type, const QString &name, const SessionPaths &paths)
{
    m_history.add(type, name, paths);
}

void Tarnwick::showHistory()
{
    m_panel->setHistory(m_history.entries());
    m_home->setHistory(m_history.entries());
}

void Tarnwick::setExplorerLeft(const QString &path)
{
    m_explorerLeft = path;
    m_explorerLeftIsFolder = QFileInfo(path).isDir();
    showStatus(
        m_explorerLeftIsFolder
            ? Velmora::tr("Left folder selected: %1 — right-click another item and choose Velmora: set as right side")
                  .arg(path)
            : Velmora::tr("Left file selected: %1 — right-click another item and choose Velmora: set as right side")
                  .arg(path));
}

void Tarnwick::setExplorerRight(const QString &path)
{
    if (m_explorerLeft.isEmpty()) {
        setExplorerLeft(path);
        return;
    }
    const bool folders = m_explorerLeftIsFolder && QFileInfo(path).isDir();
    openCompare(folders ? QStringLiteral("folder") : QStringLiteral("text"), std::exchange(m_explorerLeft, {}), path);
    showStatus(Velmora::tr("Compare opened"), briefly);
}

void Tarnwick::showStatus(const QString &message, int milliseconds)
{
    statusBar()->showMessage(message, milliseconds);
}

void Tarnwick::showLegend()
{
    auto *legend = new LegendDialog(this);
    legend->setAttribute(Qt::WA_DeleteOnClose);
    legend->show();
}

void Tarnwick::onCloseTab(int index)
{
    m_tabs->closeTab(index);
}

void Tarnwick::onOpenTextCompare(const QString &leftPath, const QString &rightPath)
{
    openCompare(QStringLiteral("text"), leftPath, rightPath);
}

void Tarnwick::onOpenBinaryCompare(const QString &leftPath, const QString &rightPath)
{
    openCompare(QStringLiteral("binary"), leftPath, rightPath);
}

void Tarnwick::onOpenFolderCompare(const QString &leftPath, const QString &rightPath)
{
    openCompare(QStringLiteral("folder"), leftPath, rightPath);
}

void Tarnwick::onOpenFolderSync(const QString &leftPath, const QString &rightPath)
{
    openCompare(QStringLiteral("sync"), leftPath, rightPath);
}

void Tarnwick::onAbout()
{
    showAbout(this);
}

void Tarnwick::onSessionItemClicked(QTreeWidgetItem *item, int /*column*/)
{
    const QString id = item->data(0, SessionPanel::idRole).toString();
    if (const auto entry = SessionPanel::entryOf(item))
        m_library->openEntry(*entry);
    else if (const SessionKindRow *kind = id.startsWith(QLatin1String("new_")) ? findSessionKind(id.mid(4)) : nullptr)
        openEmpty(*kind);
}

void Tarnwick::onSessionTreeContextMenu(const QPoint &point)
{
    const auto entry = SessionPanel::entryOf(m_panel->tree()->itemAt(point));
    if (!entry)
        return;
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction(Velmora::tr("Open"), m_library, [this, id = *entry] { m_library->openEntry(id); });
    menu->addAction(Velmora::tr("Edit"), m_library, [this, id = *entry] { m_library->editEntry(id); });
    menu->addAction(Velmora::tr("Save as..."), m_library, [this, id = *entry] { m_library->saveEntry(id); });
    menu->addAction(Velmora::tr("Delete"), m_library, [this, id = *entry] { m_library->deleteEntry(id); });
    menu->popup(m_panel->tree()->viewport()->mapToGlobal(point));
}

void Tarnwick::onFolderCompareStarted()
{
    showStatus(Velmora::tr("Comparing folders..."), briefly);
}

void Tarnwick::onSaveWorkspace()
{
    m_library->saveWorkspace();
}

void Tarnwick::onOpenWorkspace()
{
    m_library->chooseWorkspace();
}

void Tarnwick::onOpenSessionFile()
{
    m_library->chooseSession();
}

void Tarnwick::onSaveSessionFile()
{
    m_library->saveSession();
}

void Tarnwick::onEditRecentSession()
{
    m_library->editNewestEntry();
}

void Tarnwick::onCloseCurrentTab()
{
    onCloseTab(m_tabs->currentIndex());
}

void Tarnwick::onOptions()
{
    auto *dialog = new OptionsDialog(m_darkTheme, systemShellMenu(), this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &OptionsDialog::themeChosen, this, &Tarnwick::applyWindowTheme);
    dialog->open();
}

void Tarnwick::onInstanceConnected()
{
    const QStringList arguments = m_instances.takeArguments();
    if (!arguments.isEmpty())
        handleArguments(arguments);
    // A maximised window stays so.
    setWindowState((windowState() & ~Qt::WindowMinimized) | Qt::WindowActive);
    show();
    raise();
    activateWindow();
}

bool Tarnwick::event(QEvent *event)
{
    // A menu that passes under the mouse would wipe the message in the status bar, as no entry has a tip for it.
    if (event->type() == QEvent::StatusTip)
        return true;
    return QMainWindow::event(event);
}

void Tarnwick::showEvent(QShowEvent *event)
{
    QMainWindow::showEvent(event);
    if (std::exchange(m_shown, true))
        return;
    fitToScreen(*this);
    // Some window systems tell only now how wide the frame is that they put around the window.
    QTimer::singleShot(frameTime, this, [this] { fitToScreen(*this); });
    setDarkTitleBar(winId(), m_darkTheme);
}

void Tarnwick::closeEvent(QCloseEvent *event)
{
    if (m_closing || !m_tabs->hasUnsavedChanges()) {
        QMainWindow::closeEvent(event);
        return;
    }
    event->ignore();
    m_tabs->confirmCloseAll([this] {
        m_closing = true;
        close();
    });
}

void Tarnwick::applyWindowTheme(bool dark)
{
    m_darkTheme = dark;
    applyTheme(dark);
    m_home->refreshTheme();
    m_panel->refreshTheme();
    m_tabs->refreshTheme();
    if (m_shown)
        setDarkTitleBar(winId(), dark);
}

} // namespace velmora
