#include "folder/compare/folder_view.h"

#include "core/settings_store.h"
#include "folder/compare/folder_compare_side_pane.h"
#include "folder/compare/folder_comparison.h"
#include "folder/compare/tree_line_tree_widget.h"
#include "session/frame/notice_card.h"
#include "session/translate.h"

#include <QBoxLayout>
#include <QHeaderView>
#include <QItemSelection>
#include <QScrollBar>
#include <QSplitter>
#include <QToolButton>
#include <QVariantList>

namespace velmora {

namespace {

constexpr int signWidth = 44;
constexpr int mostKept = 1000; ///< selected entries that are found again; nobody looks for more one by one

QString columnsKey()
{
    return QStringLiteral("FolderCompare/columnWidths");
}

QString versionsKey()
{
    return QStringLiteral("FolderCompare/showVersions");
}

/// The columns whose widths a person sets, each as the pair of the two sides.
constexpr std::pair<FolderColumn, FolderColumn> sizedColumns[] = {
    {FolderColumn::LeftSize, FolderColumn::RightSize},
    {FolderColumn::LeftTime, FolderColumn::RightTime},
    {FolderColumn::LeftVersion, FolderColumn::RightVersion},
};
constexpr std::size_t versions = 2;

/// The same from the one that stays longest where room is scarce: versions stay, as somebody asked for them.
constexpr std::size_t byWeight[] = {versions, 0, 1};

} // namespace

FolderView::FolderView(FolderComparison &comparison, QWidget *parent)
    : QWidget(parent),
      m_comparison(comparison),
      m_rows(new FolderRowsModel(comparison, this)),
      m_left(new TreeLineTreeWidget(
          *m_rows, {FolderColumn::LeftName, FolderColumn::LeftSize, FolderColumn::LeftTime, FolderColumn::LeftVersion},
          this)),
      m_centre(new TreeLineTreeWidget(*m_rows, {FolderColumn::Sign}, this)),
      m_right(new TreeLineTreeWidget(
          *m_rows,
          {FolderColumn::RightName, FolderColumn::RightSize, FolderColumn::RightTime, FolderColumn::RightVersion},
          this)),
      m_leftSide(new FolderCompareSidePane(Side::Left, this)),
      m_rightSide(new FolderCompareSidePane(Side::Right, this)),
      m_notice(new NoticeCard(this)),
      m_splitter(new QSplitter(Qt::Horizontal, this))
{
    m_left->setObjectName(QStringLiteral("folderSideLeft"));
    m_centre->setObjectName(QStringLiteral("folderSideCenter"));
    m_right->setObjectName(QStringLiteral("folderSideRight"));
    m_left->setAccessibleName(Velmora::tr("Left folder"));
    m_centre->setAccessibleName(Velmora::tr("Status"));
    m_right->setAccessibleName(Velmora::tr("Right folder"));
    buildLayout();

    QItemSelectionModel *const selection = m_left->selectionModel();
    for (TreeLineTreeWidget *pane : {m_centre, m_right}) {
        QItemSelectionModel *const own = pane->selectionModel();
        pane->setSelectionModel(selection);
        delete own;
    }
    for (TreeLineTreeWidget *pane : panes()) {
        pane->keepHeadersOutOfSelection();
        connectPane(*pane);
    }
    connect(selection, &QItemSelectionModel::selectionChanged, this, &FolderView::selectionChanged);
    connect(m_rows, &QAbstractItemModel::modelAboutToBeReset, this, &FolderView::keepPlace);
    connect(m_rows, &QAbstractItemModel::modelReset, this, &FolderView::restorePlace);
    // A load brings the names of its top level first, and what was current may be deeper.
    connect(&comparison, &FolderComparison::treeChanged, this, [this] {
        if (m_keptNames && !m_keptNames->current.isEmpty() && currentNode() < 0)
            restoreNames();
    });
    connect(&comparison, &FolderComparison::loadFinished, this, [this] {
        m_keptNames.reset();
        // The keyboard needs a row to start from; nothing is selected by that.
        if (currentNode() < 0 && m_rows->rowCount() > 0)
            m_left->selectionModel()->setCurrentIndex(m_rows->index(0, activePane().firstColumn()),
                                                      QItemSelectionModel::NoUpdate);
    });
    connect(&comparison, &FolderComparison::treeAboutToBeReplaced, this, [this] {
        m_treeIsNew = true;
        if (m_keptNames && currentNode() < 0)
            return;
        NamedPlace place;
        const FolderTree &tree = m_comparison.tree();
        if (currentNode() >= 0)
            place.current = tree.item(currentNode()).name;
        for (const qint32 node : selectedNodes()) {
            if (place.selected.size() < mostKept)
                place.selected.append(tree.item(node).name);
        }
        place.scrolled = m_left->verticalScrollBar()->value();
        m_keptNames = place;
    });
    restoreColumns();
}

FolderView::~FolderView() = default;

void FolderView::orderFocus()
{
    QWidget *before = nullptr;
    for (FolderCompareSidePane *side : {m_leftSide, m_rightSide}) {
        for (QWidget *part : side->focusParts()) {
            if (before)
                setTabOrder(before, part);
            before = part;
        }
    }
    setTabOrder(before, m_left);
    setTabOrder(m_left, m_right);
}

void FolderView::buildLayout()
{
    const auto column = [this](QWidget *top, TreeLineTreeWidget *pane) {
        auto *widget = new QWidget(m_splitter);
        auto *layout = new QVBoxLayout(widget);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->setSpacing(0);
        layout->addWidget(top);
        layout->addWidget(pane, 1);
        m_splitter->addWidget(widget);
        return widget;
    };
    auto *centreTop = new QWidget(this);
    auto *swap = new QToolButton(centreTop);
    swap->setObjectName(QStringLiteral("swapSidesButton"));
    swap->setAutoRaise(true);
    swap->setText(QStringLiteral("⇄"));
    swap->setToolTip(Velmora::tr("Swap left and right sides"));
    swap->setAccessibleName(swap->toolTip());
    connect(swap, &QToolButton::clicked, this, &FolderView::swapWanted);
    auto *centreRow = new QHBoxLayout(centreTop);
    centreRow->setContentsMargins(0, 0, 0, 0);
    centreRow->addWidget(swap, 0, Qt::AlignCenter);
    const int topHeight = m_leftSide->sizeHint().height();
    for (QWidget *top : {static_cast<QWidget *>(m_leftSide), centreTop, static_cast<QWidget *>(m_rightSide)})
        top->setFixedHeight(topHeight);

    column(m_leftSide, m_left);
    column(centreTop, m_centre)->setFixedWidth(signWidth);
    column(m_rightSide, m_right);
    m_splitter->setChildrenCollapsible(false);
    m_splitter->setHandleWidth(1);
    m_splitter->setStretchFactor(0, 1);
    m_splitter->setStretchFactor(1, 0);
    m_splitter->setStretchFactor(2, 1);
    m_splitter->setSizes({10000, signWidth, 10000});

    auto *whole = new QVBoxLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->addWidget(m_splitter);
    setFocusProxy(m_left);

    // One scroll bar, at the right edge; the others follow it.
    m_left->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_centre->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_right->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    m_centre->setFocusPolicy(Qt::NoFocus);
    orderFocus();
}

void FolderView::connectPane(TreeLineTreeWidget &pane)
{
    connect(&pane, &TreeLineTreeWidget::openWanted, this, &FolderView::openWanted);
    connect(&pane, &TreeLineTreeWidget::upWanted, this, &FolderView::upWanted);
    connect(&pane, &TreeLineTreeWidget::contextMenuWanted, this, &FolderView::contextMenuWanted);
    connect(&pane, &TreeLineTreeWidget::copyWanted, this,
            [this, &pane] { Q_EMIT pathsWanted(&pane != m_right ? Side::Left : Side::Right); });
    connect(&pane, &TreeLineTreeWidget::otherPaneWanted, this, [this, &pane] {
        TreeLineTreeWidget *const other = &pane == m_right ? m_left : m_right;
        other->setFocus(Qt::TabFocusReason);
    });
    pane.installEventFilter(this);
    connect(pane.verticalScrollBar(), &QScrollBar::valueChanged, this, [this](int value) {
        for (TreeLineTreeWidget *other : panes())
            other->verticalScrollBar()->setValue(value);
    });
    connect(pane.horizontalHeader(), &QHeaderView::sectionResized, this,
            [this](int section, int /*before*/, int width) { columnResized(section, width); });
}

bool FolderView::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FocusIn && watched != m_centre)
        m_rightIsActive = watched == m_right;
    else if (event->type() == QEvent::Resize && watched != m_centre)
        fitColumns();
    return QWidget::eventFilter(watched, event);
}

