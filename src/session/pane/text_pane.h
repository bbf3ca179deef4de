#pragma once

#include "session/pane/pane_scene.h"

#include <QTimer>
#include <QWidget>

#include <optional>

namespace velmora {

class PaneEditor;

/// One text of a view: line numbers, a sign for each kind of row, the lines, the caret and the selection.
///
/// Paints what is in sight and nothing else: the cost of a frame depends neither on the number of rows nor on the
/// length of lines that reach beyond the window. Takes the keys and the mouse that move the caret and select; scrolling
/// is the view's. With an editor it takes typed text, the keys and commands that edit, input methods and dropped text,
/// too: a selection that is dragged moves within the pane and is copied to any other place.
class TextPane final : public QWidget {
    Q_OBJECT
public:
    /// `scene` outlives the pane.
    TextPane(PaneScene &scene, PaneIndex index, QWidget *parent = nullptr);

    [[nodiscard]] PaneIndex index() const noexcept { return m_index; }
    [[nodiscard]] PaneScene &scene() noexcept { return m_scene; }

    /// Lets the text be edited; `editor` outlives the pane.
    void setEditor(PaneEditor *editor);

    /// The width of line numbers and signs.
    [[nodiscard]] int gutterWidth() const;
    /// The part that shows text.
    [[nodiscard]] QRect textArea() const;

    /// The row of the caret as an assistive tool reads it: line number, kind and text.
    [[nodiscard]] QString describeCurrentRow() const;

    /// The line of the caret, or as much of one of the longest as anybody listens to.
    [[nodiscard]] QString currentLine() const;
    /// Selects in the line of the caret; the caret goes to `end`.
    void selectInLine(qsizetype start, qsizetype end);
    [[nodiscard]] bool isLocked() const;

    /// The caret's place in this pane, also while another one has it.
    [[nodiscard]] TextPosition position() const;
    [[nodiscard]] TextPosition positionAt(QPoint point) const;
    /// Where a caret at `position` stands.
    [[nodiscard]] QRect rectOf(TextPosition position) const;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;

public Q_SLOTS:
    void copy();
    void selectAll();
    void cut();
    void paste();

Q_SIGNALS:
    void resized();
    void contextMenuWanted(QPoint globalPosition);
    void pastedBeforeATextIsThere(); ///< by key, while there is nothing to paste into

protected:
    bool event(QEvent *event) override;
    void inputMethodEvent(QInputMethodEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dragLeaveEvent(QDragLeaveEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

private:
    /// Units of a line that assistive tools and input methods are told; the former would read for hours at the longest.
    static constexpr qsizetype longestTold = 2000;

    enum class Step { Previous, Next, PreviousWord, NextWord, LineStart, LineEnd };

    [[nodiscard]] bool hasCaret() const { return m_scene.caret().pane == m_index; }
    /// The position nearest to x, in pixels of the text area.
    [[nodiscard]] TextPosition positionAt(RowPlace place, qreal x) const;
    [[nodiscard]] TextPosition stepped(TextPosition from, Step step) const;
    [[nodiscard]] TextPosition steppedOffBand(qsizetype index, Step step) const;
    [[nodiscard]] TextPosition lineStart(qsizetype index) const;
    [[nodiscard]] TextPosition lineEnd(qsizetype index) const;
    void moveTo(TextPosition position, bool selecting);
    void moveLines(qsizetype lines, bool selecting);
    [[nodiscard]] bool moveByKey(const QKeyEvent &event);
    [[nodiscard]] bool openBandByKey(const QKeyEvent &event);
    [[nodiscard]] bool editByKey(const QKeyEvent &event);
    [[nodiscard]] bool typesText(const QKeyEvent &event) const;
    void eraseTo(Step step);
    void paintPreedit(QPainter &painter) const;
    void tellInputMethod();
    void extendByDrag();
    void showCursorAt(QPoint point);
    [[nodiscard]] bool isOnSelection(QPoint point) const;
    void dragSelection();
    [[nodiscard]] bool takesDropOf(const QDropEvent &event) const;
    void showDropPlace(std::optional<TextPosition> place);
    void tellCaret();
    void tellDifference();

    PaneScene &m_scene;
    const PaneIndex m_index;
    PaneEditor *m_editor = nullptr;
    qsizetype m_toldRow = -1;       ///< the row that assistive tools know of
    QString m_preedit;              ///< what an input method has not yet committed
    std::optional<qreal> m_wantedX; ///< the x that moving up and down keeps to, else the caret's own
    bool m_selecting = false;       ///< with the mouse
    QPoint m_dragPoint;
    QTimer m_dragTimer;                       ///< scrolls on while the mouse is held outside
    std::optional<QPoint> m_pressedSelection; ///< where the mouse was pressed on the selection
    std::optional<TextPosition> m_dropPlace;  ///< where the text that hovers over the pane would go
    int m_clicks = 0;
    QTimer m_clickTimer; ///< runs while a further click counts as one of several
};

/// Lets assistive tools see panes as what they are; once for the program.
void installPaneAccessibility();

} // namespace velmora
