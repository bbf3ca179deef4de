#include "text/view/merge_splitter.h"

#include "session/diff_colours.h"
#include "session/translate.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QSplitterHandle>
#include <QToolTip>

#include <optional>

namespace velmora {

namespace {

constexpr int arrowWidth = 18;

/// One arrow: the difference and the side that it comes from.
struct Arrow {
    qsizetype block = -1;
    Side from = Side::Left;

    friend bool operator==(const Arrow &, const Arrow &) = default;
};

class MergeHandle final : public QSplitterHandle {
public:
    MergeHandle(PaneScene &scene, MergeSplitter *splitter)
        : QSplitterHandle(Qt::Horizontal, splitter), m_scene(scene), m_splitter(*splitter)
    {
        setMouseTracking(true);
        const auto repaint = [this] { update(); };
        connect(&scene, &PaneScene::documentChanged, this, [this] {
            m_hovered.reset(); // the number may be another difference's now
            m_pressed.reset();
            update();
        });
        connect(&scene, &PaneScene::metricsChanged, this, repaint);
        connect(&scene, &PaneScene::scrolled, this, repaint);
        connect(&scene, &PaneScene::currentBlockChanged, this, repaint);
        connect(&scene, &PaneScene::caretMoved, this, repaint);
    }

    [[nodiscard]] QSize sizeHint() const override { return {2 * arrowWidth + 2, 0}; }

protected:
    void paintEvent(QPaintEvent *) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void leaveEvent(QEvent *event) override;
    bool event(QEvent *event) override;

private:
    /// The y of a block's arrows: its first row in sight.
    [[nodiscard]] std::optional<int> arrowY(qsizetype block) const;
    [[nodiscard]] std::optional<Arrow> arrowAt(QPoint point) const;
    void paintArrow(QPainter &painter, const Arrow &arrow, int y) const;

    PaneScene &m_scene;
    MergeSplitter &m_splitter;
    std::optional<Arrow> m_hovered;
    std::optional<Arrow> m_pressed;
};

std::optional<int> MergeHandle::arrowY(qsizetype block) const
{
    const RowLayout &layout = m_scene.layout();
    const RowRange rows = layout.block(block);
    if (!layout.isShown(rows.first))
        return {};
    const qsizetype first = layout.indexOf(rows.first);
    const qsizetype shown = std::max(first, m_scene.top().index);
    if (shown >= first + rows.count)
        return {};
    return int(std::max<qint64>(layout.yOf(shown, m_scene.top()), 0));
}

void MergeHandle::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), diffColour(DiffColour::Gutter));
    painter.fillRect(QRect(0, 0, 1, height()), diffColour(DiffColour::Rule));
    painter.fillRect(QRect(width() - 1, 0, 1, height()), diffColour(DiffColour::Rule));
    if (!m_scene.document())
        return;
    painter.setRenderHint(QPainter::Antialiasing);
    const RowLayout &layout = m_scene.layout();
    const RowRange inSight = layout.inSight(m_scene.top(), height());
    qsizetype painted = -1;
    for (qsizetype index = inSight.first; index < inSight.end(); ++index) {
        const qsizetype block = layout.blockOf(layout.rowAt(index));
        if (block < 0 || block == painted)
            continue;
        painted = block;
        const std::optional<int> y = arrowY(block);
        if (!y)
            continue;
        paintArrow(painter, {block, Side::Left}, *y);
        paintArrow(painter, {block, Side::Right}, *y);
    }
}

