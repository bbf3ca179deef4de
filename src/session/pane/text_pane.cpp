#include "session/pane/text_pane.h"

#include "session/pane/pane_painter.h"

#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QPainter>
#include <QStyleHints>

#include <cmath>

namespace velmora {

namespace {

constexpr int fewestDigits = 3;
constexpr auto dragScrollInterval = std::chrono::milliseconds(40);

int digitsOf(qsizetype number)
{
    int digits = 1;
    for (; number >= 10; number /= 10)
        ++digits;
    return digits;
}

} // namespace

TextPane::TextPane(PaneScene &scene, PaneIndex index, QWidget *parent) : QWidget(parent), m_scene(scene), m_index(index)
{
    installPaneAccessibility();
    setFocusPolicy(Qt::StrongFocus);
    setAcceptDrops(true);
    setProperty("takesDroppedText", true); // the window lets it through
    setAttribute(Qt::WA_OpaquePaintEvent);
    setCursor(Qt::IBeamCursor);
    const auto repaint = [this] { update(); };
    connect(&scene, &PaneScene::documentChanged, this, repaint);
    connect(&scene, &PaneScene::metricsChanged, this, repaint);
    connect(&scene, &PaneScene::scrolled, this, repaint);
    connect(&scene, &PaneScene::caretMoved, this, repaint);
    connect(&scene, &PaneScene::caretMoved, this, &TextPane::tellCaret);
    connect(&scene, &PaneScene::currentBlockChanged, this, &TextPane::tellDifference);
    connect(&scene, &PaneScene::currentBlockChanged, this, repaint);
    connect(&scene, &PaneScene::repaintWanted, this, repaint);
    m_dragTimer.setInterval(dragScrollInterval);
    connect(&m_dragTimer, &QTimer::timeout, this, &TextPane::extendByDrag);
    m_clickTimer.setSingleShot(true);
    connect(&m_clickTimer, &QTimer::timeout, this, [this] { m_clicks = 0; });
}

int TextPane::gutterWidth() const
{
    const PaneDocument *document = m_scene.document();
    qsizetype lines = 0;
    for (int pane = 0; document && pane < document->paneCount(); ++pane)
        lines = std::max(lines, document->source(pane).count());
    const qreal cell = m_scene.renderer(m_index).cellWidth();
    const int digits = std::max(digitsOf(lines), fewestDigits);
    return paneMetrics::marker + 3 * paneMetrics::padding + int(std::ceil((digits + 1) * cell));
}

QRect TextPane::textArea() const
{
    return rect().adjusted(gutterWidth(), 0, 0, 0);
}

QSize TextPane::sizeHint() const
{
    return {500, 400};
}

QSize TextPane::minimumSizeHint() const
{
    return {160, 80};
}

void TextPane::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    painter.fillRect(event->rect(), diffColour(DiffColour::Background));
    if (m_scene.document()) {
        const QRect gutter(0, 0, gutterWidth(), height());
        painter.fillRect(gutter, diffColour(DiffColour::Gutter));
        PanePainter frame(painter, m_scene, {m_index, gutter, textArea(), hasFocus()});
        frame.paint(event->rect());
        painter.fillRect(QRect(gutter.right(), 0, 1, height()), diffColour(DiffColour::Rule));
        paintPreedit(painter);
        if (m_dropPlace)
            painter.fillRect(rectOf(*m_dropPlace), diffColour(DiffColour::Accent));
    }
    if (hasFocus())
        painter.fillRect(QRect(0, 0, width(), 2), diffColour(DiffColour::Accent));
}

void TextPane::resizeEvent(QResizeEvent *)
{
    Q_EMIT resized();
}

void TextPane::focusInEvent(QFocusEvent *)
{
    TextCaret caret = m_scene.caret();
    if (caret.pane != m_index) {
        const TextPosition here{caret.position.row, 0};
        caret = {m_index, here, here};
        m_scene.setCaret(caret);
    }
    update();
}

