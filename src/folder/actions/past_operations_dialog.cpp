#include "folder/actions/past_operations_dialog.h"

#include "folder/actions/action_worker.h"
#include "folder/actions/folder_actions.h"
#include "folder/actions/past_operations_model.h"
#include "folder/actions/plan_preview_model.h"
#include "platform/file_layer.h"
#include "session/translate.h"

#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QSplitter>
#include <QStackedWidget>
#include <QTreeView>
#include <QVBoxLayout>

namespace velmora {

namespace {

constexpr QSize usualSize(760, 520);
constexpr int openedRows = 500; // groups of steps up to this size are opened from the start

QTreeView *makeList(const char *name)
{
    auto *list = new QTreeView;
    list->setObjectName(QLatin1String(name));
    list->setUniformRowHeights(true);
    list->setAllColumnsShowFocus(true);
    list->setTextElideMode(Qt::ElideMiddle);
    return list;
}

QPushButton *makeButton(const char *name, const QString &text, const QString &hint)
{
    auto *button = new QPushButton(text);
    button->setObjectName(QLatin1String(name));
    button->setToolTip(hint);
    button->setAutoDefault(false);
    return button;
}

} // namespace

PastOperationsDialog::PastOperationsDialog(QWidget *parent)
    : PastOperationsDialog(FileLayer::native(), standardJournal().folder, parent)
{}

PastOperationsDialog::PastOperationsDialog(FileLayer &files, const QString &journalFolder, QWidget *parent)
    : QDialog(parent),
      m_files(files),
      m_journalFolder(journalFolder),
      m_model(new PastOperationsModel(this)),
      m_actions(new FolderActions(*this, files, journalFolder, this)),
      m_heading(new QLabel),
      m_pages(new QStackedWidget),
      m_list(makeList("pastList")),
      m_steps(makeList("pastSteps")),
      m_status(new QLabel),
      m_undo(makeButton("pastUndo", Velmora::tr("&Undo..."), Velmora::tr("Shows what would be taken back first"))),
      m_continue(
          makeButton("pastContinue", Velmora::tr("&Continue..."), Velmora::tr("Shows what is still to be done first"))),
      m_close(makeButton("pastClose", Velmora::tr("Close"), {}))
{
    setWindowTitle(Velmora::tr("Past operations"));
    buildLayout();
    connectButtons();
    load();
}

PastOperationsDialog::~PastOperationsDialog() = default;

void PastOperationsDialog::buildLayout()
{
    m_heading->setObjectName(QStringLiteral("pastHeading"));
    m_heading->setTextFormat(Qt::PlainText);
    m_heading->setWordWrap(true);
    m_heading->hide();
    m_list->setRootIsDecorated(false);
    m_list->setModel(m_model);
    m_list->header()->setStretchLastSection(true);
    m_list->header()->resizeSection(PastOperationsModel::Title, 400);
    m_list->header()->resizeSection(PastOperationsModel::Time, 150);
    m_list->setAccessibleName(windowTitle());
    m_steps->setAccessibleName(Velmora::tr("What it has done"));
    auto *lists = new QSplitter(Qt::Vertical);
    lists->setChildrenCollapsible(false);
    lists->addWidget(m_list);
    lists->addWidget(m_steps);
    lists->setStretchFactor(0, 2);
    lists->setStretchFactor(1, 3);
    auto *nothing =
        new QLabel(Velmora::tr("Nothing has been copied, moved or deleted yet. What is done with files in a "
                               "folder comparison appears here and can be undone."));
    nothing->setObjectName(QStringLiteral("pastNothing"));
    nothing->setAlignment(Qt::AlignCenter);
    nothing->setWordWrap(true);
    m_pages->addWidget(nothing);
    m_pages->addWidget(lists);
    m_status->setObjectName(QStringLiteral("pastStatus"));
    m_status->setTextFormat(Qt::PlainText);
    m_status->setWordWrap(true);

    auto *buttons = new QHBoxLayout;
    buttons->addWidget(m_undo);
    buttons->addWidget(m_continue);
    buttons->addStretch(1);
    buttons->addWidget(m_close);
    auto *whole = new QVBoxLayout(this);
    whole->setSpacing(10);
    whole->addWidget(m_heading);
    whole->addWidget(m_pages, 1);
    whole->addWidget(m_status);
    whole->addLayout(buttons);
    resize(usualSize);
}

void PastOperationsDialog::connectButtons()
{
    connect(m_undo, &QPushButton::clicked, this, [this] { m_actions->undoRun(m_model->run(selectedRow()).id); });
    connect(m_continue, &QPushButton::clicked, this, [this] { m_actions->continueRun(m_model->run(selectedRow())); });
    connect(m_close, &QPushButton::clicked, this, &PastOperationsDialog::reject);
    connect(m_list->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            &PastOperationsDialog::showSelected);
    connect(m_actions, &FolderActions::statusChanged, m_status, &QLabel::setText);
    connect(m_actions, &FolderActions::runningChanged, this, [this](bool running) {
        m_close->setText(running ? Velmora::tr("Stop") : Velmora::tr("Close"));
        showPossible();
        if (!running)
            load();
    });
}

void PastOperationsDialog::tellInterrupted(const QString &id)
{
    m_wanted = id;
    m_heading->setText(Velmora::tr("The program ended in the middle of an operation. What it had begun is whole or not "
                                   "there at all; it can be taken back or gone on with, now or later."));
    m_heading->show();
}

void PastOperationsDialog::reject()
{
    if (m_actions->isRunning())
        m_actions->cancel();
    else
        QDialog::reject();
}

void PastOperationsDialog::load()
{
    const int row = selectedRow();
    if (m_wanted.isEmpty() && row >= 0)
        m_wanted = m_model->run(row).id;
    m_loader.start([&files = m_files, folder = m_journalFolder](
                       const CancelFlag &, Progress &) { return OperationJournal(files, folder).entries(); },
                   [this](RunOutcome<JournalList> &&outcome) {
                       if (outcome.value)
                           takeRuns(*outcome.value);
                   });
    showPossible();
}

void PastOperationsDialog::takeRuns(const JournalList &list)
{
    m_model->setRuns(list);
    const bool isEmpty = m_model->rowCount() == 0;
    m_pages->setCurrentIndex(isEmpty ? 0 : 1);
    if (!isEmpty) {
        const int row = std::max(m_model->rowOf(std::exchange(m_wanted, {})), 0);
        m_list->setCurrentIndex(m_model->index(row, 0));
        m_list->setFocus();
    }
    showSelected();
}

int PastOperationsDialog::selectedRow() const
{
    const QModelIndex current = m_list->currentIndex();
    return current.isValid() ? current.row() : -1;
}

void PastOperationsDialog::showSelected()
{
    showPossible();
    const int row = selectedRow();
    if (row < 0 || !m_model->isReadable(row)) {
        showSteps({});
        return;
    }
    m_reader.start(
        [&files = m_files, folder = m_journalFolder, id = m_model->run(row).id](const CancelFlag &cancel, Progress &) {
            return OperationJournal(files, folder).readRun(id, cancel);
        },
        [this](RunOutcome<PastRun> &&outcome) {
            if (outcome.end == RunEnd::Done)
                showSteps(*outcome.value);
        });
}

void PastOperationsDialog::showSteps(const PastRun &run)
{
    QAbstractItemModel *const old = m_steps->model();
    auto *model = new PlanPreviewModel(run.done, m_steps);
    m_steps->setModel(model);
    delete old;
    m_steps->header()->resizeSection(PlanPreviewModel::Name, 360);
    for (int group = 0; group < model->rowCount(); ++group) {
        m_steps->setFirstColumnSpanned(group, {}, true);
        if (model->rowCount(model->index(group, 0)) <= openedRows)
            m_steps->expand(model->index(group, 0));
    }
}

void PastOperationsDialog::showPossible()
{
    const int row = selectedRow();
    const bool isOne = row >= 0 && m_model->isReadable(row) && !m_actions->isRunning();
    const bool mayUndo = isOne && !m_model->run(row).undone && !m_model->run(row).isAtWork;
    m_undo->setEnabled(mayUndo);
    m_continue->setEnabled(mayUndo && m_model->run(row).interrupted);
}

QStringList PastOperationsDialog::interruptedRuns(FileLayer &files, const QString &journalFolder)
{
    QStringList ids;
    const JournalList list = OperationJournal(files, journalFolder).entries();
    for (const JournalEntry &run : list.entries) {
        if (run.interrupted && !run.told && !run.undone)
            ids.append(run.id);
    }
    return ids;
}

void PastOperationsDialog::offerInterrupted(QWidget &window)
{
    auto *looker = new Runner(&window);
    looker->start(
        [folder = standardJournal().folder](const CancelFlag &, Progress &) {
            OperationJournal journal(FileLayer::native(), folder);
            const QStringList ids = interruptedRuns(FileLayer::native(), folder);
            for (const QString &id : ids)
                journal.markTold(id);
            return ids;
        },
        [&window, looker](RunOutcome<QStringList> &&outcome) {
            looker->deleteLater();
            if (!outcome.value || outcome.value->isEmpty())
                return;
            auto *dialog = new PastOperationsDialog(&window);
            dialog->setAttribute(Qt::WA_DeleteOnClose);
            dialog->tellInterrupted(outcome.value->last());
            dialog->show();
        });
}

} // namespace velmora
