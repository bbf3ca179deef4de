#include "folder/snapshot/folder_snapshot_widget.h"

#include "folder/snapshot/folder_snapshot_bar.h"
#include "folder/snapshot/folder_snapshot_rows.h"
#include "session/dialogs.h"
#include "session/frame/path_edit.h"
#include "session/frame/paths_bar.h"
#include "session/frame/status_line.h"
#include "session/list/list_pane.h"
#include "session/translate.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QGridLayout>
#include <QJsonObject>
#include <QLabel>

namespace velmora {

namespace {

constexpr QLatin1String digestsKey("computeSha256");
constexpr QLatin1String onlyDifferencesKey("onlyDifferences");

QList<PathsBar::Field> fields()
{
    using Picks = PathsBar::Field::Picks;
    const QString placeholder = Velmora::tr("A folder, or a snapshot of one");
    return {{&SessionPaths::left, Velmora::tr("Left   (folder or .kvsnapshot):"), placeholder,
             Velmora::tr("Browse left"), Picks::Folder},
            {&SessionPaths::right, Velmora::tr("Right(folder or .kvsnapshot):"), placeholder,
             Velmora::tr("Browse right"), Picks::Folder}};
}

} // namespace

FolderSnapshotWidget::FolderSnapshotWidget(SessionHost &host, QWidget *parent)
    : SessionWidget(host, parent),
      m_bar(new FolderSnapshotBar(this)),
      m_inputs(new PathsBar(fields(), this)),
      m_digests(new QCheckBox(Velmora::tr("Compute SHA-256 when creating/scanning (slower)"))),
      m_list(new ListPane(*m_bar, std::make_unique<FolderSnapshotRows>(), this)),
      m_status(new StatusLine(this)),
      m_counts(m_status->addFact(QStringLiteral("countsLabel")))
{
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_bar);
    column->addWidget(buildHead());
    column->addWidget(m_list, 1);
    column->addWidget(m_status);
    setFocusProxy(&m_inputs->edit(0));
    m_list->setNotice(Velmora::tr("Folders and snapshot files can be dropped here, too."));
    m_list->addRowCommand(m_bar->open);
    m_list->addRowCommand(m_bar->showInFileManager);
    connectBar();
    showState();
}

FolderSnapshotWidget::~FolderSnapshotWidget() = default;

QWidget *FolderSnapshotWidget::buildHead()
{
    QGridLayout &grid = m_inputs->grid();
    grid.setContentsMargins(10, 8, 10, 8);
    grid.setHorizontalSpacing(6);
    grid.setVerticalSpacing(6);
    for (const Side side : bothSides) {
        m_inputs->edit(int(side)).lineEdit().setObjectName(side == Side::Left ? QStringLiteral("leftPath")
                                                                              : QStringLiteral("rightPath"));
        m_inputs->addBehind(int(side), m_bar->load[side]);
    }
    m_digests->setObjectName(QStringLiteral("digestsBox"));
    m_digests->setToolTip(Velmora::tr("Tells also which contents have changed although size and time have not, and "
                                      "which files have moved"));
    auto *hint = new QLabel(
        Velmora::tr("Snapshots are JSON (.kvsnapshot). Compare two snapshots or snapshot ↔ live folder."), m_inputs);
    hint->setObjectName(QStringLiteral("chromeHint"));
    hint->setForegroundRole(QPalette::PlaceholderText);
    hint->setWordWrap(true);
    grid.addWidget(m_digests, grid.rowCount(), 1);
    grid.addWidget(hint, grid.rowCount(), 0, 1, grid.columnCount());
    return m_inputs;
}

