#include "folder/merge/folder_merge_widget.h"

#include "core/path_names.h"
#include "folder/actions/action_words.h"
#include "folder/actions/folder_log_panel.h"
#include "folder/actions/plan_view.h"
#include "folder/merge/awaited_texts.h"
#include "folder/merge/folder_merge_bar.h"
#include "folder/merge/folder_merge_model.h"
#include "session/dialogs.h"
#include "session/frame/notice_bar.h"
#include "session/frame/notice_card.h"
#include "session/frame/status_line.h"
#include "session/session_host.h"
#include "session/shown_path.h"
#include "session/translate.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QLabel>
#include <QMenu>
#include <QPointer>

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
    : PlanSession(host, fields(), QStringLiteral("mergeFiles"), new FolderMergeModel, parent),
      m_bar(new FolderMergeBar(this)),
      m_filter(new QComboBox),
      m_model(static_cast<FolderMergeModel *>(view().model())),
      m_offer(new NoticeBar(QStringLiteral("textsBar"))),
      m_open(status().addFact(QStringLiteral("openConflictsLabel")))
{
    auto *choices = new QWidget;
    auto *row = new QHBoxLayout(choices);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(m_filter);
    row->addStretch();
    layOut(*m_bar, Velmora::tr("Filter:"), choices);
    addAboveRows(m_offer);
    buildView();
    connectFilter();
    connectBar();
    connect(m_model, &FolderMergeModel::choicesChanged, this, &FolderMergeWidget::showState);
    connect(&runs(), &PlanRuns::stageChanged, this, &FolderMergeWidget::showState);
    m_offer->setAction(Velmora::tr("Take merged texts"),
                       Velmora::tr("Has the merged tree get the texts that both versions make together"));
    m_offer->setClosable(Velmora::tr("Hide this remark"));
    connect(m_offer, &NoticeBar::actionWanted, this, &FolderMergeWidget::takeCleanTexts);
    showState();
    showNotice();
}

FolderMergeWidget::~FolderMergeWidget() = default;

// Layout -------------------------------------------------------------------------------------------------------------

void FolderMergeWidget::buildView()
{
    view().setAccessibleName(Velmora::tr("Files of the merge"));
    view().setRootIsDecorated(false);
    view().setTextElideMode(Qt::ElideMiddle);
    QHeaderView &header = *view().header();
    const QFontMetrics metrics = view().fontMetrics();
    const int sizeWidth = metrics.horizontalAdvance(QStringLiteral("10000000 KB")) + 16;
    const int textWidth = metrics.horizontalAdvance(QStringLiteral("两侧相同修改")) + 24;
    for (const int column : {FolderMergeModel::BaseSize, FolderMergeModel::LeftSize, FolderMergeModel::RightSize})
        header.resizeSection(column, sizeWidth);
    for (const int column : {FolderMergeModel::Status, FolderMergeModel::Action})
        header.resizeSection(column, textWidth);
    connect(view().selectionModel(), &QItemSelectionModel::selectionChanged, this, &FolderMergeWidget::showState);
}

void FolderMergeWidget::connectFilter()
{
    m_filter->setObjectName(QStringLiteral("filterBox"));
    m_filter->addItems({Velmora::tr("All"), Velmora::tr("Conflicts only"), Velmora::tr("Changed"),
                        Velmora::tr("Added only"), Velmora::tr("Deleted only")});
    connect(m_filter, &QComboBox::currentIndexChanged, this, [this](int index) {
        m_model->setView(FolderMergeModel::View(index));
        view().fitFirstColumn();
        showState();
        showNotice();
    });
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
    onTrigger(m_bar->selectFolder, &FolderMergeWidget::selectFolder);
    onTrigger(m_bar->openMerge, &FolderMergeWidget::openCurrent);
}

void FolderMergeWidget::fillRowMenu(QMenu &menu)
{
    m_bar->fillRowMenu(menu);
}

QString FolderMergeWidget::closeQuestion() const
{
    return Velmora::tr("The merge is still running. Stop it after the current file and close?");
}

QString FolderMergeWidget::title() const
{
    return Velmora::tr("Three-way merge: %1").arg(bareName(m_compared.base));
}

// Comparing ----------------------------------------------------------------------------------------------------------