void MergeHandle::paintArrow(QPainter &painter, const Arrow &arrow, int y) const
{
    if (!m_splitter.isCopyable(otherSide(arrow.from)))
        return;
    // The arrow that leads to a side stands beside that side.
    const bool toRight = arrow.from == Side::Left;
    const qreal height = m_scene.layout().rowHeight();
    const QPointF middle(toRight ? width() - 1 - arrowWidth / 2.0 : 1 + arrowWidth / 2.0, y + height / 2);
    const qreal reach = 5;
    const qreal forward = toRight ? reach : -reach;
    QPainterPath path(middle + QPointF(-forward, 0));
    path.lineTo(middle + QPointF(forward, 0));
    path.moveTo(middle + QPointF(forward * 0.2, -reach * 0.8));
    path.lineTo(middle + QPointF(forward, 0));
    path.lineTo(middle + QPointF(forward * 0.2, reach * 0.8));
    const bool hovered = m_hovered == arrow;
    if (hovered) {
        const QRectF button(middle.x() - arrowWidth / 2.0 + 1, y + 1, arrowWidth - 2, height - 2);
        painter.setPen(Qt::NoPen);
        painter.setBrush(diffColour(DiffColour::Selection));
        painter.drawRoundedRect(button, 3, 3);
    }
    const bool current = arrow.block == m_scene.currentBlock();
    const DiffColour role = hovered ? DiffColour::SelectedText : current ? DiffColour::Accent : DiffColour::MutedText;
    painter.setPen(QPen(diffColour(role), current || hovered ? 2 : 1.4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(path);
}

std::optional<Arrow> MergeHandle::arrowAt(QPoint point) const
{
    const RowLayout &layout = m_scene.layout();
    const qsizetype index = m_scene.document() ? layout.indexAtY(point.y(), m_scene.top()) : -1;
    const qsizetype block = index >= 0 ? layout.blockOf(layout.rowAt(index)) : -1;
    if (block < 0)
        return {};
    const std::optional<int> y = arrowY(block);
    const Side from = point.x() >= width() / 2 ? Side::Left : Side::Right;
    if (!y || point.y() < *y || point.y() >= *y + layout.rowHeight() || !m_splitter.isCopyable(otherSide(from)))
        return {};
    return Arrow{block, from};
}

void MergeHandle::mousePressEvent(QMouseEvent *event)
{
    m_pressed = event->button() == Qt::LeftButton ? arrowAt(event->position().toPoint()) : std::nullopt;
    if (!m_pressed)
        QSplitterHandle::mousePressEvent(event);
}

void MergeHandle::mouseMoveEvent(QMouseEvent *event)
{
    const std::optional<Arrow> under = arrowAt(event->position().toPoint());
    if (under != m_hovered) {
        m_hovered = under;
        setCursor(under ? Qt::PointingHandCursor : Qt::SplitHCursor);
        update();
    }
    if (!m_pressed && event->buttons() != Qt::NoButton)
        QSplitterHandle::mouseMoveEvent(event);
}

void MergeHandle::mouseReleaseEvent(QMouseEvent *event)
{
    const std::optional<Arrow> pressed = std::exchange(m_pressed, std::nullopt);
    if (!pressed)
        QSplitterHandle::mouseReleaseEvent(event);
    else if (pressed == arrowAt(event->position().toPoint()))
        Q_EMIT m_splitter.copyWanted(pressed->from, m_scene.layout().block(pressed->block).first);
}

void MergeHandle::leaveEvent(QEvent *event)
{
    m_hovered.reset();
    update();
    QSplitterHandle::leaveEvent(event);
}

bool MergeHandle::event(QEvent *event)
{
    if (event->type() == QEvent::ToolTip) {
        auto *help = static_cast<QHelpEvent *>(event);
        const std::optional<Arrow> arrow = arrowAt(help->pos());
        if (arrow) {
            QToolTip::showText(help->globalPos(),
                               arrow->from == Side::Left
                                   ? Velmora::tr("Copy this difference to the right side; unlocks the texts")
                                   : Velmora::tr("Copy this difference to the left side; unlocks the texts"),
                               this);
        } else {
            QToolTip::hideText();
        }
        return true;
    }
    return QSplitterHandle::event(event);
}

} // namespace

MergeSplitter::MergeSplitter(PaneScene &scene, QWidget *parent) : QSplitter(Qt::Horizontal, parent), m_scene(scene)
{
    setHandleWidth(2 * arrowWidth + 2);
}

void MergeSplitter::setCopyable(Side side, bool possible)
{
    m_copyable[side] = possible;
    update();
}

QSplitterHandle *MergeSplitter::createHandle()
{
    return new MergeHandle(m_scene, this);
}

} // namespace velmora
