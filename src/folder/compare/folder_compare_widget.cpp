#include "folder/compare/folder_compare_widget.h"

#include "core/settings_store.h"
#include "folder/actions/entry_extraction.h"
#include "folder/actions/folder_log_panel.h"
#include "folder/compare/contents_run.h"
#include "folder/compare/entry_opener.h"
#include "folder/compare/file_commands.h"
#include "folder/compare/folder_compare_bar.h"
#include "folder/compare/folder_compare_side_pane.h"
#include "folder/compare/folder_filter_bar.h"
#include "folder/compare/folder_view.h"
#include "folder/compare/other_trees.h"
#include "folder/compare/time_shift_bar.h"
#include "folder/compare/tree_line_tree_widget.h"
#include "session/dialogs.h"
#include "session/fault_text.h"
#include "session/frame/report_saver.h"
#include "session/frame/status_line.h"
#include "session/translate.h"
#include "settings/options/folder_presets.h"
#include "settings/options/folder_settings_store.h"
#include "vfs/archive/archive_source.h"

#include <QBoxLayout>
#include <QDir>
#include <QJsonObject>
#include <QLabel>
#include <QMenu>
#include <QSplitter>
#include <QToolButton>

namespace velmora {

namespace {

/// In the options of a session: which entries it shows.
constexpr QLatin1String viewKey("view");
constexpr QLatin1String differencesView("differences");
constexpr QLatin1String sameView("same");

FolderSessionOptions defaultOptions()
{
    SessionSettings settings;
    return FolderSettingsStore(settings).defaults().options;
}

} // namespace

FolderCompareWidget::FolderCompareWidget(SessionHost &window, QWidget *parent)
    : SessionWidget(window, parent),
      m_options(defaultOptions()),
      m_bar(new FolderCompareBar(this)),
      m_filterBar(new FolderFilterBar(this)),
      m_timeShifts(new TimeShiftBar(this)),
      m_view(new FolderView(m_comparison, this)),
      m_logPanel(new FolderLogPanel(this)),
      m_status(new StatusLine(this)),
      m_selection(m_status->addFact(QStringLiteral("selectionLabel"))),
      m_counts(m_status->addFact(QStringLiteral("countsLabel"))),
      m_readUnread(new QToolButton),
      m_splitter(new QSplitter(Qt::Vertical, this)),
      m_reports(window, *this, Velmora::tr("Export")),
      m_fileCommands(new FileCommands(*m_bar, *m_view, m_comparison, *this)),
      m_contents(new ContentsRun(m_comparison, *this)),
      m_opener(new EntryOpener(window, this)),
      m_extraction(new EntryExtraction(*this)),
      m_otherTrees(new OtherTrees(this))
{
    setAcceptDrops(true);
    buildLayout();
    connectBar();
    connectView();
    connectComparison();
    connectCommands();
    m_startTeller.setSingleShot(true);
    connect(&m_startTeller, &QTimer::timeout, this, &SessionWidget::comparisonStarted);
    takeOptions(m_options);
    FolderCompareWidget::showReady();
}

void FolderCompareWidget::showReady()
{
    showMessage(words().ready);
    showNotice();
}

// The controller looks at the comparison as it goes, and children outlive members.
FolderCompareWidget::~FolderCompareWidget()
{
    delete m_contents;
    delete m_fileCommands;
    delete m_splitter;
}

void FolderCompareWidget::buildLayout()
{
    m_splitter->addWidget(m_view);
    m_splitter->addWidget(m_logPanel);
    m_splitter->setStretchFactor(0, 1);
    m_splitter->setStretchFactor(1, 0);
    m_splitter->setCollapsible(0, false);
    m_splitter->setHandleWidth(3);
    constexpr int logHeight = 110;
    m_splitter->setSizes({10000, logHeight});

    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_bar);
    column->addWidget(m_filterBar);
    column->addWidget(m_timeShifts);
    column->addWidget(m_splitter, 1);
    column->addWidget(m_status);
    m_counts->setToolTip(Velmora::tr("Files that are shown, and entries that filters hide"));
    m_readUnread->setObjectName(QStringLiteral("readUnreadButton"));
    m_readUnread->setText(Velmora::tr("Read them"));
    m_readUnread->setToolTip(Velmora::tr("Read the files that are the same by size and time alone"));
    m_readUnread->setAccessibleName(m_readUnread->toolTip());
    m_readUnread->setFocusPolicy(Qt::TabFocus);
    m_status->addPart(m_readUnread);
    m_readUnread->hide();
    m_selection->hide();
    setFocusProxy(&m_view->leftSide().edit());
}

