#include "text/view/overview_strip.h"

#include "session/diff_colours.h"
#include "session/translate.h"

#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

namespace velmora {

namespace {

constexpr int stripWidth = 24;
constexpr int markInset = 3;
constexpr int leastMarkHeight = 2;
constexpr int leastFrameHeight = 8;

} // namespace

OverviewStrip::OverviewStrip(PaneScene &scene, QWidget *parent) : QWidget(parent), m_scene(scene)
{
    setObjectName(QStringLiteral("overviewStrip"));
    setFixedWidth(stripWidth);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setToolTip(Velmora::tr("Overview of all differences; press or drag to go there"));
    setAccessibleName(Velmora::tr("Overview of differences"));
    connect(&scene, &PaneScene::documentChanged, this, &OverviewStrip::refresh);
    connect(&scene, &PaneScene::metricsChanged, this, &OverviewStrip::refresh);
    const auto repaint = [this] { update(); };
    connect(&scene, &PaneScene::scrolled, this, repaint);
    connect(&scene, &PaneScene::currentBlockChanged, this, repaint);
}

void OverviewStrip::refresh()
{
    m_marks = QPixmap();
    update();
}

qsizetype OverviewStrip::scale() const
{
    return std::max(m_scene.layout().count(), m_scene.layout().rowsPerPage(m_scene.viewportHeight()));
}

QSize OverviewStrip::sizeHint() const
{
    return {stripWidth, 200};
}

void OverviewStrip::resizeEvent(QResizeEvent *)
{
    m_marks = QPixmap();
}

void OverviewStrip::paintMarks()
{
    const qreal ratio = devicePixelRatioF();
    m_marks = QPixmap(size() * ratio);
    m_marks.setDevicePixelRatio(ratio);
    m_marks.fill(diffColour(DiffColour::Gutter));
    const RowLayout &layout = m_scene.layout();
    const qsizetype rowsInAll = scale();
    QPainter painter(&m_marks);
    const int half = (width() - 2 * markInset - 2) / 2;
    const int rightX = width() - markInset - half;
    const auto mark = [&painter](int x, int y, int markWidth, DiffColour role) {
        painter.fillRect(QRect(x, y, markWidth, leastMarkHeight), diffColour(role));
    };
    for (int y = 0; y < height(); ++y) {
        const qsizetype first = y * rowsInAll / height();
        const RowRange rows{first, std::max<qsizetype>((y + 1) * rowsInAll / height() - first, 1)};
        if (layout.holds(TextRowState::Modified, rows)) {
            mark(markInset, y, half, DiffColour::ModifiedStrong);
            mark(rightX, y, half, DiffColour::ModifiedStrong);
        }
        if (layout.holds(TextRowState::Removed, rows))
            mark(markInset, y, half, DiffColour::RemovedStrong);
        if (layout.holds(TextRowState::Added, rows))
            mark(rightX, y, half, DiffColour::AddedStrong);
    }
}

QRect OverviewStrip::frame() const
{
    const qsizetype shown = m_scene.layout().rowsPerPage(m_scene.viewportHeight());
    const qsizetype hidden = scale() - shown;
    if (m_scene.layout().count() == 0 || hidden == 0)
        return {};
    const int length = std::max(int(shown * height() / scale()), leastFrameHeight);
    const int y = int(m_scene.top().index * (height() - length) / hidden);
    return {0, y, width(), std::min(length, height())};
}

void OverviewStrip::paintEvent(QPaintEvent *)
{
    if (m_marks.isNull() || m_marks.devicePixelRatio() != devicePixelRatioF())
        paintMarks();
    QPainter painter(this);
    painter.drawPixmap(0, 0, m_marks);
    painter.fillRect(QRect(0, 0, 1, height()), diffColour(DiffColour::Rule));
    const QRect inSight = frame();
    if (!inSight.isEmpty()) {
        QColor inside = diffColour(DiffColour::MutedText);
        inside.setAlpha(40);
        painter.fillRect(inSight, inside);
        painter.setPen(diffColour(DiffColour::MutedText));
        painter.drawRect(inSight.adjusted(0, 0, -1, -1));
    }
    const qsizetype block = m_scene.currentBlock();
    if (block >= 0) {
        const qsizetype index = m_scene.layout().indexOf(m_scene.layout().block(block).first);
        const int y = int(std::max<qsizetype>(index, 0) * height() / scale());
        painter.fillRect(QRect(0, std::min(y, height() - 2), width(), 2), diffColour(DiffColour::Accent));
    }
}

void OverviewStrip::showPlace(int y)
{
    const qsizetype index = y * scale() / std::max(height(), 1);
    m_scene.scrollToTop(index - m_scene.layout().rowsPerPage(m_scene.viewportHeight()) / 2);
}

void OverviewStrip::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        showPlace(int(event->position().y()));
}

void OverviewStrip::mouseMoveEvent(QMouseEvent *event)
{
    if (event->buttons().testFlag(Qt::LeftButton))
        showPlace(int(event->position().y()));
}

void OverviewStrip::wheelEvent(QWheelEvent *event)
{
    event->ignore(); // the view scrolls
}

} // namespace velmora
