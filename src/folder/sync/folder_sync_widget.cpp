#include "folder/sync/folder_sync_widget.h"

#include "core/path_names.h"
#include "folder/actions/action_words.h"
#include "folder/actions/folder_log_panel.h"
#include "folder/actions/plan_view.h"
#include "folder/sync/sync_bar.h"
#include "folder/sync/sync_choices.h"
#include "folder/sync/sync_drop_line_edit.h"
#include "folder/sync/sync_plan_model.h"
#include "folder/sync/sync_remarks.h"
#include "folder/sync/sync_words.h"
#include "session/frame/notice_card.h"
#include "session/frame/path_edit.h"
#include "session/frame/status_line.h"
#include "session/session_host.h"
#include "session/shown_path.h"
#include "session/translate.h"

#include <QDir>
#include <QFileInfo>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>

namespace velmora {

namespace {

/// Opening every folder costs a look at each row.
constexpr qsizetype mostRowsOpened = 50'000;

QList<PathsBar::Field> fields()
{
    using Picks = PathsBar::Field::Picks;
    return {{&SessionPaths::left, Velmora::tr("Left:"), Velmora::tr("Left folder path..."),
             Velmora::tr("Browse left folder"), Picks::Folder, new SyncDropLineEdit},
            {&SessionPaths::right, Velmora::tr("Right:"), Velmora::tr("Right folder path..."),
             Velmora::tr("Browse right folder"), Picks::Folder, new SyncDropLineEdit}};
}

} // namespace

FolderSyncWidget::FolderSyncWidget(SessionHost &host, QWidget *parent)
    : PlanSession(host, fields(), QStringLiteral("syncPlan"), new SyncPlanModel(nullptr), parent),
      m_bar(new SyncBar(this)),
      m_choices(new SyncChoices),
      m_remarks(new SyncRemarks),
      m_model(static_cast<SyncPlanModel *>(view().model())),
      m_summary(status().addFact(QStringLiteral("summaryLabel")))
{
    layOut(*m_bar, Velmora::tr(" Direction: ").trimmed(), m_choices);
    addAboveRows(m_remarks);
    buildView();
    connectBar();
    connectChoices();
    for (const SyncDropLineEdit *line : inputs().findChildren<SyncDropLineEdit *>()) {
        connect(line, &SyncDropLineEdit::folderDropped, this, [this] {
            if (inputs().isComplete())
                onAnalyze();
        });
    }
    connect(m_model, &SyncPlanModel::actionsChanged, this, &FolderSyncWidget::showSummary);
    connect(&runs(), &PlanRuns::stageChanged, this, &FolderSyncWidget::showState);
    connect(&runs(), &PlanRuns::undone, this, [this](const QString &text) { analyse(plannedFolders(), {text}); });
    showState();
    showNotice();
    showRemarks();
}

FolderSyncWidget::~FolderSyncWidget() = default;

// Layout -------------------------------------------------------------------------------------------------------------

void FolderSyncWidget::buildView()
{
    view().setAccessibleName(Velmora::tr("Sync plan"));
    QHeaderView &header = *view().header();
    const QFontMetrics metrics = view().fontMetrics();
    const int timeWidth = metrics.horizontalAdvance(QStringLiteral("0000-00-00 00:00:00")) + 20;
    const int sizeWidth = metrics.horizontalAdvance(QStringLiteral("1,023.9 MB")) + 20;
    int actionWidth = 0;
    for (const SyncAction action :
         {SyncAction::Skip, SyncAction::CopyToRight, SyncAction::CopyToLeft, SyncAction::DeleteRight,
          SyncAction::DeleteLeft, SyncAction::MoveOnRight, SyncAction::MoveOnLeft})
        actionWidth = std::max(actionWidth, metrics.horizontalAdvance(syncActionText(action)) + 24);
    for (const auto &[column, width] :
         {std::pair(SyncPlanModel::Action, actionWidth), std::pair(SyncPlanModel::LeftSize, sizeWidth),
          std::pair(SyncPlanModel::LeftTime, timeWidth), std::pair(SyncPlanModel::RightSize, sizeWidth),
          std::pair(SyncPlanModel::RightTime, timeWidth)})
        header.resizeSection(column, width);
    connect(view().selectionModel(), &QItemSelectionModel::selectionChanged, this, &FolderSyncWidget::showRowCommands);
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

void FolderSyncWidget::connectChoices()
{
    connect(m_choices, &SyncChoices::directionChanged, this, &FolderSyncWidget::planAgain);
    connect(m_choices, &SyncChoices::inputChanged, this, &FolderSyncWidget::analyseAgain);
    connect(m_choices, &SyncChoices::filterChanged, this, [this](const QStringList &masks) {
        m_model->setFilter(masks);
        showPlan();
    });
    connect(m_remarks, &SyncRemarks::movesWanted, m_choices, &SyncChoices::findMoves);
    connect(m_remarks, &SyncRemarks::hoursIgnored, m_choices, &SyncChoices::ignoreHours);
    connect(m_remarks, &SyncRemarks::conflictsWanted, this, &FolderSyncWidget::listConflicts);
}

void FolderSyncWidget::fillRowMenu(QMenu &menu)
{
    m_bar->fillRowMenu(menu);
}

// What the window knows of it ----------------------------------------------------------------------------------------

QString FolderSyncWidget::kind() const
{
    return host().kindFor(SessionHost::Purpose::SyncFolders);
}

QJsonObject FolderSyncWidget::options() const
{
    return m_choices->options();
}

void FolderSyncWidget::setOptions(const QJsonObject &options)
{
    m_choices->setOptions(options);
}

QString FolderSyncWidget::closeQuestion() const
{
    return Velmora::tr("The sync is still running. Stop it after the current file and close?");
}

// Analysing ----------------------------------------------------------------------------------------------------------

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
    if (!runs().mayRead())
        return;
    if (const QString problem = problemOfPaths(); !problem.isEmpty()) {
        status().showFailure(problem);
        Q_EMIT readingEnded();
        return;
    }
    analyse({paths().left, paths().right}, {});
    Q_EMIT comparisonStarted();
}

void FolderSyncWidget::tell(const Remark &remark)
{
    if (remark.isFailure)
        status().showFailure(remark.text);
    else
        status().showMessage(remark.text);
}

void FolderSyncWidget::analyse(const Sides<QString> &folders, const Remark &remark)
{
    tell(remark.text.isEmpty() ? Remark{Velmora::tr("Scanning folders…")} : remark);
    const SyncQuestion question{{QDir::cleanPath(folders.left), QDir::cleanPath(folders.right)},
                                m_choices->rules(),
                                m_choices->readsContents(),
                                m_choices->findsMoves()};
    runs().read(
        [question](const CancelFlag &cancel, Progress &progress) { return analyseFolders(question, cancel, progress); },
        [this, remark](RunOutcome<SyncAnalysis> &&outcome) { takeAnalysis(std::move(outcome), remark); });
}

void FolderSyncWidget::takeAnalysis(RunOutcome<SyncAnalysis> &&outcome, const Remark &remark)
{
    if (outcome.end == RunEnd::Cancelled) {
        status().showMessage(Velmora::tr("Analysis cancelled."));
    } else if (outcome.value) {
        m_found = std::move(*outcome.value);
        m_hasPlan = true;
        if (remark.text.isEmpty())
            m_model->setPlan(m_found.proposal.items);
        else
            m_model->setRest(m_found.proposal.items);
        showPlan();
        showRemarks();
        focusRows();
        tell(remark.text.isEmpty()
                 ? Remark{Velmora::tr("Scan complete. %1 item(s) to sync.").arg(m_model->plan().size())}
                 : remark);
        Q_EMIT tabTitleChanged(title());
        Q_EMIT comparisonFinished(plannedFolders().left, plannedFolders().right);
    }
    showNotice();
    Q_EMIT readingEnded();
}

/// What was found is the same whatever the direction.
void FolderSyncWidget::planAgain()
{
    if (!m_hasPlan || hasUnsavedChanges())
        return;
    m_found.proposal = proposeSync(m_found.input.items, m_found.moved, m_choices->rules());
    m_model->setPlan(m_found.proposal.items);
    showPlan();
    showRemarks();
}

void FolderSyncWidget::analyseAgain()
{
    if (m_hasPlan)
        onAnalyze();
}

// What is shown ------------------------------------------------------------------------------------------------------

void FolderSyncWidget::showPlan()
{
    if (m_model->plan().size() <= mostRowsOpened)
        view().expandAll();
    else
        view().expandToDepth(0);
    if (m_model->rowCount() > 0)
        view().setCurrentIndex(m_model->index(0, 0));
    view().fitFirstColumn();
    showState();
    showSummary();
    showNotice();
}

void FolderSyncWidget::showState()
{
    const bool idle = runs().isIdle();
    m_bar->analyze->setEnabled(runs().mayRead());
    m_bar->syncNow->setEnabled(idle && m_model->rowCount() > 0);
    m_bar->cancel->setEnabled(!idle);
    m_bar->undo->setEnabled(runs().mayUndo());
    m_bar->swapSides->setEnabled(idle);
    showRowCommands();
}

/// With each step of the caret, so that it looks at no item.
void FolderSyncWidget::showRowCommands()
{
    const bool idle = runs().isIdle();
    for (QAction *action :
         {m_bar->copyToRight, m_bar->copyToLeft, m_bar->deleteOne, m_bar->skip, m_bar->asPlanned, m_bar->open})
        action->setEnabled(idle && view().selectionModel()->hasSelection());
}

void FolderSyncWidget::showSummary()
{
    const SyncCounts counts = m_model->shownCounts();
    QString summary = m_hasPlan ? syncSummary(counts) : QString();
    if (m_model->isFiltered() && m_hasPlan)
        summary += Velmora::tr(" (filter: %1 of %2 shown)").arg(counts.total).arg(m_model->plan().size());
    m_summary->setText(summary);
}

/// Nothing is offered that has been chosen already, or that would change nothing in this direction.
void FolderSyncWidget::showRemarks()
{
    const SyncRules rules = m_choices->rules();
    const bool deletes = rules.mode == SyncMode::LeftToRight || rules.mode == SyncMode::RightToLeft;
    SyncRemarks::Facts facts;
    facts.likelyMoves = deletes && !m_choices->findsMoves() ? m_found.likelyMoves : 0;
    facts.wholeHours = rules.ignoresHours ? 0 : m_found.wholeHours;
    facts.conflicts = m_found.proposal.conflicts.size();
    m_remarks->show(facts);
}

void FolderSyncWidget::listConflicts()
{
    QStringList lines;
    for (const NameConflict &conflict : std::as_const(m_found.proposal.conflicts))
        lines.append(QLatin1String("  ! ") + nameConflictText(conflict));
    log().addLines(lines);
    showLog(true);
}

void FolderSyncWidget::showNotice()
{
    NoticeCard &notice = view().notice();
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
    (m_model->*change)(view().selectionModel()->selectedRows());
    view().viewport()->update();
}

void FolderSyncWidget::setSelected(SyncAction action)
{
    m_model->setAction(view().selectionModel()->selectedRows(), action);
    view().viewport()->update();
}

void FolderSyncWidget::openCurrent()
{
    const QModelIndex current = view().currentIndex();
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
    QModelIndex at = view().currentIndex();
    do {
        at = direction > 0 ? view().indexBelow(at) : view().indexAbove(at);
    } while (at.isValid() && m_model->itemAt(at).isDir);
    if (at.isValid())
        view().setCurrentIndex(at);
}

void FolderSyncWidget::onSwap()
{
    const SessionPaths folders = paths();
    setPaths({folders.right, folders.left, {}});
    if (m_hasPlan)
        onAnalyze();
}

} // namespace velmora
