#include "filetypes/binary/binary_compare_widget.h"

#include "filetypes/binary/binary_compare_bar.h"
#include "filetypes/binary/binary_hex_view.h"
#include "filetypes/binary/hex_overview.h"
#include "filetypes/binary/hex_scene.h"
#include "session/dialogs.h"
#include "session/fault_text.h"
#include "session/frame/pair_inputs.h"
#include "session/frame/status_line.h"
#include "session/translate.h"

#include <QApplication>
#include <QBoxLayout>
#include <QClipboard>
#include <QFileInfo>
#include <QLabel>
#include <QLocale>
#include <QMenu>
#include <QSplitter>
#include <QWheelEvent>

namespace velmora {

namespace {

QString hexNumber(qint64 number)
{
    return QStringLiteral("0x") + QString::number(number, 16).toUpper();
}

QString resultText(const BinaryCompareResult &result)
{
    if (result.differing == 0)
        return Velmora::tr("Compare done: files are identical");
    const HexDocument &document = *result.document;
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
      m_status(new StatusLine(this)),
      m_place(m_status->addFact(QStringLiteral("placeLabel")))
{
    buildLayout();
    connectBar();
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

    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(2, 2, 2, 2);
    column->setSpacing(2);
    column->addWidget(m_bar);
    column->addWidget(m_inputs);
    column->addLayout(views, 1);
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
    on(m_bar->copyHex, [this] { copy(ByteForm::Hex); });
    on(m_bar->copyText, [this] { copy(ByteForm::Text); });
    on(m_bar->copyArray, [this] { copy(ByteForm::CArray); });
    on(m_bar->selectAll, [this] {
        const Side side = m_scene->caret().side;
        if (m_scene->document() && m_scene->document()->source(side).size() > m_scene->document()->starts[side])
            m_scene->select({side, m_scene->document()->starts[side], m_scene->document()->source(side).size()});
    });
    on(m_bar->switchPane, [this] { focusView(m_views.left->hasFocus() ? Side::Right : Side::Left); });
    on(m_bar->zoomIn, [this] { zoom(m_views.left->font().pointSize() + 1); });
    on(m_bar->zoomOut, [this] { zoom(m_views.left->font().pointSize() - 1); });
    on(m_bar->resetZoom, [this] { zoom(BinaryHexView::usualPoints); });
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

void BinaryCompareWidget::refreshTheme()
{
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
    m_running = files;
    const BinaryRequest request{{files.left, files.right}, {}};
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
        m_status->showFailure(faultText(*outcome.value));
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

void BinaryCompareWidget::onNextDiff()
{
    showDifference(m_index.next());
}

void BinaryCompareWidget::onPrevDiff()
{
    showDifference(m_index.previous());
}

void BinaryCompareWidget::showDifference(qsizetype index)
{
    if (index < 0)
        return;
    m_scene->showRow(m_scene->document()->stops[std::size_t(index)]);
    m_status->showMessage(Velmora::tr("Diff %1/%2").arg(index + 1).arg(m_index.count()));
    // Who steps through differences is done with the paths: keys are for the bytes.
    if (!m_views.left->hasFocus() && !m_views.right->hasFocus())
        focusView(m_scene->caret().side);
}

void BinaryCompareWidget::onSwapSides()
{
    const SessionPaths files = paths();
    setPaths({files.right, files.left, {}});
    if (m_scene->document())
        start();
}

void BinaryCompareWidget::onGoToOffset()
{
    if (m_scene->rowCount() == 0)
        return;
    const qint64 here = std::max<qint64>(m_scene->caret().offset, 0);
    Dialogs::instance().askText(this, Velmora::tr("Go to offset"),
                                Velmora::tr("Offset (1234, 0x4D2 or 4D2h; +/- counts from the caret):"),
                                hexNumber(here), [this, here](const QString &text) {
                                    const std::optional<qint64> offset = offsetFromText(text, here);
                                    if (!offset) {
                                        m_status->showMessage(Velmora::tr("\"%1\" is no offset").arg(text));
                                        return;
                                    }
                                    m_scene->moveCaret(m_scene->caret().side, *offset);
                                    m_scene->setTop(m_scene->currentRow() - m_scene->visibleRows() / 2);
                                    focusView(m_scene->caret().side);
                                });
}

void BinaryCompareWidget::showPlace()
{
    const HexScene::Caret &caret = m_scene->caret();
    if (caret.offset < 0) {
        m_place->clear();
        return;
    }
    const ByteRange selected = m_scene->selection();
    const QString place = QStringLiteral("%1 (%2)").arg(hexNumber(caret.offset), QLocale().toString(caret.offset));
    m_place->setText(selected.length() > 1
                         ? Velmora::tr("%1 | %2 bytes selected").arg(place, QLocale().toString(selected.length()))
                         : place);
}

void BinaryCompareWidget::copy(ByteForm form)
{
    constexpr qint64 limit = 16 * 1024 * 1024;
    const ByteRange range = m_scene->selection();
    if (range.length() == 0)
        return;
    if (range.length() > limit) {
        m_status->showMessage(Velmora::tr("Too much to copy (limit %1 MB)").arg(limit >> 20));
        return;
    }
    QByteArray bytes(qsizetype(range.length()), Qt::Uninitialized);
    if (!m_scene->document()->source(range.side).read(range.begin, bytes.data(), bytes.size())) {
        m_status->showMessage(Velmora::tr("Some of these bytes cannot be read"));
        return;
    }
    QApplication::clipboard()->setText(writtenBytes(bytes, form));
}

void BinaryCompareWidget::zoom(int points)
{
    for (const Side side : bothSides)
        m_views[side]->setPointSize(points);
}

void BinaryCompareWidget::wheelEvent(QWheelEvent *event)
{
    if (!event->modifiers().testFlag(Qt::ControlModifier)) {
        SessionWidget::wheelEvent(event);
        return;
    }
    zoom(m_views.left->font().pointSize() + (event->angleDelta().y() > 0 ? 1 : -1));
    event->accept();
}

void BinaryCompareWidget::focusView(Side side)
{
    m_views[side]->setFocus();
}

} // namespace velmora
