#include "folder/usage/usage_map.h"

#include "core/visible_name.h"
#include "session/diff_colours.h"
#include "session/plain_text.h"
#include "session/shown_path.h"
#include "session/theme.h"
#include "session/translate.h"

#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QLinearGradient>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>

namespace velmora {

namespace {

struct LegendEntry {
    QString text;
    QColor colour;
};

QList<LegendEntry> legend(UsageColouring colouring)
{
    if (colouring == UsageColouring::Growth)
        return {{Velmora::tr("Grown"), growthColour(1, 1)},
                {Velmora::tr("As before"), growthColour(1, 0)},
                {Velmora::tr("Shrunk"), growthColour(1, -1)}};
    QList<LegendEntry> entries;
    for (int kind = 1; kind <= fileKindCount; ++kind) // what is nothing in particular comes last
        entries.append({fileKindText(FileKind(kind % fileKindCount)), fileKindColour(FileKind(kind % fileKindCount))});
    return entries;
}

} // namespace

UsageMap::UsageMap(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("usageMap"));
    setAccessibleName(Velmora::tr("Map of the space"));
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void UsageMap::setResult(SharedUsage result)
{
    m_result = std::move(result);
    m_shown = 0;
    m_current = m_result && !tree().isEmpty() ? 0 : -1;
    redraw();
}

void UsageMap::setColouring(UsageColouring colouring)
{
    m_colouring = colouring;
    redraw();
}

void UsageMap::setCurrentNode(qint32 node)
{
    if (!m_result || node < 0 || node >= tree().size() || node == m_current)
        return;
    m_current = node;
    if (node < m_shown || node >= tree().node(m_shown).end)
        showFolder(0);
    update();
}

void UsageMap::showFolder(qint32 node)
{
    if (!m_result || node < 0)
        return;
    while (!tree().node(node).isFolder)
        node = tree().node(node).parent;
    if (node == m_shown)
        return;
    m_shown = node;
    redraw();
}

// Places --------------------------------------------------------------------------------------------------------------

QList<UsageMap::Mark> UsageMap::legendMarks() const
{
    const int line = fontMetrics().height() + 4;
    const int box = line - 8;
    QList<Mark> marks;
    QPoint place(2, 0);
    for (const LegendEntry &entry : legend(m_colouring)) {
        const int width = box + 4 + fontMetrics().horizontalAdvance(entry.text) + 12;
        if (place.x() > 2 && place.x() + width > this->width())
            place = {2, place.y() + line};
        marks.append({place, entry.text, entry.colour});
        place.rx() += width;
    }
    for (Mark &mark : marks) // they stand at the foot
        mark.place.ry() += height() - place.y() - line;
    return marks;
}

QRect UsageMap::mapRoom() const
{
    return rect().adjusted(0, 0, 0, legendMarks().constFirst().place.y() - height() - 4);
}

const UsageTile *UsageMap::tileOf(qint32 node) const
{
    for (; node >= m_shown && node >= 0; node = tree().node(node).parent) {
        const auto found =
            std::find_if(m_tiles.begin(), m_tiles.end(), [node](const UsageTile &tile) { return tile.node == node; });
        if (found != m_tiles.end())
            return &*found;
    }
    return nullptr;
}

QRect UsageMap::rectOf(qint32 node) const
{
    const UsageTile *const tile = m_result ? tileOf(node) : nullptr;
    return tile ? tile->rect.toAlignedRect() : QRect();
}

qint32 UsageMap::nodeAt(QPoint place) const
{
    // What is in a folder comes after it.
    const auto found = std::find_if(m_tiles.rbegin(), m_tiles.rend(),
                                    [place](const UsageTile &tile) { return tile.rect.contains(place); });
    return found == m_tiles.rend() ? -1 : found->node;
}

void UsageMap::mark(qint32 node)
{
    if (node < 0 || node == m_current)
        return;
    m_current = node;
    update();
    Q_EMIT currentChanged(node);
}

// Input ---------------------------------------------------------------------------------------------------------------

void UsageMap::mousePressEvent(QMouseEvent *event)
{
    setFocus(Qt::MouseFocusReason);
    if (event->button() == Qt::BackButton && m_result)
        showFolder(tree().node(m_shown).parent);
    else
        mark(nodeAt(event->pos()));
}

void UsageMap::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        showFolder(nodeAt(event->pos()));
}

void UsageMap::step(int key)
{
    const UsageTree::Node &here = tree().node(m_current);
    if (key == Qt::Key_Up) {
        mark(m_current == m_shown ? -1 : here.parent);
    } else if (key == Qt::Key_Down) {
        mark(here.end > m_current + 1 ? m_current + 1 : -1);
    } else if (m_current != m_shown) {
        const qint32 end = tree().node(here.parent).end;
        if (key == Qt::Key_Right) {
            mark(here.end < end ? here.end : -1);
            return;
        }
        qint32 before = -1;
        for (qint32 node = here.parent + 1; node < m_current; node = tree().node(node).end)
            before = node;
        mark(before);
    }
}

