#include "session/diff_colours.h"
#include "session/pane/pane_editor.h"
#include "session/pane/pane_painter.h"
#include "session/pane/text_pane.h"

#include <QApplication>
#include <QClipboard>
#include <QInputMethod>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QPainter>

namespace velmora {

void TextPane::setEditor(PaneEditor *editor)
{
    m_editor = editor;
    const auto followEditor = [this] {
        setAttribute(Qt::WA_InputMethodEnabled, m_editor->isEnabled());
        tellInputMethod();
    };
    connect(editor, &PaneEditor::stateChanged, this, followEditor);
    connect(&m_scene, &PaneScene::caretMoved, this, &TextPane::tellInputMethod);
}

bool TextPane::event(QEvent *event)
{
    const bool isEditing = m_editor && m_editor->isEnabled();
    if (event->type() == QEvent::KeyPress && isEditing) {
        // While it edits, a tabulator is a character and does not leave the pane.
        auto *key = static_cast<QKeyEvent *>(event);
        if (key->key() == Qt::Key_Tab && key->modifiers() == Qt::NoModifier) {
            keyPressEvent(key);
            return true;
        }
    }
    if (event->type() == QEvent::ShortcutOverride && isEditing) {
        auto *key = static_cast<QKeyEvent *>(event);
        if (typesText(*key) || key->matches(QKeySequence::Paste) || key->matches(QKeySequence::Cut) ||
            key->key() == Qt::Key_Delete || key->key() == Qt::Key_Backspace)
            event->accept();
    }
    return QWidget::event(event);
}

bool TextPane::typesText(const QKeyEvent &event) const
{
    // Control and Alt together are the third level of a keyboard.
    const Qt::KeyboardModifiers command = event.modifiers() & (Qt::ControlModifier | Qt::AltModifier);
    const bool isCommand = command == Qt::ControlModifier || command == Qt::AltModifier;
    const QString text = event.text();
    return !isCommand && !(event.modifiers() & Qt::MetaModifier) && !text.isEmpty() &&
           (text.front().isPrint() || text.front().isSurrogate());
}

bool TextPane::editByKey(const QKeyEvent &event)
{
    if (event.matches(QKeySequence::Undo)) {
        m_editor->undo(m_index);
        return true;
    }
    if (event.matches(QKeySequence::Redo)) {
        m_editor->redo(m_index);
        return true;
    }
    if (event.matches(QKeySequence::Cut)) {
        cut();
        return true;
    }
    if (event.matches(QKeySequence::Paste)) {
        paste();
        return true;
    }
    if (typesText(event)) {
        m_editor->insert(m_index, event.text(), EditBuffer::Merge::Typing);
        return true;
    }
    const bool control = event.modifiers().testFlag(Qt::ControlModifier);
    if (event.modifiers().testFlag(Qt::AltModifier))
        return false;
    switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (control)
            return false;
        m_editor->insert(m_index, QStringLiteral("\n"));
        return true;
    case Qt::Key_Tab:
        if (control || !m_editor->isEnabled())
            return false;
        m_editor->insert(m_index, QStringLiteral("\t"), EditBuffer::Merge::Typing);
        return true;
    case Qt::Key_Backspace:
        eraseTo(control ? Step::PreviousWord : Step::Previous);
        return true;
    case Qt::Key_Delete:
        eraseTo(control ? Step::NextWord : Step::Next);
        return true;
    default:
        return false;
    }
}

void TextPane::eraseTo(Step step)
{
    if (m_scene.layout().count() == 0 || m_editor->eraseSelection(m_index))
        return;
    m_editor->erase(m_index, stepped(position(), step));
}

void TextPane::cut()
{
    if (!m_editor || !hasCaret() || !m_scene.caret().hasSelection())
        return;
    copy();
    m_editor->eraseSelection(m_index);
}

void TextPane::paste()
{
    const QString text = QApplication::clipboard()->text();
    if (m_editor && !m_editor->hasTexts())
        Q_EMIT pastedBeforeATextIsThere();
    else if (m_editor && !text.isEmpty())
        m_editor->insert(m_index, text);
}

// Input methods -----------------------------------------------------------------------------------------------------

void TextPane::inputMethodEvent(QInputMethodEvent *event)
{
    if (!m_editor) {
        event->ignore();
        return;
    }
    m_preedit = event->preeditString();
    if (event->replacementLength() > 0 && hasCaret()) {
        const TextPosition here = m_scene.caret().position;
        const qsizetype start = std::max<qsizetype>(here.unit + event->replacementStart(), 0);
        m_scene.setCaret({m_index, {here.row, start}, {here.row, start + event->replacementLength()}});
    }
    if (!event->commitString().isEmpty())
        m_editor->insert(m_index, event->commitString(), EditBuffer::Merge::Typing);
    update();
    event->accept();
}

bool TextPane::isLocked() const
{
    return !m_editor || !m_editor->isEnabled() || !m_editor->obstacle(m_index).isEmpty();
}

QRect TextPane::rectOf(TextPosition at) const
{
    const PaneDocument *document = m_scene.document();
    const RowLayout &layout = m_scene.layout();
    LineRenderer::Place place;
    qreal shift = m_scene.scrolledX();
    if (document && at.row < document->rowCount()) {
        const PaneDocument::Cell cell = document->cell(at.row, m_index);
        shift = m_scene.scrolledX(cell);
        if (cell.source)
            place = m_scene.rendererOf(cell).placeOf(cell.line, at.unit);
    }
    const qint64 y = layout.yOf(layout.indexOf(at.row), m_scene.top()) + place.part * layout.rowHeight();
    return {int(textArea().left() + paneMetrics::textIndent + place.x - shift), int(y), 2, layout.rowHeight()};
}

QVariant TextPane::inputMethodQuery(Qt::InputMethodQuery query) const
{
    switch (query) {
    case Qt::ImEnabled:
        return m_editor && m_editor->isEnabled();
    case Qt::ImCursorRectangle:
        return rectOf(position());
    case Qt::ImFont:
        return m_scene.font();
    case Qt::ImCursorPosition:
        return int(position().unit);
    case Qt::ImAnchorPosition: {
        const TextCaret &caret = m_scene.caret();
        return int(hasCaret() && caret.anchor.row == caret.position.row ? caret.anchor.unit : position().unit);
    }
    case Qt::ImSurroundingText:
        return currentLine();
    case Qt::ImCurrentSelection:
        return hasCaret() ? m_scene.shortSelection(longestTold) : QString();
    default:
        return QWidget::inputMethodQuery(query);
    }
}

void TextPane::paintPreedit(QPainter &painter) const
{
    if (m_preedit.isEmpty() || !hasFocus())
        return;
    QRect area = rectOf(position());
    painter.setFont(m_scene.font());
    area.setWidth(painter.fontMetrics().horizontalAdvance(m_preedit) + 2);
    painter.fillRect(area, diffColour(DiffColour::Background));
    painter.setPen(diffColour(DiffColour::Text));
    painter.drawText(area, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, m_preedit);
    painter.drawLine(area.bottomLeft(), area.bottomRight());
}

void TextPane::tellInputMethod()
{
    if (hasFocus() && m_editor && m_editor->isEnabled())
        updateMicroFocus();
}

} // namespace velmora
