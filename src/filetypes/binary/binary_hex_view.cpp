#include "filetypes/binary/binary_hex_view.h"

#include "session/diff_colours.h"
#include "session/translate.h"

#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>

#include <limits>
#include <optional>

namespace velmora {

namespace {

constexpr qint64 barLimit = std::numeric_limits<int>::max();

QFont hexFont()
{
    QFont font(
        QStringList{QStringLiteral("Consolas"), QStringLiteral("DejaVu Sans Mono"), QStringLiteral("Courier New")},
        BinaryHexView::usualPoints);
    font.setStyleHint(QFont::Monospace);
    font.setFixedPitch(true);
    return font;
}

} // namespace

BinaryHexView::BinaryHexView(HexScene &scene, Side side, QWidget *parent)
    : QAbstractScrollArea(parent), m_scene(scene), m_side(side)
{
    setFont(hexFont());
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setFocusPolicy(Qt::NoFocus);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    viewport()->setCursor(Qt::IBeamCursor);
    setAcceptDrops(false);
    viewport()->setAcceptDrops(false);
    setAccessibleName(side == Side::Left ? Velmora::tr("Bytes of the left file")
                                         : Velmora::tr("Bytes of the right file"));
    connect(&scene, &HexScene::documentChanged, this, &BinaryHexView::updateGeometryOfRows);
    connect(&scene, &HexScene::scrolled, this, &BinaryHexView::updateBars);
    connect(&scene, &HexScene::changed, this, [this] {
        describe();
        viewport()->update();
    });
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, &BinaryHexView::takeBar);
    updateGeometryOfRows();
}

void BinaryHexView::setPointSize(int points)
{
    constexpr int least = 6;
    constexpr int most = 36;
    QFont changed = font();
    changed.setPointSize(std::clamp(points, least, most));
    setFont(changed);
}

bool BinaryHexView::event(QEvent *event)
{
    if (event->type() == QEvent::FontChange)
        updateGeometryOfRows();
    return QAbstractScrollArea::event(event);
}

void BinaryHexView::updateGeometryOfRows()
{
    const HexDocument *document = m_scene.document();
    m_geometry = HexGeometry(
        font(), document ? std::max(document->source(Side::Left).size(), document->source(Side::Right).size()) : 0);
    m_scene.setVisibleRows(viewport()->height() / m_geometry.rowHeight());
    updateBars();
}

void BinaryHexView::updateBars()
{
    m_showsScene = true;
    verticalScrollBar()->setRange(0, int(std::min(m_scene.lastTop(), barLimit)));
    verticalScrollBar()->setPageStep(int(m_scene.visibleRows()));
    verticalScrollBar()->setSingleStep(1);
    verticalScrollBar()->setValue(int(std::min(m_scene.top(), barLimit)));
    horizontalScrollBar()->setRange(0, std::max(m_geometry.width() - viewport()->width(), 0));
    horizontalScrollBar()->setPageStep(viewport()->width());
    horizontalScrollBar()->setSingleStep(m_geometry.characterCell(0).width());
    m_showsScene = false;
    viewport()->update();
}

void BinaryHexView::takeBar(int value)
{
    // At its end the bar stands for all rows that it cannot count.
    if (!m_showsScene && (value < barLimit || m_scene.top() < barLimit))
        m_scene.setTop(value);
}

void BinaryHexView::scrollContentsBy(int, int)
{
    viewport()->update();
}

void BinaryHexView::resizeEvent(QResizeEvent *)
{
    m_scene.setVisibleRows(viewport()->height() / m_geometry.rowHeight());
    updateBars();
}

void BinaryHexView::paintEvent(QPaintEvent *)
{
    QPainter painter(viewport());
    painter.fillRect(viewport()->rect(), diffColour(DiffColour::Background));
    if (!m_scene.document())
        return;
    painter.setFont(font());
    HexPainter rows(painter, m_scene, m_side, m_geometry, hasFocus());
    const qint64 first = m_scene.top();
    const qint64 room = viewport()->height() / m_geometry.rowHeight() + 1;
    const qint64 end = std::min(m_scene.rowCount(), first + room);
    for (qint64 row = first; row < end; ++row) {
        rows.paintRow(row, -horizontalScrollBar()->value(), int(row - first) * m_geometry.rowHeight(),
                      viewport()->width());
    }
}

qint64 BinaryHexView::offsetAt(QPoint position) const
{
    if (m_scene.rowCount() == 0)
        return -1;
    const int below = position.y() < 0 ? -1 : position.y() / m_geometry.rowHeight();
    const qint64 row = std::clamp<qint64>(m_scene.top() + below, 0, m_scene.rowCount() - 1);
    const HexRow place = m_scene.document()->rows.at(row);
    const int column = m_geometry.columnAt(position.x() + horizontalScrollBar()->value());
    return place.offset[m_side] + std::min(column, std::max(place.count[m_side] - 1, 0));
}