TreeLineTreeWidget &FolderView::activePane()
{
    return m_rightIsActive ? *m_right : *m_left;
}

// Columns -------------------------------------------------------------------------------------------------------------

void FolderView::restoreColumns()
{
    QFont bold = font(); // as newer times stand
    bold.setBold(true);
    const QFontMetrics metrics(bold);
    const int usual[] = {
        metrics.horizontalAdvance(QStringLiteral("9,999,999,999")) + 14,
        metrics.horizontalAdvance(QLocale().toString(QDateTime({2028, 12, 28}, {22, 28}), QLocale::ShortFormat)) + 24,
        metrics.horizontalAdvance(QStringLiteral("10.0.19041.1234")) + 14};
    const QVariantList stored = SessionSettings().value(columnsKey()).toList();
    m_sharingWidth = true;
    for (std::size_t i = 0; i < std::size(sizedColumns); ++i) {
        const int width = stored.value(qsizetype(i)).toInt();
        const int used = width > 20 && width < 2000 ? width : usual[i];
        m_widths[i] = used;
        m_left->setColumnWidth(int(sizedColumns[i].first), used);
        m_right->setColumnWidth(int(sizedColumns[i].second), used);
    }
    m_sharingWidth = false;
    m_showsVersions = SessionSettings().value(versionsKey()).toBool();
    m_left->setColumnHidden(int(FolderColumn::LeftVersion), !m_showsVersions);
    m_right->setColumnHidden(int(FolderColumn::RightVersion), !m_showsVersions);
}

