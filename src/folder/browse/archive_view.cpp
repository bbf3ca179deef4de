#include "folder/browse/archive_view.h"

#include "folder/browse/preview_pane.h"
#include "folder/browse/problem_rows.h"
#include "session/frame/notice_card.h"
#include "session/list/filtered_tree.h"
#include "session/list/tree_view.h"
#include "session/translate.h"

#include <QApplication>
#include <QBoxLayout>
#include <QHeaderView>
#include <QSplitter>

#include <algorithm>

namespace velmora {

ArchiveView::ArchiveView(QWidget *parent)
    : QWidget(parent),
      m_columns(new QSplitter),
      m_rows(new QSplitter(Qt::Vertical)),
      m_entries(new TreeModel(std::make_unique<ArchiveRows>(nullptr), this)),
      m_filtered(new FilteredTree(*m_entries, QStringLiteral("archive"))),
      m_tree(m_filtered->tree()),
      m_preview(new PreviewPane),
      m_problemRows(new TreeModel(std::make_unique<ProblemRows>(QList<ArchiveProblem>()), this)),
      m_problems(new TreeView(*m_problemRows)),
      m_notice(new NoticeCard(this))
{
    makeTree();
    m_columns->addWidget(m_filtered);
    m_columns->addWidget(m_preview);
    m_columns->setChildrenCollapsible(false);
    m_columns->setSizes({6000, 4000});
    m_rows->addWidget(m_columns);
    makeProblems();
    m_rows->setChildrenCollapsible(false);
    m_rows->setStretchFactor(0, 1);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(m_rows);
    connectTree();
    setFocusProxy(m_filtered);
    m_rows->hide();
}

// The trees tell of their rows as they go, and children outlive members.
ArchiveView::~ArchiveView()
{
    m_tree.disconnect(this);
    m_problems->disconnect(this);
}

void ArchiveView::makeTree()
{
    m_filtered->setFilterHint(Velmora::tr("Shows the entries whose names hold all of these words (Ctrl+F)"));
    m_tree.setAccessibleName(Velmora::tr("Entries of the archive"));
    m_filtered->setColumns({{ArchiveRows::Size, QStringLiteral("1000.0 MB")},
                            {ArchiveRows::Modified, QStringLiteral("2000-00-00 00:00:00")},
                            {ArchiveRows::Packed, QStringLiteral("1000.0 MB")},
                            {ArchiveRows::Ratio, QStringLiteral("100%")},
                            {ArchiveRows::Checksum, QStringLiteral("DDDDDDDD")},
                            {ArchiveRows::Method, QStringLiteral("Deflate AES")},
                            {ArchiveRows::Mode, QStringLiteral("drwxrwxrwx")}},
                           30);
}

void ArchiveView::makeProblems()
{
    m_problems->setObjectName(QStringLiteral("archiveProblems"));
    m_problems->setAccessibleName(Velmora::tr("What is missing or damaged"));
    m_problems->setFrameShape(QFrame::StyledPanel);
    m_problems->setSelectionMode(QAbstractItemView::SingleSelection);
    m_problems->hide();
    m_rows->addWidget(m_problems);
}

void ArchiveView::connectTree()
{
    connect(&m_tree, &TreeView::placeChanged, this, [this] {
        m_preview->showRow(m_listing, m_tree.currentNode());
        Q_EMIT selectionChanged();
    });
    connect(m_filtered, &FilteredTree::fileOpened, this, &ArchiveView::openWanted);
    connect(&m_tree, &TreeView::contextMenuWanted, this,
            [this](const QModelIndex & /*index*/, QPoint global) { Q_EMIT contextMenuWanted(global); });
    connect(&m_tree, &TreeView::copyWanted, this, &ArchiveView::copyWanted);
    connect(&m_tree, &TreeView::otherPaneWanted, this, &ArchiveView::switchPane);
    connect(m_preview, &PreviewPane::passwordWanted, this, &ArchiveView::passwordWanted);
    const auto showProblem = [this] {
        const qint32 problem = m_problems->currentNode();
        if (problem >= 0)
            goToRow(m_listing->find(static_cast<const ProblemRows &>(m_problemRows->rowTree()).problem(problem).path));
    };
    connect(m_problems, &TreeView::openWanted, this, showProblem);
    connect(m_problems, &TreeView::placeChanged, this, [this, showProblem] {
        if (m_problems->hasFocus())
            showProblem();
    });
}

void ArchiveView::setListing(const SharedListing &listing)
{
    m_listing = listing;
    m_rows->setVisible(listing != nullptr);
    if (listing)
        m_notice->clear();
    showUsedColumns();
    auto rows = std::make_unique<ArchiveRows>(listing);
    // The one folder that a release is usually in says nothing by itself.
    if (listing && listing->count() > 1 && rows->end(0) == listing->count())
        rows->setExpanded(0, true);
    m_entries->setTree(std::move(rows));
    m_tree.goToRow(0);
    m_preview->showRow(listing, m_tree.currentNode());
}

void ArchiveView::showUsedColumns()
{
    bool hasPacked = false;
    bool hasMethod = false;
    bool hasChecksum = false;
    bool hasMode = false;
    for (qint32 row = 0; m_listing && row < m_listing->count(); ++row) {
        const ArchiveEntry *entry = m_listing->entry(row);
        if (!entry)
            continue;
        hasPacked = hasPacked || entry->packed >= 0;
        hasMethod = hasMethod || !entry->method.isEmpty();
        hasChecksum = hasChecksum || entry->crc;
        hasMode = hasMode || entry->mode;
    }
    m_filtered->setColumnUsed(ArchiveRows::Packed, hasPacked);
    m_filtered->setColumnUsed(ArchiveRows::Ratio, hasPacked);
    m_filtered->setColumnUsed(ArchiveRows::Method, hasMethod);
    m_filtered->setColumnUsed(ArchiveRows::Checksum, hasChecksum);
    m_filtered->setColumnUsed(ArchiveRows::Mode, hasMode);
}

void ArchiveView::takeTest(const ArchiveTest &test)
{
    auto rows = std::make_unique<ArchiveRows>(m_listing);
    rows->takeTest(test);
    for (qint32 row = 0; row < rows->count(); ++row)
        rows->setExpanded(row, m_entries->rowTree().isExpanded(row));
    const qint32 current = m_tree.currentNode();
    m_entries->setTree(std::move(rows));
    m_tree.goToNode(current);
    if (!test.checksums.empty())
        m_filtered->setColumnUsed(ArchiveRows::Checksum, true);
}

void ArchiveView::setProblems(const QList<ArchiveProblem> &problems)
{
    const bool wasHidden = m_problems->isHidden();
    m_problemRows->setTree(std::make_unique<ProblemRows>(problems));
    m_problems->setVisible(!problems.isEmpty());
    m_problems->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
    if (wasHidden && !problems.isEmpty()) {
        const int rows = int(std::clamp<qsizetype>(problems.size(), 2, 6)) + 1;
        const int needed = rows * (m_problems->verticalHeader()->defaultSectionSize() + 1) + 8;
        m_rows->setSizes({std::max(height() - needed, needed), needed});
    }
}

void ArchiveView::setNotice(const QString &title, const QString &text)
{
    m_notice->tell({title, text});
    m_notice->place();
}

qint32 ArchiveView::currentRow() const
{
    return m_tree.currentNode();
}

QList<qint32> ArchiveView::selectedRows() const
{
    return m_tree.selectedNodes();
}

void ArchiveView::goToRow(qint32 row)
{
    if (row >= 0)
        m_tree.goToNode(row);
}

void ArchiveView::setAllExpanded(bool expanded)
{
    m_entries->setAllExpanded(-1, expanded);
}

void ArchiveView::focusFilter()
{
    m_filtered->focusFilter();
}

void ArchiveView::switchPane()
{
    const bool isInPreview = m_preview->isAncestorOf(QApplication::focusWidget());
    (isInPreview ? static_cast<QWidget *>(&m_tree) : m_preview)->setFocus(Qt::OtherFocusReason);
}

void ArchiveView::refreshTheme()
{
    m_entries->refresh();
    m_problemRows->refresh();
    m_preview->refreshTheme();
    m_notice->refresh();
}

void ArchiveView::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    constexpr int wideInLetters = 110; // room for a tree and a text beside each other
    m_columns->setOrientation(width() >= wideInLetters * fontMetrics().averageCharWidth() ? Qt::Horizontal
                                                                                          : Qt::Vertical);
    m_notice->place();
}

} // namespace velmora
