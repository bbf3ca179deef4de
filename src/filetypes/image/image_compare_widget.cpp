#include "filetypes/image/image_compare_widget.h"

#include "filetypes/image/image_bar.h"
#include "filetypes/image/image_report.h"
#include "filetypes/image/image_views.h"
#include "filetypes/image/image_words.h"
#include "filetypes/image/pixel_detail.h"
#include "filetypes/image/properties_dialog.h"
#include "session/dialogs.h"
#include "session/fault_text.h"
#include "session/frame/notice_bar.h"
#include "session/frame/path_edit.h"
#include "session/frame/run_report.h"
#include "session/frame/status_line.h"
#include "session/translate.h"

#include <QAction>
#include <QBoxLayout>
#include <QDir>
#include <QFileInfo>
#include <QJsonObject>

#include <algorithm>
#include <utility>

namespace velmora {

namespace {

constexpr QLatin1String toleranceKey{"tolerance"};
constexpr QLatin1String antiAliasingKey{"ignoreAntiAliasing"};
constexpr QLatin1String viewKey{"view"};
constexpr double zoomStep = 1.2;

QString nameOf(const QString &path)
{
    return QFileInfo(path).fileName();
}

} // namespace

ImageCompareWidget::ImageCompareWidget(SessionHost &host, QWidget *parent)
    : SessionWidget(host, parent),
      m_bar(new ImageBar(this)),
      m_left(new PathEdit(Velmora::tr("Left image path..."), Velmora::tr("Select left image"))),
      m_right(new PathEdit(Velmora::tr("Right image path..."), Velmora::tr("Select right image"))),
      m_verdict(new NoticeBar(QStringLiteral("imageVerdict"))),
      m_detail(new PixelDetail),
      m_views(new ImageViews(m_detail)),
      m_status(new StatusLine),
      m_reports(host, *this, Velmora::tr("Export report"))
{
    buildLayout();
    connectBar();
    connectViews();
    showImages();
    showState();
}

void ImageCompareWidget::buildLayout()
{
    m_left->lineEdit().setObjectName(QStringLiteral("leftPath"));
    m_right->lineEdit().setObjectName(QStringLiteral("rightPath"));
    auto *inputs = new QHBoxLayout;
    inputs->setSpacing(8);
    inputs->addWidget(m_left, 1);
    inputs->addWidget(m_right, 1);
    auto *body = new QVBoxLayout;
    body->setContentsMargins(8, 4, 8, 4);
    body->setSpacing(6);
    body->addLayout(inputs);
    body->addWidget(m_verdict);
    body->addWidget(m_views, 1);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_bar);
    column->addLayout(body, 1);
    column->addWidget(m_status);
    setFocusProxy(&m_left->lineEdit());
}

void ImageCompareWidget::connectBar()
{
    const auto on = [this](QAction *action, auto slot) { connect(action, &QAction::triggered, this, slot); };
    on(m_bar->compare, &ImageCompareWidget::onCompare);
    on(m_bar->cancel, [this] {
        m_loading.cancel();
        m_mapping.cancel();
    });
    on(m_bar->zoomIn, &ImageCompareWidget::onZoomIn);
    on(m_bar->zoomOut, &ImageCompareWidget::onZoomOut);
    on(m_bar->fit, &ImageCompareWidget::onZoomFit);
    on(m_bar->originalSize, [this] { m_views->setZoom(1); });
    on(m_bar->swapSides, &ImageCompareWidget::onSwapSides);
    on(m_bar->previousDifference, [this] { goToRegion(m_region.previous()); });
    on(m_bar->nextDifference, [this] { goToRegion(m_region.next()); });
    on(m_bar->properties, &ImageCompareWidget::showProperties);
    on(m_bar->exportReport, &ImageCompareWidget::onExport);
    on(m_bar->nextView, [this] {
        constexpr int views = int(ComparisonView::Overlay) + 1;
        m_views->setView(ComparisonView((int(m_views->view()) + 1) % views));
    });
    connect(m_bar, &ImageBar::frameChosen, this, &ImageCompareWidget::onCompare);
}

