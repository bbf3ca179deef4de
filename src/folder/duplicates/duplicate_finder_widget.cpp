#include "folder/duplicates/duplicate_finder_widget.h"

#include "core/path_names.h"
#include "folder/actions/action_words.h"
#include "folder/actions/folder_actions.h"
#include "folder/actions/folder_log_panel.h"
#include "folder/duplicates/duplicate_bar.h"
#include "folder/duplicates/duplicate_view.h"
#include "folder/duplicates/more_folders.h"
#include "folder/duplicates/tick_panel.h"
#include "platform/file_manager.h"
#include "session/dialogs.h"
#include "session/frame/notice_card.h"
#include "session/frame/path_edit.h"
#include "session/frame/paths_bar.h"
#include "session/frame/status_line.h"
#include "session/session_host.h"
#include "session/shown_path.h"
#include "session/translate.h"

#include <QBoxLayout>
#include <QClipboard>
#include <QDesktopServices>
#include <QFileInfo>
#include <QGridLayout>
#include <QGuiApplication>
#include <QJsonArray>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPointer>
#include <QScrollBar>
#include <QSplitter>
#include <QUrl>

namespace velmora {

namespace {

constexpr QLatin1String foldersKey("folders");
constexpr QLatin1String referencesKey("references");

QList<PathsBar::Field> fields()
{
    return {{&SessionPaths::left, Velmora::tr("  Folder: ").trimmed(), Velmora::tr("Folder to scan…"),
             Velmora::tr("Select folder"), PathsBar::Field::Picks::Folder}};
}

} // namespace

DuplicateFinderWidget::DuplicateFinderWidget(SessionHost &host, QWidget *parent)
    : SessionWidget(host, parent),
      m_bar(new DuplicateBar(this)),
      m_inputs(new PathsBar(fields(), this)),
      m_more(new MoreFolders),
      m_filter(new QLineEdit),
      m_tree(new DuplicateTree({})),
      m_model(new TreeModel(std::unique_ptr<RowTree>(m_tree), this)),
      m_view(new DuplicateView(*m_model)),
      m_ticks(new TickPanel),
      m_log(new FolderLogPanel),
      m_splitter(new QSplitter(Qt::Vertical)),
      m_status(new StatusLine),
      m_names(m_status->addFact(QStringLiteral("namesLabel"))),
      m_count(m_status->addFact(QStringLiteral("countLabel"))),
      m_undoing(new FolderActions(*this, this)),
      m_saver(host, *this, Velmora::tr("Export"))
{
    buildView();
    buildLayout();
    connectBar();
    connectUndo();
    connect(m_inputs, &PathsBar::submitted, this, &DuplicateFinderWidget::onScan);
    connect(m_ticks, &TickPanel::ruleChosen, this, &DuplicateFinderWidget::tickByRule);
    connect(m_ticks, &TickPanel::clearWanted, this, [this] {
        m_tree->clearTicks();
        ticksChanged();
    });
    connect(m_ticks, &TickPanel::deleteWanted, this, &DuplicateFinderWidget::onDelete);
    connect(m_log, &FolderLogPanel::closeWanted, m_log, &QWidget::hide);
    connect(&m_saver, &ReportSaver::failed, this, [this](const QString &text) { m_status->showFailure(text); });
    m_log->hide();
    m_ticks->hide();
    showState();
    showNotice();
}

DuplicateFinderWidget::~DuplicateFinderWidget() = default;

// Layout -------------------------------------------------------------------------------------------------------------

void DuplicateFinderWidget::buildView()
{
    connect(m_view, &TreeView::openWanted, this, &DuplicateFinderWidget::openFile);
    connect(m_view, &TreeView::contextMenuWanted, this, [this](const QModelIndex &, QPoint at) { openMenu(at); });
    connect(m_view, &TreeView::copyWanted, this, &DuplicateFinderWidget::copyPaths);
    connect(m_view, &TreeView::checkWanted, this, &DuplicateFinderWidget::tick);
    connect(m_view, &TreeView::placeChanged, this, &DuplicateFinderWidget::showRowCommands);
    connect(m_model, &TreeModel::filtered, this, &DuplicateFinderWidget::showNotice);

    m_digestDelay.setSingleShot(true);
    m_digestDelay.setInterval(120);
    connect(&m_digestDelay, &QTimer::timeout, this, &DuplicateFinderWidget::computeDigests);
    connect(m_model, &QAbstractItemModel::modelReset, this, &DuplicateFinderWidget::wantDigests);
    connect(m_view->verticalScrollBar(), &QScrollBar::valueChanged, this, &DuplicateFinderWidget::wantDigests);
    connect(m_view->verticalScrollBar(), &QScrollBar::rangeChanged, this, &DuplicateFinderWidget::wantDigests);

    m_filter->setObjectName(QStringLiteral("filterBox"));
    m_filter->setPlaceholderText(Velmora::tr("Show the groups whose paths hold these words"));
    m_filter->setAccessibleName(m_filter->placeholderText());
    m_filter->setClearButtonEnabled(true);
    connect(m_filter, &QLineEdit::textChanged, m_model, &TreeModel::setFilter);
}

void DuplicateFinderWidget::buildLayout()
{
    QGridLayout &grid = m_inputs->grid();
    grid.setContentsMargins(10, 8, 10, 8);
    grid.setVerticalSpacing(6);
    const int row = grid.rowCount();
    grid.addWidget(m_more, row, 1);
    auto *filter = new QLabel(Velmora::tr(" Filter: ").trimmed());
    filter->setBuddy(m_filter);
    grid.addWidget(filter, row + 1, 0);
    grid.addWidget(m_filter, row + 1, 1);
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
    column->addWidget(m_ticks);
    column->addWidget(m_splitter, 1);
    column->addWidget(m_status);
    setFocusProxy(&m_inputs->edit(0));
}

void DuplicateFinderWidget::connectBar()
{
    const auto onTrigger = [this](QAction *action, auto slot) { connect(action, &QAction::triggered, this, slot); };
    onTrigger(m_bar->scan, &DuplicateFinderWidget::onScan);
    onTrigger(m_bar->cancel, &DuplicateFinderWidget::onCancel);
    onTrigger(m_bar->undo, &DuplicateFinderWidget::onUndo);
    onTrigger(m_bar->exportAll, &DuplicateFinderWidget::onExport);
    onTrigger(m_bar->addFolder, &DuplicateFinderWidget::addFolder);
    onTrigger(m_bar->open, &DuplicateFinderWidget::openFile);
    onTrigger(m_bar->reveal, &DuplicateFinderWidget::reveal);
    onTrigger(m_bar->compareFiles, &DuplicateFinderWidget::compareTwo);
    onTrigger(m_bar->copyPaths, &DuplicateFinderWidget::copyPaths);
    onTrigger(m_bar->toggleTick, &DuplicateFinderWidget::toggleTicks);
    onTrigger(m_bar->tickFolder, [this] { tickFolder(true); });
    onTrigger(m_bar->clearFolder, [this] { tickFolder(false); });
    onTrigger(m_bar->previousDifference, [this] { step(false); });
    onTrigger(m_bar->nextDifference, [this] { step(true); });
    onTrigger(m_bar->focusFilter, [this] { m_filter->setFocus(Qt::ShortcutFocusReason); });
    connect(m_bar->deleteExtra, &QAction::toggled, this, &DuplicateFinderWidget::setTicking);
}

void DuplicateFinderWidget::connectUndo()
{
    connect(m_undoing, &FolderActions::logLine, m_log, &FolderLogPanel::addLine);
    connect(m_undoing, &FolderActions::statusChanged, this, [this](const QString &text) {
        m_undoText = text;
        m_status->showMessage(text);
    });
    connect(m_undoing, &FolderActions::runningChanged, this, &DuplicateFinderWidget::showState);
    // Told while it is still at work.
    connect(
        m_undoing, &FolderActions::finished, this,
        [this] {
            m_journalId.clear();
            onScan();
        },
        Qt::QueuedConnection);
}

// What the window knows of it ----------------------------------------------------------------------------------------

SessionPaths DuplicateFinderWidget::paths() const
{
    return m_inputs->paths();
}

void DuplicateFinderWidget::setPaths(const SessionPaths &paths)
{
    m_inputs->setPaths(paths);
}

QJsonObject DuplicateFinderWidget::options() const
{
    QJsonArray folders;
    QJsonArray references;
    for (const MoreFolder &folder : m_more->folders())
        (folder.isReference ? references : folders).append(folder.path);
    QJsonObject options;
    if (!folders.isEmpty())
        options.insert(foldersKey, folders);
    if (!references.isEmpty())
        options.insert(referencesKey, references);
    return options;
}

void DuplicateFinderWidget::setOptions(const QJsonObject &options)
{
    QList<MoreFolder> folders;
    for (const bool isReference : {false, true}) {
        const QJsonArray paths = options.value(isReference ? referencesKey : foldersKey).toArray();
        for (const QJsonValue &path : paths)
            folders.append({path.toString(), isReference});
    }
    m_more->setFolders(folders);
}

void DuplicateFinderWidget::dropPaths(const QStringList &paths, QPoint /*position*/)
{
    for (const QString &path : paths) {
        const QString folder = QFileInfo(path).isDir() ? path : parentPath(path);
        if (this->paths().left.isEmpty())
            setPaths({folder, {}, {}});
        else if (folder != this->paths().left)
            m_more->add({folder, false});
    }
    onScan();
}

void DuplicateFinderWidget::refreshTheme()
{
    m_bar->refreshTheme();
    m_inputs->refreshTheme();
    m_log->refreshTheme();
    m_status->refreshTheme();
    m_model->refresh();
    m_view->refreshTheme();
}

// What is shown ------------------------------------------------------------------------------------------------------

void DuplicateFinderWidget::showTree(std::unique_ptr<DuplicateTree> tree)
{
    m_digests.abandon(); // numbers of groups are others
    m_digested.clear();
    tree->setTicking(m_bar->deleteExtra->isChecked());
    m_tree = tree.get();
    m_model->setTree(std::move(tree));
    if (m_view->currentNode() < 0 && m_model->rowCount() > 0)
        m_view->goToRow(0);
    showNotice();
    showState();
    showTicks();
    wantDigests();
}

void DuplicateFinderWidget::showState()
{
    const bool idle = m_stage == Stage::Idle && !m_undoing->isRunning();
    const bool hasRows = m_model->rowCount() > 0;
    m_bar->scan->setEnabled(m_stage != Stage::Deleting && !m_undoing->isRunning());
    m_bar->cancel->setEnabled(!idle);
    m_bar->undo->setEnabled(canEdit(EditCommand::Undo));
    m_bar->deleteExtra->setEnabled(idle && !m_tree->scan().groups.isEmpty());
    m_bar->exportAll->setEnabled(m_hasScan);
    m_bar->previousDifference->setEnabled(hasRows);
    m_bar->nextDifference->setEnabled(hasRows);
    m_ticks->setBusy(!idle);
    m_count->setText(m_hasScan ? Velmora::tr("Duplicates: %1").arg(m_tree->scan().groups.size()) : QString());
    const qint64 names = m_tree->scan().sameFiles;
    m_names->setText(names > 0 ? Velmora::tr("Other names of the same files: %1").arg(names) : QString());
    m_names->setToolTip(
        toolTipText(Velmora::tr("Hard links and links: names that lead to files which are counted once")));
    showRowCommands();
    Q_EMIT editStateChanged();
}

void DuplicateFinderWidget::showRowCommands()
{
    const QList<qint32> rows = selectedPaths();
    const bool hasOne = !rows.isEmpty();
    const bool isTicking = m_bar->deleteExtra->isChecked();
    m_bar->open->setEnabled(rows.size() == 1);
    m_bar->reveal->setEnabled(rows.size() == 1);
    m_bar->compareFiles->setEnabled(rows.size() == 1 || rows.size() == 2);
    m_bar->copyPaths->setEnabled(hasOne);
    for (QAction *action : {m_bar->toggleTick, m_bar->tickFolder, m_bar->clearFolder}) {
        action->setVisible(isTicking);
        action->setEnabled(isTicking && hasOne);
    }
}

void DuplicateFinderWidget::showNotice()
{
    NoticeCard &notice = m_view->notice();
    if (m_model->rowCount() > 0)
        notice.clear();
    else if (!m_hasScan)
        notice.tell(
            {Velmora::tr("What is there more than once?"),
             Velmora::tr("Drop a folder here or enter its path above, then press Scan duplicates (F5). Files of "
                         "the same contents are shown in groups; nothing is deleted before you say so.")});
    else if (m_model->isFiltered())
        notice.tell({Velmora::tr("No group has a path with these words."), {}});
    else
        notice.tell({Velmora::tr("There are no duplicates."), {}});
}

void DuplicateFinderWidget::showTicks()
{
    const DuplicateTicks &ticks = m_tree->ticks();
    m_ticks->showTicks(ticks.files(), ticks.bytes(), ticks.staying());
}

void DuplicateFinderWidget::openMenu(QPoint at)
{
    QMenu menu;
    m_bar->fillRowMenu(menu);
    menu.exec(at);
}

/// To the head of the next group, or of the one before; from within a group backwards to its own.
void DuplicateFinderWidget::step(bool forward)
{
    int row = m_view->currentIndex().row();
    do {
        row += forward ? 1 : -1;
    } while (row >= 0 && row < m_model->rowCount() && !m_tree->isGroup(m_model->nodeAt(row)));
    if (row >= 0 && row < m_model->rowCount())
        m_view->goToRow(row);
}

// What is done with rows ---------------------------------------------------------------------------------------------

QList<qint32> DuplicateFinderWidget::selectedPaths() const
{
    QList<qint32> nodes = m_view->selectedNodes();
    nodes.removeIf([this](qint32 node) { return m_tree->isGroup(node); });
    return nodes;
}

QList<qint32> DuplicateFinderWidget::shownGroups() const
{
    QList<qint32> groups;
    for (int row = 0; row < m_model->rowCount(); ++row) {
        const qint32 node = m_model->nodeAt(row);
        if (m_tree->isGroup(node) && m_tree->groupOf(node) >= 0)
            groups.append(m_tree->groupOf(node));
    }
    return groups;
}

void DuplicateFinderWidget::openFile()
{
    const QList<qint32> nodes = selectedPaths();
    if (nodes.size() != 1)
        return;
    const QString &path = m_tree->pathAt(nodes.first());
    if (!QDesktopServices::openUrl(QUrl::fromLocalFile(path)))
        m_status->showFailure(Velmora::tr("Cannot open %1").arg(shownPath(path)));
}

void DuplicateFinderWidget::reveal()
{
    const QList<qint32> nodes = selectedPaths();
    if (nodes.isEmpty())
        return;
    const QString path = m_tree->pathAt(nodes.first());
    showInFileManager(path, *this, [this, path] {
        m_status->showFailure(Velmora::tr("No file manager could be started for %1").arg(shownPath(path)));
    });
}

void DuplicateFinderWidget::compareTwo()
{
    const QList<qint32> nodes = selectedPaths();
    if (nodes.isEmpty() || nodes.size() > 2)
        return;
    qint32 left = nodes.first();
    qint32 right = nodes.last();
    if (nodes.size() == 1) {
        left = m_tree->parent(right) + 1;
        right = left == right ? right + 1 : right;
    }
    const bool areFolders = m_tree->kindOf(left) == DuplicateTree::Kind::Folders;
    using enum SessionHost::Purpose;
    host().openSession(host().kindFor(areFolders ? CompareFolders : CompareBytes),
                       {m_tree->pathAt(left), m_tree->pathAt(right), {}});
}

void DuplicateFinderWidget::copyPaths()
{
    QStringList paths;
    for (const qint32 node : selectedPaths())
        paths.append(shownPath(m_tree->pathAt(node)));
    QGuiApplication::clipboard()->setText(paths.join(u'\n'));
}

void DuplicateFinderWidget::addFolder()
{
    Dialogs::instance().openFolder(this, Velmora::tr("Select folder"), paths().left,
                                   [self = QPointer(this)](const QString &folder) {
                                       if (self)
                                           self->m_more->add({folder, false});
                                   });
}

} // namespace velmora
