#pragma once

#include "session/pane/intra_line_changes.h"
#include "session/pane/line_renderer.h"
#include "session/pane/pane_document.h"
#include "session/pane/row_layout.h"
#include "session/pane/syntax_colouring.h"
#include "session/pane/text_caret.h"
#include "session/pane/text_search.h"

#include <QFont>
#include <QList>
#include <QObject>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace velmora {

struct LineChange;

/// What the panes of a view and its other parts share: the document, which of it is in sight, the caret, the current
/// difference and the font. The parts read it, change it through its functions and repaint on its signals.
///
/// Lives on the interface thread. Vertical positions are places among the shown rows (`RowLayout`), the horizontal one
/// is a column of the text grid; all panes always show the same ones. Wrapped lines break at the same column in all of
/// them, that of the narrowest, so that equal lines are equally high.
class PaneScene final : public QObject {
    Q_OBJECT
public:
    /// For documents of so many `panes`, of which the pairs `compared` show the changed characters of their lines.
    explicit PaneScene(int panes, const QList<PanePair> &compared = {}, QObject *parent = nullptr);
    ~PaneScene() override;

    [[nodiscard]] int paneCount() const noexcept { return int(m_lanes.size()); }

    /// Shows another document, or nothing, from its top.
    void setDocument(std::shared_ptr<const PaneDocument> document);
    /// Shows a later state of the document: the caret stays in its line and its place in sight.
    void replaceDocument(std::shared_ptr<const PaneDocument> document);
    /// The same after an edit of lines of one text that is all that is new in the document's texts.
    void replaceDocument(std::shared_ptr<const PaneDocument> document, PaneIndex edited, const LineChange &edit);
    /// Ends the selection and leaves the current difference; caret and scroll position stay.
    void forgetCurrent();
    [[nodiscard]] const PaneDocument *document() const noexcept { return m_document.get(); }
    [[nodiscard]] const std::shared_ptr<const PaneDocument> &sharedDocument() const noexcept { return m_document; }
    [[nodiscard]] const RowLayout &layout() const noexcept { return m_layout; }
    [[nodiscard]] LineRenderer &renderer(PaneIndex pane) { return lane(pane).renderer; }
    /// The renderer that holds the text of a cell.
    [[nodiscard]] LineRenderer &rendererOf(const PaneDocument::Cell &cell) { return renderer(cell.pane); }
    /// The changed characters of a pair of panes, by its position in the pairs given.
    [[nodiscard]] IntraLineChanges &changes(qsizetype pair = 0) { return *m_changes[std::size_t(pair)]; }
    [[nodiscard]] qsizetype pairCount() const noexcept { return qsizetype(m_changes.size()); }
    [[nodiscard]] TextSearch &search() noexcept { return m_search; }
    /// What the lines of a text consist of; says how it is coloured, too.
    [[nodiscard]] SyntaxColouring &colouring(PaneIndex pane) { return lane(pane).colouring; }
    /// Starts and ends a frame that shows rows from `first` to `last` of `panes`: see `IntraLineChanges` and
    /// `SyntaxColouring`.
    void beginFrame(qsizetype first, qsizetype last, const QList<PaneIndex> &panes);
    void endFrame(const QList<PaneIndex> &panes);

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

    /// The height of the lowest pane, in pixels, and the narrowest one's room for text.
    void setViewport(int height, int textWidth);
    [[nodiscard]] int viewportHeight() const noexcept { return m_height; }

    [[nodiscard]] RowPlace top() const noexcept { return m_top; }
    [[nodiscard]] qint64 column() const noexcept { return m_column; }
    [[nodiscard]] RowPlace maximumTop() const { return m_layout.maximumTop(m_height); }
    [[nodiscard]] qint64 maximumColumn() const;
    /// Columns that fit into the narrowest pane, at least one.
    [[nodiscard]] qint64 columnsPerPage() const;
    /// Clamped, as all scrolling is.
    void scrollTo(RowPlace top, qint64 column);
    void scrollToTop(qsizetype index) { scrollTo({index, 0}, m_column); }
    void scrollByLines(qsizetype lines) { scrollTo(m_layout.moved(m_top, lines), m_column); }
    /// The x of the texts, in pixels, that stands at the left edge of the panes.
    [[nodiscard]] qreal scrolledX() const { return qreal(m_column) * cellWidth(); }
    /// The same for one line: 0 where it is wrapped.
    [[nodiscard]] qreal scrolledX(const PaneDocument::Cell &cell);

    [[nodiscard]] const TextCaret &caret() const noexcept { return m_caret; }
    /// Moves the caret and takes no care that it is in sight. A caret in a difference makes that the current one.
    void setCaret(const TextCaret &caret);
    /// Scrolls as little as brings the caret into sight.
    void showCaret();
    /// The same with some rows around it, for a caret that has come from far away.
    void showCaretInContext();
    /// Puts the caret at the start of line `number` (1-based) of `pane` and shows it; a line that is not shown gives
    /// way to the nearest one that is.
    void goToLine(PaneIndex pane, qint32 number);

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

    /// The current difference in words, for assistive tools; empty without one.
    [[nodiscard]] QString describeCurrentBlock() const;

    /// Marks the rows of these lines of the first pane, in increasing order, as aligned by hand, where all panes have a
    /// line.
    void setAlignedLines(std::vector<qint32> lines);
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

    /// What belongs to one pane alone.
    struct Lane {
        explicit Lane(PaneIndex pane) : colouring(pane) {}
        LineRenderer renderer;
        SyntaxColouring colouring;
    };

    [[nodiscard]] Lane &lane(PaneIndex pane) { return *m_lanes[std::size_t(pane.number())]; }
    [[nodiscard]] qreal cellWidth() const { return m_lanes.front()->renderer.cellWidth(); }

    void setCurrentBlock(qsizetype block);
    [[nodiscard]] bool isCurrentHidden() const;
    void revealChange();
    void goToRow(qsizetype row);
    void goToUnit(qsizetype unit);
    /// Whether the changes of `row` hardly all fit into the view.
    [[nodiscard]] bool isLongRow(qsizetype row);
    /// The units of the line of the caret that are in sight.
    [[nodiscard]] CharRange unitsInSight(const PaneDocument::Cell &cell);
    /// Where changes begin in the caret's line, in increasing order, as far as they are known.
    [[nodiscard]] QList<qint32> changeStartsAtCaret();
    /// Where to go within the current difference: another place in the caret's line, or the start of another long one.
    [[nodiscard]] std::optional<TextPosition> furtherPlace(bool forward);
    void showLaterDocument(std::shared_ptr<const PaneDocument> document);
    void takeDocument(std::shared_ptr<const PaneDocument> document);
    void layOutRows();
    void keepCaretInPlace(const std::function<void()> &change);
    void setWrapColumns();
    [[nodiscard]] qsizetype linesOf(qsizetype row);
    [[nodiscard]] RowPlace caretPlace();

    std::shared_ptr<const PaneDocument> m_document;
    RowLayout m_layout;
    std::vector<std::unique_ptr<Lane>> m_lanes; ///< at least one
    std::vector<std::unique_ptr<IntraLineChanges>> m_changes;
    TextSearch m_search;
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