void FolderCompareWidget::connectBar()
{
    const auto onTrigger = [this](QAction *action, void (FolderCompareWidget::*slot)()) {
        connect(action, &QAction::triggered, this, slot);
    };
    onTrigger(m_bar->refresh, &FolderCompareWidget::onRefresh);
    onTrigger(m_bar->cancel, &FolderCompareWidget::onCancelCompare);
    onTrigger(m_bar->swapSides, &FolderCompareWidget::onSwapSides);
    onTrigger(m_bar->showAll, &FolderCompareWidget::onShowAll);
    onTrigger(m_bar->showDifferences, &FolderCompareWidget::onShowDifferences);
    onTrigger(m_bar->showIdentical, &FolderCompareWidget::onShowIdentical);
    onTrigger(m_bar->expandAll, &FolderCompareWidget::onExpandAll);
    onTrigger(m_bar->collapseAll, &FolderCompareWidget::onCollapseAll);
    onTrigger(m_bar->exportReport, &FolderCompareWidget::onExportHtml);
    onTrigger(m_bar->advancedFilters, &FolderCompareWidget::onAdvancedFilter);
    connect(m_bar->previousDifference, &QAction::triggered, this, [this] { goToDifference(false); });
    connect(m_bar->nextDifference, &QAction::triggered, this, [this] { goToDifference(true); });
    connect(m_bar->rules, &QAction::triggered, this, [this] { onSessionSettings(0); });
    connect(m_bar->legend, &QAction::triggered, this, [this] { host().showLegend(); });
    connect(m_bar->showFilter, &QAction::toggled, m_filterBar, &QWidget::setVisible);
    connect(m_bar->showLog, &QAction::toggled, m_logPanel, &QWidget::setVisible);
    m_bar->showVersions->setChecked(m_view->showsVersions());
    connect(m_bar->showVersions, &QAction::toggled, m_view, &FolderView::setVersionsShown);
    m_view->addHeadingAction(m_bar->showVersions);
    connect(m_bar->focusFilter, &QAction::triggered, this, [this] {
        m_bar->showFilter->setChecked(true);
        m_filterBar->focusMasks();
    });
    connect(m_bar->syncFolders, &QAction::triggered, this, [this] {
        const SessionPaths folders = paths();
        if (!folders.left.isEmpty() && !folders.right.isEmpty())
            Q_EMIT openFolderSync(folders.left, folders.right);
    });
    connect(m_filterBar, &FolderFilterBar::masksChanged, this, &FolderCompareWidget::onNameFilterChanged);
    connect(m_filterBar, &FolderFilterBar::advancedWanted, this, &FolderCompareWidget::onAdvancedFilter);
    connect(m_filterBar, &FolderFilterBar::done, this, [this] { m_view->activePane().setFocus(); });
    connect(m_logPanel, &FolderLogPanel::closeWanted, this, [this] { m_bar->showLog->setChecked(false); });
    connect(m_timeShifts, &TimeShiftBar::toleranceWanted, this, [this](int seconds) {
        FolderSessionOptions options = m_options;
        options.timeToleranceSec = seconds;
        takeOptions(options);
        onRefresh();
    });
    connect(&m_bar->presetMenu(), &QMenu::aboutToShow, this, &FolderCompareWidget::fillPresetMenu);
}

void FolderCompareWidget::fillPresetMenu()
{
    QMenu &menu = m_bar->presetMenu();
    menu.clear();
    for (const FolderPreset &preset : folderPresets()) {
        QAction *entry = menu.addAction(Velmora::tr(preset.menuText), this, [this, name = QLatin1String(preset.name)] {
            FolderSessionOptions options = m_options;
            if (applyFolderPreset(name, options)) {
                takeOptions(options);
                onRefresh();
            }
        });
        entry->setCheckable(true);
        entry->setChecked(preset.method == compareMethod(m_options.compareBasis) &&
                          preset.timeToleranceSec.value_or(m_options.timeToleranceSec) == m_options.timeToleranceSec);
    }
    menu.addSeparator();
    SessionSettings settings;
    for (const QString &name : FolderSettingsStore(settings).presetNames()) {
        menu.addAction(QString(name).replace(u'&', QLatin1String("&&")), this, [this, name] {
            SessionSettings stored;
            if (const auto set = FolderSettingsStore(stored).preset(name)) {
                takeOptions(set->options);
                onRefresh();
            }
        });
    }
    menu.addSeparator();
    menu.addAction(Velmora::tr("Session settings..."), this, [this] { onSessionSettings(0); });
}

