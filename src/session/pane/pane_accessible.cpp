#include "session/pane/text_pane.h"

#include <QAccessibleWidget>

namespace velmora {

namespace {

/// A pane to an assistive tool: an edit field whose text is the line of the caret, whose value is that row in words,
/// and whose description is the current difference.
class PaneAccessible final : public QAccessibleWidget, public QAccessibleTextInterface {
public:
    explicit PaneAccessible(TextPane *pane) : QAccessibleWidget(pane, QAccessible::EditableText), m_pane(pane) {}

    [[nodiscard]] QString text(QAccessible::Text kind) const override
    {
        switch (kind) {
        case QAccessible::Value:
            return m_pane->describeCurrentRow();
        case QAccessible::Description:
            return m_pane->scene().describeCurrentBlock();
        default:
            return QAccessibleWidget::text(kind);
        }
    }

    [[nodiscard]] QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.readOnly = m_pane->isLocked();
        state.multiLine = true;
        return state;
    }

    void *interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::TextInterface)
            return static_cast<QAccessibleTextInterface *>(this);
        return QAccessibleWidget::interface_cast(type);
    }

    // The line of the caret ---------------------------------------------------------------------------------------

    [[nodiscard]] int characterCount() const override { return int(m_pane->currentLine().size()); }
    [[nodiscard]] QString text(int start, int end) const override
    {
        return m_pane->currentLine().mid(start, end - start);
    }
    [[nodiscard]] int cursorPosition() const override
    {
        return std::min(int(m_pane->position().unit), characterCount());
    }
    void setCursorPosition(int position) override { m_pane->selectInLine(position, position); }

    [[nodiscard]] int selectionCount() const override { return selected().length > 0 ? 1 : 0; }
    void selection(int, int *start, int *end) const override
    {
        const CharRange range = selected();
        *start = range.start;
        *end = range.start + range.length;
    }
    void addSelection(int start, int end) override { m_pane->selectInLine(start, end); }
    void setSelection(int, int start, int end) override { m_pane->selectInLine(start, end); }
    void removeSelection(int) override { setCursorPosition(cursorPosition()); }

    [[nodiscard]] QRect characterRect(int offset) const override
    {
        TextPosition at = m_pane->position();
        at.unit = offset;
        const QRect line = m_pane->rectOf(at);
        return line.translated(m_pane->mapToGlobal(QPoint()));
    }
    [[nodiscard]] int offsetAtPoint(const QPoint &point) const override
    {
        const TextPosition at = m_pane->positionAt(m_pane->mapFromGlobal(point));
        return at.row == m_pane->position().row ? int(at.unit) : -1;
    }
    void scrollToSubstring(int, int) override { m_pane->scene().showCaret(); }
    [[nodiscard]] QString attributes(int, int *start, int *end) const override
    {
        *start = 0;
        *end = characterCount();
        return {};
    }

private:
    /// What is selected in the line of the caret.
    [[nodiscard]] CharRange selected() const
    {
        const TextCaret &caret = m_pane->scene().caret();
        const qsizetype row = caret.position.row;
        if (caret.pane != m_pane->index() || !caret.hasSelection())
            return {};
        const int first = caret.selectionStart().row == row ? int(caret.selectionStart().unit) : 0;
        const int last = caret.selectionEnd().row == row ? int(caret.selectionEnd().unit) : characterCount();
        return {first, last - first};
    }

    TextPane *m_pane;
};

QAccessibleInterface *makeInterface(const QString &, QObject *object)
{
    auto *pane = qobject_cast<TextPane *>(object);
    return pane ? new PaneAccessible(pane) : nullptr;
}

} // namespace

void installPaneAccessibility()
{
    [[maybe_unused]] static const bool installed = [] {
        QAccessible::installFactory(makeInterface);
        return true;
    }();
}

} // namespace velmora
