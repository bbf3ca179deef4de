#include "folder/usage/usage_view.h"

#include "folder/usage/largest_rows.h"
#include "folder/usage/share_percent_delegate.h"
#include "folder/usage/usage_map.h"
#include "folder/usage/usage_place.h"
#include "session/frame/notice_card.h"
#include "session/list/filtered_tree.h"
#include "session/list/tree_view.h"
#include "session/translate.h"

#include <QBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QSplitter>
#include <QTabWidget>

namespace velmora {

UsageView::UsageView(QWidget *parent)
    : QWidget(parent),
      m_splitter(new QSplitter),
      m_rows(new TreeModel(std::make_unique<UsageRows>(nullptr), this)),
      m_filtered(new FilteredTree(*m_rows, QStringLiteral("usage"))),
      m_tree(m_filtered->tree()),
      m_largestRows(new TreeModel(std::make_unique<LargestRows>(nullptr), this)),
      m_largest(new TreeView(*m_largestRows)),
      m_side(new QTabWidget),
      m_map(new UsageMap),
      m_notice(new NoticeCard(this))
{
    makeTree();
    m_splitter->addWidget(m_filtered);
    makeSide();
    m_splitter->addWidget(m_side);
    m_splitter->setChildrenCollapsible(false);
    m_splitter->setStretchFactor(0, 3);
    m_splitter->setStretchFactor(1, 2);
    m_splitter->setSizes({6000, 4000});
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(m_splitter);
    connectTree();
    setFocusProxy(m_filtered);
    m_splitter->hide();
}

// The trees tell of their rows as they go, and children outlive members.
UsageView::~UsageView()
{
    m_tree.disconnect(this);
    m_largest->disconnect(this);
}

void UsageView::makeTree()
{
    m_filtered->setFilterHint(Velmora::tr("Shows the files and folders whose names hold all of these words"));
    m_tree.setAccessibleName(Velmora::tr("Files and folders by size"));
    m_tree.setItemDelegateForColumn(UsageRows::Share, new SharePercentDelegate(*m_rows, &m_tree));
    m_tree.installEventFilter(this);
    m_filtered->setColumns({{UsageRows::Size, QStringLiteral("1000.0 MB")},
                            {UsageRows::Share, QStringLiteral("100.0% 100")},
                            {UsageRows::Growth, QStringLiteral("+1000.0 MB")},
                            {UsageRows::Files, QStringLiteral("100000")},
                            {UsageRows::Subfolders, QStringLiteral("10000")},
                            {UsageRows::OnDisk, QStringLiteral("1000.0 MB")}},
                           22);
}

void UsageView::makeSide()
{
    m_side->setObjectName(QStringLiteral("usageSide"));
    m_side->setDocumentMode(true);
    m_side->addTab(m_map, Velmora::tr("Map"));
    m_side->addTab(m_largest, Velmora::tr("Largest files"));
    m_map->installEventFilter(this);
    m_largest->setObjectName(QStringLiteral("largestFiles"));
    m_largest->setAccessibleName(Velmora::tr("Largest files"));
    m_largest->setSelectionMode(QAbstractItemView::SingleSelection);
    m_largest->installEventFilter(this);
    QHeaderView &header = *m_largest->horizontalHeader();
    header.resizeSection(LargestRows::Size, fontMetrics().horizontalAdvance(QStringLiteral("1000.0 MB")) + 24);
    header.setSectionResizeMode(LargestRows::Folder, QHeaderView::Stretch);
}

void UsageView::connectTree()
{
    connect(&m_tree, &TreeView::placeChanged, this, [this] { m_map->setCurrentNode(m_tree.currentNode()); });
    connect(m_map, &UsageMap::currentChanged, &m_tree, &TreeView::goToNode);
    connect(m_filtered, &FilteredTree::fileOpened, this, &UsageView::openWanted);
    connect(&m_tree, &TreeView::contextMenuWanted, this, [this](const QModelIndex &index, QPoint global) {
        if (index.isValid())
            Q_EMIT contextMenuWanted(global);
    });
    connect(m_map, &UsageMap::contextMenuWanted, this, &UsageView::contextMenuWanted);
    connect(m_largest, &TreeView::placeChanged, this, [this] {
        if (m_largest->hasFocus())
            showLargest();
    });
    connect(m_largest, &TreeView::openWanted, this, &UsageView::openWanted);
    connect(m_largest, &TreeView::contextMenuWanted, this, [this](const QModelIndex &index, QPoint global) {
        if (index.isValid())
            Q_EMIT contextMenuWanted(global);
    });
    for (const TreeView *view : {&m_tree, m_largest})
        connect(view, &TreeView::copyWanted, this, &UsageView::copyWanted);
}

void UsageView::setResult(const SharedUsage &result)
{
    const bool isAgain = m_result && result && m_result->usage.tree.rootPath() == result->usage.tree.rootPath();
    const UsagePlace place = isAgain ? UsagePlace(m_result->usage.tree, *m_rows, m_tree) : UsagePlace();
    m_result = result;
    m_largestIsActive = false;
    m_splitter->setVisible(result != nullptr);
    if (result)
        m_notice->clear();
    m_map->setResult(result);
    auto rows = std::make_unique<UsageRows>(result);
    if (isAgain)
        place.openIn(*rows, result->usage.tree);
    m_rows->setTree(std::move(rows));
    m_largestRows->setTree(std::make_unique<LargestRows>(result));
    m_filtered->setColumnUsed(UsageRows::Growth, result && !result->growth.empty());
    if (isAgain)
        m_tree.goToNode(place.currentIn(result->usage.tree));
    else
        m_tree.goToRow(0);
}

void UsageView::setColouring(UsageColouring colouring)
{
    m_map->setColouring(colouring);
}

void UsageView::setNotice(const QString &title, const QString &text)
{
    m_notice->tell({title, text});
    m_notice->place();
}

QString UsageView::largestPath() const
{
    const qint32 file = m_largest->currentNode();
    return file < 0 ? QString() : static_cast<const LargestRows &>(m_largestRows->rowTree()).path(file);
}

void UsageView::showLargest()
{
    if (const QString path = largestPath(); !path.isEmpty())
        goToNode(m_result->usage.tree.find(path));
}

qint32 UsageView::currentNode() const
{
    return m_tree.currentNode();
}

QStringList UsageView::selectedPaths() const
{
    if (m_largestIsActive)
        return largestPath().isEmpty() ? QStringList() : QStringList(largestPath());
    QStringList paths;
    qint32 end = 0;
    for (const qint32 node : m_tree.selectedNodes()) {
        if (node < end)
            continue;
        paths.append(m_result->usage.tree.path(node));
        end = m_result->usage.tree.node(node).end;
    }
    return paths;
}

void UsageView::goToNode(qint32 node)
{
    m_tree.goToNode(node);
}

void UsageView::zoomTo(qint32 node)
{
    m_side->setCurrentWidget(m_map);
    m_map->showFolder(node);
}

void UsageView::refreshTheme()
{
    m_rows->refresh();
    m_largestRows->refresh();
    m_map->refreshTheme();
    m_notice->refresh();
}

void UsageView::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    constexpr int wideInLetters = 140; // room for the columns of the tree and a map beside them
    m_splitter->setOrientation(width() >= wideInLetters * fontMetrics().averageCharWidth() ? Qt::Horizontal
                                                                                           : Qt::Vertical);
    m_notice->place();
}

bool UsageView::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FocusIn)
        m_largestIsActive = watched == m_largest;
    if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent *>(event)->matches(QKeySequence::Delete)) {
        Q_EMIT deleteWanted();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace velmora
