#include "filetypes/image/image_views.h"

#include "session/frame/elided_label.h"
#include "session/translate.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <QSlider>

#include <algorithm>

namespace velmora {

namespace {

constexpr int wholeShare = 100; // of the slider

QVBoxLayout *columnIn(QGroupBox *box)
{
    auto *column = new QVBoxLayout(box);
    column->setContentsMargins(6, 4, 6, 6);
    column->setSpacing(4);
    return column;
}

} // namespace

ImageViews::ImageViews(QWidget *detail, QWidget *parent)
    : QWidget(parent),
      m_left(new ImageLabel),
      m_right(new ImageLabel),
      m_map(new ComparisonLabel),
      m_mapBox(new QGroupBox),
      m_leftCaption(new ElidedLabel),
      m_rightCaption(new ElidedLabel),
      m_view(new QComboBox),
      m_share(new QSlider(Qt::Horizontal))
{
    m_left->setObjectName(QStringLiteral("leftImage"));
    m_right->setObjectName(QStringLiteral("rightImage"));
    m_map->setObjectName(QStringLiteral("diffImage"));
    m_leftCaption->setObjectName(QStringLiteral("leftCaption"));
    m_rightCaption->setObjectName(QStringLiteral("rightCaption"));
    auto *grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(6);
    grid->addWidget(makeSide(Velmora::tr("Left original"), m_leftCaption, m_left), 0, 0);
    grid->addWidget(makeSide(Velmora::tr("Right original"), m_rightCaption, m_right), 0, 1);
    grid->addWidget(detail, 1, 0);
    grid->addWidget(makeMap(), 1, 1);
    for (int i = 0; i < 2; ++i) {
        grid->setRowStretch(i, 1);
        grid->setColumnStretch(i, 1);
    }
    connectLabels();
    connectScrolling();
    m_areas.first()->viewport()->installEventFilter(this);
}

QScrollArea *ImageViews::addArea(QGroupBox *box, ImageLabel *label)
{
    auto *area = new QScrollArea;
    area->setWidgetResizable(false);
    area->setAlignment(Qt::AlignHCenter | Qt::AlignVCenter);
    area->setWidget(label);
    box->layout()->addWidget(area);
    m_areas.append(area);
    return area;
}

QGroupBox *ImageViews::makeSide(const QString &title, ElidedLabel *caption, ImageLabel *label)
{
    auto *box = new QGroupBox(title);
    caption->setMinimumHeight(m_view->sizeHint().height()); // so that what fits here fits beside the map's row, too
    columnIn(box)->addWidget(caption);
    addArea(box, label);
    return box;
}

QGroupBox *ImageViews::makeMap()
{
    m_view->setObjectName(QStringLiteral("viewBox"));
    for (const QString &view :
         {Velmora::tr("Diff map"), Velmora::tr("Blink"), Velmora::tr("Swipe"), Velmora::tr("Overlay")})
        m_view->addItem(view);
    m_view->setToolTip(Velmora::tr("How both images are shown in one place (Ctrl+B)"));
    m_share->setObjectName(QStringLiteral("shareSlider"));
    m_share->setRange(0, wholeShare);
    m_share->setValue(wholeShare / 2);
    m_share->setToolTip(Velmora::tr("From the left image to the right one"));
    m_share->hide();
    m_mapBox->setTitle(Velmora::tr("Diff map (red = different)"));
    auto *row = new QHBoxLayout;
    row->addWidget(m_view);
    row->addWidget(m_share, 1);
    row->addStretch();
    columnIn(m_mapBox)->addLayout(row);
    addArea(m_mapBox, m_map);
    connect(m_view, &QComboBox::currentIndexChanged, this, [this](int view) { setView(ComparisonView(view)); });
    connect(m_share, &QSlider::valueChanged, this, [this](int share) { m_map->setShare(double(share) / wholeShare); });
    connect(m_map, &ComparisonLabel::shareChanged, this, [this](double share) {
        const QSignalBlocker blocker(m_share);
        m_share->setValue(int(share * wholeShare));
    });
    return m_mapBox;
}

void ImageViews::connectLabels()
{
    for (ImageLabel *label : {m_left, m_right, static_cast<ImageLabel *>(m_map)}) {
        connect(label, &ImageLabel::zoomChanged, this, &ImageViews::takeZoom);
        connect(label, &ImageLabel::hoveredImagePixel, this, &ImageViews::hoveredImagePixel);
    }
}

void ImageViews::connectScrolling()
{
    for (const QScrollArea *area : std::as_const(m_areas)) {
        connect(area->horizontalScrollBar(), &QScrollBar::valueChanged, this,
                [this](int value) { takeScroll(Qt::Horizontal, value); });
        connect(area->verticalScrollBar(), &QScrollBar::valueChanged, this,
                [this](int value) { takeScroll(Qt::Vertical, value); });
    }
}

void ImageViews::takeZoom(double factor)
{
    m_fits = m_isFitting;
    for (ImageLabel *label : {m_left, m_right, static_cast<ImageLabel *>(m_map)})
        label->setZoom(factor);
}

void ImageViews::takeScroll(Qt::Orientation orientation, int value)
{
    if (m_isScrolling)
        return;
    m_isScrolling = true;
    for (const QScrollArea *area : std::as_const(m_areas))
        (orientation == Qt::Horizontal ? area->horizontalScrollBar() : area->verticalScrollBar())->setValue(value);
    m_isScrolling = false;
}

void ImageViews::setImages(const Sides<std::shared_ptr<const ImageLevels>> &images)
{
    m_left->setSource(images.left);
    m_right->setSource(images.right);
    m_map->setSides(images.left, images.right);
}

void ImageViews::setMap(std::shared_ptr<const ImageLevels> map)
{
    m_map->setSource(std::move(map));
}

void ImageViews::setCaptions(const QString &left, const QString &right)
{
    m_leftCaption->setText(left);
    m_rightCaption->setText(right);
}

void ImageViews::zoomToFit()
{
    if (!m_left->hasImage())
        return;
    constexpr int edge = 4;
    const QSize room = m_areas.first()->viewport()->size() - QSize(edge, edge);
    const QSize image = m_left->imageSize().expandedTo({1, 1});
    const double zoom = std::min(double(room.width()) / image.width(), double(room.height()) / image.height());
    if (zoom <= 0)
        return;
    m_isFitting = true;
    m_left->setZoom(zoom);
    m_isFitting = false;
    m_fits = true;
}

bool ImageViews::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Resize && m_fits && !m_isFitting) {
        zoomToFit();
        zoomToFit(); // into the room of scroll bars that are gone now
    }
    return QWidget::eventFilter(watched, event);
}

void ImageViews::setView(ComparisonView view)
{
    m_view->setCurrentIndex(int(view));
    m_map->setView(view);
    m_mapBox->setTitle(view == ComparisonView::Map ? Velmora::tr("Diff map (red = different)")
                                                   : Velmora::tr("Both images in one place"));
    m_share->setVisible(view == ComparisonView::Swipe || view == ComparisonView::Overlay);
}

void ImageViews::showPart(const QRect &part)
{
    for (ImageLabel *label : {m_left, m_right, static_cast<ImageLabel *>(m_map)})
        label->setMark(part);
    if (part.isEmpty())
        return;
    const QRect shown = m_map->shownAt(part);
    QScrollArea *area = m_areas.last();
    area->ensureVisible(shown.center().x(), shown.center().y(), area->viewport()->width() / 2,
                        area->viewport()->height() / 2);
}

} // namespace velmora
