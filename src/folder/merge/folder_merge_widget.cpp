#include "folder/merge/folder_merge_widget.h"

#include "core/path_names.h"
#include "folder/actions/action_words.h"
#include "folder/actions/folder_actions.h"
#include "folder/actions/folder_log_panel.h"
#include "folder/actions/plan_view.h"
#include "folder/merge/folder_merge_bar.h"
#include "folder/merge/folder_merge_model.h"
#include "session/fault_text.h"
#include "session/frame/notice_card.h"
#include "session/frame/path_edit.h"
#include "session/frame/paths_bar.h"
#include "session/frame/status_line.h"
#include "session/session_host.h"
#include "session/translate.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QSplitter>

namespace velmora {

namespace {

QList<PathsBar::Field> fields()
{
    using Picks = PathsBar::Field::Picks;
    return {{&SessionPaths::base, Velmora::tr("Base folder:"), Velmora::tr("Common ancestor / base version…"),
             Velmora::tr("Browse the base folder"), Picks::Folder},
            {&SessionPaths::left, Velmora::tr("Left (mine):"), Velmora::tr("Local modified version…"),
             Velmora::tr("Browse left folder"), Picks::Folder},
            {&SessionPaths::right, Velmora::tr("Right (theirs):"), Velmora::tr("Remote modified version…"),
             Velmora::tr("Browse right folder"), Picks::Folder}};
}

} // namespace

FolderMergeWidget::FolderMergeWidget(SessionHost &host, QWidget *parent)
    : SessionWidget(host, parent),
      m_bar(new FolderMergeBar(this)),
      m_inputs(new PathsBar(fields(), this)),
      m_filter(new QComboBox),
      m_model(new FolderMergeModel(this)),
      m_view(new PlanView(QStringLiteral("mergeFiles"), *m_model)),
      m_log(new FolderLogPanel),
      m_splitter(new QSplitter(Qt::Vertical)),
      m_status(new StatusLine),
      m_open(m_status->addFact(QStringLiteral("openConflictsLabel"))),
      m_undoing(new FolderActions(*this, this))
{
    buildView();
    buildLayout();
    connectBar();
    connectUndo();
    connect(m_inputs, &PathsBar::submitted, this, &FolderMergeWidget::onCompare);
    connect(m_model, &FolderMergeModel::choicesChanged, this, &FolderMergeWidget::showState);
    connect(m_log, &FolderLogPanel::closeWanted, m_log, &QWidget::hide);
    connect(this, &FolderMergeWidget::openThreeWayMerge, this,
            [this](const QString &base, const QString &left, const QString &right) {
                this->host().openSession(this->host().kindFor(SessionHost::Purpose::MergeTexts), {left, right, base});
            });
    m_log->hide();
    showState();
    showNotice();
}

FolderMergeWidget::~FolderMergeWidget() = default;

// Layout -------------------------------------------------------------------------------------------------------------

void FolderMergeWidget::buildView()
{
    m_view->setAccessibleName(Velmora::tr("Files of the merge"));
    m_view->setRootIsDecorated(false);
    m_view->setTextElideMode(Qt::ElideMiddle);
    QHeaderView &header = *m_view->header();
    const QFontMetrics metrics = m_view->fontMetrics();
    const int sizeWidth = metrics.horizontalAdvance(QStringLiteral("10000000 KB")) + 16;
    const int textWidth = metrics.horizontalAdvance(QStringLiteral("两侧相同修改")) + 24;
    for (const int column : {FolderMergeModel::BaseSize, FolderMergeModel::LeftSize, FolderMergeModel::RightSize})
        header.resizeSection(column, sizeWidth);
    for (const int column : {FolderMergeModel::Status, FolderMergeModel::Action})
        header.resizeSection(column, textWidth);
    connect(m_view, &QTreeView::activated, this, [this] { openCurrent(); });
    connect(m_view, &PlanView::menuWanted, this, [this](QPoint at) {
        QMenu menu;
        m_bar->fillRowMenu(menu);
        menu.exec(at);
    });
    connect(m_view->selectionModel(), &QItemSelectionModel::selectionChanged, this, &FolderMergeWidget::showState);
}

void FolderMergeWidget::buildLayout()
{
    m_filter->setObjectName(QStringLiteral("filterBox"));
    m_filter->addItems({Velmora::tr("All"), Velmora::tr("Conflicts only"), Velmora::tr("Changed"),
                        Velmora::tr("Added only"), Velmora::tr("Deleted only")});
    connect(m_filter, &QComboBox::currentIndexChanged, this, [this](int index) {
        m_model->setView(FolderMergeModel::View(index));
        m_view->fitFirstColumn();
        showState();
        showNotice();
    });
    QGridLayout &grid = m_inputs->grid();
    grid.setContentsMargins(10, 8, 10, 8);
    grid.setVerticalSpacing(6);
    auto *label = new QLabel(Velmora::tr("Filter:"));
    label->setBuddy(m_filter);
    const int row = grid.rowCount();
    grid.addWidget(label, row, 0);
    grid.addWidget(m_filter, row, 1, Qt::AlignLeft);
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

void FolderMergeWidget::connectBar()
{
    const auto onTrigger = [this](QAction *action, auto slot) { connect(action, &QAction::triggered, this, slot); };
    onTrigger(m_bar->compare, &FolderMergeWidget::onCompare);
    onTrigger(m_bar->mergeTo, &FolderMergeWidget::onMergeTo);
    onTrigger(m_bar->cancel, &FolderMergeWidget::onCancel);
    onTrigger(m_bar->undo, &FolderMergeWidget::onUndo);
    onTrigger(m_bar->nextDifference, [this] { step(1); });
    onTrigger(m_bar->previousDifference, [this] { step(-1); });
    for (const auto &[action, version] :
         {std::pair(m_bar->takeLeft, MergeVersion::Left), std::pair(m_bar->takeBase, MergeVersion::Base),
          std::pair(m_bar->takeRight, MergeVersion::Right)}) {
        onTrigger(action, [this, wanted = version] {
            changeSelected([this, wanted](const QModelIndexList &rows) { m_model->take(rows, wanted); });
        });
    }
    onTrigger(m_bar->leaveOut,
              [this] { changeSelected([this](const QModelIndexList &rows) { m_model->leaveOut(rows); }); });
    onTrigger(m_bar->asFound,
              [this] { changeSelected([this](const QModelIndexList &rows) { m_model->takeAsFound(rows); }); });
    onTrigger(m_bar->openMerge, &FolderMergeWidget::openCurrent);
}

void FolderMergeWidget::connectUndo()
{
    connect(m_undoing, &FolderActions::logLine, m_log, &FolderLogPanel::addLine);
    connect(m_undoing, &FolderActions::statusChanged, this,
            [this](const QString &text) { m_status->showMessage(text); });
    connect(m_undoing, &FolderActions::runningChanged, this, &FolderMergeWidget::showState);
    connect(m_undoing, &FolderActions::finished, this, [this] {
        m_journalId.clear();
        showState();
    });
}

// What the window knows of it ----------------------------------------------------------------------------------------

SessionPaths FolderMergeWidget::paths() const
{
    return m_inputs->paths();
}

void FolderMergeWidget::setPaths(const SessionPaths &paths)
{
    m_inputs->setPaths(paths);
}

void FolderMergeWidget::dropPaths(const QStringList &paths, QPoint position)
{
    m_inputs->take(paths, m_inputs->mapFrom(this, position));
    const SessionPaths folders = this->paths();
    if (!folders.base.isEmpty() && !folders.left.isEmpty() && !folders.right.isEmpty())
        onCompare();
}

void FolderMergeWidget::refreshTheme()
{
    m_bar->refreshTheme();
    m_inputs->refreshTheme();
    m_log->refreshTheme();
    m_status->refreshTheme();
    m_view->refreshTheme();
}

QString FolderMergeWidget::title() const
{
    return Velmora::tr("Three-way merge: %1").arg(bareName(m_compared.base));
}

// Comparing ----------------------------------------------------------------------------------------------------------

void FolderMergeWidget::onCompare()
{
    if (m_stage == Stage::Merging || m_undoing->isRunning())
        return;
    const SessionPaths given = paths();
    QString problem;
    if (given.base.isEmpty() || given.left.isEmpty() || given.right.isEmpty())
        problem = Velmora::tr("Enter paths for all three folders");
    for (const QString &folder : {given.base, given.left, given.right}) {
        if (problem.isEmpty() && !QFileInfo(folder).isDir())
            problem = Velmora::tr("Folder not found: %1").arg(shownPath(folder));
    }
    if (!problem.isEmpty()) {
        m_status->showFailure(problem);
        Q_EMIT readingEnded();
        return;
    }
    m_stage = Stage::Comparing;
    const MergeVersions<QString> folders{QDir::cleanPath(given.base), QDir::cleanPath(given.left),
                                         QDir::cleanPath(given.right)};
    m_status->showMessage(Velmora::tr("Comparing…"));
    m_runner.start(
        [folders](const CancelFlag &cancel, Progress &progress) { return mergeFolderTrees(folders, cancel, progress); },
        [this, folders](RunOutcome<FolderMergeResult> &&outcome) {
            if (outcome.end == RunEnd::Done)
                m_compared = folders;
            takeResult(std::move(outcome));
        },
        [this](const ProgressState &state) { m_status->showProgress(state); });
    showState();
    Q_EMIT comparisonStarted();
}

void FolderMergeWidget::takeResult(RunOutcome<FolderMergeResult> &&outcome)
{
    m_stage = Stage::Idle;
    m_status->clearProgress();
    if (outcome.end == RunEnd::Cancelled) {
        m_status->showMessage(Velmora::tr("Cancelled"));
    } else if (!outcome.value) {
        m_status->showFailure(faultText(outcome.fault, Velmora::tr("Not enough memory")));
    } else {
        const FolderMergeResult &result = *outcome.value;
        m_hasResult = true;
        m_model->setFiles(result.files);
        for (const QString &folder : result.unreadable)
            m_log->addLine(Velmora::tr("Cannot read folder: %1").arg(shownPath(folder)));
        m_log->setVisible(m_log->isVisibleTo(this) || !result.unreadable.isEmpty());
        const QString found = Velmora::tr("%1 file(s), %2 changed, %3 conflict(s)")
                                  .arg(result.files.size())
                                  .arg(result.changed)
                                  .arg(result.conflicts);
        if (result.unreadable.isEmpty())
            m_status->showMessage(found);
        else
            m_status->showFailure(found, Velmora::tr("Some folders could not be read; their files count as deleted"));
        if (m_model->rowCount() > 0)
            m_view->setCurrentIndex(m_model->index(0, 0));
        if (const QWidget *focus = focusWidget(); !focus || m_inputs->isAncestorOf(focus))
            m_view->setFocus();
        m_view->fitFirstColumn();
        Q_EMIT tabTitleChanged(title());
        Q_EMIT comparisonFinished(m_compared.left, m_compared.right);
    }
    showState();
    showNotice();
    Q_EMIT readingEnded();
}

// What is shown ------------------------------------------------------------------------------------------------------

void FolderMergeWidget::showState()
{
    const bool idle = m_stage == Stage::Idle && !m_undoing->isRunning();
    const bool hasRows = m_view->selectionModel()->hasSelection();
    m_bar->compare->setEnabled(m_stage != Stage::Merging && !m_undoing->isRunning());
    m_bar->mergeTo->setEnabled(idle);
    m_bar->cancel->setEnabled(!idle);
    m_bar->undo->setEnabled(idle && !m_journalId.isEmpty());
    for (QAction *action :
         {m_bar->takeLeft, m_bar->takeBase, m_bar->takeRight, m_bar->leaveOut, m_bar->asFound, m_bar->openMerge})
        action->setEnabled(idle && hasRows);
    m_open->setText(m_hasResult ? Velmora::tr("Open conflicts: %1").arg(m_model->openConflicts()) : QString());
}

void FolderMergeWidget::showNotice()
{
    NoticeCard &notice = m_view->notice();
    if (m_model->rowCount() > 0)
        notice.clear();
    else if (!m_hasResult)
        notice.tell({Velmora::tr("A folder and two versions of it"),
                     Velmora::tr("Drop the three here or enter their paths above, then press Compare (F5). The merged "
                                 "tree goes into a folder of its own; these three stay as they are.")});
    else if (m_model->files().isEmpty())
        notice.tell({Velmora::tr("There are no files in these folders."), {}});
    else
        notice.tell({Velmora::tr("No file is of this kind."), {}});
}

void FolderMergeWidget::changeSelected(const std::function<void(const QModelIndexList &)> &change)
{
    change(m_view->selectionModel()->selectedRows());
}

void FolderMergeWidget::openCurrent()
{
    const QModelIndex current = m_view->currentIndex();
    if (!current.isValid())
        return;
    const FolderMergeFile &file = m_model->fileAt(current.row());
    const auto pathOf = [&](MergeVersion version) {
        return file.sizes[version] < 0 ? QString() : joinedPath(m_compared[version], file.path);
    };
    Q_EMIT openThreeWayMerge(pathOf(MergeVersion::Base), pathOf(MergeVersion::Left), pathOf(MergeVersion::Right));
}

/// To the next conflict that nobody has decided.
void FolderMergeWidget::step(int direction)
{
    int row = m_view->currentIndex().row() + direction;
    while (row >= 0 && row < m_model->rowCount() && !m_model->isOpenAt(row))
        row += direction;
    if (row >= 0 && row < m_model->rowCount())
        m_view->setCurrentIndex(m_model->index(row, 0));
}

} // namespace velmora
