#include "folder/sync/folder_sync_widget.h"

#include "core/path_names.h"
#include "folder/actions/action_words.h"
#include "folder/actions/folder_actions.h"
#include "folder/actions/folder_log_panel.h"
#include "folder/actions/plan_view.h"
#include "folder/sync/sync_bar.h"
#include "folder/sync/sync_plan_model.h"
#include "folder/sync/sync_words.h"
#include "session/fault_text.h"
#include "session/frame/notice_card.h"
#include "session/frame/path_edit.h"
#include "session/frame/paths_bar.h"
#include "session/frame/status_line.h"
#include "session/session_host.h"
#include "session/translate.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QGridLayout>
#include <QHeaderView>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QSplitter>

namespace velmora {

namespace {

constexpr QLatin1String modeKey("mode");
constexpr QLatin1String filterKey("filter");
constexpr QLatin1String contentsKey("compareContents");

/// Opening every folder costs a look at each row.
constexpr qsizetype mostRowsOpened = 50'000;

QList<PathsBar::Field> fields()
{
    using Picks = PathsBar::Field::Picks;
    return {{&SessionPaths::left, Velmora::tr("Left:"), Velmora::tr("Left folder path..."),
             Velmora::tr("Browse left folder"), Picks::Folder},
            {&SessionPaths::right, Velmora::tr("Right:"), Velmora::tr("Right folder path..."),
             Velmora::tr("Browse right folder"), Picks::Folder}};
}

} // namespace

FolderSyncWidget::FolderSyncWidget(SessionHost &host, QWidget *parent)
    : SessionWidget(host, parent),
      m_bar(new SyncBar(this)),
      m_inputs(new PathsBar(fields(), this)),
      m_direction(new QComboBox),
      m_filter(new QComboBox),
      m_contents(new QCheckBox(Velmora::tr("Compare contents"))),
      m_model(new SyncPlanModel(this)),
      m_view(new PlanView(QStringLiteral("syncPlan"), *m_model)),
      m_log(new FolderLogPanel),
      m_splitter(new QSplitter(Qt::Vertical)),
      m_status(new StatusLine),
      m_summary(m_status->addFact(QStringLiteral("summaryLabel"))),
      m_undoing(new FolderActions(*this, this))
{
    buildView();
    buildLayout();
    connectBar();
    connectUndo();
    connect(m_inputs, &PathsBar::submitted, this, &FolderSyncWidget::onAnalyze);
    connect(m_model, &SyncPlanModel::actionsChanged, this, &FolderSyncWidget::showSummary);
    connect(m_log, &FolderLogPanel::closeWanted, m_log, &QWidget::hide);
    m_log->hide();
    showState();
    showNotice();
}

FolderSyncWidget::~FolderSyncWidget() = default;

// Layout -------------------------------------------------------------------------------------------------------------

QWidget *FolderSyncWidget::buildChoices()
{
    m_direction->setObjectName(QStringLiteral("directionBox"));
    m_direction->addItems({Velmora::tr("Left → Right"), Velmora::tr("Right → Left"), Velmora::tr("Mirror sync"),
                           Velmora::tr("Update newer")});
    const QStringList hints{
        Velmora::tr("Make the right side like the left; what only the right has is deleted"),
        Velmora::tr("Make the left side like the right; what only the left has is deleted"),
        Velmora::tr("Copy both ways; of changed files the newer wins, of equal times the right one"),
        Velmora::tr("Copy both ways; of changed files the newer wins, of equal times none")};
    for (int i = 0; i < int(hints.size()); ++i)
        m_direction->setItemData(i, toolTipText(hints.at(i)), Qt::ToolTipRole);
    m_direction->setToolTip(hints.first());
    m_filter->setObjectName(QStringLiteral("filterBox"));
    m_filter->setEditable(true);
    m_filter->addItems({QString(), QStringLiteral("*.cpp;*.h"), QStringLiteral("*.txt")});
    m_filter->setToolTip(Velmora::tr("File name filter pattern"));
    m_filter->setMinimumContentsLength(14);
    m_filter->lineEdit()->setPlaceholderText(Velmora::tr("All files"));
    m_contents->setObjectName(QStringLiteral("contentsBox"));
    m_contents->setToolTip(Velmora::tr("Read files of the same size and time, too, at the next analysis"));

    const auto labelFor = [](const QString &text, QWidget *buddy) {
        auto *label = new QLabel(text);
        label->setBuddy(buddy);
        return label;
    };
    auto *choices = new QWidget;
    auto *row = new QHBoxLayout(choices);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(m_direction);
    row->addSpacing(8);
    row->addWidget(labelFor(Velmora::tr(" Filter: "), m_filter));
    row->addWidget(m_filter);
    row->addSpacing(8);
    row->addWidget(m_contents);
    row->addStretch();

    connect(m_direction, &QComboBox::currentIndexChanged, this, [this, hints](int index) {
        m_direction->setToolTip(hints.value(index));
        planAgain();
    });
    connect(m_filter, &QComboBox::currentTextChanged, this, [this](const QString &text) {
        m_model->setFilter(splitMasks(text));
        showPlan();
    });
    return choices;
}

void FolderSyncWidget::buildView()
{
    m_view->setAccessibleName(Velmora::tr("Sync plan"));
    QHeaderView &header = *m_view->header();
    const QFontMetrics metrics = m_view->fontMetrics();
    const int timeWidth = metrics.horizontalAdvance(QStringLiteral("0000-00-00 00:00:00")) + 20;
    const int sizeWidth = metrics.horizontalAdvance(QStringLiteral("1,023.9 MB")) + 20;
    int actionWidth = 0;
    for (const SyncAction action : {SyncAction::Skip, SyncAction::CopyToRight, SyncAction::CopyToLeft,
                                    SyncAction::DeleteRight, SyncAction::DeleteLeft})
        actionWidth = std::max(actionWidth, metrics.horizontalAdvance(syncActionText(action)) + 24);
    for (const auto &[column, width] :
         {std::pair(SyncPlanModel::Action, actionWidth), std::pair(SyncPlanModel::LeftSize, sizeWidth),
          std::pair(SyncPlanModel::LeftTime, timeWidth), std::pair(SyncPlanModel::RightSize, sizeWidth),
          std::pair(SyncPlanModel::RightTime, timeWidth)})
        header.resizeSection(column, width);
    connect(m_view, &QTreeView::activated, this, [this] { openCurrent(); });
    connect(m_view, &PlanView::menuWanted, this, [this](QPoint at) {
        QMenu menu;
        m_bar->fillRowMenu(menu);
        menu.exec(at);
    });
    connect(m_view->selectionModel(), &QItemSelectionModel::selectionChanged, this, &FolderSyncWidget::showRowCommands);
}

void FolderSyncWidget::buildLayout()
{
    QGridLayout &grid = m_inputs->grid();
    grid.setContentsMargins(10, 8, 10, 8);
    grid.setVerticalSpacing(6);
    auto *direction = new QLabel(Velmora::tr(" Direction: ").trimmed());
    direction->setBuddy(m_direction);
    const int row = grid.rowCount();
    grid.addWidget(direction, row, 0);
    grid.addWidget(buildChoices(), row, 1);
    m_splitter->addWidget(m_view);
    m_splitter->addWidget(m_log);
    m_splitter->setStretchFactor(0, 4);
    m_splitter->setStretchFactor(1, 1);
    m_splitter->setChildrenCollapsible(false);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_bar);
    column->addWidget(m_inputs);
    column->addWidget(m_splitter, 1);
    column->addWidget(m_status);
    setFocusProxy(&m_inputs->edit(0));
}

