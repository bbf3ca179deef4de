#include "filetypes/table/table_compare_widget.h"

#include "filetypes/table/cell_finder.h"
#include "filetypes/table/row_card.h"
#include "filetypes/table/table_compare_bar.h"
#include "filetypes/table/table_grids.h"
#include "filetypes/table/table_inputs_bar.h"
#include "filetypes/table/table_remarks.h"
#include "filetypes/table/table_scene.h"
#include "session/fault_text.h"
#include "session/find/find_bar.h"
#include "session/frame/notice_bar.h"
#include "session/frame/pair_inputs.h"
#include "session/frame/path_edit.h"
#include "session/frame/status_line.h"
#include "session/translate.h"

#include <QBoxLayout>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QSplitter>

namespace velmora {

namespace {

Sides<PairInputs::Field> fields()
{
    const QString filter = Velmora::tr("CSV/TSV (*.csv *.tsv *.txt);;All Files (*)");
    return {{Velmora::tr("Left CSV/TSV file path..."), Velmora::tr("Select left file"), filter},
            {Velmora::tr("Right CSV/TSV file path..."), Velmora::tr("Select right file"), filter}};
}

bool isTabbed(const QString &path)
{
    return path.endsWith(QLatin1String(".tsv"), Qt::CaseInsensitive);
}

} // namespace

TableCompareWidget::TableCompareWidget(SessionHost &host, QWidget *parent)
    : SessionWidget(host, parent),
      m_bar(new TableCompareBar(this)),
      m_choices(new TableInputsBar(this)),
      m_inputs(new PairInputs(fields(), this)),
      m_remarks(new NoticeBar(QStringLiteral("remarksBar"), this)),
      m_proposal(new NoticeBar(QStringLiteral("proposalBar"), this)),
      m_duplicates(new NoticeBar(QStringLiteral("duplicatesBar"), this)),
      m_scene(new TableScene(this)),
      m_grids(new TableGrids(*m_scene, this)),
      m_card(new RowCard(*m_scene, this)),
      m_findBar(new FindBar({Velmora::tr("Find in the cells"), {}}, this)),
      m_finder(new CellFinder(*m_findBar, *m_scene, *m_grids, this)),
      m_status(new StatusLine(this)),
      m_position(m_status->addFact(QStringLiteral("differencePosition"))),
      m_columnFacts(m_status->addFact(QStringLiteral("columnFacts"))),
      m_encodings(m_status->addFact(QStringLiteral("encodingsLabel"))),
      m_reports(host, *this, Velmora::tr("Export table report"))
{
    buildLayout();
    connectBar();
    connect(m_inputs, &PairInputs::submitted, this, &TableCompareWidget::start);
    connect(m_grids, &TableGrids::contextMenuWanted, this, &TableCompareWidget::showMenu);
    connect(m_proposal, &NoticeBar::actionWanted, this, [this] {
        const TableDocument &document = *m_scene->document();
        if (!document.delimiterProposal.isNull())
            m_choices->setDelimiter(document.delimiterProposal);
        else
            m_choices->setKeys({{document.keyProposal, {}}});
        start();
    });
    connect(m_remarks, &NoticeBar::actionWanted, m_bar->columnsByName, &QAction::trigger);
    connect(&m_reports, &ReportSaver::failed, this, [this](const QString &message) { m_status->showFailure(message); });
    connect(&m_runner, &Runner::runningChanged, this, &TableCompareWidget::showRunning);
    connect(m_duplicates, &NoticeBar::actionWanted, this, &TableCompareWidget::openDuplicates);
    connect(m_grids, &TableGrids::columnMenuWanted, this, &TableCompareWidget::showColumnMenu);
    connect(m_grids, &TableGrids::currentRowChanged, this, [this] {
        if (m_bar->showCard->isChecked())
            m_card->showRow(m_grids->currentRow());
    });
    connect(m_scene, &TableScene::changed, this, [this] {
        if (m_bar->showCard->isChecked())
            m_card->showRow(m_grids->currentRow());
    });
    m_duplicates->setClosable(Velmora::tr("Close this remark"));
    m_duplicates->setAction(Velmora::tr("List..."), Velmora::tr("Show which rows have the same key"));
    m_remarks->setClosable(Velmora::tr("Close this remark"));
    m_proposal->setClosable(Velmora::tr("Close this remark"));
    m_index.reset(0);
    m_bar->exportReport->setEnabled(false);
    m_bar->chooseColumns->setEnabled(false);
    showNotice();
}

TableCompareWidget::~TableCompareWidget() = default;

void TableCompareWidget::buildLayout()
{
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(6, 2, 6, 2);
    column->setSpacing(2);
    m_head = new QBoxLayout(QBoxLayout::LeftToRight);
    m_head->setSpacing(0);
    m_head->addWidget(m_bar);
    m_head->addWidget(m_choices, 1);
    column->addLayout(m_head);
    column->addWidget(m_inputs);
    column->addWidget(m_remarks);
    column->addWidget(m_proposal);
    column->addWidget(m_duplicates);
    auto *views = new QSplitter(Qt::Vertical, this);
    views->setChildrenCollapsible(false);
    views->addWidget(m_grids);
    views->addWidget(m_card);
    views->setStretchFactor(0, 3);
    views->setStretchFactor(1, 2);
    m_card->hide();
    column->addWidget(views, 1);
    column->addWidget(m_findBar);
    column->addWidget(m_status);
    setFocusProxy(m_inputs);
}

/// The choices stand behind the commands where there is room, and else below: the key is too much used to be hidden.
void TableCompareWidget::resizeEvent(QResizeEvent *event)
{
    SessionWidget::resizeEvent(event);
    const bool fits = m_bar->sizeHint().width() + m_choices->sizeHint().width() <= contentsRect().width();
    m_head->setDirection(fits ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
}

void TableCompareWidget::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape && m_findBar->isVisible())
        m_finder->close();
    else
        SessionWidget::keyPressEvent(event);
}

