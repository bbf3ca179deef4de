#include "system/snapshot_widget.h"

#include "session/dialogs.h"
#include "session/session_host.h"
#include "session/translate.h"
#include "system/snapshot_bar.h"
#include "system/snapshot_details.h"
#include "system/snapshot_failure.h"
#include "system/snapshot_rows_model.h"
#include "system/snapshot_side.h"
#include "system/snapshot_status_bar.h"
#include "system/snapshot_view.h"

#include <QClipboard>
#include <QGridLayout>
#include <QGuiApplication>
#include <QSplitter>

namespace velmora {

namespace {

constexpr QLatin1String onlyDifferencesKey("onlyDifferences");

} // namespace

SnapshotWidget::SnapshotWidget(SnapshotKind kind, SessionHost &window, QWidget *parent)
    : SessionWidget(window, parent),
      m_kind(std::move(kind)),
      m_bar(new SnapshotBar(Velmora::tr(m_kind.saveHint), this)),
      m_rows(new SnapshotRowsModel(Velmora::tr(m_kind.keyColumn), this)),
      m_view(new SnapshotView(*m_rows, this)),
      m_details(new SnapshotDetails(this)),
      m_status(new SnapshotStatusBar(this)),
      m_filter(new QLineEdit(this)),
      m_splitter(new QSplitter(Qt::Vertical, this))
{
    buildLayout();
    connectBar();
    connectView();
    connectSides();
    connect(&m_runner, &Runner::runningChanged, this, &SnapshotWidget::showState);
    showState();
    showNotice();
}

// The view tells of its rows as it goes, and children outlive members.
SnapshotWidget::~SnapshotWidget()
{
    m_view->disconnect(this);
}

// Layout --------------------------------------------------------------------------------------------------------------

QWidget *SnapshotWidget::buildHead()
{
    auto *head = new QWidget(this);
    auto *grid = new QGridLayout(head);
    grid->setContentsMargins(10, 8, 10, 6);
    grid->setHorizontalSpacing(6);
    grid->setVerticalSpacing(6);
    auto *heading = new QLabel(Velmora::tr(m_kind.heading), head);
    heading->setObjectName(QStringLiteral("snapshotHeading"));
    QFont font = heading->font();
    font.setPointSizeF(font.pointSizeF() * 1.25);
    font.setWeight(QFont::DemiBold);
    heading->setFont(font);
    auto *hint = new QLabel(Velmora::tr(m_kind.hint), head);
    hint->setObjectName(QStringLiteral("chromeHint"));
    hint->setForegroundRole(QPalette::PlaceholderText);
    hint->setWordWrap(true);
    constexpr int columns = 5;
    grid->addWidget(heading, 0, 0, 1, columns);
    m_left = new SnapshotSide(m_kind, true, m_bar->left, *grid, 1, this);
    m_right = new SnapshotSide(m_kind, false, m_bar->right, *grid, 2, this);
    grid->addWidget(hint, 3, 0, 1, columns);
    grid->setColumnStretch(1, 1);
    return head;
}

QWidget *SnapshotWidget::buildFilterRow()
{
    auto *bar = new QWidget(this);
    auto *label = new QLabel(Velmora::tr("Filter:"), bar);
    label->setBuddy(m_filter);
    m_filter->setObjectName(QStringLiteral("rowFilter"));
    m_filter->setPlaceholderText(Velmora::tr("Words in names and values"));
    m_filter->setToolTip(Velmora::tr("Shows the rows that hold all of these words (Ctrl+F)"));
    m_filter->setClearButtonEnabled(true);
    m_filter->setAcceptDrops(false);
    constexpr int widestFilter = 420;
    m_filter->setMaximumWidth(widestFilter);
    auto *row = new QHBoxLayout(bar);
    row->setContentsMargins(10, 0, 10, 6);
    row->setSpacing(6);
    row->addWidget(label);
    row->addWidget(m_filter, 1);
    row->addStretch(1);
    return bar;
}

void SnapshotWidget::buildLayout()
{
    m_splitter->addWidget(m_view);
    m_splitter->addWidget(m_details);
    m_splitter->setStretchFactor(0, 1);
    m_splitter->setStretchFactor(1, 0);
    m_splitter->setCollapsible(0, false);
    m_splitter->setHandleWidth(3);
    constexpr int detailsHeight = 150;
    m_splitter->setSizes({10000, detailsHeight});

    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_bar);
    column->addWidget(buildHead());
    column->addWidget(buildFilterRow());
    column->addWidget(m_splitter, 1);
    column->addWidget(m_status);
    setFocusProxy(&m_left->field());
}

