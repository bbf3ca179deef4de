#include "folder/git/git_compare_widget.h"

#include "folder/git/git_bar.h"
#include "folder/git/git_commit_list.h"
#include "folder/git/git_filter_bar.h"
#include "folder/git/git_opener.h"
#include "folder/git/git_state_box.h"
#include "folder/git/git_view.h"
#include "folder/git/git_words.h"
#include "session/dialogs.h"
#include "session/frame/notice_bar.h"
#include "session/frame/notice_card.h"
#include "session/frame/path_edit.h"
#include "session/frame/paths_bar.h"
#include "session/frame/status_line.h"
#include "session/list/steps.h"
#include "session/list/tree_model.h"
#include "session/session_host.h"
#include "session/translate.h"
#include "vfs/git/git_place.h"

#include <QAction>
#include <QBoxLayout>
#include <QClipboard>
#include <QFileInfo>
#include <QGridLayout>
#include <QGuiApplication>
#include <QJsonObject>
#include <QLabel>
#include <QMenu>
#include <QSignalBlocker>
#include <QSplitter>

namespace velmora {

namespace {

const QString leftKey = QStringLiteral("left");
const QString rightKey = QStringLiteral("right");
const QString partingKey = QStringLiteral("sinceParting");
const QString untrackedKey = QStringLiteral("untracked");
const QString sameKey = QStringLiteral("unchanged");
const QString commitsKey = QStringLiteral("commits");

QList<PathsBar::Field> fields()
{
    return {{&SessionPaths::left, Velmora::tr("Repository:"),
             Velmora::tr("A folder of a Git repository, or a file in it"), Velmora::tr("Select a Git repository"),
             PathsBar::Field::Picks::Folder}};
}

std::unique_ptr<GitRowTree> noRows()
{
    return std::make_unique<GitRowTree>(std::make_shared<GitComparison>(), GitNodes());
}

} // namespace

GitCompareWidget::GitCompareWidget(SessionHost &host, QWidget *parent)
    : SessionWidget(host, parent),
      m_bar(new GitBar(this)),
      m_inputs(new PathsBar(fields())),
      m_left(new GitStateBox),
      m_right(new GitStateBox),
      m_notice(new NoticeBar(QStringLiteral("gitNotice"))),
      m_filterBar(new GitFilterBar),
      m_rows(new TreeModel(noRows(), this)),
      m_view(new GitView(*m_rows, this)),
      m_commits(new GitCommitList),
      m_splitter(new QSplitter(Qt::Vertical)),
      m_status(new StatusLine),
      m_opener(new GitOpener(host, this))
{
    m_counts = m_status->addFact(QStringLiteral("gitCounts"));
    buildLayout();
    connectBar();
    connectViews();
    showNothingYet();
}

GitCompareWidget::~GitCompareWidget() = default;

void GitCompareWidget::buildLayout()
{
    m_inputs->grid().addWidget(new QLabel(Velmora::tr("Left:")), 2, 0);
    m_inputs->grid().addWidget(makeStates(), 2, 1, 1, -1);
    m_splitter->addWidget(m_view);
    m_splitter->addWidget(m_commits);
    m_splitter->setStretchFactor(0, 3);
    m_splitter->setStretchFactor(1, 1);
    m_splitter->setChildrenCollapsible(false);
    constexpr int leastCommits = 90;
    m_commits->setMinimumHeight(leastCommits);
    m_splitter->setSizes({420, 150});
    auto *body = new QVBoxLayout;
    body->setContentsMargins(10, 8, 10, 6);
    body->setSpacing(6);
    body->addWidget(m_inputs);
    body->addWidget(m_notice);
    body->addWidget(m_filterBar);
    body->addWidget(m_splitter, 1);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_bar);
    column->addLayout(body, 1);
    column->addWidget(m_status);
    m_notice->clear();
    setFocusProxy(m_inputs);
}

QWidget *GitCompareWidget::makeStates()
{
    auto *states = new QWidget;
    auto *row = new QHBoxLayout(states);
    row->setContentsMargins(0, 0, 0, 0);
    m_left->setObjectName(QStringLiteral("gitLeft"));
    m_left->setAccessibleName(Velmora::tr("State on the left"));
    m_right->setObjectName(QStringLiteral("gitRight"));
    m_right->setAccessibleName(Velmora::tr("State on the right"));
    row->addWidget(m_left, 1);
    row->addSpacing(8);
    row->addWidget(new QLabel(Velmora::tr("Right:")));
    row->addWidget(m_right, 1);
    return states;
}