void FolderView::setVersionsShown(bool shown)
{
    if (m_showsVersions == shown)
        return;
    m_showsVersions = shown;
    SessionSettings().setValue(versionsKey(), shown);
    fitColumns();
}

void FolderView::addHeadingAction(QAction *action)
{
    for (TreeLineTreeWidget *pane : {m_left, m_right}) {
        pane->horizontalHeader()->setContextMenuPolicy(Qt::ActionsContextMenu);
        pane->horizontalHeader()->addAction(action);
    }
}

void FolderView::columnResized(int section, int width)
{
    if (m_sharingWidth || width == 0)
        return;
    for (std::size_t i = 0; i < std::size(sizedColumns); ++i) {
        const auto [left, right] = sizedColumns[i];
        if (section != int(left) && section != int(right))
            continue;
        m_sharingWidth = true;
        m_left->setColumnWidth(int(left), width);
        m_right->setColumnWidth(int(right), width);
        m_sharingWidth = false;
        m_widths[i] = width;
        SessionSettings().setValue(columnsKey(), QVariantList(m_widths.begin(), m_widths.end()));
    }
}

void FolderView::fitColumns()
{
    constexpr int fewestLetters = 20;
    const int names = fewestLetters * fontMetrics().averageCharWidth();
    int room = std::min(m_left->width(), m_right->width() - m_right->verticalScrollBar()->sizeHint().width()) - names;
    for (const std::size_t i : byWeight) {
        const bool isUnwanted = i == versions && !m_showsVersions;
        const bool isHidden = i == versions ? isUnwanted : room < m_widths[i];
        room -= isUnwanted ? 0 : m_widths[i];
        const auto [left, right] = sizedColumns[i];
        m_left->setColumnHidden(int(left), isHidden);
        m_right->setColumnHidden(int(right), isHidden);
    }
}

// Places --------------------------------------------------------------------------------------------------------------

QList<qint32> FolderView::selectedNodes() const
{
    return m_left->selectedNodes();
}

qint32 FolderView::currentNode() const
{
    return m_left->currentNode();
}

void FolderView::goToNode(qint32 node)
{
    activePane().goToNode(node);
}

void FolderView::selectNames(const QStringList &names)
{
    std::vector<qint32> nodes;
    for (const QString &name : names) {
        if (const qint32 node = m_comparison.tree().find(name); node >= 0)
            nodes.push_back(node);
    }
    m_left->selectRows(m_rows->rowsOf(nodes));
}

void FolderView::keepPlace()
{
    // The numbers of a tree that is gone mean nothing.
    m_kept = m_treeIsNew ? TreePlace() : m_left->place();
}

void FolderView::restorePlace()
{
    if (std::exchange(m_treeIsNew, false))
        restoreNames();
    else
        activePane().setPlace(m_kept);
}

void FolderView::restoreNames()
{
    const NamedPlace place = m_keptNames.value_or(NamedPlace());
    selectNames(place.selected);
    const qint32 node = m_comparison.tree().find(place.current);
    const int row = m_rows->rowOf(node);
    m_left->verticalScrollBar()->setValue(place.scrolled);
    if (row < 0 || m_rows->nodeAt(row) != node)
        return;
    const QModelIndex current = m_rows->index(row, activePane().firstColumn());
    m_left->selectionModel()->setCurrentIndex(current, QItemSelectionModel::NoUpdate);
    activePane().scrollTo(current);
}

Side FolderView::sideAt(QPoint place) const
{
    return place.x() < m_centre->mapTo(this, QPoint()).x() + m_centre->width() / 2 ? Side::Left : Side::Right;
}

// Look ----------------------------------------------------------------------------------------------------------------

void FolderView::placeNotice()
{
    const int top = m_left->mapTo(this, QPoint()).y() + m_left->horizontalHeader()->height();
    m_notice->setRoom(QRect(0, top, width(), height() - top));
}

void FolderView::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    placeNotice();
}

void FolderView::refreshTheme()
{
    m_leftSide->refreshTheme();
    m_rightSide->refreshTheme();
    m_rows->refresh();
}

} // namespace velmora