void FolderCompareWidget::connectView()
{
    for (const Side side : bothSides) {
        FolderCompareSidePane &pane = m_view->head(side);
        connect(&pane, &FolderCompareSidePane::browseRequested, this, [this, side] { browse(side); });
        connect(&pane, &FolderCompareSidePane::submitted, this, [this, side] { pathsChanged(side); });
        connect(&pane, &FolderCompareSidePane::upRequested, this, &FolderCompareWidget::onNavigateUp);
    }
    connect(m_view, &FolderView::openWanted, this,
            [this](const QModelIndex &index) { onItemDoubleClicked(index, index.column()); });
    connect(m_view, &FolderView::upWanted, this, &FolderCompareWidget::onNavigateUp);
    connect(m_view, &FolderView::pathsWanted, this, &FolderCompareWidget::copyPaths);
    connect(m_view, &FolderView::swapWanted, this, &FolderCompareWidget::onSwapSides);
    connect(&m_view->rows(), &FolderRowsModel::expandedChanged, this, [this](qint32 node, bool expanded) {
        if (expanded && !m_comparison.tree().node(node).unloaded)
            logExpanded(node);
    });
    connect(m_view, &FolderView::contextMenuWanted, this,
            [this](const QModelIndex &, QPoint global) { onTreeContextMenu(global); });
    connect(m_view, &FolderView::selectionChanged, this, &FolderCompareWidget::showSelection);
}

void FolderCompareWidget::connectComparison()
{
    connect(&m_comparison, &FolderComparison::treeReplaced, this, &FolderCompareWidget::showCounts);
    connect(&m_comparison, &FolderComparison::treeChanged, this, &FolderCompareWidget::showCounts);
    connect(&m_comparison, &FolderComparison::statesChanged, this, &FolderCompareWidget::showCounts);
    connect(&m_comparison, &FolderComparison::filtered, this, [this] {
        showCounts();
        const qint64 hidden = m_comparison.tree().counts().hidden;
        if (std::exchange(m_toldHidden, hidden) > 0 || hidden > 0)
            log(Velmora::tr("%1 hidden by filters").arg(hidden));
    });
    connect(&m_comparison, &FolderComparison::levelKnown, this, [this] {
        if (const qint32 node = m_comparison.tree().find(m_place.takeOrigin()); node >= 0)
            m_view->goToNode(node);
    });
    connect(&m_comparison, &FolderComparison::loadFinished, this, [this](quint64 generation, bool cancelled) {
        onFolderCompareFinished(generation, m_comparison.tree().items(), cancelled);
    });
    connect(&m_comparison, &FolderComparison::rootsUnreadable, this, &FolderCompareWidget::showRootsUnreadable);
    connect(&m_comparison, &FolderComparison::folderRead, this, [this](const QString &name) {
        if (const qint32 node = m_comparison.tree().find(name); node >= 0)
            logExpanded(node);
    });
    connect(&m_comparison, &FolderComparison::progressed, this, &FolderCompareWidget::showProgress);
    connect(&m_comparison, &FolderComparison::runningChanged, this, &FolderCompareWidget::showRunning);
    connect(&m_comparison, &FolderComparison::runningChanged, this, [this] {
        if (!m_comparison.isRunning())
            Q_EMIT readingEnded();
    });
    connect(&m_comparison, &FolderComparison::failed, this, [this](const RunFault &fault) {
        showMessage(faultText(fault, Velmora::tr("Not enough memory to compare these folders")));
    });
}