void TextPane::focusOutEvent(QFocusEvent *)
{
    update();
}

void TextPane::contextMenuEvent(QContextMenuEvent *event)
{
    Q_EMIT contextMenuWanted(event->globalPos());
}

// Positions ---------------------------------------------------------------------------------------------------------

TextPosition TextPane::position() const
{
    const TextCaret &caret = m_scene.caret();
    return hasCaret() ? caret.position : TextPosition{caret.position.row, 0};
}

TextPosition TextPane::positionAt(QPoint point) const
{
    const RowLayout &layout = m_scene.layout();
    if (layout.count() == 0)
        return {};
    return positionAt(layout.placeAtY(point.y(), m_scene.top()),
                      point.x() - textArea().left() - paneMetrics::textIndent);
}

TextPosition TextPane::positionAt(RowPlace place, qreal x) const
{
    const qsizetype row = m_scene.layout().rowAt(place.index);
    const PaneDocument::Cell cell = m_scene.document()->cell(row, m_index);
    if (!cell.source || m_scene.layout().isBand(place.index))
        return {row, 0};
    const qreal shift = m_scene.scrolledX(cell);
    return {row, m_scene.rendererOf(cell).unitAt(cell.line, x + shift, place.line)};
}

TextPosition TextPane::lineStart(qsizetype index) const
{
    return {m_scene.layout().rowAt(index), 0};
}

TextPosition TextPane::lineEnd(qsizetype index) const
{
    // That of a band is the end of the last line folded into it, so that a selection takes in all of them.
    const qsizetype row = m_scene.layout().rowsAt(index).end() - 1;
    const PaneDocument::Cell cell = m_scene.document()->cell(row, m_index);
    return {row, cell.source ? m_scene.rendererOf(cell).length(cell.line) : 0};
}

TextPosition TextPane::stepped(TextPosition from, Step step) const
{
    const RowLayout &layout = m_scene.layout();
    const qsizetype index = layout.indexOf(from.row);
    const bool back = step == Step::Previous || step == Step::PreviousWord;
    const bool byWord = step == Step::PreviousWord || step == Step::NextWord;
    const TextPosition start = lineStart(index);
    if (layout.isBand(index))
        return steppedOffBand(index, step);
    if (step == Step::LineStart || (back && from == start))
        return step == Step::LineStart || index == 0 ? start : lineEnd(index - 1);
    if (step == Step::LineEnd)
        return lineEnd(index);
    const PaneDocument::Cell cell = m_scene.document()->cell(from.row, m_index);
    const auto mode = byWord ? QTextLayout::SkipWords : QTextLayout::SkipCharacters;
    if (cell.source) {
        LineRenderer &renderer = m_scene.rendererOf(cell);
        const qsizetype unit =
            back ? renderer.previous(cell.line, from.unit, mode) : renderer.next(cell.line, from.unit, mode);
        if (unit != from.unit)
            return {from.row, unit};
    }
    return index + 1 < layout.count() ? lineStart(index + 1) : from;
}

TextPosition TextPane::steppedOffBand(qsizetype index, Step step) const
{
    const bool back = step == Step::Previous || step == Step::PreviousWord;
    const bool onward = step == Step::Next || step == Step::NextWord;
    if (back && index > 0)
        return lineEnd(index - 1);
    if (onward && index + 1 < m_scene.layout().count())
        return lineStart(index + 1);
    return lineStart(index);
}

// Moving ------------------------------------------------------------------------------------------------------------

void TextPane::moveTo(TextPosition position, bool selecting)
{
    const TextPosition anchor = selecting && hasCaret() ? m_scene.caret().anchor : position;
    m_scene.setCaret({m_index, anchor, position});
    m_scene.showCaret();
}