/// The place so many rows below the caret.
qint64 BinaryHexView::offsetRows(qint64 rows) const
{
    const RowMap &map = m_scene.document()->rows;
    const qint64 row = std::clamp<qint64>(m_scene.caretRow() + rows, 0, map.rowCount() - 1);
    const HexRow place = map.at(row);
    // A row in which only the other side has bytes is passed over.
    if (place.count[m_side] == 0)
        return place.offset[m_side] - (rows < 0 ? 1 : 0);
    return place.offset[m_side] + std::min(m_scene.caretColumn(), place.count[m_side] - 1);
}

void BinaryHexView::keyPressEvent(QKeyEvent *event)
{
    const HexDocument *document = m_scene.document();
    if (!document || m_scene.rowCount() == 0) {
        QAbstractScrollArea::keyPressEvent(event);
        return;
    }
    if (m_scene.caret().offset < 0 || m_scene.caret().side != m_side)
        m_scene.moveCaret(m_side, document->rows.at(m_scene.top()).offset[m_side]);
    const qint64 offset = m_scene.caret().offset;
    const bool ctrl = event->modifiers().testFlag(Qt::ControlModifier);
    const auto target = [&]() -> std::optional<qint64> {
        switch (event->key()) {
        case Qt::Key_Left:
            return offset - 1;
        case Qt::Key_Right:
            return offset + 1;
        case Qt::Key_Up:
            return offsetRows(-1);
        case Qt::Key_Down:
            return offsetRows(1);
        case Qt::Key_PageUp:
            return offsetRows(-m_scene.visibleRows());
        case Qt::Key_PageDown:
            return offsetRows(m_scene.visibleRows());
        case Qt::Key_Home:
            return ctrl ? 0 : offset - m_scene.caretColumn();
        case Qt::Key_End:
            return ctrl ? document->source(m_side).size() - 1
                        : offset - m_scene.caretColumn() + document->rows.at(m_scene.caretRow()).count[m_side] - 1;
        default:
            return std::nullopt;
        }
    }();
    if (!target || event->modifiers().testFlag(Qt::AltModifier)) {
        QAbstractScrollArea::keyPressEvent(event);
        return;
    }
    m_scene.moveCaret(m_side, *target, event->modifiers().testFlag(Qt::ShiftModifier));
}

void BinaryHexView::mousePressEvent(QMouseEvent *event)
{
    setFocus(Qt::MouseFocusReason); // the viewport, which was clicked, takes none
    const ByteSelection selected = m_scene.selection();
    const qint64 offset = offsetAt(event->pos());
    const bool keepsSelection = event->button() == Qt::RightButton && selected.side == m_side &&
                                offset >= selected.begin && offset < selected.end;
    if (!keepsSelection)
        m_scene.moveCaret(m_side, offset, event->modifiers().testFlag(Qt::ShiftModifier));
}

void BinaryHexView::mouseMoveEvent(QMouseEvent *event)
{
    if (event->buttons().testFlag(Qt::LeftButton))
        m_scene.moveCaret(m_side, offsetAt(event->pos()), true);
}

void BinaryHexView::wheelEvent(QWheelEvent *event)
{
    constexpr int step = 120;
    constexpr int rowsPerStep = 3;
    const int steps = event->angleDelta().y();
    if (event->modifiers().testFlag(Qt::ControlModifier)) {
        event->ignore(); // the session changes the size of both
    } else if (std::abs(event->angleDelta().x()) > std::abs(steps)) {
        QAbstractScrollArea::wheelEvent(event);
    } else {
        m_wheel += steps * rowsPerStep;
        m_scene.setTop(m_scene.top() - m_wheel / step);
        m_wheel %= step;
        event->accept();
    }
}

void BinaryHexView::contextMenuEvent(QContextMenuEvent *event)
{
    const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
    Q_EMIT contextMenuWanted(byKey ? mapToGlobal(QPoint(0, 0)) : event->globalPos());
}

void BinaryHexView::focusInEvent(QFocusEvent *event)
{
    QAbstractScrollArea::focusInEvent(event);
    viewport()->update();
}

void BinaryHexView::focusOutEvent(QFocusEvent *event)
{
    QAbstractScrollArea::focusOutEvent(event);
    viewport()->update();
}

void BinaryHexView::describe()
{
    const HexScene::Caret &caret = m_scene.caret();
    if (caret.side != m_side || caret.offset < 0)
        return;
    const RowBytes bytes = readRow(m_scene.document()->source(m_side), caret.offset, 1);
    setAccessibleDescription(QStringLiteral("%1: %2").arg(
        QString::number(caret.offset, 16).toUpper(),
        QString::number(uint(uchar(bytes.bytes[0])), 16).toUpper().rightJustified(2, u'0')));
}

} // namespace velmora
