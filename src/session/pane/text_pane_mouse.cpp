#include "session/pane/pane_editor.h"
#include "session/pane/text_pane.h"

#include <QApplication>
#include <QDrag>
#include <QDragEnterEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QStyleHints>

namespace velmora {

// Selecting -----------------------------------------------------------------------------------------------------------

void TextPane::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || m_scene.layout().count() == 0)
        return;
    m_wantedX.reset();
    const QPoint point = event->position().toPoint();
    const qsizetype pressed = m_scene.layout().indexAtY(point.y(), m_scene.top());
    if (m_scene.layout().isBand(pressed)) {
        const TextPosition start = lineStart(pressed);
        m_scene.setCaret({m_index, start, start});
        m_scene.openBand(pressed);
        return;
    }
    const bool third = m_clicks == 2 && m_clickTimer.isActive();
    if (third || point.x() < gutterWidth()) {
        m_scene.setCaret({m_index, lineStart(pressed), lineEnd(pressed)});
    } else if (m_clicks < 2 && event->modifiers() == Qt::NoModifier && isOnSelection(point)) {
        m_pressedSelection = point; // dragged away, or a click that ends the selection
    } else {
        const bool selecting = event->modifiers().testFlag(Qt::ShiftModifier);
        moveTo(positionAt(point), selecting);
        m_selecting = true;
    }
    m_clicks = 1;
    m_clickTimer.start(QApplication::doubleClickInterval());
}

void TextPane::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || m_scene.layout().count() == 0)
        return;
    m_pressedSelection.reset();
    const TextPosition at = positionAt(event->position().toPoint());
    const PaneDocument::Cell cell = m_scene.document()->cell(at.row, m_index);
    if (!cell.source)
        return;
    const CharRange word = m_scene.rendererOf(cell).wordAt(cell.line, at.unit);
    m_scene.setCaret({m_index, {at.row, word.start}, {at.row, word.start + word.length}});
    m_clicks = 2;
    m_clickTimer.start(QApplication::doubleClickInterval());
}

void TextPane::showCursorAt(QPoint point)
{
    const RowLayout &layout = m_scene.layout();
    const qsizetype under = layout.indexAtY(point.y(), m_scene.top());
    if (under >= 0 && layout.isBand(under))
        setCursor(Qt::PointingHandCursor);
    else
        setCursor(point.x() < gutterWidth() || isOnSelection(point) ? Qt::ArrowCursor : Qt::IBeamCursor);
}

void TextPane::mouseMoveEvent(QMouseEvent *event)
{
    const QPoint point = event->position().toPoint();
    if (m_pressedSelection && event->buttons().testFlag(Qt::LeftButton) &&
        (point - *m_pressedSelection).manhattanLength() >= QGuiApplication::styleHints()->startDragDistance()) {
        m_pressedSelection.reset();
        dragSelection();
        return;
    }
    if (!m_selecting) {
        showCursorAt(point);
        return;
    }
    m_dragPoint = point;
    moveTo(positionAt(point), true);
    if (rect().contains(point))
        m_dragTimer.stop();
    else if (!m_dragTimer.isActive())
        m_dragTimer.start();
}

void TextPane::extendByDrag()
{
    moveTo(positionAt(m_dragPoint), true);
}

void TextPane::mouseReleaseEvent(QMouseEvent *)
{
    if (m_pressedSelection)
        moveTo(positionAt(*std::exchange(m_pressedSelection, std::nullopt)), false);
    m_selecting = false;
    m_dragTimer.stop();
}

// Dragging text -------------------------------------------------------------------------------------------------------

bool TextPane::isOnSelection(QPoint point) const
{
    const TextCaret &caret = m_scene.caret();
    if (!hasCaret() || !caret.hasSelection() || point.x() < gutterWidth() || m_scene.layout().count() == 0)
        return false;
    const TextPosition at = positionAt(point);
    return at >= caret.selectionStart() && at < caret.selectionEnd();
}

void TextPane::dragSelection()
{
    auto *drag = new QDrag(this);
    auto *data = new QMimeData;
    data->setText(m_scene.selectedText());
    drag->setMimeData(data);
    // A text that is dragged to another program stays here, too, whatever that program would like.
    drag->exec(Qt::CopyAction | Qt::MoveAction, Qt::MoveAction);
}

bool TextPane::takesDropOf(const QDropEvent &event) const
{
    return m_editor && m_scene.layout().count() > 0 && event.mimeData()->hasText() && !event.mimeData()->hasUrls();
}

void TextPane::dragEnterEvent(QDragEnterEvent *event)
{
    if (takesDropOf(*event))
        event->acceptProposedAction();
    else
        event->ignore(); // files are the session's
}

void TextPane::dragMoveEvent(QDragMoveEvent *event)
{
    showDropPlace(positionAt(event->position().toPoint()));
    const bool staysHere = event->source() == this && !event->modifiers().testFlag(Qt::ControlModifier);
    event->setDropAction(staysHere ? Qt::MoveAction : Qt::CopyAction);
    event->accept();
}

void TextPane::dragLeaveEvent(QDragLeaveEvent *)
{
    showDropPlace({});
}

void TextPane::dropEvent(QDropEvent *event)
{
    showDropPlace({});
    const TextPosition at = positionAt(event->position().toPoint());
    const bool moves = event->source() == this && !event->modifiers().testFlag(Qt::ControlModifier);
    event->setDropAction(moves ? Qt::MoveAction : Qt::CopyAction);
    event->accept();
    setFocus(Qt::MouseFocusReason);
    if (moves)
        m_editor->moveSelection(m_index, at);
    else
        m_editor->insertAt(m_index, at, event->mimeData()->text());
}

void TextPane::showDropPlace(std::optional<TextPosition> place)
{
    m_dropPlace = place;
    update();
}

} // namespace velmora