void TextPane::moveLines(qsizetype lines, bool selecting)
{
    const RowLayout &layout = m_scene.layout();
    const TextPosition from = position();
    RowPlace place{layout.indexOf(from.row), 0};
    qreal x = 0;
    const PaneDocument::Cell here = m_scene.document()->cell(from.row, m_index);
    if (here.source && !layout.isBand(place.index)) {
        const LineRenderer::Place drawn = m_scene.rendererOf(here).placeOf(here.line, from.unit);
        place.line = m_scene.wraps() ? drawn.part : 0;
        x = drawn.x - m_scene.scrolledX(here);
    }
    // The place on the screen is kept to, also through shorter lines.
    const qreal wantedX = m_wantedX ? *m_wantedX : x;
    moveTo(positionAt(layout.moved(place, lines), wantedX), selecting);
    m_wantedX = wantedX;
}

bool TextPane::moveByKey(const QKeyEvent &event)
{
    const RowLayout &layout = m_scene.layout();
    const bool selecting = event.modifiers().testFlag(Qt::ShiftModifier);
    const bool control = event.modifiers().testFlag(Qt::ControlModifier);
    const qsizetype page = std::max<qsizetype>(layout.rowsPerPage(height()) - 1, 1);
    const auto stepBy = [&](Step step) {
        m_wantedX.reset();
        moveTo(stepped(position(), step), selecting);
        return true;
    };
    const auto linesBy = [&](qsizetype lines) {
        moveLines(lines, selecting);
        return true;
    };
    switch (event.key()) {
    case Qt::Key_Left:
        return stepBy(control ? Step::PreviousWord : Step::Previous);
    case Qt::Key_Right:
        return stepBy(control ? Step::NextWord : Step::Next);
    case Qt::Key_Up:
        if (!control)
            return linesBy(-1);
        m_scene.scrollByLines(-1);
        return true;
    case Qt::Key_Down:
        if (!control)
            return linesBy(1);
        m_scene.scrollByLines(1);
        return true;
    case Qt::Key_PageUp:
        m_scene.scrollByLines(-page);
        return linesBy(-page);
    case Qt::Key_PageDown:
        m_scene.scrollByLines(page);
        return linesBy(page);
    case Qt::Key_Home:
        if (!control)
            return stepBy(Step::LineStart);
        moveTo(lineStart(0), selecting);
        return true;
    case Qt::Key_End:
        if (!control)
            return stepBy(Step::LineEnd);
        moveTo(lineEnd(layout.count() - 1), selecting);
        return true;
    default:
        return false;
    }
}

bool TextPane::openBandByKey(const QKeyEvent &event)
{
    const qsizetype index = hasCaret() ? m_scene.layout().indexOf(m_scene.caret().position.row) : -1;
    if (index < 0 || !m_scene.layout().isBand(index) || m_scene.caret().hasSelection())
        return false;
    // Nobody edits lines that are out of sight: what would change them shows them.
    const bool opens = event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter || event.key() == Qt::Key_Delete ||
                       event.key() == Qt::Key_Backspace || typesText(event) || event.matches(QKeySequence::Paste);
    if (opens)
        m_scene.openBand(index);
    return opens;
}

void TextPane::keyPressEvent(QKeyEvent *event)
{
    if (openBandByKey(*event)) {
        event->accept();
    } else if (m_editor && editByKey(*event)) {
        event->accept();
    } else if (event->matches(QKeySequence::Copy)) {
        copy();
    } else if (event->matches(QKeySequence::SelectAll)) {
        selectAll();
    } else if (event->modifiers().testFlag(Qt::AltModifier) || m_scene.layout().count() == 0 || !moveByKey(*event)) {
        QWidget::keyPressEvent(event);
    }
}

void TextPane::copy()
{
    const QString text = m_scene.selectedText();
    if (!text.isEmpty())
        QApplication::clipboard()->setText(text);
}

void TextPane::selectAll()
{
    const qsizetype count = m_scene.layout().count();
    if (count > 0)
        m_scene.setCaret({m_index, lineStart(0), lineEnd(count - 1)});
}

} // namespace velmora