void GitCompareWidget::connectBar()
{
    const auto on = [this](QAction *action, auto slot) { connect(action, &QAction::triggered, this, slot); };
    on(m_bar->compare, &GitCompareWidget::onCompare);
    on(m_bar->cancel, &GitCompareWidget::onCancel);
    on(m_bar->swapSides, &GitCompareWidget::onSwapSides);
    on(m_bar->previousDifference, [this] { goToDifference(false); });
    on(m_bar->nextDifference, [this] { goToDifference(true); });
    for (QAction *action : {m_bar->sinceParting, m_bar->untracked, m_bar->showSame}) {
        on(action, [this] {
            if (m_comparison)
                start();
        });
    }
    connect(m_bar->showCommits, &QAction::toggled, m_commits, &QWidget::setVisible);
    on(m_bar->expandAll, [this] { m_rows->setAllExpanded(-1, true); });
    on(m_bar->collapseAll, [this] { m_rows->setAllExpanded(-1, false); });
    on(m_bar->focusFilter, [this] { m_filterBar->focusWords(); });
    on(m_bar->openAsFolders, &GitCompareWidget::openAsFolders);
    on(m_bar->copyPaths, &GitCompareWidget::copyPaths);
    on(m_bar->open, [this] { openNode(m_view->currentNode()); });
    on(m_bar->openAsText,
       [this] { openNode(m_view->currentNode(), host().kindFor(SessionHost::Purpose::CompareTexts)); });
    on(m_bar->openAsBytes,
       [this] { openNode(m_view->currentNode(), host().kindFor(SessionHost::Purpose::CompareBytes)); });
}

void GitCompareWidget::connectViews()
{
    connect(m_inputs, &PathsBar::submitted, this, &GitCompareWidget::start);
    for (const Side side : bothSides) {
        connect(&box(side), &GitStateBox::submitted, this, &GitCompareWidget::start);
        connect(&box(side), &GitStateBox::folderWanted, this, [this, side] { browse(side); });
    }
    connect(m_notice, &NoticeBar::actionWanted, this, &GitCompareWidget::backToSides);
    connect(m_filterBar, &GitFilterBar::wordsChanged, m_rows, &TreeModel::setFilter);
    connect(m_filterBar, &GitFilterBar::statusesChanged, this, &GitCompareWidget::filterStatuses);
    connect(m_filterBar, &GitFilterBar::leaveWanted, m_view, qOverload<>(&QWidget::setFocus));
    connect(m_view, &TreeView::openWanted, this,
            [this](const QModelIndex &index) { openNode(m_rows->nodeAt(index.row())); });
    connect(m_view, &TreeView::copyWanted, this, &GitCompareWidget::copyPaths);
    connect(m_view, &TreeView::contextMenuWanted, this, &GitCompareWidget::showMenu);
    connect(m_commits, &GitCommitList::wanted, this, &GitCompareWidget::showCommit);
    connect(m_opener, &GitOpener::failed, this, [this](const QString &message) { m_status->showFailure(message); });
    connect(&m_runner, &Runner::runningChanged, this, &GitCompareWidget::showRunning);
    connect(&m_details, &Runner::runningChanged, this, &GitCompareWidget::showRunning);
}

// Inputs --------------------------------------------------------------------------------------------------------------

SessionPaths GitCompareWidget::paths() const
{
    SessionPaths paths = m_inputs->paths();
    if (!m_right->isBlank() && m_right->state().kind == GitSide::Kind::Folder)
        paths.right = m_right->state().name;
    return paths;
}

void GitCompareWidget::setPaths(const SessionPaths &paths)
{
    m_inputs->setPaths({paths.left, {}, {}});
    if (!paths.right.isEmpty())
        m_right->setState({GitSide::Kind::Folder, QFileInfo(paths.right).absoluteFilePath()});
}

QJsonObject GitCompareWidget::options() const
{
    QJsonObject options;
    options.insert(leftKey, gitSideText(request().sides.left)); // what stands for a blank one is shown from the start
    if (!m_right->isBlank() && m_right->state().kind != GitSide::Kind::Folder) // which is one of the paths
        options.insert(rightKey, gitSideText(m_right->state()));
    options.insert(partingKey, m_bar->sinceParting->isChecked());
    options.insert(untrackedKey, m_bar->untracked->isChecked());
    options.insert(sameKey, m_bar->showSame->isChecked());
    options.insert(commitsKey, m_bar->showCommits->isChecked());
    return options;
}

void GitCompareWidget::setOptions(const QJsonObject &options)
{
    for (const Side side : bothSides) {
        const QString text = options.value(side == Side::Left ? leftKey : rightKey).toString();
        if (!text.isEmpty())
            box(side).setState(gitSideOf(text));
    }
    const auto take = [&options](QAction *action, const QString &key) {
        action->setChecked(options.value(key).toBool(action->isChecked()));
    };
    take(m_bar->sinceParting, partingKey);
    take(m_bar->untracked, untrackedKey);
    take(m_bar->showSame, sameKey);
    take(m_bar->showCommits, commitsKey);
}

void GitCompareWidget::dropPaths(const QStringList &paths, QPoint position)
{
    if (paths.isEmpty())
        return;
    const QWidget *under = childAt(position);
    const QFileInfo dropped(paths.first());
    for (const Side side : bothSides) {
        if (under && (under == &box(side) || box(side).isAncestorOf(under)) && dropped.isDir()) {
            box(side).setState({GitSide::Kind::Folder, dropped.absoluteFilePath()});
            start();
            return;
        }
    }
    m_inputs->setPaths({paths.first(), {}, {}});
    start();
}