void FolderCompareWidget::connectCommands()
{
    connect(m_fileCommands, &FileCommands::logLine, this, &FolderCompareWidget::log);
    connect(m_fileCommands, &FileCommands::statusChanged, this,
            [this](const QString &text) { showMessage(text.isEmpty() ? m_summary : text); });
    connect(m_fileCommands, &FileCommands::progressed, m_status, [this](qint64 done, qint64 total) {
        m_status->showProgress({0, done, total, {}});
    });
    connect(m_fileCommands, &FileCommands::runningChanged, this, [this] {
        showRunning();
        Q_EMIT editStateChanged();
    });
    connect(m_fileCommands, &FileCommands::extractionWanted, this, [this](const auto &root, const QStringList &paths) {
        m_extraction->start(std::dynamic_pointer_cast<const ArchiveSource>(root.source), paths);
    });
    connect(m_extraction, &EntryExtraction::logLine, this, &FolderCompareWidget::log);
    connect(m_extraction, &EntryExtraction::statusChanged, this,
            [this](const QString &text) { showMessage(text.isEmpty() ? m_summary : text); });
    connect(m_extraction, &EntryExtraction::progressed, m_status,
            [this](const ProgressState &state) { m_status->showProgress(state); });
    connect(m_extraction, &EntryExtraction::runningChanged, this, &FolderCompareWidget::showRunning);
    connect(m_otherTrees, &OtherTrees::logLine, this, &FolderCompareWidget::log);
    connect(m_otherTrees, &OtherTrees::runningChanged, this, &FolderCompareWidget::showRunning);
    connect(m_fileCommands, &FileCommands::othersTouched, this, &FolderCompareWidget::onRefresh);
    connect(m_bar->compareContents, &QAction::triggered, this, [this] { m_contents->ask(m_view->selectedNodes()); });
    connect(m_bar->align, &QAction::triggered, this, &FolderCompareWidget::onManualAlign);
    connect(m_readUnread, &QToolButton::clicked, m_contents, &ContentsRun::readUnread);
    connect(m_contents, &ContentsRun::started, this, &FolderCompareWidget::onContentsCompareStarted);
    connect(m_contents, &ContentsRun::logLine, this, &FolderCompareWidget::log);
    connect(m_contents, &ContentsRun::statusChanged, this, &FolderCompareWidget::showMessage);
    connect(m_contents, &ContentsRun::cancelled, this, &FolderCompareWidget::tellCancelled);
    connect(m_opener, &EntryOpener::wanted, this, &FolderCompareWidget::openIn);
    connect(m_opener, &EntryOpener::gone, this, [this](const QString &name, const QString &path) {
        m_comparison.recompare(QStringList{name});
        showMessage(Velmora::tr("No longer there: %1").arg(QDir::toNativeSeparators(path)));
    });
    connect(m_opener, &EntryOpener::unreadable, this, [this](const QString &path) {
        showMessage(Velmora::tr("Cannot read file: %1").arg(QDir::toNativeSeparators(path)));
    });
    using enum SessionHost::Purpose;
    const std::pair<void (FolderCompareWidget::*)(const QString &, const QString &), SessionHost::Purpose> openings[] =
        {
            {&FolderCompareWidget::openTextCompare, CompareTexts},
            {&FolderCompareWidget::openFolderCompare, CompareFolders},
            {&FolderCompareWidget::openFolderSync, SyncFolders},
        };
    for (const auto &[signal, purpose] : openings) {
        connect(this, signal, this, [this, wanted = purpose](const QString &left, const QString &right) {
            host().openSession(host().kindFor(wanted), {left, right, {}});
        });
    }
    connect(&m_reports, &ReportSaver::failed, this, [this](const QString &message) { showMessage(message); });
    fillActionsMenu();
}

// The session as the window knows it ----------------------------------------------------------------------------------

QString FolderCompareWidget::kind() const
{
    return host().kindFor(SessionHost::Purpose::CompareFolders);
}

SessionPaths FolderCompareWidget::paths() const
{
    return {m_view->leftSide().path(), m_view->rightSide().path(), {}};
}

void FolderCompareWidget::setPaths(const SessionPaths &paths)
{
    m_view->leftSide().setPath(paths.left);
    m_view->rightSide().setPath(paths.right);
    showNotice();
}

void FolderCompareWidget::start()
{
    // From now on the rows are what keys are for.
    setFocusProxy(m_view);
    m_view->activePane().setFocus();
    onCompare();
}

QJsonObject FolderCompareWidget::options() const
{
    QJsonObject json = toJson(m_options, m_filters.excludedNames, m_filters.ignoredNames);
    // Only sessions that do not show everything say so.
    if (const RowsView view = m_view->rows().view(); view != RowsView::All)
        json[viewKey] = view == RowsView::Same ? sameView : differencesView;
    return json;
}

void FolderCompareWidget::setOptions(const QJsonObject &options)
{
    FolderSessionOptions changed = m_options;
    // Only sessions that show hidden entries say so.
    changed.showHidden = options.isEmpty() && changed.showHidden;
    fromJson(options, changed, m_filters.excludedNames, m_filters.ignoredNames);
    takeOptions(changed);
    const QString view = options.value(viewKey).toString();
    if (view == differencesView)
        onShowDifferences();
    else if (view == sameView)
        onShowIdentical();
    else
        onShowAll();
}

void FolderCompareWidget::refreshTheme()
{
    m_bar->refreshTheme();
    m_filterBar->refreshTheme();
    m_logPanel->refreshTheme();
    m_timeShifts->refreshTheme();
    m_status->refreshTheme();
    m_view->refreshTheme();
}

QString FolderCompareWidget::logText() const
{
    return m_logPanel->text();
}

QString FolderCompareWidget::status() const
{
    return m_message;
}

void FolderCompareWidget::takeOptions(const FolderSessionOptions &options)
{
    m_options = options;
    m_view->leftSide().setReadOnly(options.leftReadOnly);
    m_view->rightSide().setReadOnly(options.rightReadOnly);
    m_bar->showFilter->setChecked(options.showFilterBar);
    m_filterBar->setVisible(options.showFilterBar);
    m_bar->showLog->setChecked(options.showLogPanel);
    m_logPanel->setVisible(options.showLogPanel);
}

} // namespace velmora
