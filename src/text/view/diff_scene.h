#pragma once

#include "text/view/diff_document.h"
#include "text/view/intra_line_changes.h"
#include "text/view/line_renderer.h"
#include "text/view/row_layout.h"
#include "text/view/syntax_colouring.h"
#include "text/view/text_caret.h"
#include "text/view/text_search.h"

#include <QFont>
#include <QObject>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace velmora {

struct LineChange;

/// What the parts of a side-by-side view share: the document, which of it is in sight, the caret, the current
/// difference and the font. The parts read it, change it through its functions and repaint on its signals.
///
/// Lives on the interface thread. Vertical positions are places among the shown rows (`RowLayout`), the horizontal one
/// is a column of the text grid; both panes always show the same ones. Wrapped lines break at the same column on both
/// sides, that of the narrower pane, so that equal lines are equally high.
class DiffScene final : public QObject {
    Q_OBJECT
public:
    explicit DiffScene(QObject *parent = nullptr);

    /// Shows another document, or nothing, from its top.
    void setDocument(std::shared_ptr<const DiffDocument> document);
    /// Shows a later state of the document: the caret stays in its line and its place in sight.
    void replaceDocument(std::shared_ptr<const DiffDocument> document);
    /// The same after an edit of lines of one side that is all that is new in the document's texts.
    void replaceDocument(std::shared_ptr<const DiffDocument> document, Side edited, const LineChange &edit);
    /// Ends the selection and leaves the current difference; caret and scroll position stay.
    void forgetCurrent();
    [[nodiscard]] const DiffDocument *document() const noexcept { return m_document.get(); }
    [[nodiscard]] const std::shared_ptr<const DiffDocument> &sharedDocument() const noexcept { return m_document; }
    [[nodiscard]] const RowLayout &layout() const noexcept { return m_layout; }
    [[nodiscard]] LineRenderer &renderer(Side side) { return side == Side::Left ? m_left : m_right; }
    /// The renderer that holds the text of a cell of `side`.
    [[nodiscard]] LineRenderer &rendererOf(const DiffDocument::Cell &cell, Side side);
    [[nodiscard]] IntraLineChanges &changes() noexcept { return m_changes; }
    [[nodiscard]] TextSearch &search() noexcept { return m_search; }
    /// What the lines of a side consist of; says how the side is coloured, too.
    [[nodiscard]] SyntaxColouring &colouring(Side side)
    {
        return side == Side::Left ? m_leftColouring : m_rightColouring;
    }

    /// Keeps the row of the caret in sight, or the nearest one that is still shown.
    void setFilter(RowFilter filter);
    /// How many equal rows stay on each side of a difference where only differences are shown.
    void setContextRows(qsizetype rows);
    /// Whether lines that differ unimportantly count as differences.
    void setCountsMinor(bool counts);
    [[nodiscard]] bool countsMinor() const noexcept { return m_countsMinor; }
    /// Shows the rows that are folded into the band at `index`, if there is one.
    void openBand(qsizetype index);
    /// Opens the band that holds `row`, if there is one.
    void openBandOf(qsizetype row);

    [[nodiscard]] const QFont &font() const noexcept { return m_font; }
    void setFont(const QFont &font);

    /// Whether blanks and tabs are drawn as faint signs.
    void setShowsBlanks(bool shows);

    /// Whether the texts are coloured by the syntax of their languages; they are not at first.
    void setShowsSyntax(bool shows);
    [[nodiscard]] bool showsSyntax() const noexcept { return m_showsSyntax; }

    /// Whether long lines are wrapped at the edge of the panes.
    void setWraps(bool wraps);
    [[nodiscard]] bool wraps() const noexcept { return m_wraps; }

    /// The height of the panes, in pixels, and the narrower one's room for text.
    void setViewport(int height, int textWidth);
    [[nodiscard]] int viewportHeight() const noexcept { return m_height; }

    [[nodiscard]] RowPlace top() const noexcept { return m_top; }
    [[nodiscard]] qint64 column() const noexcept { return m_column; }
    [[nodiscard]] RowPlace maximumTop() const { return m_layout.maximumTop(m_height); }
    [[nodiscard]] qint64 maximumColumn() const;
    /// Columns that fit into the narrower pane, at least one.
    [[nodiscard]] qint64 columnsPerPage() const;
    /// Clamped, as all scrolling is.
    void scrollTo(RowPlace top, qint64 column);
    void scrollToTop(qsizetype index) { scrollTo({index, 0}, m_column); }
    void scrollByLines(qsizetype lines) { scrollTo(m_layout.moved(m_top, lines), m_column); }
    /// The x of the texts, in pixels, that stands at the left edge of the panes.
    [[nodiscard]] qreal scrolledX() const { return qreal(m_column) * m_left.cellWidth(); }
    /// The same for one line: 0 where it is wrapped.
    [[nodiscard]] qreal scrolledX(const DiffDocument::Cell &cell, Side side);

