#include "system/snapshot_widget.h"

#include "session/frame/status_line.h"
#include "session/session_host.h"
#include "session/translate.h"
#include "system/snapshot_bar.h"
#include "system/snapshot_details.h"
#include "system/snapshot_failure.h"
#include "system/snapshot_rows_model.h"
#include "system/snapshot_side.h"
#include "system/snapshot_view.h"

#include <QClipboard>
#include <QGridLayout>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QSplitter>

namespace velmora {

namespace {

constexpr QLatin1String onlyDifferencesKey("onlyDifferences");

QString describeCounts(const SnapshotCounts &counts, qsizetype shown)
{
    const QLocale locale;
    const auto number = [&locale](qsizetype value) { return locale.toString(qint64(value)); };
    const qsizetype all = counts.same + counts.differences();
    QStringList parts{Velmora::tr("Same: %1").arg(number(counts.same)),
                      Velmora::tr("Changed: %1").arg(number(counts.changed)),
                      Velmora::tr("Left only: %1").arg(number(counts.leftOnly)),
                      Velmora::tr("Right only: %1").arg(number(counts.rightOnly))};
    if (shown < all)
        parts.append(Velmora::tr("Hidden: %1").arg(number(all - shown)));
    return parts.join(QStringLiteral("   "));
}

} // namespace

SnapshotWidget::SnapshotWidget(SnapshotKind kind, SessionHost &window, QWidget *parent)
    : SessionWidget(window, parent),
      m_kind(std::move(kind)),
      m_bar(new SnapshotBar(Velmora::tr(m_kind.saveHint), this)),
      m_rows(new SnapshotRowsModel(Velmora::tr(m_kind.keyColumn), this)),
      m_view(new SnapshotView(*m_rows, this)),
      m_details(new SnapshotDetails(this)),
      m_status(new StatusLine(this)),
      m_counts(m_status->addFact(QStringLiteral("countsLabel"))),
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
    if (m_runner.isCancelling())
        return;
    m_status->showMessage(capturingText(m_kind, state));
    m_status->showProgress(state);
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
    m_counts->setText(describeCounts(countRows(m_rows->allRows()), m_rows->rowCount()));
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
