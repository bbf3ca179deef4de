#include "text/view/diff_scene.h"

#include "text/view/edit_buffer.h"
#include "text/view/row_marks.h"

#include <algorithm>
#include <utility>

namespace velmora {

DiffScene::DiffScene(QObject *parent) : QObject(parent), m_leftColouring(Side::Left), m_rightColouring(Side::Right)
{
    connect(&m_changes, &IntraLineChanges::arrived, this, &DiffScene::revealChange);
    connect(&m_changes, &IntraLineChanges::arrived, this, &DiffScene::repaintWanted);
    connect(&m_search, &TextSearch::changed, this, &DiffScene::repaintWanted);
    connect(&m_leftColouring, &SyntaxColouring::arrived, this, &DiffScene::repaintWanted);
    connect(&m_rightColouring, &SyntaxColouring::arrived, this, &DiffScene::repaintWanted);
}

void DiffScene::takeDocument(std::shared_ptr<const DiffDocument> document)
{
    const bool sameRows = m_document && document && m_document->rows().isSharedWith(document->rows()) &&
                          (!m_countsMinor || m_document->unimportantRows() == document->unimportantRows()) &&
                          m_document->lineEndRows() == document->lineEndRows();
    m_document = std::move(document);
    const DiffDocument *shown = m_document.get();
    m_left.setSource(shown ? &shown->source(Side::Left) : nullptr, shown ? shown->tabWidth() : 4);
    m_right.setSource(shown ? &shown->source(Side::Right) : nullptr, shown ? shown->tabWidth() : 4);
    m_changes.setDocument(m_document);
    m_search.setDocument(m_document);
    if (!sameRows)
        layOutRows();
    m_revealedRow = -1;
}

void DiffScene::layOutRows()
{
    if (m_document)
        m_layout.setRows(m_document->rows(), rowMarks(*m_document, m_countsMinor));
    else
        m_layout.setRows({});
}

void DiffScene::setDocument(std::shared_ptr<const DiffDocument> document)
{
    m_leftColouring.setDocument(document);
    m_rightColouring.setDocument(document);
    takeDocument(std::move(document));
    m_caret = {m_caret.side, {}, {}};
    m_currentBlock = -1;
    m_top = {};
    m_column = 0;
    Q_EMIT documentChanged();
    Q_EMIT currentBlockChanged();
    Q_EMIT caretMoved();
}

void DiffScene::replaceDocument(std::shared_ptr<const DiffDocument> document)
{
    m_leftColouring.setDocument(document);
    m_rightColouring.setDocument(document);
    showLaterDocument(std::move(document));
}

void DiffScene::replaceDocument(std::shared_ptr<const DiffDocument> document, Side edited, const LineChange &edit)
{
    colouring(edited).takeEdit(document, edit.first, edit.removed, edit.inserted);
    colouring(otherSide(edited)).takeSameText(document);
    showLaterDocument(std::move(document));
}

void DiffScene::showLaterDocument(std::shared_ptr<const DiffDocument> document)
{
    const std::shared_ptr<const DiffDocument> before = m_document;
    if (!before || !document) {
        setDocument(std::move(document));
        return;
    }
    const qsizetype caretIndex = m_layout.indexOf(m_caret.position.row);
    const bool caretInSight = m_layout.inSight(m_top, m_height).contains(caretIndex);
    const qsizetype fixedIndex = caretInSight ? caretIndex : m_top.index;
    const qsizetype linesAbove = qsizetype(m_layout.yOf(fixedIndex, m_top) / m_layout.rowHeight());
    const qsizetype fixedRow = m_layout.count() > 0 ? m_layout.rowAt(std::min(fixedIndex, m_layout.count() - 1)) : -1;
    const qsizetype blockRow = m_currentBlock >= 0 ? m_layout.block(m_currentBlock).first : -1;
    std::vector<RowRange> opened = m_layout.opened();
    takeDocument(std::move(document));

    const auto newRow = [this, &before](qsizetype row) {
        if (row < 0 || row >= before->rowCount())
            return qsizetype(0);
        const bool ownLine = before->lineNumber(row, m_caret.side) >= 1;
        const Side side = ownLine ? m_caret.side : otherSide(m_caret.side);
        return std::max<qsizetype>(m_document->rowOfLine(side, before->lineNumber(row, side)), 0);
    };
    for (RowRange &stretch : opened) {
        const qsizetype last = newRow(stretch.end() - 1);
        stretch.first = newRow(stretch.first);
        stretch.count = last - stretch.first + 1;
    }
    m_layout.setOpened(std::move(opened));
    m_caret.anchor.row = newRow(m_caret.anchor.row);
    m_caret.position.row = newRow(m_caret.position.row);
    m_currentBlock = blockRow >= 0 ? m_layout.blockOf(newRow(blockRow)) : -1;
    m_top = m_layout.moved({std::max<qsizetype>(m_layout.indexOf(newRow(fixedRow)), 0), 0}, -linesAbove);
    m_top = std::min(m_top, maximumTop());
    Q_EMIT documentChanged();
    Q_EMIT currentBlockChanged();
    Q_EMIT caretMoved();
}

void DiffScene::forgetCurrent()
{
    m_caret.anchor = m_caret.position;
    m_currentBlock = -1;
    Q_EMIT currentBlockChanged();
    Q_EMIT caretMoved();
}

LineRenderer &DiffScene::rendererOf(const DiffDocument::Cell &cell, Side side)
{
    return renderer(cell.own ? side : otherSide(side));
}

void DiffScene::setFilter(RowFilter filter)
{
    if (filter != m_layout.filter())
        keepCaretInPlace([this, filter] { m_layout.setFilter(filter); });
}

void DiffScene::setContextRows(qsizetype rows)
{
    if (rows != m_layout.context())
        keepCaretInPlace([this, rows] { m_layout.setContext(rows); });
}

void DiffScene::setCountsMinor(bool counts)
{
    if (counts == m_countsMinor)
        return;
    m_countsMinor = counts;
    m_currentBlock = -1;
    keepCaretInPlace([this] { layOutRows(); });
    Q_EMIT currentBlockChanged();
}

void DiffScene::openBand(qsizetype index)
{
    if (index < 0 || index >= m_layout.count() || !m_layout.isBand(index))
        return;
    const RowPlace top = m_top;
    m_layout.openBand(index);
    m_top = std::min(top, maximumTop());
    Q_EMIT documentChanged();
}

void DiffScene::openBandOf(qsizetype row)
{
    if (!m_layout.isShown(row))
        keepCaretInPlace([this, row] { m_layout.openBand(m_layout.indexOf(row)); });
}

void DiffScene::keepCaretInPlace(const std::function<void()> &change)
{
    const qsizetype before = m_layout.indexOf(m_caret.position.row);
    const qint64 y = before >= 0 ? m_layout.yOf(before, m_top) : -1;
    const bool caretWasInSight = y >= 0 && y < m_height;
    change();
    const qsizetype index = m_layout.indexOf(m_caret.position.row);
    m_top = {};
    if (index >= 0) {
        const TextPosition position{m_layout.rowAt(index), 0};
        const bool caretIsShown = m_layout.rowsAt(index).contains(m_caret.position.row);
        if (!caretIsShown)
            m_caret = {m_caret.side, position, position};
        const auto linesAbove = qsizetype(caretWasInSight ? y / m_layout.rowHeight() : 0);
        m_top = std::min(m_layout.moved({index, 0}, -linesAbove), maximumTop());
    }
    Q_EMIT documentChanged();
    Q_EMIT caretMoved();
}

void DiffScene::setFont(const QFont &font)
{
    m_font = font;
    m_left.setFont(font);
    m_right.setFont(font);
    m_layout.setRowHeight(m_left.rowHeight());
    setWrapColumns();
    scrollTo(m_top, m_column);
    Q_EMIT metricsChanged();
}

void DiffScene::setShowsSyntax(bool shows)
{
    m_showsSyntax = shows;
    Q_EMIT repaintWanted();
}

void DiffScene::setShowsBlanks(bool shows)
{
    m_left.setShowsBlanks(shows);
    m_right.setShowsBlanks(shows);
    Q_EMIT repaintWanted();
}

void DiffScene::setWraps(bool wraps)
{
    if (wraps == m_wraps)
        return;
    m_wraps = wraps;
    m_layout.setMeasure(wraps ? [this](qsizetype row) { return linesOf(row); } : RowLayout::Measure());
    setWrapColumns();
    scrollTo({m_top.index, 0}, 0);
    showCaret();
    Q_EMIT metricsChanged();
}

void DiffScene::setWrapColumns()
{
    const qint64 columns = m_wraps ? columnsPerPage() : 0;
    m_left.setWrap(columns);
    m_right.setWrap(columns);
}

qsizetype DiffScene::linesOf(qsizetype row)
{
    qsizetype lines = 1;
    for (const Side side : {Side::Left, Side::Right}) {
        const DiffDocument::Cell cell = m_document->cell(row, side);
        if (cell.source)
            lines = std::max(lines, rendererOf(cell, side).partCount(cell.line));
    }
    return lines;
}

qreal DiffScene::scrolledX(const DiffDocument::Cell &cell, Side side)
{
    return cell.source && rendererOf(cell, side).isWrapped(cell.line) ? 0 : scrolledX();
}

void DiffScene::setViewport(int height, int textWidth)
{
    if (height == m_height && textWidth == m_textWidth)
        return;
    m_height = height;
    m_textWidth = textWidth;
    setWrapColumns();
    scrollTo(m_top, m_column);
    Q_EMIT metricsChanged();
}

qint64 DiffScene::columnsPerPage() const
{
    return std::max<qint64>(qint64(m_textWidth / m_left.cellWidth()), 1);
}

qint64 DiffScene::maximumColumn() const
{
    qint64 widest = m_document ? m_document->widestLine() : 0;
    if (m_wraps && widest <= LineRenderer::longestWrapped)
        return 0;
    if (m_document && !m_document->lineEndRows().empty())
        widest += columnsForLineEnd;
    return widest > columnsPerPage() ? widest + columnsToSpare - columnsPerPage() : 0;
}

void DiffScene::scrollTo(RowPlace top, qint64 column)
{
    const RowPlace newTop = std::min(m_layout.clamped(top), maximumTop());
    const qint64 newColumn = std::clamp<qint64>(column, 0, std::max<qint64>(maximumColumn(), 0));
    if (newTop == m_top && newColumn == m_column)
        return;
    m_top = newTop;
    m_column = newColumn;
    m_revealedRow = -1;
    Q_EMIT scrolled();
}

void DiffScene::setCaret(const TextCaret &caret)
{
    if (!m_document || caret == m_caret)
        return;
    m_caret = caret;
    const qsizetype block = m_layout.blockOf(caret.position.row);
    if (block >= 0)
        setCurrentBlock(block);
    Q_EMIT caretMoved();
}

RowPlace DiffScene::caretPlace()
{
    RowPlace place{m_layout.indexOf(m_caret.position.row), 0};
    const DiffDocument::Cell cell = m_document->cell(m_caret.position.row, m_caret.side);
    if (m_wraps && cell.source && m_layout.isShown(m_caret.position.row))
        place.line = rendererOf(cell, m_caret.side).placeOf(cell.line, m_caret.position.unit).part;
    return place;
}

void DiffScene::showCaret()
{
    if (m_layout.count() == 0)
        return;
    qint64 column = m_column;
    const DiffDocument::Cell cell = m_document->cell(m_caret.position.row, m_caret.side);
    if (cell.source && !rendererOf(cell, m_caret.side).isWrapped(cell.line)) {
        LineRenderer &drawn = rendererOf(cell, m_caret.side);
        const auto at = qint64(drawn.xOf(cell.line, m_caret.position.unit) / drawn.cellWidth());
        if (at < column)
            column = std::max<qint64>(at - columnsToSpare, 0);
        else if (at > column + columnsPerPage() - 1)
            column = at + columnsToSpare - columnsPerPage();
    }
    scrollTo(m_layout.topToShow(caretPlace(), m_top, m_height), column);
}

void DiffScene::showCaretInContext()
{
    openBandOf(m_caret.position.row);
    const qsizetype index = m_layout.indexOf(m_caret.position.row);
    if (index >= 0)
        scrollTo(m_layout.topToReveal({index, 1}, m_top, m_height), m_column);
    showCaret();
}

void DiffScene::goToLine(Side side, qint32 number)
{
    if (m_layout.count() == 0)
        return;
    const qsizetype row = std::max<qsizetype>(m_document->rowOfLine(side, number), 0);
    openBandOf(row);
    const TextPosition start{m_layout.rowAt(m_layout.indexOf(row)), 0};
    setCaret({side, start, start});
    showCaretInContext();
}

} // namespace velmora