void SnapshotWidget::connectBar()
{
    const auto onTrigger = [this](QAction *action, auto slot) { connect(action, &QAction::triggered, this, slot); };
    onTrigger(m_bar->compare, &SnapshotWidget::onCompare);
    onTrigger(m_bar->cancel, &SnapshotWidget::onCancel);
    onTrigger(m_bar->left.capture, &SnapshotWidget::onCaptureLeft);
    onTrigger(m_bar->right.capture, &SnapshotWidget::onCaptureRight);
    onTrigger(m_bar->left.load, &SnapshotWidget::onLoadLeft);
    onTrigger(m_bar->right.load, &SnapshotWidget::onLoadRight);
    onTrigger(m_bar->left.save, &SnapshotWidget::onSaveLeft);
    onTrigger(m_bar->right.save, &SnapshotWidget::onSaveRight);
    onTrigger(m_bar->previousDifference, [this] { goToDifference(false); });
    onTrigger(m_bar->nextDifference, [this] { goToDifference(true); });
    onTrigger(m_bar->showAll, [this] { setOnlyDifferences(false); });
    onTrigger(m_bar->showDifferences, [this] { setOnlyDifferences(true); });
    onTrigger(m_bar->copyRows, [this] { copyRows(); });
    onTrigger(m_bar->focusLeft, [this] { m_left->field().setFocus(Qt::ShortcutFocusReason); });
    onTrigger(m_bar->focusRight, [this] { m_right->field().setFocus(Qt::ShortcutFocusReason); });
    onTrigger(m_bar->focusFilter, [this] {
        m_filter->setFocus(Qt::ShortcutFocusReason);
        m_filter->selectAll();
    });
    connect(m_bar->showDetails, &QAction::toggled, m_details, &QWidget::setVisible);
}

void SnapshotWidget::connectView()
{
    connect(m_filter, &QLineEdit::textChanged, this, [this](const QString &words) {
        m_rows->setFilter(words);
        showShownCount();
    });
    connect(m_filter, &QLineEdit::returnPressed, this, [this] { m_view->setFocus(); });
    connect(m_view, &SnapshotView::currentRowChanged, this, &SnapshotWidget::showCurrentRow);
    connect(m_view, &SnapshotView::selectedRowsChanged, this,
            [this] { m_bar->copyRows->setEnabled(m_view->selectionModel()->hasSelection()); });
    connect(m_view, &QTreeView::activated, this, [this] { m_bar->showDetails->setChecked(true); });
    connect(m_view, &QWidget::customContextMenuRequested, this, &SnapshotWidget::onTreeContextMenu);
}

void SnapshotWidget::connectSides()
{
    for (SnapshotSide *side : {m_left, m_right}) {
        connect(side, &SnapshotSide::edited, this, &SnapshotWidget::showState);
        connect(side, &SnapshotSide::submitted, this, [this, side] { submit(*side); });
    }
}

// The session as the window knows it ----------------------------------------------------------------------------------

QString SnapshotWidget::kind() const
{
    return m_kind.id;
}

SessionPaths SnapshotWidget::paths() const
{
    return {m_left->place(), m_right->place(), {}};
}

void SnapshotWidget::setPaths(const SessionPaths &paths)
{
    m_runner.abandon();
    m_left->setPlace(paths.left);
    m_right->setPlace(paths.right);
}

void SnapshotWidget::start()
{
    onCompare();
}

QJsonObject SnapshotWidget::options() const
{
    return m_rows->onlyDifferences() ? QJsonObject{{onlyDifferencesKey, true}} : QJsonObject();
}

