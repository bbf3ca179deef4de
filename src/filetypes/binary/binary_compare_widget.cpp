#include "filetypes/binary/binary_compare_widget.h"

#include "filetypes/binary/binary_compare_bar.h"
#include "filetypes/binary/binary_hex_view.h"
#include "filetypes/binary/hex_difference_list.h"
#include "filetypes/binary/hex_find_bar.h"
#include "filetypes/binary/hex_finder.h"
#include "filetypes/binary/hex_overview.h"
#include "filetypes/binary/hex_scene.h"
#include "filetypes/binary/hex_starts_bar.h"
#include "filetypes/binary/hex_values_panel.h"
#include "session/fault_text.h"
#include "session/frame/pair_inputs.h"
#include "session/frame/status_line.h"
#include "session/shown_path.h"
#include "session/translate.h"

#include <QBoxLayout>
#include <QFileInfo>
#include <QJsonObject>
#include <QMenu>
#include <QSplitter>

#include <algorithm>

namespace velmora {

namespace {

constexpr QLatin1String alignKey("align");
constexpr QLatin1String leftStartKey("leftStart");
constexpr QLatin1String rightStartKey("rightStart");

QString alignedText(const BinaryCompareResult &result)
{
    const std::vector<AlignedRange> &found = result.document->differences;
    const auto count = [&found](RangeKind kind) {
        return std::count_if(found.begin(), found.end(),
                             [kind](const AlignedRange &range) { return range.kind == kind; });
    };
    QString text =
        Velmora::tr("Compare done: left %1 bytes, right %2 bytes, %3 differing ranges | changed %4, inserted "
                    "%5, deleted %6")
            .arg(result.document->source(Side::Left).size())
            .arg(result.document->source(Side::Right).size())
            .arg(result.differing)
            .arg(count(RangeKind::Changed))
            .arg(count(RangeKind::Inserted))
            .arg(count(RangeKind::Deleted));
    if (result.isCapped)
        text += Velmora::tr(" | too many to tell: the last range is the rest of the files");
    return text;
}

QString resultText(const BinaryCompareResult &result)
{
    if (result.differing == 0)
        return Velmora::tr("Compare done: files are identical");
    const HexDocument &document = *result.document;
    if (document.isAligned)
        return alignedText(result);
    QString text = Velmora::tr("Compare done: left %1 bytes, right %2 bytes, %3 diffs | diff rate: %4%")
                       .arg(document.source(Side::Left).size())
                       .arg(document.source(Side::Right).size())
                       .arg(result.differing)
                       .arg(result.rate);
    if (result.isCapped)
        text += Velmora::tr(" | diff list capped at %1 for navigation").arg(RowComparison::listLimit);
    return text;
}

QString faultText(const BinaryCompareResult &result)
{
    if (result.fault == BinaryCompareResult::Fault::TooLarge)
        return Velmora::tr("File too large (limit %1 GB). Use folder compare or checksum first")
            .arg(binarySizeLimit >> 30);
    return result.faultSide == Side::Left ? Velmora::tr("Cannot open left file")
                                          : Velmora::tr("Cannot open right file");
}

Sides<PairInputs::Field> fields()
{
    return {{Velmora::tr("Left file path (drop a file here)..."), Velmora::tr("Select left file")},
            {Velmora::tr("Right file path (drop a file here)..."), Velmora::tr("Select right file")}};
}

} // namespace

BinaryCompareWidget::BinaryCompareWidget(SessionHost &host, QWidget *parent)
    : SessionWidget(host, parent),
      m_bar(new BinaryCompareBar(this)),
      m_inputs(new PairInputs(fields(), this)),
      m_scene(new HexScene(this)),
      m_views{new BinaryHexView(*m_scene, Side::Left, this), new BinaryHexView(*m_scene, Side::Right, this)},
      m_overview(new HexOverview(*m_scene, this)),
      m_starts(new HexStartsBar(this)),
      m_findBar(new HexFindBar(this)),
      m_finder(new HexFinder(*m_findBar, *m_scene, this)),
      m_list(new HexDifferenceList(*m_scene, this)),
      m_values(new HexValuesPanel(*m_scene, this)),
      m_parts(new QSplitter(Qt::Vertical, this)),
      m_panels(new QSplitter(Qt::Horizontal, this)),
      m_status(new StatusLine(this)),
      m_place(m_status->addFact(QStringLiteral("placeLabel")))
{
    buildLayout();
    connectBar();
    connectCopies();
    connectPanels();
    connectViews();
    connect(m_inputs, &PairInputs::submitted, this, &BinaryCompareWidget::start);
    connect(&m_runner, &Runner::runningChanged, this, &BinaryCompareWidget::showRunning);
    m_status->showMessage(Velmora::tr("Ready"));
}

BinaryCompareWidget::~BinaryCompareWidget() = default;

void BinaryCompareWidget::buildLayout()
{
    m_views.left->setObjectName(QStringLiteral("leftView"));
    m_views.right->setObjectName(QStringLiteral("rightView"));
    auto *splitter = new QSplitter(Qt::Horizontal, this);
    for (const Side side : bothSides)
        splitter->addWidget(m_views[side]);
    splitter->setStretchFactor(0, 1);
    splitter->setStretchFactor(1, 1);
    splitter->setChildrenCollapsible(false);
    auto *views = new QHBoxLayout;
    views->setSpacing(0);
    views->addWidget(splitter, 1);
    views->addWidget(m_overview);

    m_panels->addWidget(m_list);
    m_panels->addWidget(m_values);
    m_panels->setChildrenCollapsible(false);
    showPanels();
    auto *upper = new QWidget;
    upper->setLayout(views);
    views->setContentsMargins(0, 0, 0, 0);
    m_parts->addWidget(upper);
    m_parts->addWidget(m_panels);
    m_parts->setStretchFactor(0, 1);
    m_parts->setStretchFactor(1, 0);
    m_parts->setChildrenCollapsible(false);

    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(2, 2, 2, 2);
    column->setSpacing(2);
    column->addWidget(m_bar);
    column->addWidget(m_inputs);
    column->addWidget(m_starts);
    column->addWidget(m_parts, 1);
    column->addWidget(m_findBar);
    column->addWidget(m_status);
    setFocusProxy(m_inputs);
}

void BinaryCompareWidget::connectBar()
{
    const auto on = [this](QAction *action, auto slot) { connect(action, &QAction::triggered, this, slot); };
    on(m_bar->compare, &BinaryCompareWidget::onCompare);
    on(m_bar->cancel, &BinaryCompareWidget::onCompare);
    on(m_bar->previousDifference, &BinaryCompareWidget::onPrevDiff);
    on(m_bar->nextDifference, &BinaryCompareWidget::onNextDiff);
    on(m_bar->goToOffset, &BinaryCompareWidget::onGoToOffset);
    on(m_bar->swapSides, &BinaryCompareWidget::onSwapSides);
    on(m_bar->align, &BinaryCompareWidget::compareAnew);
    on(m_bar->startHere, &BinaryCompareWidget::startHere);
    on(m_bar->find, [this] { m_findBar->open(); });
    const auto findOr = [this](void (HexFinder::*search)()) {
        if (m_findBar->isVisible())
            (m_finder->*search)();
        else
            m_findBar->open();
    };
    on(m_bar->findNext, [findOr] { findOr(&HexFinder::findNext); });
    on(m_bar->findPrevious, [findOr] { findOr(&HexFinder::findPrevious); });
    on(m_bar->switchPane, [this] { focusView(m_views.left->hasFocus() ? Side::Right : Side::Left); });
    on(m_bar->zoomIn, [this] { zoom(m_views.left->font().pointSize() + 1); });
    on(m_bar->zoomOut, [this] { zoom(m_views.left->font().pointSize() - 1); });
    on(m_bar->resetZoom, [this] { zoom(BinaryHexView::usualPoints); });
}

void BinaryCompareWidget::connectCopies()
{
    const auto on = [this](QAction *action, auto slot) { connect(action, &QAction::triggered, this, slot); };
    on(m_bar->copyHex, [this] { copy(ByteForm::Hex); });
    on(m_bar->copyText, [this] { copy(ByteForm::Text); });
    on(m_bar->copyArray, [this] { copy(ByteForm::CArray); });
    on(m_bar->selectAll, [this] {
        const Side side = m_scene->caret().side;
        if (m_scene->document() && m_scene->document()->source(side).size() > m_scene->document()->starts[side])
            m_scene->select({side, m_scene->document()->starts[side], m_scene->document()->source(side).size()});
    });
}

void BinaryCompareWidget::connectPanels()
{
    connect(m_bar->showStarts, &QAction::toggled, this, [this](bool shown) {
        m_starts->setVisible(shown);
        if (shown)
            m_starts->setFocus();
    });
    connect(m_starts, &HexStartsBar::closed, m_bar->showStarts, [this] { m_bar->showStarts->setChecked(false); });
    connect(m_starts, &HexStartsBar::compareWanted, this, &BinaryCompareWidget::start);
    for (QAction *panel : {m_bar->showList, m_bar->showValues})
        connect(panel, &QAction::toggled, this, &BinaryCompareWidget::showPanels);
    connect(m_list, &HexDifferenceList::rowWanted, this, &BinaryCompareWidget::goToRow);
    connect(m_findBar, &HexFindBar::closed, this, [this] { focusView(m_scene->caret().side); });
}

void BinaryCompareWidget::connectViews()
{
    connect(m_scene, &HexScene::changed, this, &BinaryCompareWidget::showPlace);
    for (const Side side : bothSides) {
        connect(m_views[side], &BinaryHexView::contextMenuWanted, this, [this](QPoint at) {
            auto *menu = new QMenu(this);
            menu->setAttribute(Qt::WA_DeleteOnClose);
            m_bar->addTo(*menu);
            menu->popup(at);
        });
    }
}

void BinaryCompareWidget::showPanels()
{
    const bool wereShown = !m_panels->isHidden();
    m_list->setVisible(m_bar->showList->isChecked());
    m_values->setVisible(m_bar->showValues->isChecked());
    m_panels->setVisible(m_bar->showList->isChecked() || m_bar->showValues->isChecked());
    // A splitter gives what is shown later no more than the least height.
    if (!wereShown && !m_panels->isHidden())
        m_parts->setSizes({3 * m_parts->height() / 5, 2 * m_parts->height() / 5});
}

SessionPaths BinaryCompareWidget::paths() const
{
    return m_inputs->paths();
}

void BinaryCompareWidget::setPaths(const SessionPaths &paths)
{
    m_inputs->setPaths(paths);
}

void BinaryCompareWidget::dropPaths(const QStringList &paths, QPoint position)
{
    if (paths.isEmpty())
        return;
    m_inputs->take(paths, m_inputs->mapFrom(this, position).x());
    m_status->showMessage(Velmora::tr("Paths loaded — click Binary compare to start"));
}

QJsonObject BinaryCompareWidget::options() const
{
    const Sides<qint64> starts = m_starts->starts().value_or(Sides<qint64>());
    return {{alignKey, m_bar->align->isChecked()}, {leftStartKey, starts.left}, {rightStartKey, starts.right}};
}

void BinaryCompareWidget::setOptions(const QJsonObject &options)
{
    m_bar->align->setChecked(options.value(alignKey).toBool());
    const Sides<qint64> starts{std::max<qint64>(options.value(leftStartKey).toInteger(), 0),
                               std::max<qint64>(options.value(rightStartKey).toInteger(), 0)};
    m_starts->setStarts(starts);
    m_bar->showStarts->setChecked(starts != Sides<qint64>());
}

void BinaryCompareWidget::refreshTheme()
{
    m_starts->refreshTheme();
    m_findBar->refreshTheme();
    m_bar->refreshTheme();
    m_inputs->refreshTheme();
    m_status->refreshTheme();
    m_overview->refresh();
    m_scene->refresh();
}

void BinaryCompareWidget::onBrowseLeft()
{
    m_inputs->browse(Side::Left);
}

void BinaryCompareWidget::onBrowseRight()
{
    m_inputs->browse(Side::Right);
}

void BinaryCompareWidget::onCompare()
{
    if (!m_runner.isRunning()) {
        start();
        return;
    }
    m_runner.cancel();
    m_status->showMessage(Velmora::tr("Cancelling..."));
}

void BinaryCompareWidget::start()
{
    const SessionPaths files = paths();
    if (files.left.isEmpty() || files.right.isEmpty()) {
        m_status->showMessage(Velmora::tr("Select two files to compare"));
        return;
    }
    const std::optional<Sides<qint64>> starts = m_starts->starts();
    if (!starts) {
        m_status->showMessage(Velmora::tr("The sides must begin at offsets such as 1234, 0x4D2 or 4D2h"));
        return;
    }
    m_running = files;
    const BinaryRequest request{{files.left, files.right}, *starts, m_bar->align->isChecked()};
    m_status->showMessage(Velmora::tr("Comparing..."));
    Q_EMIT comparisonStarted();
    m_runner.start(
        [request](const CancelFlag &cancel, Progress &progress) { return compareBinaries(request, cancel, progress); },
        [this](RunOutcome<BinaryCompareResult> &&outcome) { takeOutcome(std::move(outcome)); },
        [this](const ProgressState &state) { m_status->showProgress(state); });
}

void BinaryCompareWidget::takeOutcome(RunOutcome<BinaryCompareResult> &&outcome)
{
    if (outcome.end == RunEnd::Failed)
        m_status->showFailure(velmora::faultText(outcome.fault, Velmora::tr("Not enough memory")));
    else if (outcome.end == RunEnd::Cancelled)
        m_status->showMessage(Velmora::tr("Compare cancelled"));
    else if (outcome.value->document)
        showResult(*outcome.value);
    else
        m_status->showFailure(faultText(*outcome.value), failedPath(*outcome.value));
}

QString BinaryCompareWidget::failedPath(const BinaryCompareResult &result) const
{
    return shownPath(result.faultSide == Side::Left ? m_running.left : m_running.right);
}

void BinaryCompareWidget::showResult(const BinaryCompareResult &result)
{
    m_index.reset(qsizetype(result.document->stops.size()));
    m_scene->setDocument(result.document);
    m_bar->previousDifference->setEnabled(m_index.count() > 0);
    m_bar->nextDifference->setEnabled(m_index.count() > 0);
    m_status->showMessage(resultText(result));
    Q_EMIT tabTitleChanged(
        Velmora::tr("%1 <-> %2").arg(QFileInfo(m_running.left).fileName(), QFileInfo(m_running.right).fileName()));
    Q_EMIT comparisonFinished(m_running.left, m_running.right);
}

void BinaryCompareWidget::showRunning()
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

} // namespace velmora