void ImageCompareWidget::connectViews()
{
    for (PathEdit *edit : {m_left, m_right})
        connect(edit, &PathEdit::submitted, this, &ImageCompareWidget::onCompare);
    connect(m_left, &PathEdit::browseRequested, this, &ImageCompareWidget::onBrowseLeft);
    connect(m_right, &PathEdit::browseRequested, this, &ImageCompareWidget::onBrowseRight);
    connect(m_views, &ImageViews::hoveredImagePixel, m_detail, &PixelDetail::onPixelHovered);
    connect(m_detail, &PixelDetail::toleranceChanged, this, &ImageCompareWidget::onToleranceChanged);
    connect(m_detail, &PixelDetail::antiAliasingChanged, this, [this] { rebuildMap(QString()); });
    connect(m_verdict, &NoticeBar::actionWanted, this, &ImageCompareWidget::showProperties);
    connect(&m_reports, &ReportSaver::failed, this, [this](const QString &message) { m_status->showFailure(message); });
    for (Runner *runner : {&m_loading, &m_mapping})
        connect(runner, &Runner::runningChanged, this, &ImageCompareWidget::showState);
}

// The session as the window knows it ----------------------------------------------------------------------------------

SessionPaths ImageCompareWidget::paths() const
{
    return {m_left->path(), m_right->path(), {}};
}

void ImageCompareWidget::setPaths(const SessionPaths &paths)
{
    m_left->setPath(paths.left);
    m_right->setPath(paths.right);
}

void ImageCompareWidget::dropPaths(const QStringList &paths, QPoint position)
{
    if (paths.isEmpty())
        return;
    if (paths.size() > 1)
        setPaths({paths[0], paths[1], {}});
    else
        (position.x() < width() / 2 ? m_left : m_right)->setPath(paths.first());
    start();
}

QJsonObject ImageCompareWidget::options() const
{
    return {{toleranceKey, m_detail->tolerance()},
            {antiAliasingKey, m_detail->ignoresAntiAliasing()},
            {viewKey, int(m_views->view())}};
}

void ImageCompareWidget::setOptions(const QJsonObject &options)
{
    m_detail->setTolerance(options.value(toleranceKey).toInt());
    m_detail->setIgnoresAntiAliasing(options.value(antiAliasingKey).toBool());
    const int view = options.value(viewKey).toInt();
    m_views->setView(ComparisonView(std::clamp(view, 0, int(ComparisonView::Overlay))));
}

bool ImageCompareWidget::setPendingReport(const QString &path)
{
    m_pendingReport = path;
    return true;
}

void ImageCompareWidget::refreshTheme()
{
    m_bar->refreshTheme();
    m_left->refreshTheme();
    m_right->refreshTheme();
    m_verdict->refreshTheme();
    m_status->refreshTheme();
    if (m_properties)
        m_properties->setRows(propertyRows(m_pair.pictures.left.facts, m_pair.pictures.right.facts));
}

// Loading and comparing -----------------------------------------------------------------------------------------------

DifferenceOptions ImageCompareWidget::differenceOptions() const
{
    return {m_detail->tolerance(), m_detail->ignoresAntiAliasing()};
}

void ImageCompareWidget::browse(PathEdit &edit, const QString &title)
{
    Dialogs::instance().openFile(this, title, edit.path(),
                                 Velmora::tr("Images (*.png *.jpg *.jpeg *.bmp *.gif *.tiff *.webp);;All Files (*)"),
                                 [&edit](const QString &path) {
                                     if (!path.isEmpty())
                                         edit.setPath(path);
                                 });
}

void ImageCompareWidget::onBrowseLeft()
{
    browse(*m_left, Velmora::tr("Select left image"));
}

void ImageCompareWidget::onBrowseRight()
{
    browse(*m_right, Velmora::tr("Select right image"));
}

void ImageCompareWidget::onCompare()
{
    const SessionPaths files = paths();
    if (files.left.isEmpty() || files.right.isEmpty())
        return;
    m_mapping.abandon();
    m_nextMessage.reset();
    // Other files begin with their first frame.
    if (files != m_files)
        m_bar->setFrameCount(1);
    m_loading.start(
        [files, frame = m_bar->frame(), options = differenceOptions()](const CancelFlag &cancel, Progress &progress) {
            return loadImagePair({files.left, files.right}, frame, options, cancel, progress);
        },
        [this, files](auto &&outcome) {
            handOver(std::forward<decltype(outcome)>(outcome), *m_status,
                     [&](const ImagePair &pair) { take(pair, files); });
        },
        [this](const ProgressState &state) { m_status->showProgress(state); });
}