void SnapshotWidget::setOptions(const QJsonObject &options)
{
    setOnlyDifferences(options.value(onlyDifferencesKey).toBool());
}

void SnapshotWidget::dropPaths(const QStringList &paths, QPoint position)
{
    if (m_runner.isRunning())
        return;
    if (paths.size() >= 2) {
        setPaths({paths[0], paths[1], {}});
        onCompare();
        return;
    }
    const auto sideAt = [this, position]() -> SnapshotSide & {
        for (SnapshotSide *side : {m_left, m_right}) {
            if (side->isAt(position))
                return *side;
        }
        return m_left->place().isEmpty() || !m_right->place().isEmpty() ? *m_left : *m_right;
    };
    load(sideAt(), paths.value(0));
}

void SnapshotWidget::refreshTheme()
{
    m_bar->refreshTheme();
    m_rows->refreshTheme();
    m_view->viewport()->update();
    m_details->refreshTheme();
    m_status->refreshTheme();
}

QString SnapshotWidget::status() const
{
    return m_status->message();
}

// Capturing, loading, saving ------------------------------------------------------------------------------------------

void SnapshotWidget::onCaptureLeft()
{
    capture(*m_left);
}

void SnapshotWidget::onCaptureRight()
{
    capture(*m_right);
}

void SnapshotWidget::onLoadLeft()
{
    askForFile(*m_left);
}

void SnapshotWidget::onLoadRight()
{
    askForFile(*m_right);
}

void SnapshotWidget::onSaveLeft()
{
    askWhereToSave(*m_left);
}

void SnapshotWidget::onSaveRight()
{
    askWhereToSave(*m_right);
}

void SnapshotWidget::onCancel()
{
    m_runner.cancel();
}

void SnapshotWidget::run(SnapshotOrder order, std::function<void(SnapshotOutcome &&)> done)
{
    m_runner.start(
        [order = std::move(order), kind = m_kind](const CancelFlag &cancel, Progress &progress) {
            return carryOut(order, kind, cancel, progress);
        },
        [this, done = std::move(done)](RunOutcome<SnapshotOutcome> &&outcome) {
            m_status->clearProgress();
            if (outcome.end == RunEnd::Done)
                done(std::move(*outcome.value));
            else if (outcome.end == RunEnd::Cancelled)
                m_status->showMessage(Velmora::tr("Cancelled"));
            else
                m_status->showFailure(Velmora::tr("Not enough memory for these snapshots"), {});
        },
        [this](const ProgressState &state) { showProgress(state); });
}

void SnapshotWidget::capture(SnapshotSide &side)
{
    SnapshotOrder order;
    (isLeft(side) ? order.left : order.right).source = SideOrder::Source::Capture;
    run(std::move(order), [this, &side](SnapshotOutcome &&outcome) {
        const SideResult &result = isLeft(side) ? outcome.left : outcome.right;
        if (tellFailure(result, {}))
            return;
        side.take(side.liveText(), result);
        m_status->showMessage(Velmora::tr(m_kind.captured).arg(result.snapshot->size()));
    });
}

void SnapshotWidget::askForFile(SnapshotSide &side)
{
    const QString place = side.place();
    const QString filter = Velmora::tr(m_kind.fileFilter) + QStringLiteral(";;") + Velmora::tr("All files (*.*)");
    Dialogs::instance().openFile(
        this, isLeft(side) ? Velmora::tr("Load the left side") : Velmora::tr("Load the right side"),
        side.isLive() ? QString() : place, filter, [this, &side](const QString &path) { load(side, path); });
}

void SnapshotWidget::load(SnapshotSide &side, const QString &path)
{
    SnapshotOrder order;
    (isLeft(side) ? order.left : order.right) = {SideOrder::Source::Load, path, {}};
    run(std::move(order), [this, &side, path](SnapshotOutcome &&outcome) {
        const SideResult &result = isLeft(side) ? outcome.left : outcome.right;
        if (tellFailure(result, path))
            return;
        side.take(path, result);
        m_status->showMessage(Velmora::tr("Loaded %1 item(s)").arg(result.snapshot->size()),
                              result.repeated > 0
                                  ? Velmora::tr("%1 name(s) more than once; the last one counts").arg(result.repeated)
                                  : QString());
    });
}

