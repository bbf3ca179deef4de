#include "filetypes/image/image_bar.h"

#include "session/translate.h"

#include <QLabel>
#include <QSignalBlocker>
#include <QSpinBox>

namespace velmora {

ImageBar::ImageBar(QWidget *session) : SessionBar(session)
{
    addCompare(Velmora::tr("Load and compare the two images"));
    addCancel(Velmora::tr("Cancel what is being done"));
    addSeparator();
    addDifferenceSteps();
    addSeparator();
    addZoom();
    addSeparator();
    addSwapSides(Velmora::tr("Exchange left and right"));
    properties = add({"showDetailsAction",
                      Velmora::tr("Properties"),
                      QStringLiteral("info.png"),
                      {QKeySequence(Qt::Key_F4)},
                      Velmora::tr("What the files say beside the pixels")});
    exportReport = add({"exportAction",
                        Velmora::tr("Export report"),
                        QStringLiteral("report.png"),
                        {},
                        Velmora::tr("Write the result as an HTML page")});
    nextView = add({"nextViewAction", Velmora::tr("Next view"), {}, {Qt::CTRL | Qt::Key_B}});
    addFrames();
    refreshTheme();
}

void ImageBar::addZoom()
{
    zoomIn = add({"zoomInAction",
                  Velmora::tr("Zoom in"),
                  QStringLiteral("zoomin.png"),
                  {Qt::CTRL | Qt::Key_Plus, Qt::CTRL | Qt::Key_Equal}});
    zoomOut =
        add({"zoomOutAction", Velmora::tr("Zoom out"), QStringLiteral("zoomout.png"), {Qt::CTRL | Qt::Key_Minus}});
    fit = add({"fitAction", Velmora::tr("Fit"), QStringLiteral("fit.png"), {Qt::CTRL | Qt::Key_0}});
    originalSize = add({"originalSizeAction", Velmora::tr("Original size"), {}, {Qt::CTRL | Qt::Key_1}});
}

void ImageBar::addFrames()
{
    m_frame = new QSpinBox(this);
    m_frame->setObjectName(QStringLiteral("frameBox"));
    m_frame->setMinimum(1);
    m_frame->setKeyboardTracking(false);
    m_frame->setToolTip(Velmora::tr("Which frame of the animations or page of the files is compared"));
    auto *label = new QLabel(Velmora::tr("Frame:"), this);
    label->setBuddy(m_frame);
    label->setContentsMargins(4, 0, 4, 0);
    m_frameParts = {addSeparator(), addWidget(label), addWidget(m_frame)};
    connect(m_frame, &QSpinBox::valueChanged, this, &ImageBar::frameChosen);
    setFrameCount(1);
}

void ImageBar::setFrameCount(int count)
{
    const QSignalBlocker blocker(m_frame);
    m_frame->setMaximum(count);
    m_frame->setSuffix(QStringLiteral(" / %1").arg(count));
    for (QAction *part : m_frameParts)
        part->setVisible(count > 1);
}

int ImageBar::frame() const
{
    return m_frame->value() - 1;
}

} // namespace velmora