void TableCompareWidget::connectBar()
{
    const auto on = [this](QAction *action, auto slot) { connect(action, &QAction::triggered, this, slot); };
    on(m_bar->compare, &TableCompareWidget::onCompare);
    on(m_bar->cancel, &TableCompareWidget::onCompare);
    on(m_bar->previousDifference, &TableCompareWidget::onPrevDiff);
    on(m_bar->nextDifference, &TableCompareWidget::onNextDiff);
    on(m_bar->showAll, &TableCompareWidget::onShowAll);
    on(m_bar->showDifferences, &TableCompareWidget::onShowDifferences);
    on(m_bar->showIdentical, &TableCompareWidget::onShowIdentical);
    on(m_bar->swapSides, &TableCompareWidget::onSwapSides);
    on(m_bar->exportReport, &TableCompareWidget::onExport);
    const auto onFind = [this](QAction *action, void (CellFinder::*slot)()) {
        connect(action, &QAction::triggered, m_finder, slot);
    };
    onFind(m_bar->find, &CellFinder::open);
    onFind(m_bar->findNext, &CellFinder::next);
    onFind(m_bar->findPrevious, &CellFinder::previous);
    on(m_bar->columnsByName, [this] { start(); });
    on(m_bar->copyRows, &TableCompareWidget::copyRows);
    on(m_bar->chooseColumns, &TableCompareWidget::openColumns);
    connect(m_bar->showCard, &QAction::toggled, this, [this](bool isShown) {
        m_card->showRow(isShown ? m_grids->currentRow() : -1);
        m_card->setVisible(isShown);
    });
    on(m_bar->switchPane, [this] { m_grids->focusOn(otherSide(m_grids->side())); });
}

SessionPaths TableCompareWidget::paths() const
{
    return m_inputs->paths();
}

void TableCompareWidget::setPaths(const SessionPaths &paths)
{
    m_inputs->setPaths(paths);
    if (isTabbed(paths.left) || isTabbed(paths.right))
        m_choices->setDelimiter(u'\t');
}

void TableCompareWidget::dropPaths(const QStringList &paths, QPoint)
{
    if (paths.isEmpty())
        return;
    const Side first =
        m_inputs->paths().left.isEmpty() || !m_inputs->paths().right.isEmpty() ? Side::Left : Side::Right;
    m_inputs->at(first).setPath(paths[0]);
    if (first == Side::Left && paths.size() > 1)
        m_inputs->at(Side::Right).setPath(paths[1]);
}

void TableCompareWidget::refreshTheme()
{
    m_bar->refreshTheme();
    m_inputs->refreshTheme();
    m_remarks->refreshTheme();
    m_proposal->refreshTheme();
    m_duplicates->refreshTheme();
    m_card->refreshTheme();
    m_grids->refreshTheme();
    m_findBar->refreshTheme();
    m_status->refreshTheme();
}

void TableCompareWidget::onBrowseLeft()
{
    m_inputs->browse(Side::Left);
}

void TableCompareWidget::onBrowseRight()
{
    m_inputs->browse(Side::Right);
}

void TableCompareWidget::onCompare()
{
    if (!m_runner.isRunning()) {
        start();
        return;
    }
    m_runner.cancel();
    m_status->showMessage(Velmora::tr("Cancelling..."));
}

void TableCompareWidget::start()
{
    const SessionPaths files = paths();
    if (files.left.isEmpty() || files.right.isEmpty())
        return;
    m_running = files;
    const TableRequest request{{files.left, files.right},         m_choices->delimiter(), m_choices->hasHeader(),
                               m_bar->columnsByName->isChecked(), m_choices->keys(),      m_columns};
    m_status->showMessage(Velmora::tr("Comparing..."));
    Q_EMIT comparisonStarted();
    m_runner.start([request](const CancelFlag &cancel,
                             Progress &progress) { return compareTableFiles(request, cancel, progress); },
                   [this](RunOutcome<TableResult> &&outcome) { takeOutcome(std::move(outcome)); },
                   [this](const ProgressState &state) { m_status->showProgress(state); });
}