void UsageMap::keyPressEvent(QKeyEvent *event)
{
    if (!m_result || m_current < 0 || (event->modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier)
        return QWidget::keyPressEvent(event);
    switch (event->key()) {
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Up:
    case Qt::Key_Down:
        return step(event->key());
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return showFolder(m_current);
    case Qt::Key_Backspace:
        return showFolder(tree().node(m_shown).parent);
    case Qt::Key_Home:
        return showFolder(0);
    default:
        QWidget::keyPressEvent(event);
    }
}

void UsageMap::contextMenuEvent(QContextMenuEvent *event)
{
    if (m_current < 0)
        return;
    const bool byKeys = event->reason() == QContextMenuEvent::Keyboard;
    Q_EMIT contextMenuWanted(byKeys ? mapToGlobal(rectOf(m_current).center()) : event->globalPos());
}

bool UsageMap::event(QEvent *event)
{
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    const auto *const help = static_cast<QHelpEvent *>(event);
    const qint32 node = m_result ? nodeAt(help->pos()) : -1;
    if (node < 0) {
        QToolTip::hideText();
        return true;
    }
    const UsageRows rows(m_result);
    QString text = shownPath(tree().path(node)) + u'\n' +
                   Velmora::tr("%1, %2 %").arg(rows.text(node, UsageRows::Size), rows.text(node, UsageRows::Share));
    if (const QString growth = rows.text(node, UsageRows::Growth); !growth.isEmpty())
        text += u'\n' + Velmora::tr("Growth: %1").arg(growth);
    QToolTip::showText(help->globalPos(), plainToolTip(text), this, rectOf(node));
    return true;
}

// Painting ------------------------------------------------------------------------------------------------------------

void UsageMap::redraw()
{
    m_drawn = {};
    m_tiles.clear();
    if (m_result && !tree().isEmpty())
        m_tiles = usageMapLayout(tree(), m_shown, QRectF(mapRoom()), fontMetrics().height() + 2);
    update();
}

void UsageMap::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    redraw();
}

QColor UsageMap::colourOf(qint32 node) const
{
    if (m_colouring == UsageColouring::Kind)
        return fileKindColour(tree().node(node).kind);
    const bool isKnown = !m_result->growth.empty();
    return growthColour(tree().node(node).size, isKnown ? m_result->growth[std::size_t(node)] : 0);
}

void UsageMap::drawTile(QPainter &painter, const UsageTile &tile) const
{
    const QColor ground = palette().color(QPalette::Base);
    if (tile.isDivided) {
        painter.fillRect(tile.rect, blended(palette().color(QPalette::Text), ground, 0.22));
        painter.fillRect(tile.rect.adjusted(0.5, 0.5, -0.5, -0.5),
                         blended(palette().color(QPalette::Text), ground, 0.08));
    } else {
        const QColor colour = colourOf(tile.node);
        QLinearGradient light(tile.rect.topLeft(), tile.rect.bottomRight());
        light.setColorAt(0, colour.lighter(108));
        light.setColorAt(1, colour.darker(112));
        painter.fillRect(tile.rect.adjusted(0.5, 0.5, -0.5, -0.5), light);
    }
    const QRectF strip =
        tile.header > 0 ? QRectF(tile.rect.left(), tile.rect.top(), tile.rect.width(), tile.header + 1) : tile.rect;
    constexpr qreal leastNamed = 44;
    if ((tile.isDivided && tile.header == 0) || strip.width() < leastNamed || strip.height() < fontMetrics().height())
        return;
    painter.setPen(palette().color(QPalette::Text));
    const QRectF room = strip.adjusted(4, 0, -4, 0);
    const QString name =
        fontMetrics().elidedText(visibleName(tree().name(tile.node)), Qt::ElideMiddle, int(room.width()));
    painter.drawText(room, Qt::AlignLeft | (tile.isDivided ? Qt::AlignVCenter : Qt::AlignTop) | Qt::TextSingleLine,
                     name);
}

void UsageMap::drawLegend(QPainter &painter) const
{
    const int box = fontMetrics().height() - 4;
    for (const Mark &mark : legendMarks()) {
        painter.fillRect(mark.place.x(), mark.place.y() + 2, box, box, mark.colour);
        painter.setPen(diffColour(DiffColour::MutedText));
        painter.drawText(QPoint(mark.place.x() + box + 4, mark.place.y() + fontMetrics().ascent()), mark.text);
    }
}

void UsageMap::draw()
{
    const qreal ratio = devicePixelRatioF();
    m_drawn = QPixmap(size() * ratio);
    m_drawn.setDevicePixelRatio(ratio);
    m_drawn.fill(palette().color(QPalette::Base));
    QPainter painter(&m_drawn);
    for (const UsageTile &tile : m_tiles)
        drawTile(painter, tile);
    if (!m_tiles.empty())
        drawLegend(painter);
}

void UsageMap::paintEvent(QPaintEvent * /*event*/)
{
    if (m_drawn.isNull() || m_drawn.size() != size() * devicePixelRatioF())
        draw();
    QPainter painter(this);
    painter.drawPixmap(0, 0, m_drawn);
    const QRect marked = rectOf(m_current);
    if (marked.isEmpty())
        return;
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(palette().color(QPalette::Base), 4));
    painter.drawRect(marked.adjusted(1, 1, -2, -2));
    painter.setPen(QPen(hasFocus() ? diffColour(DiffColour::Accent) : palette().color(QPalette::Text), 2));
    painter.drawRect(marked.adjusted(1, 1, -2, -2));
}

} // namespace velmora