void SnapshotWidget::submit(SnapshotSide &side)
{
    if (m_runner.isRunning() || side.place().isEmpty())
        return;
    if (side.isLive())
        capture(side);
    else
        load(side, side.place());
}

void SnapshotWidget::askWhereToSave(SnapshotSide &side)
{
    // What the field of an empty side promises is taken now, before it is asked for a name.
    Progress none;
    const Snapshot snapshot = side.holdsSnapshot() ? side.snapshot() : m_kind.capture({}, none).snapshot;
    Dialogs::instance().saveFile(this,
                                 isLeft(side) ? Velmora::tr("Save the left side") : Velmora::tr("Save the right side"),
                                 QLatin1String(m_kind.suggestedFile), Velmora::tr(m_kind.fileFilter),
                                 [this, snapshot](const QString &path) { save(path, snapshot); });
}

void SnapshotWidget::save(const QString &path, const Snapshot &snapshot)
{
    m_runner.start([path, snapshot, form = m_kind.form, readers = m_kind.readers](
                       const CancelFlag &, Progress &) { return saveSnapshot(path, snapshot, form, readers); },
                   [this, path](RunOutcome<SaveResult> &&outcome) {
                       const QString shown = QDir::toNativeSeparators(path);
                       if (outcome.value && outcome.value->ok()) {
                           m_status->showMessage(Velmora::tr("Saved %1").arg(shown));
                           return;
                       }
                       const QString text = Velmora::tr(m_kind.cannotWrite);
                       m_status->showFailure(text.contains(QLatin1String("%1")) ? text.arg(shown) : text,
                                             outcome.value ? outcome.value->error : QString());
                   });
}

bool SnapshotWidget::tellFailure(const SideResult &result, const QString &place)
{
    const SnapshotFailure failure = describeFailure(result, m_kind, place);
    if (failure.text.isEmpty())
        return false;
    m_status->showFailure(failure.text, failure.detail);
    if (!m_hasResult)
        m_view->setNotice(failure.detail.isEmpty() ? failure.text : failure.text + u'\n' + failure.detail);
    return true;
}

// Comparing -----------------------------------------------------------------------------------------------------------

void SnapshotWidget::onCompare()
{
    if (m_runner.isRunning() || !m_left->isFilled() || !m_right->isFilled())
        return;
    run({m_left->orderForCompare(), m_right->orderForCompare(), true},
        [this](SnapshotOutcome &&outcome) { takeComparison(std::move(outcome)); });
}

void SnapshotWidget::takeComparison(SnapshotOutcome &&outcome)
{
    const SessionPaths compared = paths();
    m_left->takeCompared(outcome.left);
    m_right->takeCompared(outcome.right);
    if (tellFailure(outcome.left, compared.left) || tellFailure(outcome.right, compared.right))
        return;
    const qsizetype count = outcome.rows->size();
    m_hasResult = true;
    m_rows->setRows(std::move(*outcome.rows));
    showNotice();
    showShownCount();
    m_status->showMessage(Velmora::tr(m_kind.finished).arg(count));
    if (QWidget *focus = focusWidget(); !focus || focus == &m_left->field() || focus == &m_right->field())
        m_view->setFocus();
    const auto isFile = [](const SnapshotSide &side) { return !side.isLive() && !side.place().isEmpty(); };
    if (isFile(*m_left) && isFile(*m_right))
        Q_EMIT tabTitleChanged(
            Velmora::tr("%1 <-> %2").arg(QFileInfo(compared.left).fileName(), QFileInfo(compared.right).fileName()));
    Q_EMIT comparisonFinished(compared.left, compared.right);
}

// What is shown -------------------------------------------------------------------------------------------------------