void FolderSnapshotWidget::connectBar()
{
    const auto onTrigger = [this](QAction *action, auto slot) { connect(action, &QAction::triggered, this, slot); };
    onTrigger(m_bar->compare, &FolderSnapshotWidget::onCompare);
    onTrigger(m_bar->create, &FolderSnapshotWidget::onCreateSnapshot);
    onTrigger(m_bar->open, &FolderSnapshotWidget::onOpen);
    onTrigger(m_bar->showInFileManager, &FolderSnapshotWidget::onShowInFileManager);
    onTrigger(m_bar->cancel, [this] { m_runner.cancel(); });
    for (const Side side : bothSides) {
        onTrigger(m_bar->load[side], [this, side] { askForFile(side); });
        onTrigger(m_bar->focus[side], [this, side] { m_inputs->edit(int(side)).setFocus(Qt::ShortcutFocusReason); });
    }
    connect(m_inputs, &PathsBar::submitted, this, &FolderSnapshotWidget::start);
    connect(m_list, &ListPane::shownRowsChanged, this, [this] { m_counts->setText(m_list->countsText()); });
    connect(m_list, &ListPane::told, this, [this](const QString &message) { m_status->showMessage(message); });
    connect(&m_runner, &Runner::runningChanged, this, &FolderSnapshotWidget::showState);
}

// The session as the window knows it ----------------------------------------------------------------------------------

SessionPaths FolderSnapshotWidget::paths() const
{
    return m_inputs->paths();
}

void FolderSnapshotWidget::setPaths(const SessionPaths &paths)
{
    m_inputs->setPaths(paths);
}

void FolderSnapshotWidget::start()
{
    if (!places().left.isEmpty() && !places().right.isEmpty())
        onCompare();
}

QJsonObject FolderSnapshotWidget::options() const
{
    QJsonObject options;
    if (m_digests->isChecked())
        options.insert(digestsKey, true);
    if (rows().view() == RowsView::Differences)
        options.insert(onlyDifferencesKey, true);
    return options;
}

void FolderSnapshotWidget::setOptions(const QJsonObject &options)
{
    m_digests->setChecked(options.value(digestsKey).toBool());
    m_list->setRowsView(options.value(onlyDifferencesKey).toBool() ? RowsView::Differences : RowsView::All);
}

void FolderSnapshotWidget::dropPaths(const QStringList &paths, QPoint position)
{
    if (m_runner.isRunning())
        return;
    const QPoint place = m_inputs->mapFrom(this, position);
    const bool fillsRight = paths.size() == 1 && m_inputs->fieldAt(place) < 0 && !places().left.isEmpty();
    if (fillsRight)
        m_inputs->edit(1).setPath(paths.first());
    else
        m_inputs->take(paths, place);
    start();
}

void FolderSnapshotWidget::refreshTheme()
{
    m_bar->refreshTheme();
    m_inputs->refreshTheme();
    m_list->refreshTheme();
    m_status->refreshTheme();
}

const ListModel &FolderSnapshotWidget::rows() const
{
    return m_list->model();
}

Sides<QString> FolderSnapshotWidget::places() const
{
    const SessionPaths paths = m_inputs->paths();
    return {paths.left, paths.right};
}

FolderSnapshotDigests FolderSnapshotWidget::digests() const
{
    return m_digests->isChecked() ? FolderSnapshotDigests::Sha256 : FolderSnapshotDigests::None;
}

void FolderSnapshotWidget::askForFile(Side side)
{
    const QString title = side == Side::Left ? Velmora::tr("Load the left side") : Velmora::tr("Load the right side");
    const QString filter =
        Velmora::tr("Snapshot (*.kvsnapshot)") + QStringLiteral(";;") + Velmora::tr("All files (*.*)");
    Dialogs::instance().openFile(this, title, places()[side], filter, [this, side](const QString &path) {
        m_inputs->edit(int(side)).setPath(path);
        start();
    });
}

void FolderSnapshotWidget::showState()
{
    const bool busy = m_runner.isRunning();
    m_bar->showRunning(busy, m_runner.isCancelling());
    m_bar->compare->setEnabled(!busy);
    m_bar->create->setEnabled(!busy);
    m_digests->setEnabled(!busy);
    for (const Side side : bothSides) {
        m_bar->load[side]->setEnabled(!busy);
        m_inputs->edit(int(side)).setReadOnly(busy);
    }
}

} // namespace velmora