void FolderSyncWidget::connectBar()
{
    const auto onTrigger = [this](QAction *action, auto slot) { connect(action, &QAction::triggered, this, slot); };
    onTrigger(m_bar->analyze, &FolderSyncWidget::onAnalyze);
    onTrigger(m_bar->syncNow, &FolderSyncWidget::onSync);
    onTrigger(m_bar->cancel, &FolderSyncWidget::onCancel);
    onTrigger(m_bar->undo, &FolderSyncWidget::onUndo);
    onTrigger(m_bar->swapSides, &FolderSyncWidget::onSwap);
    onTrigger(m_bar->nextDifference, [this] { step(1); });
    onTrigger(m_bar->previousDifference, [this] { step(-1); });
    onTrigger(m_bar->copyToRight, [this] { setSelected(SyncAction::CopyToRight); });
    onTrigger(m_bar->copyToLeft, [this] { setSelected(SyncAction::CopyToLeft); });
    onTrigger(m_bar->skip, [this] { setSelected(SyncAction::Skip); });
    onTrigger(m_bar->deleteOne, [this] { changeSelected(&SyncPlanModel::setDeleted); });
    onTrigger(m_bar->asPlanned, [this] { changeSelected(&SyncPlanModel::restoreActions); });
    onTrigger(m_bar->open, &FolderSyncWidget::openCurrent);
}

void FolderSyncWidget::connectUndo()
{
    connect(m_undoing, &FolderActions::logLine, m_log, &FolderLogPanel::addLine);
    connect(m_undoing, &FolderActions::statusChanged, this, [this](const QString &text) {
        m_undoText = text;
        m_status->showMessage(text);
    });
    connect(m_undoing, &FolderActions::runningChanged, this, &FolderSyncWidget::showState);
    // Told while it is still at work.
    connect(
        m_undoing, &FolderActions::finished, this,
        [this] {
            m_journalId.clear();
            analyse(plannedFolders(), {m_undoText});
        },
        Qt::QueuedConnection);
}