void GitCompareWidget::browse(Side side)
{
    const GitSide now = box(side).state();
    Dialogs::instance().openFolder(
        this, side == Side::Left ? Velmora::tr("Select left folder") : Velmora::tr("Select right folder"),
        now.kind == GitSide::Kind::Folder ? now.name : paths().left, [this, side](const QString &path) {
            box(side).setState({GitSide::Kind::Folder, path});
            start();
        });
}

void GitCompareWidget::onSwapSides()
{
    const GitSide left = m_left->state();
    const bool wasBlank = m_left->isBlank() && m_right->isBlank();
    m_left->setState(m_right->state());
    m_right->setState(left);
    if (!wasBlank)
        start();
}

void GitCompareWidget::onCancel()
{
    m_runner.cancel();
    m_details.cancel();
}

// Commands ------------------------------------------------------------------------------------------------------------

void GitCompareWidget::openNode(qint32 node, const QString &kind)
{
    if (node < 0 || !m_tree)
        return;
    const GitChange *change = m_tree->change(node);
    if (!change) {
        m_rows->setExpanded(m_rows->rowOf(node), !m_rows->isExpanded(node));
        return;
    }
    m_opener->open(m_comparison, *change, kind);
    for (const Side side : bothSides) {
        const GitSide::Kind state = m_comparison->states[side].side.kind;
        if (state == GitSide::Kind::WorkTree || state == GitSide::Kind::Folder)
            m_mayBeChanged = true;
    }
}

QString GitCompareWidget::folderOf(Side side) const
{
    const GitState &state = m_comparison->states[side];
    const QString &repository = m_comparison->repository.place();
    if (state.side.kind == GitSide::Kind::Folder)
        return state.side.name;
    if (state.side.kind == GitSide::Kind::WorkTree)
        return repository;
    // Where the two parted has no name of its own, and "v1:docs" is one tree of many.
    const bool isNamed = state.side.kind == GitSide::Kind::Index ||
                         (!state.side.name.contains(u':') && !(side == Side::Left && m_bar->sinceParting->isChecked()));
    const QByteArray &name = state.commit.isEmpty() ? state.tree : state.commit;
    return gitPlaceText(
        {isNamed ? state.side : GitSide{GitSide::Kind::Revision, QString::fromLatin1(name)}, repository});
}

void GitCompareWidget::openAsFolders()
{
    if (m_comparison)
        host().openSession(host().kindFor(SessionHost::Purpose::CompareFolders),
                           {folderOf(Side::Left), folderOf(Side::Right), {}});
}

void GitCompareWidget::showEvent(QShowEvent *event)
{
    SessionWidget::showEvent(event);
    if (m_mayBeChanged && !m_commit && !m_runner.isRunning())
        compare(request());
    m_mayBeChanged = false;
}

void GitCompareWidget::goToPath(const QString &path)
{
    for (qint32 node = 0; node < m_tree->count(); ++node) {
        if (m_tree->node(node).path == path) {
            m_view->goToNode(node);
            return;
        }
    }
    if (m_rows->rowCount() > 0)
        m_view->goToRow(0);
}

void GitCompareWidget::goToDifference(bool forward)
{
    if (!m_tree)
        return;
    const qint32 found = stepTo(m_view->currentNode(), m_tree->count(), forward, [this](qint32 node) {
        const GitChange *change = m_tree->change(node);
        return change && change->status != GitStatus::Same && m_tree->isShown(node);
    });
    m_view->goToNode(found);
}

void GitCompareWidget::filterStatuses()
{
    if (!m_tree)
        return;
    m_tree->setStatuses(m_filterBar->statuses());
    m_rows->update();
}

void GitCompareWidget::copyPaths()
{
    QStringList lines;
    const QList<qint32> nodes = m_view->selectedNodes();
    for (const qint32 node : nodes)
        lines.append(m_tree->node(node).path);
    if (!lines.isEmpty())
        QGuiApplication::clipboard()->setText(lines.join(u'\n'));
}

void GitCompareWidget::showMenu(const QModelIndex &index, QPoint global)
{
    const qint32 node = m_rows->nodeAt(index.row());
    if (node < 0)
        return;
    const bool isFile = m_tree->change(node) != nullptr;
    QMenu menu(this);
    if (isFile) {
        menu.addActions({m_bar->open, m_bar->openAsText, m_bar->openAsBytes});
        menu.addSeparator();
    }
    menu.addActions({m_bar->openAsFolders, m_bar->copyPaths});
    menu.addSeparator();
    menu.addActions({m_bar->expandAll, m_bar->collapseAll});
    menu.exec(global);
}

void GitCompareWidget::refreshTheme()
{
    m_bar->refreshTheme();
    m_inputs->refreshTheme();
    m_notice->refreshTheme();
    m_status->refreshTheme();
    m_view->refreshTheme();
    m_rows->refresh();
}

} // namespace velmora