void ImageCompareWidget::take(const ImagePair &pair, const SessionPaths &files)
{
    m_pair = pair;
    m_files = files;
    showImages();
    showMap();
    const auto &[left, right] = m_pair.pictures;
    m_bar->setFrameCount(frames());
    if (!left.isLoaded() || !right.isLoaded()) {
        const bool isLeft = !left.isLoaded();
        m_status->showFailure(Velmora::tr("Cannot load image"),
                              faultText(isLeft ? left : right, isLeft ? files.left : files.right));
        return;
    }
    layout()->activate(); // the verdict has taken room from the images
    onZoomFit();
    if (m_pair.map.outOfMemory)
        m_status->showFailure(Velmora::tr("Not enough memory"));
    else
        m_status->showMessage(sizesText(left.image.size(), right.image.size(), m_detail->tolerance()));
    showTitle();
    Q_EMIT comparisonFinished(files.left, files.right);
    if (!m_pendingReport.isEmpty())
        writeReport(std::exchange(m_pendingReport, {}));
}

void ImageCompareWidget::showImages()
{
    const auto &[left, right] = m_pair.pictures;
    m_views->setImages(m_pair.levels);
    m_views->setCaptions(Velmora::tr("Left: %1").arg(captionOf(left, m_files.left)),
                         Velmora::tr("Right: %1").arg(captionOf(right, m_files.right)));
    m_detail->setImages(left.image, right.image);
    if (m_properties)
        m_properties->setRows(propertyRows(left.facts, right.facts));
}

void ImageCompareWidget::showMap()
{
    m_views->setMap(m_pair.map.levels);
    m_views->showPart({});
    m_region.reset(m_pair.map.map.regions.size());
    showVerdict();
    showState();
}

void ImageCompareWidget::showVerdict()
{
    if (!m_pair.map.levels || m_pair.map.outOfMemory) {
        m_verdict->clear();
        return;
    }
    const QList<KeyedRow> rows = propertyRows(m_pair.pictures.left.facts, m_pair.pictures.right.facts);
    const bool differ =
        std::any_of(rows.begin(), rows.end(), [](const KeyedRow &row) { return row.status != PairStatus::Same; });
    m_verdict->setAction(differ ? Velmora::tr("Other differences...") : QString(),
                         Velmora::tr("What the files say beside the pixels"));
    const auto &[left, right] = m_pair.pictures;
    QString verdict = verdictText(m_pair.map.map, m_pair.sameBytes, frames());
    for (const auto &[picture, path] : {std::pair(&left, m_files.left), std::pair(&right, m_files.right)}) {
        if (picture->isCutOff)
            verdict += u' ' + Velmora::tr("Cut off, so that its last pixels are missing: %1").arg(nameOf(path));
    }
    m_verdict->tell(verdict, left.isCutOff || right.isCutOff ? NoticeBar::Tone::Warning : NoticeBar::Tone::Verdict);
}

void ImageCompareWidget::onToleranceChanged(int value)
{
    const auto &[left, right] = m_pair.pictures;
    // In Chinese whatever the language of the interface is.
    rebuildMap(left.image.size() == right.image.size() ? QStringLiteral("已按容差 %1 重算差异").arg(value) : QString());
}

void ImageCompareWidget::rebuildMap(const QString &message)
{
    const QImage left = m_pair.pictures.left.image;
    const QImage right = m_pair.pictures.right.image;
    if (left.isNull() || right.isNull() || m_loading.isRunning())
        return;
    // While a slider moves, the map that is being made is shown before the next one is begun.
    if (m_mapping.isRunning()) {
        m_nextMessage = message;
        return;
    }
    m_mapping.start(
        [left, right, options = differenceOptions()](const CancelFlag &cancel, Progress &progress) {
            return shownMap(left, right, options, cancel, progress);
        },
        [this, message](auto &&outcome) {
            if (outcome.end == RunEnd::Done)
                takeMap(*outcome.value, message);
            else if (outcome.end == RunEnd::Failed)
                m_status->showFailure(faultText(outcome.fault, Velmora::tr("Not enough memory")));
        },
        [this](const ProgressState &state) { m_status->showProgress(state); });
}