void TableCompareWidget::takeOutcome(RunOutcome<TableResult> &&outcome)
{
    if (outcome.end == RunEnd::Failed)
        m_status->showFailure(faultText(outcome.fault, Velmora::tr("Not enough memory")));
    else if (outcome.end == RunEnd::Cancelled)
        m_status->showMessage(Velmora::tr("Compare cancelled"));
    else if (outcome.value->fault == TableResult::Fault::TooLarge)
        m_status->showFailure(Velmora::tr("File too large (limit %1 MB)").arg(tableSizeLimit >> 20));
    else if (outcome.value->fault == TableResult::Fault::NothingRead)
        m_status->showFailure(Velmora::tr("Cannot read file"));
    else
        showResult(outcome.value->document);
}

void TableCompareWidget::showResult(const std::shared_ptr<const TableDocument> &document)
{
    m_shown = m_running;
    m_choices->offerKeys(document->keyNames, document->keys);
    m_bar->exportReport->setEnabled(true);
    m_bar->chooseColumns->setEnabled(true);
    m_index.reset(qsizetype(document->differences.size()));
    m_scene->setDocument(document, arrangementOf(m_columns, document->alignment.columns, TableScene::columnLimit));
    m_grids->goToRow(-1);
    m_grids->fitColumns();
    showNotice();
    showRemarks(*document);
    showColumnFacts();
    m_status->showMessage(tableCounts(document->alignment));
    m_position->setText(Velmora::tr("Diff %1/%2").arg(0).arg(m_index.count()));
    m_encodings->setText(tableEncodings(*document));
    if (!m_pendingReport.isEmpty())
        writeReport(std::exchange(m_pendingReport, {}));
    Q_EMIT tabTitleChanged(
        Velmora::tr("%1 <-> %2").arg(QFileInfo(m_shown.left).fileName(), QFileInfo(m_shown.right).fileName()));
    Q_EMIT comparisonFinished(m_shown.left, m_shown.right);
}

void TableCompareWidget::showRunning()
{
    const bool running = m_runner.isRunning();
    m_bar->showRunning(running, m_runner.isCancelling());
    // Other tabs can be worked in meanwhile, so that the cursor waits in this one alone.
    if (running) {
        setCursor(Qt::BusyCursor);
        m_status->showProgress({});
    } else {
        unsetCursor();
        m_status->clearProgress();
        Q_EMIT readingEnded();
    }
}

void TableCompareWidget::onNextDiff()
{
    showDifference(m_index.next());
}

void TableCompareWidget::onPrevDiff()
{
    showDifference(m_index.previous());
}

void TableCompareWidget::showDifference(qsizetype index)
{
    if (index < 0)
        return;
    const qint32 row = m_scene->document()->differences[std::size_t(index)];
    m_grids->goToRow(row);
    // Who steps through differences is done with the paths: keys are for the rows.
    if (!m_grids->hasKeyboard())
        m_grids->focusOn(m_grids->side());
    const QString position = Velmora::tr("Diff %1/%2").arg(index + 1).arg(m_index.count());
    m_position->setText(m_scene->placeOf(row) < 0 ? Velmora::tr("%1, hidden by the filter").arg(position) : position);
}

void TableCompareWidget::onShowAll()
{
    showFilter(RowsView::All);
}

void TableCompareWidget::onShowDifferences()
{
    showFilter(RowsView::Differences);
}

void TableCompareWidget::onShowIdentical()
{
    showFilter(RowsView::Same);
}

void TableCompareWidget::showFilter(RowsView filter)
{
    m_bar->showAll->setChecked(filter == RowsView::All);
    m_bar->showDifferences->setChecked(filter == RowsView::Differences);
    m_bar->showIdentical->setChecked(filter == RowsView::Same);
    m_scene->setFilter(filter);
    showNotice();
}

void TableCompareWidget::showNotice()
{
    if (!m_scene->document())
        m_grids->setNotice(Velmora::tr("Drop two tables here or choose them above, then press \"Table compare\"."));
    else if (m_scene->document()->alignment.rows.empty())
        m_grids->setNotice(Velmora::tr("The tables have no rows."));
    else if (m_scene->filter() == RowsView::Differences)
        m_grids->setNotice(Velmora::tr("No rows differ."));
    else
        m_grids->setNotice(Velmora::tr("No rows are the same."));
}

void TableCompareWidget::onSwapSides()
{
    const SessionPaths files = paths();
    m_inputs->setPaths({files.right, files.left, {}});
    start();
}

void TableCompareWidget::showMenu(QPoint globalPosition)
{
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    m_bar->addTo(*menu);
    menu->popup(globalPosition);
}

} // namespace velmora
