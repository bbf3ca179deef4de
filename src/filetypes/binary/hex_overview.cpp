#include "filetypes/binary/hex_overview.h"

#include "session/diff_colours.h"
#include "session/translate.h"

#include <QMouseEvent>
#include <QPainter>

namespace velmora {

namespace {

constexpr int stripWidth = 18;
constexpr int inset = 3;
constexpr int leastFrame = 6;

DiffColour markOf(const HexRow &place)
{
    if (place.count.right == 0)
        return DiffColour::RemovedStrong;
    return place.count.left == 0 ? DiffColour::AddedStrong : DiffColour::ModifiedStrong;
}

} // namespace

HexOverview::HexOverview(HexScene &scene, QWidget *parent) : QWidget(parent), m_scene(scene)
{
    setObjectName(QStringLiteral("overviewStrip"));
    setFixedWidth(stripWidth);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setToolTip(Velmora::tr("Overview of all differences; press or drag to go there"));
    setAccessibleName(Velmora::tr("Overview of differences"));
    connect(&scene, &HexScene::documentChanged, this, &HexOverview::refresh);
    const auto repaint = [this] { update(); };
    connect(&scene, &HexScene::scrolled, this, repaint);
    connect(&scene, &HexScene::changed, this, repaint);
}

void HexOverview::refresh()
{
    m_marks = QPixmap();
    update();
}

int HexOverview::yOf(qint64 row) const
{
    return int(double(row) / double(scale()) * height());
}

void HexOverview::paintMarks()
{
    m_marks = QPixmap(size() * devicePixelRatioF());
    m_marks.setDevicePixelRatio(devicePixelRatioF());
    m_marks.fill(diffColour(DiffColour::Gutter));
    QPainter painter(&m_marks);
    const HexDocument *document = m_scene.document();
    const qint64 rows = m_scene.rowCount();
    for (int y = 0; document && y < height(); ++y) {
        const qint64 first = qint64(double(y) / height() * double(scale()));
        const qint64 end = std::min(rows, std::max(first + 1, qint64(double(y + 1) / height() * double(scale()))));
        if (first < end && document->isBeyondList(first))
            painter.fillRect(inset, y, width() - 2 * inset, 1, diffColour(DiffColour::FillerHatch));
        else if (first < end && document->differsWithin(first, end))
            painter.fillRect(inset, y, width() - 2 * inset, 2, diffColour(markOf(document->rows.at(first))));
    }
}

void HexOverview::paintEvent(QPaintEvent *)
{
    if (m_marks.isNull() || m_marks.devicePixelRatio() != devicePixelRatioF())
        paintMarks();
    QPainter painter(this);
    painter.drawPixmap(0, 0, m_marks);
    painter.fillRect(QRect(0, 0, 1, height()), diffColour(DiffColour::Rule));
    if (m_scene.lastTop() > 0) {
        const int length = std::max(yOf(m_scene.visibleRows()), leastFrame);
        const int y = std::min(yOf(m_scene.top()), height() - length);
        QColor inside = diffColour(DiffColour::MutedText);
        painter.setPen(inside);
        inside.setAlpha(40);
        painter.setBrush(inside);
        painter.drawRect(0, y, width() - 1, length - 1);
    }
    if (m_scene.currentRow() >= 0)
        painter.fillRect(0, std::min(yOf(m_scene.currentRow()), height() - 2), width(), 2,
                         diffColour(DiffColour::Accent));
}

void HexOverview::resizeEvent(QResizeEvent *)
{
    m_marks = QPixmap();
}

void HexOverview::goTo(int y)
{
    const qint64 row = qint64(double(std::max(y, 0)) / std::max(height(), 1) * double(scale()));
    m_scene.setTop(row - m_scene.visibleRows() / 2);
}

void HexOverview::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        goTo(event->pos().y());
}

void HexOverview::mouseMoveEvent(QMouseEvent *event)
{
    if (event->buttons().testFlag(Qt::LeftButton))
        goTo(event->pos().y());
}

} // namespace velmora