QString FolderMergeWidget::problemOfPaths() const
{
    const SessionPaths given = paths();
    if (given.base.isEmpty() || given.left.isEmpty() || given.right.isEmpty())
        return Velmora::tr("Enter paths for all three folders");
    for (const QString &folder : {given.base, given.left, given.right}) {
        if (!QFileInfo(folder).isDir())
            return Velmora::tr("Folder not found: %1").arg(shownPath(folder));
    }
    return {};
}

void FolderMergeWidget::onCompare()
{
    if (!runs().mayRead())
        return;
    if (const QString problem = problemOfPaths(); !problem.isEmpty()) {
        status().showFailure(problem);
        Q_EMIT readingEnded();
        return;
    }
    const SessionPaths given = paths();
    const MergeVersions<QString> folders{QDir::cleanPath(given.base), QDir::cleanPath(given.left),
                                         QDir::cleanPath(given.right)};
    status().showMessage(Velmora::tr("Comparing…"));
    // The worker may still write into it when the session has gone.
    const std::shared_ptr<AwaitedTexts> texts(new AwaitedTexts, [](AwaitedTexts *gone) { gone->deleteLater(); });
    runs().read(
        [folders, texts, into = texts->folder()](const CancelFlag &cancel, Progress &progress) {
            Result result{mergeFolderTrees(folders, cancel, progress), {}};
            if (!into.isEmpty() && !cancel.isCancelled())
                result.conflicts = mergeTextConflicts(folders, result.trees.files, into, cancel, progress);
            return result;
        },
        [this, folders, texts](RunOutcome<Result> &&outcome) {
            if (outcome.end == RunEnd::Done) {
                m_compared = folders;
                m_texts = texts;
                connect(m_texts.get(), &AwaitedTexts::saved, this, &FolderMergeWidget::takeText);
            }
            takeResult(std::move(outcome));
        });
    Q_EMIT comparisonStarted();
}

void FolderMergeWidget::takeResult(RunOutcome<Result> &&outcome)
{
    if (outcome.end == RunEnd::Cancelled) {
        status().showMessage(Velmora::tr("Cancelled"));
    } else if (outcome.value) {
        m_hasResult = true;
        m_clean = outcome.value->conflicts.clean;
        m_model->setFiles(outcome.value->trees.files);
        tell(outcome.value->trees);
        showOffer();
        if (m_model->rowCount() > 0)
            view().setCurrentIndex(m_model->index(0, 0));
        focusRows();
        view().fitFirstColumn();
        Q_EMIT tabTitleChanged(title());
        Q_EMIT comparisonFinished(m_compared.left, m_compared.right);
    }
    showNotice();
    Q_EMIT readingEnded();
}

void FolderMergeWidget::tell(const FolderMergeResult &result)
{
    QStringList lines;
    for (const QString &folder : result.unreadable)
        lines.append(Velmora::tr("Cannot read folder: %1").arg(shownPath(folder)));
    log().addLines(lines);
    showLog(!result.unreadable.isEmpty());
    const QString found = Velmora::tr("%1 file(s), %2 changed, %3 conflict(s)")
                              .arg(result.files.size())
                              .arg(result.changed)
                              .arg(result.conflicts);
    if (result.unreadable.isEmpty())
        status().showMessage(found);
    else
        status().showFailure(found, Velmora::tr("Some folders could not be read; their files count as deleted"));
}

// What is shown ------------------------------------------------------------------------------------------------------

void FolderMergeWidget::showState()
{
    const bool idle = runs().isIdle();
    const bool hasRows = view().selectionModel()->hasSelection();
    m_bar->compare->setEnabled(runs().mayRead());
    m_bar->mergeTo->setEnabled(idle);
    m_bar->cancel->setEnabled(!idle);
    m_bar->undo->setEnabled(runs().mayUndo());
    for (QAction *action : {m_bar->takeLeft, m_bar->takeBase, m_bar->takeRight, m_bar->leaveOut, m_bar->asFound,
                            m_bar->selectFolder, m_bar->openMerge})
        action->setEnabled(idle && hasRows);
    m_open->setText(m_hasResult ? Velmora::tr("Open conflicts: %1").arg(m_model->openConflicts()) : QString());
}

void FolderMergeWidget::showNotice()
{
    NoticeCard &notice = view().notice();
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
    change(view().selectionModel()->selectedRows());
}