// What the window knows of it ----------------------------------------------------------------------------------------

QString FolderSyncWidget::kind() const
{
    return host().kindFor(SessionHost::Purpose::SyncFolders);
}

SessionPaths FolderSyncWidget::paths() const
{
    return m_inputs->paths();
}

void FolderSyncWidget::setPaths(const SessionPaths &paths)
{
    m_inputs->setPaths(paths);
}

QJsonObject FolderSyncWidget::options() const
{
    QJsonObject options{{modeKey, m_direction->currentIndex()}};
    if (!m_filter->currentText().trimmed().isEmpty())
        options.insert(filterKey, m_filter->currentText());
    if (m_contents->isChecked())
        options.insert(contentsKey, true);
    return options;
}

void FolderSyncWidget::setOptions(const QJsonObject &options)
{
    m_direction->setCurrentIndex(int(syncModeOf(options.value(modeKey).toInt())));
    m_filter->setCurrentText(options.value(filterKey).toString());
    m_contents->setChecked(options.value(contentsKey).toBool());
}

void FolderSyncWidget::dropPaths(const QStringList &paths, QPoint position)
{
    m_inputs->take(paths, m_inputs->mapFrom(this, position));
    if (!this->paths().left.isEmpty() && !this->paths().right.isEmpty())
        onAnalyze();
}

void FolderSyncWidget::refreshTheme()
{
    m_bar->refreshTheme();
    m_inputs->refreshTheme();
    m_log->refreshTheme();
    m_status->refreshTheme();
    m_view->refreshTheme();
}

// Analysing ----------------------------------------------------------------------------------------------------------

SyncMode FolderSyncWidget::mode() const
{
    return syncModeOf(m_direction->currentIndex());
}

QString FolderSyncWidget::title() const
{
    return Velmora::tr("Sync %1 <-> %2").arg(bareName(plannedFolders().left), bareName(plannedFolders().right));
}

QString FolderSyncWidget::problemOfPaths() const
{
    const SessionPaths folders = paths();
    if (folders.left.isEmpty() || folders.right.isEmpty())
        return Velmora::tr("Enter folder paths on both sides.");
    if (!QFileInfo(folders.left).isDir())
        return Velmora::tr("Left folder does not exist: %1").arg(shownPath(folders.left));
    if (!QFileInfo(folders.right).isDir())
        return Velmora::tr("Right folder does not exist: %1").arg(shownPath(folders.right));
    return {};
}

void FolderSyncWidget::onAnalyze()
{
    if (m_stage == Stage::Running || m_undoing->isRunning())
        return;
    if (const QString problem = problemOfPaths(); !problem.isEmpty()) {
        m_status->showFailure(problem);
        Q_EMIT readingEnded();
        return;
    }
    analyse({paths().left, paths().right}, {});
    Q_EMIT comparisonStarted();
}

void FolderSyncWidget::tell(const Remark &remark)
{
    if (remark.isFailure)
        m_status->showFailure(remark.text);
    else
        m_status->showMessage(remark.text);
}

void FolderSyncWidget::analyse(const Sides<QString> &folders, const Remark &remark)
{
    m_stage = Stage::Analysing;
    tell(remark.text.isEmpty() ? Remark{Velmora::tr("Scanning folders…")} : remark);
    const SyncQuestion question{
        {QDir::cleanPath(folders.left), QDir::cleanPath(folders.right)}, mode(), m_contents->isChecked()};
    m_runner.start(
        [question](const CancelFlag &cancel, Progress &progress) { return analyseFolders(question, cancel, progress); },
        [this, remark](RunOutcome<SyncAnalysis> &&outcome) { takeAnalysis(std::move(outcome), remark); },
        [this](const ProgressState &state) { m_status->showProgress(state, shownPath(state.item)); });
    showState();
}

void FolderSyncWidget::takeAnalysis(RunOutcome<SyncAnalysis> &&outcome, const Remark &remark)
{
    m_stage = Stage::Idle;
    m_status->clearProgress();
    if (outcome.end == RunEnd::Cancelled) {
        m_status->showMessage(Velmora::tr("Analysis cancelled."));
    } else if (!outcome.value) {
        m_status->showFailure(faultText(outcome.fault, Velmora::tr("Not enough memory")));
    } else {
        m_found = std::move(outcome.value->input);
        m_hasPlan = true;
        if (remark.text.isEmpty())
            m_model->setPlan(std::move(outcome.value->plan));
        else
            m_model->setRest(std::move(outcome.value->plan));
        showPlan();
        if (const QWidget *focus = focusWidget(); !focus || m_inputs->isAncestorOf(focus))
            m_view->setFocus();
        tell(remark.text.isEmpty()
                 ? Remark{Velmora::tr("Scan complete. %1 item(s) to sync.").arg(m_model->plan().size())}
                 : remark);
        Q_EMIT tabTitleChanged(title());
        Q_EMIT comparisonFinished(plannedFolders().left, plannedFolders().right);
    }
    showState();
    Q_EMIT readingEnded();
}