    [[nodiscard]] const TextCaret &caret() const noexcept { return m_caret; }
    /// Moves the caret and takes no care that it is in sight. A caret in a difference makes that the current one.
    void setCaret(const TextCaret &caret);
    /// Scrolls as little as brings the caret into sight.
    void showCaret();
    /// The same with some rows around it, for a caret that has come from far away.
    void showCaretInContext();
    /// Puts the caret at the start of line `number` (1-based) of `side` and shows it; a line that is not shown gives
    /// way to the nearest one that is.
    void goToLine(Side side, qint32 number);

    /// The current difference as a block of the layout, -1 for none.
    [[nodiscard]] qsizetype currentBlock() const noexcept { return m_currentBlock; }
    /// The nearest block behind the caret, or before it; -1 for none. Counted from the current difference where that is
    /// hidden, so that the caret cannot stand in it.
    [[nodiscard]] qsizetype nextBlock() const;
    [[nodiscard]] qsizetype previousBlock() const;
    /// Makes `block` the current one, puts the caret at its start and brings it into sight, sideways too: where its
    /// first row is a changed one, its first changed character, as soon as that is known and unless the view was
    /// scrolled since.
    void goToBlock(qsizetype block);

    /// Goes to the next difference or the previous one, from the caret. In a line longer than the view, that is first
    /// the next place in it that differs and is out of sight, then the next such line of the same difference.
    void step(bool forward);
    /// Whether there is anything to go to.
    [[nodiscard]] bool canStep(bool forward);

    /// Marks the rows of these lines of the left side, in increasing order, as aligned by hand.
    void setAlignedLines(std::vector<qint32> leftLines);
    [[nodiscard]] bool isAligned(qsizetype row) const;

    /// What is selected, lines joined by line feeds; rows without a line of their own count for nothing.
    [[nodiscard]] QString selectedText() const;
    /// The same where it is a part of one line and has at most `longest` units; empty otherwise.
    [[nodiscard]] QString shortSelection(qsizetype longest) const;

Q_SIGNALS:
    void documentChanged(); ///< document or filter: everything has to be laid out anew
    void metricsChanged();  ///< font or viewport: sizes have changed, the content has not
    void scrolled();
    void caretMoved();
    void currentBlockChanged();
    void repaintWanted(); ///< what is in sight looks different

private:
    /// Of air behind the widest line, and around the caret when it is scrolled into sight.
    static constexpr qint64 columnsToSpare = 4;
    /// Of room behind it for the name of a line end.
    static constexpr qint64 columnsForLineEnd = 14;

    void setCurrentBlock(qsizetype block);
    [[nodiscard]] bool isCurrentHidden() const;
    void revealChange();
    void goToRow(qsizetype row);
    void goToUnit(qsizetype unit);
    /// Whether the changes of `row` hardly all fit into the view.
    [[nodiscard]] bool isLongRow(qsizetype row);
    /// The units of the line of the caret that are in sight.
    [[nodiscard]] CharRange unitsInSight(const DiffDocument::Cell &cell);
    /// Where to go within the current difference: another place in the caret's line, or the start of another long one.
    [[nodiscard]] std::optional<TextPosition> furtherPlace(bool forward);
    void showLaterDocument(std::shared_ptr<const DiffDocument> document);
    void takeDocument(std::shared_ptr<const DiffDocument> document);
    void layOutRows();
    void keepCaretInPlace(const std::function<void()> &change);
    void setWrapColumns();
    [[nodiscard]] qsizetype linesOf(qsizetype row);
    [[nodiscard]] RowPlace caretPlace();

    std::shared_ptr<const DiffDocument> m_document;
    RowLayout m_layout;
    LineRenderer m_left;
    LineRenderer m_right;
    IntraLineChanges m_changes;
    TextSearch m_search;
    SyntaxColouring m_leftColouring;
    SyntaxColouring m_rightColouring;
    QFont m_font;
    TextCaret m_caret;
    qsizetype m_currentBlock = -1;
    qsizetype m_revealedRow = -1; ///< the row whose first changed character is still to be brought into sight
    std::vector<qint32> m_alignedLines;
    RowPlace m_top;
    qint64 m_column = 0;
    int m_height = 0;
    int m_textWidth = 0;
    bool m_wraps = false;
    bool m_showsSyntax = false;
    bool m_countsMinor = false;
};

} // namespace velmora
