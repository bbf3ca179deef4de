#include "folder/browse/archive_view.h"

#include "folder/browse/preview_pane.h"
#include "folder/browse/problem_rows.h"
#include "session/frame/notice_card.h"
#include "session/list/tree_view.h"
#include "session/translate.h"

#include <QApplication>
#include <QBoxLayout>
#include <QHeaderView>
#include <QLineEdit>
#include <QSplitter>

#include <algorithm>

namespace velmora {

ArchiveView::ArchiveView(QWidget *parent)
    : QWidget(parent),
      m_columns(new QSplitter),
      m_rows(new QSplitter(Qt::Vertical)),
      m_filter(new QLineEdit),
      m_entries(new TreeModel(std::make_unique<ArchiveRows>(nullptr), this)),
      m_tree(new TreeView(*m_entries)),
      m_preview(new PreviewPane),
      m_problemRows(new TreeModel(std::make_unique<ProblemRows>(QList<ArchiveProblem>()), this)),
      m_problems(new TreeView(*m_problemRows)),
      m_notice(new NoticeCard(this))
{
    m_columns->addWidget(makeTree());
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
    setFocusProxy(m_tree);
    m_rows->hide();
}

// The trees tell of their rows as they go, and children outlive members.
ArchiveView::~ArchiveView()
{
    m_tree->disconnect(this);
    m_problems->disconnect(this);
}

QWidget *ArchiveView::makeTree()
{
    auto *part = new QWidget;
    auto *column = new QVBoxLayout(part);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(6);
    m_filter->setObjectName(QStringLiteral("archiveFilter"));
    m_filter->setPlaceholderText(Velmora::tr("Words in names"));
    m_filter->setToolTip(Velmora::tr("Shows the entries whose names hold all of these words (Ctrl+F)"));
    m_filter->setClearButtonEnabled(true);
    m_tree->setObjectName(QStringLiteral("archiveTree"));
    m_tree->setAccessibleName(Velmora::tr("Entries of the archive"));
    m_tree->setFrameShape(QFrame::StyledPanel);
    m_tree->installEventFilter(this);
    column->addWidget(m_filter);
    column->addWidget(m_tree, 1);
    placeColumns();
    return part;
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
    connect(m_filter, &QLineEdit::textChanged, m_entries, &TreeModel::setFilter);
    connect(m_filter, &QLineEdit::returnPressed, m_tree, qOverload<>(&QWidget::setFocus));
    connect(m_tree, &TreeView::placeChanged, this, [this] {
        m_preview->showRow(m_listing, m_tree->currentNode());
        Q_EMIT selectionChanged();
    });
    connect(m_tree, &TreeView::openWanted, this, [this](const QModelIndex &index) {
        const qint32 node = m_entries->nodeAt(index.row());
        if (m_listing->row(node).isFolder)
            m_entries->setExpanded(index.row(), !m_entries->isExpanded(node));
        else
            Q_EMIT openWanted();
    });
    connect(m_tree, &TreeView::contextMenuWanted, this,
            [this](const QModelIndex & /*index*/, QPoint global) { Q_EMIT contextMenuWanted(global); });
    connect(m_tree, &TreeView::copyWanted, this, &ArchiveView::copyWanted);
    connect(m_tree, &TreeView::otherPaneWanted, this, &ArchiveView::switchPane);
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

void ArchiveView::placeColumns()
{
    const auto width = [this](const QString &widest) { return fontMetrics().horizontalAdvance(widest) + 22; };
    const auto fit = [&](int column, const QString &widest) {
        const QString heading = m_entries->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
        m_widths[std::size_t(column)] = std::max(width(widest), width(heading));
        m_tree->horizontalHeader()->resizeSection(column, m_widths[std::size_t(column)]);
    };
    fit(ArchiveRows::Size, QStringLiteral("1000.0 MB"));
    fit(ArchiveRows::Packed, QStringLiteral("1000.0 MB"));
    fit(ArchiveRows::Ratio, QStringLiteral("100%"));
    fit(ArchiveRows::Modified, QStringLiteral("2000-00-00 00:00:00"));
    fit(ArchiveRows::Method, QStringLiteral("Deflate AES"));
    fit(ArchiveRows::Checksum, QStringLiteral("DDDDDDDD"));
    fit(ArchiveRows::Mode, QStringLiteral("drwxrwxrwx"));
}

void ArchiveView::fitColumns()
{
    constexpr int fewestLetters = 30; // of a name
    int room = m_tree->viewport()->width() - fewestLetters * fontMetrics().averageCharWidth();
    // What matters most is hidden last.
    for (const int column : {ArchiveRows::Size, ArchiveRows::Modified, ArchiveRows::Packed, ArchiveRows::Ratio,
                             ArchiveRows::Checksum, ArchiveRows::Method, ArchiveRows::Mode}) {
        const bool hasTexts = m_hasTexts[std::size_t(column)];
        const int width = m_widths[std::size_t(column)];
        m_tree->setColumnHidden(column, !hasTexts || room < width);
        room -= hasTexts ? width : 0;
    }
}

void ArchiveView::setListing(const SharedListing &listing)
{
    m_listing = listing;
    m_rows->setVisible(listing != nullptr);
    if (listing)
        m_notice->clear();
    m_hasTexts = {};
    m_hasTexts[ArchiveRows::Size] = m_hasTexts[ArchiveRows::Modified] = true;
    auto rows = std::make_unique<ArchiveRows>(listing);
    for (qint32 row = 0; listing && row < listing->count(); ++row) {
        const ArchiveEntry *entry = listing->entry(row);
        if (!entry)
            continue;
        const bool isPacked = entry->packed >= 0;
        m_hasTexts[ArchiveRows::Packed] = m_hasTexts[ArchiveRows::Packed] || isPacked;
        m_hasTexts[ArchiveRows::Ratio] = m_hasTexts[ArchiveRows::Ratio] || isPacked;
        m_hasTexts[ArchiveRows::Method] = m_hasTexts[ArchiveRows::Method] || !entry->method.isEmpty();
        m_hasTexts[ArchiveRows::Checksum] = m_hasTexts[ArchiveRows::Checksum] || entry->crc;
        m_hasTexts[ArchiveRows::Mode] = m_hasTexts[ArchiveRows::Mode] || entry->mode;
    }
    // The one folder that a release is usually in says nothing by itself.
    if (listing && listing->count() > 1 && rows->end(0) == listing->count())
        rows->setExpanded(0, true);
    m_entries->setTree(std::move(rows));
    fitColumns();
    m_tree->goToRow(0);
    m_preview->showRow(listing, m_tree->currentNode());
}

void ArchiveView::takeTest(const ArchiveTest &test)
{
    auto rows = std::make_unique<ArchiveRows>(m_listing);
    rows->takeTest(test);
    for (qint32 row = 0; row < rows->count(); ++row)
        rows->setExpanded(row, m_entries->rowTree().isExpanded(row));
    const qint32 current = m_tree->currentNode();
    m_entries->setTree(std::move(rows));
    m_tree->goToNode(current);
    m_hasTexts[ArchiveRows::Checksum] = m_hasTexts[ArchiveRows::Checksum] || !test.checksums.empty();
    fitColumns();
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
    return m_tree->currentNode();
}

QList<qint32> ArchiveView::selectedRows() const
{
    return m_tree->selectedNodes();
}

void ArchiveView::goToRow(qint32 row)
{
    if (row >= 0)
        m_tree->goToNode(row);
}

void ArchiveView::setAllExpanded(bool expanded)
{
    m_entries->setAllExpanded(-1, expanded);
}

void ArchiveView::focusFilter()
{
    m_filter->setFocus(Qt::ShortcutFocusReason);
    m_filter->selectAll();
}

void ArchiveView::switchPane()
{
    const bool isInPreview = m_preview->isAncestorOf(QApplication::focusWidget());
    (isInPreview ? static_cast<QWidget *>(m_tree) : m_preview)->setFocus(Qt::OtherFocusReason);
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

bool ArchiveView::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Resize && watched == m_tree)
        fitColumns();
    return QWidget::eventFilter(watched, event);
}

} // namespace velmora