void FolderMergeWidget::openCurrent()
{
    const QModelIndex current = view().currentIndex();
    if (!current.isValid())
        return;
    const FolderMergeFile &file = m_model->fileAt(current.row());
    if (m_model->hasTextAt(current.row()))
        askWhatToOpen(file);
    else
        openMerge(file);
}

SessionPaths FolderMergeWidget::versionsOf(const FolderMergeFile &file) const
{
    const auto pathOf = [&](MergeVersion version) {
        return file.sizes[version] < 0 ? QString() : joinedPath(m_compared[version], file.path);
    };
    return {pathOf(MergeVersion::Left), pathOf(MergeVersion::Right), pathOf(MergeVersion::Base)};
}

/// A merge begins anew: what was made of the file before is worth a look first.
void FolderMergeWidget::askWhatToOpen(const FolderMergeFile &file)
{
    enum Answer : quint8 { Show, Merge, Nothing };
    Dialogs::instance().ask(
        this, Dialogs::Tone::Information, Velmora::tr("Merged text"),
        Velmora::tr("%1 has a merged text already. Look at it, or merge the three versions anew? The "
                    "text stays until another is saved.")
            .arg(shownPath(file.path)),
        {{Velmora::tr("&Look at it"), Show, true},
         {Velmora::tr("&Merge anew"), Merge},
         {Velmora::tr("Cancel"), Nothing, false, true}},
        [self = QPointer(this), file](int answer) {
            if (self && answer == Show)
                self->showMergedText(file);
            else if (self && answer == Merge)
                self->openMerge(file);
        });
}

/// Beside a version that it was made of, where it can be changed.
void FolderMergeWidget::showMergedText(const FolderMergeFile &file)
{
    const SessionPaths versions = versionsOf(file);
    host().openSession(host().kindFor(SessionHost::Purpose::CompareTexts),
                       {versions.left.isEmpty() ? versions.right : versions.left, m_texts->await(file.path), {}});
}

void FolderMergeWidget::openMerge(const FolderMergeFile &file)
{
    const SessionPaths versions = versionsOf(file);
    Q_EMIT openThreeWayMerge(versions.base, versions.left, versions.right);
    host().openMerge(versions, m_texts->await(file.path));
}

/// The merged texts are there already.
void FolderMergeWidget::showOffer()
{
    if (m_clean.empty()) {
        m_offer->clear();
        return;
    }
    m_offer->tell(Velmora::tr("Conflicts that merge cleanly line by line: %1").arg(m_clean.size()),
                  NoticeBar::Tone::Remark);
}

void FolderMergeWidget::takeCleanTexts()
{
    m_model->takeTexts(m_clean);
    m_offer->clear();
}

void FolderMergeWidget::takeText(const QString &path)
{
    const QList<FolderMergeFile> &files = m_model->files();
    const auto file =
        std::find_if(files.begin(), files.end(), [&](const FolderMergeFile &f) { return f.path == path; });
    if (file == files.end())
        return;
    m_model->takeTexts({file - files.begin()});
    status().showMessage(Velmora::tr("Merged by hand: %1").arg(shownPath(path)));
}

void FolderMergeWidget::showEvent(QShowEvent *event)
{
    PlanSession::showEvent(event);
    if (m_texts)
        m_texts->look();
}

/// The folder of the current file; the one around it when all of that is selected already.
void FolderMergeWidget::selectFolder()
{
    const QModelIndex current = view().currentIndex();
    if (!current.isValid())
        return;
    QItemSelectionModel &selection = *view().selectionModel();
    QString folder = m_model->fileAt(current.row()).path;
    std::pair<int, int> rows;
    do {
        folder = parentPath(folder);
        rows = m_model->rowsBelow(folder);
    } while (!folder.isEmpty() && selection.selectedRows().size() >= rows.second - rows.first &&
             selection.isRowSelected(rows.first));
    selection.select({m_model->index(rows.first, 0), m_model->index(rows.second - 1, 0)},
                     QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

/// To the next conflict that nobody has decided.
void FolderMergeWidget::step(int direction)
{
    int row = view().currentIndex().row() + direction;
    while (row >= 0 && row < m_model->rowCount() && !m_model->isOpenAt(row))
        row += direction;
    if (row >= 0 && row < m_model->rowCount())
        view().setCurrentIndex(m_model->index(row, 0));
}

} // namespace velmora
