#include "app/window/tarnwick.h"

#include "app/desktop/shell_menu.h"
#include "app/help/about.h"
#include "app/help/legend_dialog.h"
#include "app/home/home_page.h"
#include "app/library/restore_progress.h"
#include "app/library/session_library.h"
#include "app/library/session_panel.h"
#include "app/options/options_dialog.h"
#include "app/session_kinds.h"
#include "app/start/build_stamp.h"
#include "app/window/drop_router.h"
#include "app/window/main_menu.h"
#include "app/window/session_tabs.h"
#include "app/window/window_fit.h"
#include "app/window/window_memory.h"
#include "core/settings_store.h"
#include "core/visible_name.h"
#include "folder/actions/past_operations_dialog.h"
#include "platform/window_chrome.h"
#include "session/session_widget.h"
#include "session/theme.h"
#include "session/translate.h"

#include <QApplication>
#include <QCloseEvent>
#include <QLoggingCategory>
#include <QMenuBar>
#include <QSplitter>
#include <QStandardPaths>
#include <QStatusBar>
#include <QTabBar>
#include <QTimer>
#include <QToolButton>
#include <QTreeWidget>

namespace velmora {

namespace {

Q_LOGGING_CATEGORY(shellLog, "velmora.shell")

constexpr QSize leastSize(1280, 800);
constexpr QSize firstSize(1280, 600);
constexpr int frameTime = 200;
constexpr int splitterWidth = 5;

bool storedDarkTheme()
{
    return InterfaceSettings().value(QStringLiteral("theme"), 0).toInt() == 1;
}

/// Beside whatever else the program keeps for this user on this computer.
QString recoveryFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation) + QStringLiteral("/recovery");
}

} // namespace

Tarnwick::Tarnwick(std::optional<bool> darkThisRun, QWidget *parent)
    : QMainWindow(parent),
      m_recovery(recoveryFolder()),
      m_tabs(new SessionTabs),
      m_home(new HomePage),
      m_panel(new SessionPanel),
      m_panelShown(new QAction(Velmora::tr("Sessions panel"), this)),
      m_library(new SessionLibrary(*m_tabs, m_history, this))
{
    setWindowTitle(QStringLiteral("%1 %2").arg(QGuiApplication::applicationDisplayName(), applicationVersion()));
    setAcceptDrops(true);
    buildCentre();
    buildMainMenu(*this, *m_tabs);
    applyWindowTheme(darkThisRun.value_or(storedDarkTheme()));
    showStatus(Velmora::tr("Ready"));

    connect(&m_instances, &SingleInstanceServer::instanceConnected, this, &Tarnwick::onInstanceConnected);
    if (!m_instances.listen(singleInstanceServerNames()))
        qCDebug(shellLog, "SingleInstance: QLocalServer listen failed");
    new DropRouter(*m_tabs, this);
    qCDebug(shellLog, "build %s | Qt %s | exe %s", qPrintable(buildStamp()), qVersion(),
            qPrintable(QCoreApplication::applicationFilePath()));

    m_home->setFocus();
    setMinimumSize(leastSize);
    if (!restorePlace(*this))
        resize(firstSize);
}

Tarnwick::~Tarnwick()
{
    // Sessions may report to the window for as long as they live, so they go while it is still whole.
    const QList<SessionWidget *> sessions = m_tabs->sessions();
    m_tabs->disconnect();
    for (const SessionWidget *session : sessions)
        reportClosing(session);
    qDeleteAll(sessions);
}

void Tarnwick::buildCentre()
{
    m_centre = new QSplitter(this);
    m_centre->addWidget(m_panel);
    m_centre->addWidget(m_tabs);
    m_centre->setChildrenCollapsible(false);
    m_centre->setStretchFactor(1, 1);
    m_centre->setHandleWidth(splitterWidth);
    setCentralWidget(m_centre);
    buildPanelSwitch();

    m_tabs->addHome(m_home, QApplication::windowIcon(), Velmora::tr("Home"));
    connect(m_tabs, &QTabWidget::tabCloseRequested, this, &Tarnwick::onCloseTab);
    connect(m_tabs, &SessionTabs::sessionClosing, this, [this](const SessionWidget *session) {
        reportClosing(session);
        closeWhenServed();
    });
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

void Tarnwick::buildPanelSwitch()
{
    m_panelShown->setParent(menuBar()); // the list of keys is made of what the menus have
    m_panelShown->setCheckable(true);
    m_panelShown->setShortcut(Qt::CTRL | Qt::SHIFT | Qt::Key_P);
    m_panelShown->setToolTip(
        Velmora::tr("%1 (%2)").arg(m_panelShown->text(), m_panelShown->shortcut().toString(QKeySequence::NativeText)));
    addAction(m_panelShown);
    auto *button = new QToolButton(this);
    button->setObjectName(QStringLiteral("panelSwitch"));
    button->setAutoRaise(true);
    button->setDefaultAction(m_panelShown);
    m_tabs->setCornerWidget(button, Qt::TopLeftCorner);

    const PanelMemory memory = PanelMemory::load();
    m_panelShown->setChecked(memory.shown);
    connect(m_panelShown, &QAction::toggled, this, &Tarnwick::showPanel);
    m_panel->setVisible(memory.shown);
    m_panelWidth = memory.width > 0 ? memory.width : m_panel->sizeHint().width();
    m_centre->setSizes({m_panelWidth, firstSize.width() - m_panelWidth - splitterWidth});
}

void Tarnwick::showPanel(bool shown)
{
    if (!shown)
        m_panelWidth = m_panel->width(); // the splitter knows none of what is hidden
    m_panel->setVisible(shown);
    if (shown)
        m_centre->setSizes({m_panelWidth, m_centre->width() - m_panelWidth - splitterWidth});
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

void Tarnwick::showHistory()
{
    m_historyDay = QDate::currentDate();
    m_panel->setHistory(m_history.entries());
    m_home->setHistory(m_history.entries());
}

void Tarnwick::showStatus(const QString &message, int milliseconds)
{
    statusBar()->showMessage(visibleName(message), milliseconds);
}

void Tarnwick::showLegend()
{
    auto *legend = new LegendDialog(this);
    legend->setAttribute(Qt::WA_DeleteOnClose);
    legend->show();
}

void Tarnwick::showPastOperations()
{
    auto *dialog = new PastOperationsDialog(this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->show();
}

void Tarnwick::onCloseTab(int index)
{
    m_tabs->closeTab(index);
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
    const HandedOver start = m_instances.take();
    if (!start.arguments.isEmpty()) {
        m_sender = start.sender;
        handleArguments(start.arguments);
        m_sender.reset();
    }
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
    // The program was left alone past midnight.
    if (event->type() == QEvent::WindowActivate && m_historyDay != QDate::currentDate())
        showHistory();
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
        // What was handed over now would be opened in a window that goes.
        m_instances.stop();
        rememberPlace(*this);
        PanelMemory{m_panelShown->isChecked(), m_panelShown->isChecked() ? m_panel->width() : m_panelWidth}.save();
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
    m_panelShown->setIcon(themedIcon(QStringLiteral("drawer.png")));
    m_tabs->refreshTheme();
    if (m_shown)
        setDarkTitleBar(winId(), dark);
}

} // namespace velmora
