#include "filetypes/image/pixel_detail.h"

#include "filetypes/image/pixel_grid.h"
#include "session/translate.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QSlider>
#include <QStyle>

namespace velmora {

namespace {

constexpr int largestTolerance = 50;

/// A line on a pixel, broken where the room is narrow. It keeps its height whatever it says, so that nothing below it
/// moves with the mouse.
class PixelLine final : public QLabel {
public:
    PixelLine()
    {
        setWordWrap(true);
        setAlignment(Qt::AlignTop | Qt::AlignLeft);
        setTextFormat(Qt::PlainText);
        setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
        setMinimumWidth(1);
    }

    [[nodiscard]] bool hasHeightForWidth() const override { return false; }

protected:
    void resizeEvent(QResizeEvent *event) override
    {
        QLabel::resizeEvent(event);
        constexpr int padding = 8;
        const QRect room(0, 0, width() - padding, QWIDGETSIZE_MAX);
        const QString longest = QStringLiteral("X:99999 Y:99999  RGB:255,255,255  A:255");
        setFixedHeight(fontMetrics().boundingRect(room, Qt::TextWordWrap, longest).height() + padding);
    }
};

} // namespace

PixelDetail::PixelDetail(QWidget *parent)
    : QGroupBox(Velmora::tr("Pixel detail"), parent),
      m_left(makeView(Velmora::tr("Left"), QStringLiteral("left"))),
      m_right(makeView(Velmora::tr("Right"), QStringLiteral("right"))),
      m_tolerance(new QSlider(Qt::Horizontal)),
      m_toleranceValue(new QLabel),
      m_antiAliasing(new QCheckBox(Velmora::tr("Ignore smoothed edges")))
{
    buildLayout();
    connect(m_tolerance, &QSlider::valueChanged, this, [this](int value) {
        m_toleranceValue->setText(QStringLiteral("%1 ").arg(value));
        Q_EMIT toleranceChanged(value);
    });
    connect(m_antiAliasing, &QCheckBox::toggled, this, &PixelDetail::antiAliasingChanged);
    m_toleranceValue->setText(QStringLiteral("%1 ").arg(0));
    onPixelHovered(-1, -1);
}

void PixelDetail::buildLayout()
{
    auto *views = new QHBoxLayout;
    for (const View &view : {m_left, m_right}) {
        auto *column = new QVBoxLayout;
        column->addWidget(view.info);
        column->addWidget(view.grid, 1);
        column->setSpacing(2);
        views->addLayout(column, 1);
    }
    // In a small window the grids keep their size, and what is below them is scrolled to.
    auto *body = new QWidget;
    auto *column = new QVBoxLayout(body);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(4);
    column->addLayout(makeSettings());
    column->addLayout(views, 1);
    column->addLayout(makeCellButtons());
    auto *area = new QScrollArea;
    area->setFrameShape(QFrame::NoFrame);
    area->setWidgetResizable(true);
    area->setWidget(body);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setMinimumWidth(body->minimumSizeHint().width() + style()->pixelMetric(QStyle::PM_ScrollBarExtent));
    constexpr int linesInSight = 10; // the tolerance, the pixel and most of the grids
    area->setMinimumHeight(linesInSight * fontMetrics().lineSpacing());
    auto *frame = new QVBoxLayout(this);
    frame->setContentsMargins(6, 4, 6, 6);
    frame->addWidget(area);
}

PixelDetail::View PixelDetail::makeView(const QString &caption, const QString &name)
{
    View view{new PixelGrid(caption), new PixelLine, {}};
    view.grid->setObjectName(name + QStringLiteral("Grid"));
    view.info->setObjectName(name + QStringLiteral("PixelInfo"));
    view.info->setStyleSheet(QStringLiteral("QLabel{font-family:Consolas,Courier New,monospace; padding:3px 4px;}"));
    return view;
}

QLayout *PixelDetail::makeSettings()
{
    m_tolerance->setObjectName(QStringLiteral("toleranceSlider"));
    m_tolerance->setRange(0, largestTolerance);
    m_tolerance->setMinimumWidth(60);
    m_tolerance->setToolTip(Velmora::tr("How far red, green and blue may deviate without being a difference"));
    m_toleranceValue->setObjectName(QStringLiteral("toleranceValue"));
    m_toleranceValue->setMinimumWidth(28);
    m_antiAliasing->setObjectName(QStringLiteral("antiAliasingBox"));
    m_antiAliasing->setToolTip(
        Velmora::tr("Pixels that look like the smoothed edge of a shape are shown in yellow and are no differences"));
    auto *label = new QLabel(Velmora::tr("Tolerance:"));
    label->setBuddy(m_tolerance);
    auto *slider = new QHBoxLayout;
    slider->addWidget(label);
    slider->addWidget(m_tolerance, 1);
    slider->addWidget(m_toleranceValue);
    slider->addWidget(m_antiAliasing);
    return slider;
}

QLayout *PixelDetail::makeCellButtons()
{
    auto *fixed = new QPushButton(Velmora::tr("Fixed 16×16 px per grid cell"));
    fixed->setObjectName(QStringLiteral("fixedCellsButton"));
    auto *fit = new QPushButton(Velmora::tr("Fit"));
    fit->setObjectName(QStringLiteral("fitCellsButton"));
    fit->setToolTip(Velmora::tr("Fit pixel grid to panel"));
    connect(fixed, &QPushButton::clicked, this, &PixelDetail::onMagOneToOne);
    connect(fit, &QPushButton::clicked, this, &PixelDetail::onMagFit);
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(fixed);
    buttons->addWidget(fit);
    buttons->addStretch();
    return buttons;
}

void PixelDetail::setImages(const QImage &left, const QImage &right)
{
    m_left.image = left;
    m_right.image = right;
    m_left.grid->setImage(left);
    m_right.grid->setImage(right);
    onPixelHovered(m_hovered.x(), m_hovered.y());
}

void PixelDetail::setTolerance(int tolerance)
{
    m_tolerance->setValue(tolerance);
}

int PixelDetail::tolerance() const
{
    return m_tolerance->value();
}

void PixelDetail::setIgnoresAntiAliasing(bool ignores)
{
    m_antiAliasing->setChecked(ignores);
}

bool PixelDetail::ignoresAntiAliasing() const
{
    return m_antiAliasing->isChecked();
}

void PixelDetail::onPixelHovered(int x, int y)
{
    m_hovered = {x, y};
    showPixel(m_left);
    showPixel(m_right);
}

void PixelDetail::showPixel(View &view) const
{
    view.grid->setHovered(m_hovered.x(), m_hovered.y());
    if (m_hovered.x() < 0 || m_hovered.y() < 0) {
        view.info->setText(Velmora::tr("X:  Y:   RGB:  A:"));
        return;
    }
    if (!view.image.rect().contains(m_hovered)) {
        view.info->clear();
        return;
    }
    const QRgb pixel = view.image.pixel(m_hovered);
    view.info->setText(Velmora::tr("X:%1 Y:%2  RGB:%3,%4,%5  A:%6")
                           .arg(m_hovered.x())
                           .arg(m_hovered.y())
                           .arg(qRed(pixel))
                           .arg(qGreen(pixel))
                           .arg(qBlue(pixel))
                           .arg(qAlpha(pixel)));
}

void PixelDetail::onMagOneToOne()
{
    m_left.grid->setCellMode(PixelGrid::CellMode::Fixed16);
    m_right.grid->setCellMode(PixelGrid::CellMode::Fixed16);
}

void PixelDetail::onMagFit()
{
    m_left.grid->setCellMode(PixelGrid::CellMode::FitToPanel);
    m_right.grid->setCellMode(PixelGrid::CellMode::FitToPanel);
}

} // namespace velmora