void SnapshotWidget::showState()
{
    const bool busy = m_runner.isRunning();
    m_bar->cancel->setEnabled(busy && !m_runner.isCancelling());
    for (const auto &[side, actions] : {std::pair(m_left, &m_bar->left), std::pair(m_right, &m_bar->right)}) {
        side->setBusy(busy);
        actions->capture->setEnabled(!busy);
        actions->load->setEnabled(!busy);
        const bool promisesLive = m_kind.emptyIsLive && side->place().isEmpty();
        actions->save->setEnabled(!busy && (side->holdsSnapshot() || promisesLive));
    }
    QString missing;
    if (!m_left->isFilled())
        missing = Velmora::tr("The left side holds nothing yet: capture it or load a file first");
    else if (!m_right->isFilled())
        missing = Velmora::tr("The right side holds nothing yet: capture it or load a file first");
    m_bar->allowCompare(!busy && missing.isEmpty(), missing);
    m_bar->previousDifference->setEnabled(m_hasResult);
    m_bar->nextDifference->setEnabled(m_hasResult);
    m_bar->copyRows->setEnabled(m_view->selectionModel()->hasSelection());
}

void SnapshotWidget::showProgress(const ProgressState &state)
{
    if (!m_runner.isCancelling())
        m_status->showProgress(capturingText(m_kind, state), state);
}

void SnapshotWidget::showNotice()
{
    if (!m_hasResult)
        m_view->setNotice(Velmora::tr("Snapshot files can be dropped here, too."));
    else if (m_rows->allRows().isEmpty())
        m_view->setNotice(Velmora::tr("Neither side holds an item."));
    else if (m_filter->text().trimmed().isEmpty())
        m_view->setNotice(Velmora::tr("Both sides are the same."));
    else
        m_view->setNotice(Velmora::tr("No row holds these words."));
}

void SnapshotWidget::showShownCount()
{
    if (!m_hasResult)
        return;
    m_status->showCounts(countRows(m_rows->allRows()), m_rows->rowCount());
    showNotice();
    showState();
}

void SnapshotWidget::showCurrentRow()
{
    const int row = m_view->currentIndex().row();
    if (row >= 0)
        m_details->showRow(m_rows->rowAt(row));
    else
        m_details->clear();
}

void SnapshotWidget::setOnlyDifferences(bool only)
{
    (only ? m_bar->showDifferences : m_bar->showAll)->setChecked(true);
    m_rows->setOnlyDifferences(only);
    showShownCount();
}

void SnapshotWidget::goToDifference(bool forward)
{
    const int row = m_rows->nextDifference(m_view->currentIndex().row(), forward);
    if (row < 0) {
        m_status->showMessage(forward ? Velmora::tr("No further difference") : Velmora::tr("No earlier difference"));
        return;
    }
    m_view->goToRow(row);
    m_view->setFocus();
}

// Copying -------------------------------------------------------------------------------------------------------------

void SnapshotWidget::copyText(const QString &text)
{
    QGuiApplication::clipboard()->setText(text);
}

void SnapshotWidget::copyRows()
{
    // The key belongs to whatever text is selected first.
    for (const auto *edit : {&m_left->field(), &m_right->field(), m_filter}) {
        if (edit->hasFocus() && edit->hasSelectedText()) {
            copyText(edit->selectedText());
            return;
        }
    }
    copyText(m_rows->text(m_view->selectedRows()));
}

void SnapshotWidget::onTreeContextMenu(const QPoint &point)
{
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction(m_bar->copyRows);
    if (const QModelIndex index = m_view->indexAt(point); index.isValid()) {
        const SnapshotRow row = m_rows->rowAt(index.row());
        menu->addAction(Velmora::tr("Copy the name"), this, [this, row] { copyText(row.key); });
        menu->addAction(Velmora::tr("Copy the left value"), this, [this, row] { copyText(row.left); })
            ->setEnabled(row.status != SnapshotStatus::RightOnly);
        menu->addAction(Velmora::tr("Copy the right value"), this, [this, row] { copyText(row.right); })
            ->setEnabled(row.status != SnapshotStatus::LeftOnly);
    }
    menu->addSeparator();
    menu->addAction(m_bar->showAll);
    menu->addAction(m_bar->showDifferences);
    menu->addAction(m_bar->showDetails);
    menu->popup(m_view->viewport()->mapToGlobal(point));
}

} // namespace velmora