void ImageCompareWidget::takeMap(const ShownMap &map, const QString &message)
{
    m_pair.map = map;
    showMap();
    if (map.outOfMemory)
        m_status->showFailure(Velmora::tr("Not enough memory"));
    else if (!message.isEmpty())
        m_status->showMessage(message);
    if (const std::optional<QString> next = std::exchange(m_nextMessage, {}))
        rebuildMap(*next);
}

void ImageCompareWidget::onSwapSides()
{
    const SessionPaths files = paths();
    setPaths({files.right, files.left, {}});
    std::swap(m_files.left, m_files.right);
    std::swap(m_pair.pictures.left, m_pair.pictures.right);
    std::swap(m_pair.levels.left, m_pair.levels.right);
    showImages();
    showTitle();
    rebuildMap(QString());
}

int ImageCompareWidget::frames() const
{
    return std::max(m_pair.pictures.left.facts.frames, m_pair.pictures.right.facts.frames);
}

void ImageCompareWidget::showTitle()
{
    Q_EMIT tabTitleChanged(Velmora::tr("%1 <-> %2").arg(nameOf(m_files.left), nameOf(m_files.right)));
}

// Looking around ------------------------------------------------------------------------------------------------------

void ImageCompareWidget::onZoomIn()
{
    m_views->setZoom(m_views->zoom() * zoomStep);
}

void ImageCompareWidget::onZoomOut()
{
    m_views->setZoom(m_views->zoom() / zoomStep);
}

void ImageCompareWidget::onZoomFit()
{
    m_views->zoomToFit();
}

void ImageCompareWidget::goToRegion(qsizetype region)
{
    if (region < 0)
        return;
    const QRect &part = m_pair.map.map.regions[region];
    m_views->showPart(part);
    m_status->showMessage(Velmora::tr("Difference %1 of %2: %3 × %4 pixels at (%5, %6)")
                              .arg(region + 1)
                              .arg(m_region.count())
                              .arg(part.width())
                              .arg(part.height())
                              .arg(part.x())
                              .arg(part.y()));
}

void ImageCompareWidget::showState()
{
    const bool runs = m_loading.isRunning() || m_mapping.isRunning();
    const bool isCompared = m_pair.map.levels && !m_pair.map.outOfMemory;
    m_bar->cancel->setEnabled(runs);
    for (QAction *action : {m_bar->previousDifference, m_bar->nextDifference})
        action->setEnabled(m_region.count() > 0);
    for (QAction *action : {m_bar->properties, m_bar->exportReport})
        action->setEnabled(isCompared);
    if (runs)
        m_status->showProgress({});
    else
        m_status->clearProgress();
    if (!m_loading.isRunning())
        Q_EMIT readingEnded();
}

void ImageCompareWidget::showProperties()
{
    if (!m_properties)
        m_properties = new ImagePropertiesDialog(this);
    m_properties->setRows(propertyRows(m_pair.pictures.left.facts, m_pair.pictures.right.facts));
    m_properties->show();
    m_properties->raise();
}

// Reports -------------------------------------------------------------------------------------------------------------

void ImageCompareWidget::onExport()
{
    const QString name = QStringLiteral("%1-%2.html").arg(nameOf(m_files.left), nameOf(m_files.right));
    Dialogs::instance().saveFile(this, Velmora::tr("Export report"), besideFile(m_files.left, name),
                                 Velmora::tr("HTML pages (*.html)"), [this](const QString &path) {
                                     if (!path.isEmpty())
                                         writeReport(path);
                                 });
}

void ImageCompareWidget::writeReport(const QString &path)
{
    if (!m_pair.map.levels || m_pair.map.outOfMemory)
        return;
    const auto &[left, right] = m_pair.pictures;
    ImageReport report;
    report.captions = {Velmora::tr("Left: %1").arg(captionOf(left, m_files.left)),
                       Velmora::tr("Right: %1").arg(captionOf(right, m_files.right))};
    report.verdict = verdictText(m_pair.map.map, m_pair.sameBytes, frames());
    report.tolerance = Velmora::tr("Tolerance: %1").arg(m_detail->tolerance());
    report.properties = propertyRows(left.facts, right.facts);
    report.regions = m_pair.map.map.regions;
    report.map = m_pair.map.levels;
    report.images = m_pair.levels;
    m_reports.write(path, [report](QIODevice &device, const CancelFlag &cancel) {
        return writeImageReport(device, report, cancel);
    });
}

} // namespace velmora
