#include "system/snapshot_widget.h"

#include "session/frame/path_edit.h"
#include "session/frame/paths_bar.h"
#include "session/frame/status_line.h"
#include "session/list/list_pane.h"
#include "session/list/rows_view_option.h"
#include "session/session_host.h"
#include "session/translate.h"
#include "system/snapshot_bar.h"
#include "system/snapshot_failure.h"
#include "system/snapshot_side.h"

#include <QGridLayout>
#include <QLabel>

namespace velmora {

SnapshotWidget::SnapshotWidget(SnapshotKind kind, SessionHost &window, QWidget *parent)
    : SessionWidget(window, parent),
      m_kind(std::move(kind)),
      m_bar(new SnapshotBar(Velmora::tr(m_kind.saveHint), this)),
      m_list(new ListPane(*m_bar, std::make_unique<KeyedList>(Velmora::tr(m_kind.keyColumn)), this)),
      m_status(new StatusLine(this)),
      m_counts(m_status->addFact(QStringLiteral("countsLabel")))
{
    buildLayout();
    connectBar();
    connectSides();
    connect(m_list, &ListPane::shownRowsChanged, this, [this] { m_counts->setText(m_list->countsText()); });
    connect(m_list, &ListPane::told, this, [this](const QString &message) { m_status->showMessage(message); });
    connect(&m_runner, &Runner::runningChanged, this, &SnapshotWidget::showState);
    showState();
    inviteFiles();
}

SnapshotWidget::~SnapshotWidget() = default;

// Layout --------------------------------------------------------------------------------------------------------------

PathsBar *SnapshotWidget::buildHead()
{
    const auto field = [this](QString SessionPaths::*member, const char *label) {
        return PathsBar::Field{member, Velmora::tr(label),
                               m_kind.placeholder ? Velmora::tr(m_kind.placeholder) : QString()};
    };
    auto *head = new PathsBar(
        {field(&SessionPaths::left, m_kind.leftLabel), field(&SessionPaths::right, m_kind.rightLabel)}, this);
    QGridLayout &grid = head->grid();
    grid.setContentsMargins(10, 8, 10, 6);
    grid.setHorizontalSpacing(6);
    grid.setVerticalSpacing(6);
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
    m_left = new SnapshotSide(m_kind, Side::Left, m_bar->left, *head, this);
    m_right = new SnapshotSide(m_kind, Side::Right, m_bar->right, *head, this);
    grid.addWidget(heading, 0, 0, 1, grid.columnCount());
    grid.addWidget(hint, grid.rowCount(), 0, 1, grid.columnCount());
    return head;
}

void SnapshotWidget::buildLayout()
{
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_bar);
    m_inputs = buildHead();
    column->addWidget(m_inputs);
    column->addWidget(m_list, 1);
    column->addWidget(m_status);
    setFocusProxy(&m_left->field());
}

void SnapshotWidget::connectBar()
{
    connect(m_bar->compare, &QAction::triggered, this, &SnapshotWidget::onCompare);
    connect(m_bar->cancel, &QAction::triggered, this, [this] { m_runner.cancel(); });
    for (const auto &[focus, side] : {std::pair(m_bar->focusLeft, m_left), std::pair(m_bar->focusRight, m_right)}) {
        connect(focus, &QAction::triggered, this, [side = side] { side->field().setFocus(Qt::ShortcutFocusReason); });
    }
}

void SnapshotWidget::connectSides()
{
    for (const auto &[side, actions] : {std::pair(m_left, &m_bar->left), std::pair(m_right, &m_bar->right)}) {
        SnapshotSide &own = *side;
        connect(&own, &SnapshotSide::edited, this, &SnapshotWidget::showState);
        connect(&own, &SnapshotSide::submitted, this, [this, &own] { submit(own); });
        connect(actions->capture, &QAction::triggered, this, [this, &own] { fetch(own, own.livePlace()); });
        connect(actions->load, &QAction::triggered, this, [this, &own] { askForFile(own); });
        connect(actions->save, &QAction::triggered, this, [this, &own] { askWhereToSave(own); });
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
    QJsonObject options;
    keepRowsView(rows().view(), options);
    return options;
}

void SnapshotWidget::setOptions(const QJsonObject &options)
{
    m_list->setRowsView(keptRowsView(options));
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
        const int field = m_inputs->fieldAt(m_inputs->mapFrom(this, position));
        if (field >= 0)
            return field == 0 ? *m_left : *m_right;
        return m_left->place().isEmpty() || !m_right->place().isEmpty() ? *m_left : *m_right;
    };
    fetch(sideAt(), paths.value(0));
}

void SnapshotWidget::refreshTheme()
{
    m_bar->refreshTheme();
    m_inputs->refreshTheme();
    m_list->refreshTheme();
    m_status->refreshTheme();
}

// What is shown -------------------------------------------------------------------------------------------------------

void SnapshotWidget::showState()
{
    const bool busy = m_runner.isRunning();
    m_bar->showRunning(busy, m_runner.isCancelling());
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
}

void SnapshotWidget::showProgress(const ProgressState &state)
{
    if (m_runner.isCancelling())
        return;
    m_status->showMessage(capturingText(m_kind, state));
    m_status->showProgress(state);
}

void SnapshotWidget::inviteFiles()
{
    m_list->setNotice(Velmora::tr("Snapshot files can be dropped here, too."));
}

const ListModel &SnapshotWidget::rows() const
{
    return m_list->model();
}

} // namespace velmora