/// What was found is the same whatever the direction.
void FolderSyncWidget::planAgain()
{
    if (!m_hasPlan || m_stage == Stage::Running)
        return;
    m_model->setPlan(planSync(m_found.items, mode()));
    showPlan();
}

// What is shown ------------------------------------------------------------------------------------------------------

void FolderSyncWidget::showPlan()
{
    if (m_model->plan().size() <= mostRowsOpened)
        m_view->expandAll();
    else
        m_view->expandToDepth(0);
    if (m_model->rowCount() > 0)
        m_view->setCurrentIndex(m_model->index(0, 0));
    m_view->fitFirstColumn();
    showState();
    showSummary();
    showNotice();
}

void FolderSyncWidget::showState()
{
    const bool idle = m_stage == Stage::Idle && !m_undoing->isRunning();
    m_bar->analyze->setEnabled(m_stage != Stage::Running && !m_undoing->isRunning());
    m_bar->syncNow->setEnabled(idle && m_model->rowCount() > 0);
    m_bar->cancel->setEnabled(!idle);
    m_bar->undo->setEnabled(idle && !m_journalId.isEmpty());
    m_bar->swapSides->setEnabled(idle);
    showRowCommands();
}

/// With each step of the caret, so that it looks at no item.
void FolderSyncWidget::showRowCommands()
{
    const bool idle = m_stage == Stage::Idle && !m_undoing->isRunning();
    for (QAction *action :
         {m_bar->copyToRight, m_bar->copyToLeft, m_bar->deleteOne, m_bar->skip, m_bar->asPlanned, m_bar->open})
        action->setEnabled(idle && m_view->selectionModel()->hasSelection());
}

void FolderSyncWidget::showSummary()
{
    const SyncCounts counts = m_model->shownCounts();
    QString summary = m_hasPlan ? syncSummary(counts) : QString();
    if (m_model->isFiltered() && m_hasPlan)
        summary += Velmora::tr(" (filter: %1 of %2 shown)").arg(counts.total).arg(m_model->plan().size());
    m_summary->setText(summary);
}

void FolderSyncWidget::showNotice()
{
    NoticeCard &notice = m_view->notice();
    if (m_model->rowCount() > 0)
        notice.clear();
    else if (!m_hasPlan)
        notice.tell({Velmora::tr("Two folders that should agree"),
                     Velmora::tr("Drop them here or enter their paths above, then press Analyze (F5). Nothing is "
                                 "changed before you have seen the plan.")});
    else if (m_model->isFiltered() && !m_model->plan().isEmpty())
        notice.tell({Velmora::tr("The filter hides the whole plan."), {}});
    else
        notice.tell({Velmora::tr("Both folders agree."), {}});
}

void FolderSyncWidget::changeSelected(void (SyncPlanModel::*change)(const QModelIndexList &))
{
    (m_model->*change)(m_view->selectionModel()->selectedRows());
    m_view->viewport()->update();
}

void FolderSyncWidget::setSelected(SyncAction action)
{
    m_model->setAction(m_view->selectionModel()->selectedRows(), action);
    m_view->viewport()->update();
}

void FolderSyncWidget::openCurrent()
{
    const QModelIndex current = m_view->currentIndex();
    if (!current.isValid())
        return;
    const SyncPlanItem &item = m_model->itemAt(current);
    const bool isFolder = item.isDir;
    if (isFolder && (item.leftPath.isEmpty() || item.rightPath.isEmpty()))
        return;
    using enum SessionHost::Purpose;
    host().openSession(host().kindFor(isFolder ? CompareFolders : CompareTexts), {item.leftPath, item.rightPath, {}});
}

/// To the next file that something is done with.
void FolderSyncWidget::step(int direction)
{
    QModelIndex at = m_view->currentIndex();
    do {
        at = direction > 0 ? m_view->indexBelow(at) : m_view->indexAbove(at);
    } while (at.isValid() && m_model->itemAt(at).isDir);
    if (at.isValid())
        m_view->setCurrentIndex(at);
}

void FolderSyncWidget::onSwap()
{
    const SessionPaths folders = paths();
    setPaths({folders.right, folders.left, {}});
    if (m_hasPlan)
        onAnalyze();
}

} // namespace velmora
