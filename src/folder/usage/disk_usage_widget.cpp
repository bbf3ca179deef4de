#include "folder/usage/disk_usage_widget.h"

#include "core/path_names.h"
#include "core/safe_file.h"
#include "folder/usage/usage_csv.h"
#include "folder/usage/usage_view.h"
#include "platform/file_manager.h"
#include "session/dialogs.h"
#include "session/frame/path_edit.h"

#include <QApplication>
#include <QBoxLayout>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QGridLayout>
#include <QGuiApplication>
#include <QJsonObject>
#include <QLabel>
#include <QMenu>
#include <QPointer>
#include <QPushButton>
#include <QSpinBox>

namespace velmora {

namespace {

constexpr int deepestLimit = 99;

constexpr QLatin1String depthKey("maxDepth");
constexpr QLatin1String filesKey("showFiles");
constexpr QLatin1String hiddenKey("hiddenFiles");
constexpr QLatin1String colouringKey("colouring");

} // namespace

DiskUsageWidget::DiskUsageWidget(SessionHost &host, QWidget *parent)
    : FilesSession(host,
                   {{&SessionPaths::left, Velmora::tr("Folder:"), Velmora::tr("Choose or drop a folder…"),
                     Velmora::tr("Select folder"), PathsBar::Field::Picks::Folder}},
                   parent),
      m_depth(new QSpinBox),
      m_files(new QCheckBox(Velmora::tr("Show files"))),
      m_hidden(new QCheckBox(Velmora::tr("Hidden files"))),
      m_colouring(new QComboBox),
      m_view(new UsageView),
      m_disk(status().addFact(QStringLiteral("diskLabel")))
{
    buildOptions();
    buildCommands();
    content().addWidget(m_view, 1);
    connect(m_view, &UsageView::contextMenuWanted, this, &DiskUsageWidget::openMenu);
    connect(m_view, &UsageView::deleteWanted, this, &DiskUsageWidget::onDelete);
    connect(m_view, &UsageView::copyWanted, this, &DiskUsageWidget::onCopyPaths);
    connect(m_view, &UsageView::openWanted, this, &DiskUsageWidget::onShowInFileManager);
    showEmpty();
}

void DiskUsageWidget::buildOptions()
{
    m_depth->setObjectName(QStringLiteral("maxDepthBox"));
    m_depth->setRange(0, deepestLimit);
    m_depth->setSpecialValueText(Velmora::tr("No limit"));
    m_depth->setToolTip(Velmora::tr("How many levels of folders are entered; what lies deeper does not count"));
    m_files->setObjectName(QStringLiteral("showFilesBox"));
    m_files->setChecked(true);
    m_files->setToolTip(Velmora::tr("List files too, not only folders"));
    m_hidden->setObjectName(QStringLiteral("hiddenFilesBox"));
    m_hidden->setToolTip(Velmora::tr("Count hidden files and folders too"));
    m_colouring->setObjectName(QStringLiteral("colouringBox"));
    m_colouring->addItems({Velmora::tr("Colours by kind of file"), Velmora::tr("Colours by growth")});
    m_colouring->setToolTip(
        Velmora::tr("Growth is that since the scan before of the same folder in this tab, or since a snapshot"));
    connect(m_colouring, &QComboBox::currentIndexChanged, this,
            [this](int index) { m_view->setColouring(UsageColouring(index)); });
    auto *label = new QLabel(Velmora::tr("Max depth:"));
    label->setBuddy(m_depth);
    auto *row = new QHBoxLayout;
    row->setSpacing(12);
    row->addWidget(m_depth);
    row->addWidget(m_files);
    row->addWidget(m_hidden);
    row->addWidget(m_colouring);
    row->addStretch();
    QGridLayout &grid = inputs().grid();
    const int line = grid.rowCount();
    grid.addWidget(label, line, 0);
    grid.addLayout(row, line, 1);
}

void DiskUsageWidget::buildCommands()
{
    QPushButton *const scan = addCommand(Velmora::tr("Scan"), QStringLiteral("scanButton"));
    scan->setShortcut(Qt::Key_F5);
    scan->setToolTip(Velmora::tr("Measure the folder (F5)"));
    connect(scan, &QPushButton::clicked, this, &DiskUsageWidget::onScan);
    m_export = addCommand(Velmora::tr("Export CSV"), QStringLiteral("exportCsvButton"));
    m_export->setToolTip(Velmora::tr("Write the tree to a file"));
    m_export->setEnabled(false);
    connect(m_export, &QPushButton::clicked, this, &DiskUsageWidget::onExportCsv);
    m_since = addCommand(Velmora::tr("Growth since…"), QStringLiteral("growthSinceButton"));
    m_since->setToolTip(Velmora::tr("Compare with a folder snapshot: what has grown since it was made"));
    m_since->setEnabled(false);
    connect(m_since, &QPushButton::clicked, this, &DiskUsageWidget::onCompareSnapshot);
}

QJsonObject DiskUsageWidget::options() const
{
    return {{depthKey, m_depth->value()},
            {filesKey, m_files->isChecked()},
            {hiddenKey, m_hidden->isChecked()},
            {colouringKey, m_colouring->currentIndex()}};
}

void DiskUsageWidget::setOptions(const QJsonObject &options)
{
    m_depth->setValue(options.value(depthKey).toInt(m_depth->value()));
    m_files->setChecked(options.value(filesKey).toBool(m_files->isChecked()));
    m_hidden->setChecked(options.value(hiddenKey).toBool(m_hidden->isChecked()));
    const int colouring = options.value(colouringKey).toInt(m_colouring->currentIndex());
    m_colouring->setCurrentIndex(colouring == int(UsageColouring::Growth) ? colouring : int(UsageColouring::Kind));
}

void DiskUsageWidget::confirmClose(std::function<void(bool mayClose)> answered)
{
    if (hasUnsavedChanges())
        status().showMessage(Velmora::tr("Files are still being deleted. Cancel that first."));
    else
        answered(true);
}

void DiskUsageWidget::refreshTheme()
{
    FilesSession::refreshTheme();
    m_view->refreshTheme();
}

void DiskUsageWidget::showEmpty()
{
    m_view->setNotice(Velmora::tr("Where did the space go?"),
                      Velmora::tr("Choose a folder or drop one here, and scan it."));
}

// Scanning ------------------------------------------------------------------------------------------------------------

DiskUsageRequest DiskUsageWidget::request() const
{
    const QString folder = QDir::cleanPath(QDir(QDir::fromNativeSeparators(paths().left)).absolutePath());
    return {folder, m_depth->value(), m_files->isChecked(), m_hidden->isChecked()};
}

void DiskUsageWidget::onScan()
{
    if (hasUnsavedChanges())
        return;
    if (paths().left.isEmpty() || !QFileInfo(paths().left).isDir()) {
        status().showFailure(Velmora::tr("Enter a valid folder path"));
        return;
    }
    const DiskUsageRequest wanted = request();
    // Only what was looked at in the same way can be said to have grown.
    const bool isSame = m_result && !m_result->usage.cancelled && m_scanned.folder == wanted.folder &&
                        m_scanned.maxDepth == wanted.maxDepth && m_scanned.withHidden == wanted.withHidden &&
                        (m_scanned.listsFiles || !wanted.listsFiles);
    status().showMessage(Velmora::tr("Scanning…"));
    Q_EMIT comparisonStarted();
    runToEnd(
        [wanted, before = isSame ? m_result : nullptr](const CancelFlag &cancel, Progress &progress) -> SharedUsage {
            auto result = std::make_shared<UsageResult>();
            result->usage = scanDiskUsage(wanted, cancel, progress);
            if (before && !cancel.isCancelled())
                result->growth = usageGrowth(result->usage.tree, before->usage.tree);
            return result;
        },
        [this, wanted](const SharedUsage &result) {
            m_scanned = wanted;
            takeScan(result);
        });
}

void DiskUsageWidget::takeScan(const SharedUsage &result)
{
    const bool hadFocus = isAncestorOf(QApplication::focusWidget());
    m_result = result;
    m_view->setResult(result);
    setFocusProxy(m_view);
    if (hadFocus)
        m_view->setFocus();
    m_export->setEnabled(true);
    m_since->setEnabled(true);
    const DiskUsage &usage = result->usage;
    m_disk->setText(Velmora::tr("Disk: %1").arg(usageSizeText(usage.tree.root().allocated)));
    m_disk->setToolTip(Velmora::tr("What the files take on the disk; a file with several names counts once"));
    tellScan(usage);
    if (usage.cancelled)
        return;
    const QString folder = bareName(m_scanned.folder);
    Q_EMIT tabTitleChanged(Velmora::tr("Disk usage: %1").arg(folder.isEmpty() ? m_scanned.folder : folder));
    Q_EMIT comparisonFinished(paths().left, {});
}

void DiskUsageWidget::tellScan(const DiskUsage &usage)
{
    QStringList details;
    if (!m_remark.isEmpty())
        details.append(std::exchange(m_remark, {}));
    const auto add = [&details](const QString &text, qint64 number) {
        if (number > 0)
            details.append(text.arg(number));
    };
    add(Velmora::tr("Folders not read: %1"), usage.unreadable.size());
    add(Velmora::tr("Hard links counted once: %1"), usage.sharedFiles);
    add(Velmora::tr("Links not followed: %1"), usage.links);
    const QString detail = details.join(QStringLiteral("   "));
    const UsageTree::Node &root = usage.tree.root();
    const QString message = usage.cancelled ? Velmora::tr("Scan cancelled (%1 ms)").arg(usage.milliseconds)
                                            : Velmora::tr("Done — %1 total, %2 files, %3 subfolders, %4 ms")
                                                  .arg(usageSizeText(root.size))
                                                  .arg(root.files)
                                                  .arg(root.folders)
                                                  .arg(usage.milliseconds);
    if (usage.unreadable.isEmpty())
        status().showMessage(message, detail);
    else
        status().showFailure(message, detail);
}

// Exporting -----------------------------------------------------------------------------------------------------------

void DiskUsageWidget::onExportCsv()
{
    if (!m_result || isReading())
        return;
    Dialogs::instance().saveFile(this, Velmora::tr("Export CSV"), QStringLiteral("disk_usage.csv"),
                                 Velmora::tr("CSV (*.csv)"), [self = QPointer(this)](const QString &path) {
                                     if (self && !path.isEmpty())
                                         self->exportTo(path);
                                 });
}

void DiskUsageWidget::exportTo(const QString &path)
{
    if (isReading())
        return;
    run(
        [result = m_result, path](const CancelFlag &cancel, Progress &) {
            return saveFile(
                path, [&](QIODevice &device) { return writeUsageCsv(*result, device, cancel); }, cancel);
        },
        [this, path](const SaveResult &saved) {
            const QString shown = QDir::toNativeSeparators(path);
            if (saved.ok())
                status().showMessage(Velmora::tr("Exported: %1").arg(shown));
            else
                status().showFailure(Velmora::tr("Cannot write: %1").arg(shown), saved.error);
        });
}

// Rows ----------------------------------------------------------------------------------------------------------------

void DiskUsageWidget::onCopyPaths()
{
    QStringList shown;
    for (const QString &path : m_view->selectedPaths())
        shown.append(QDir::toNativeSeparators(path));
    if (!shown.isEmpty())
        QGuiApplication::clipboard()->setText(shown.join(u'\n'));
}

void DiskUsageWidget::onShowInFileManager()
{
    const QStringList selected = m_view->selectedPaths();
    if (selected.isEmpty())
        return;
    showInFileManager(selected.first(), *this,
                      [this] { status().showFailure(Velmora::tr("There is no file manager to be had")); });
}

void DiskUsageWidget::openMenu(QPoint global)
{
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const qint32 node = m_view->currentNode();
    menu->addAction(Velmora::tr("Show alone in the map"), this, [this, node] { m_view->zoomTo(node); });
    menu->addAction(Velmora::tr("Show the whole in the map"), this, [this] { m_view->zoomTo(0); });
    menu->addSeparator();
    menu->addAction(Velmora::tr("Show in file manager"), this, &DiskUsageWidget::onShowInFileManager);
    menu->addAction(Velmora::tr("Copy paths"), this, &DiskUsageWidget::onCopyPaths);
    menu->addSeparator();
    menu->addAction(Velmora::tr("Delete to the recycle bin…"), this, &DiskUsageWidget::onDelete)
        ->setEnabled(!isReading() && !m_view->selectedPaths().contains(m_scanned.folder));
    menu->popup(global);
}

} // namespace velmora
