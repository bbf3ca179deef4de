#include "session/pane/pane_scene.h"

#include "session/pane/edit_buffer.h"

#include <algorithm>
#include <utility>

namespace velmora {

PaneScene::PaneScene(int panes, const QList<PanePair> &compared, QObject *parent) : QObject(parent)
{
    for (int pane = 0; pane < panes; ++pane) {
        m_lanes.push_back(std::make_unique<Lane>(pane));
        connect(&colouring(pane), &SyntaxColouring::arrived, this, &PaneScene::repaintWanted);
    }
    for (const PanePair &pair : compared) {
        m_changes.push_back(std::make_unique<IntraLineChanges>(pair));
        connect(m_changes.back().get(), &IntraLineChanges::arrived, this, &PaneScene::revealChange);
        connect(m_changes.back().get(), &IntraLineChanges::arrived, this, &PaneScene::repaintWanted);
    }
    connect(&m_search, &TextSearch::changed, this, &PaneScene::repaintWanted);
}

PaneScene::~PaneScene() = default;

void PaneScene::takeDocument(std::shared_ptr<const PaneDocument> document)
{
    const bool sameRows = m_document && document && m_document->hasSameStates(*document, m_countsMinor);
    m_document = std::move(document);
    const PaneDocument *shown = m_document.get();
    for (int pane = 0; pane < paneCount(); ++pane)
        renderer(pane).setSource(shown ? &shown->source(pane) : nullptr, shown ? shown->tabWidth() : 4);
    for (const auto &changes : m_changes)
        changes->setDocument(m_document);
    m_search.setDocument(m_document);
    if (!sameRows)
        layOutRows();
    m_revealedRow = -1;
}

void PaneScene::layOutRows()
{
    m_layout.setRows(m_document ? m_document->states(m_countsMinor) : std::vector<TextRowState>());
}

void PaneScene::setDocument(std::shared_ptr<const PaneDocument> document)
{
    for (const auto &lane : m_lanes)
        lane->colouring.setDocument(document);
    takeDocument(std::move(document));
    m_caret = {m_caret.pane, {}, {}};
    m_currentBlock = -1;
    m_top = {};
    m_column = 0;
    Q_EMIT documentChanged();
    Q_EMIT currentBlockChanged();
    Q_EMIT caretMoved();
}

void PaneScene::replaceDocument(std::shared_ptr<const PaneDocument> document)
{
    for (const auto &lane : m_lanes)
        lane->colouring.setDocument(document);
    showLaterDocument(std::move(document));
}

void PaneScene::replaceDocument(std::shared_ptr<const PaneDocument> document, PaneIndex edited, const LineChange &edit)
{
    for (const auto &lane : m_lanes)
        lane->colouring.takeSameText(document);
    colouring(edited).takeEdit(document, edit.first, edit.removed, edit.inserted);
    showLaterDocument(std::move(document));
}

void PaneScene::showLaterDocument(std::shared_ptr<const PaneDocument> document)
{
    const std::shared_ptr<const PaneDocument> before = m_document;
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
        // By its line in the caret's pane, or else in any that has one.
        PaneIndex pane = m_caret.pane;
        for (int other = 0; other < paneCount() && before->lineNumber(row, pane) < 1; ++other)
            pane = other;
        return std::max<qsizetype>(m_document->rowOfLine(pane, before->lineNumber(row, pane)), 0);
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

void PaneScene::forgetCurrent()
{
    m_caret.anchor = m_caret.position;
    m_currentBlock = -1;
    Q_EMIT currentBlockChanged();
    Q_EMIT caretMoved();
}

void PaneScene::beginFrame(qsizetype first, qsizetype last, const QList<PaneIndex> &panes)
{
    for (const auto &changes : m_changes)
        changes->beginFrame(first, last);
    for (const PaneIndex pane : panes)
        colouring(pane).beginFrame();
}

void PaneScene::endFrame(const QList<PaneIndex> &panes)
{
    for (const auto &changes : m_changes)
        changes->endFrame();
    for (const PaneIndex pane : panes)
        colouring(pane).endFrame();
}

void PaneScene::setFilter(RowFilter filter)
{
    if (filter != m_layout.filter())
        keepCaretInPlace([this, filter] { m_layout.setFilter(filter); });
}

void PaneScene::setContextRows(qsizetype rows)
{
    if (rows != m_layout.context())
        keepCaretInPlace([this, rows] { m_layout.setContext(rows); });
}

void PaneScene::setCountsMinor(bool counts)
{
    if (counts == m_countsMinor)
        return;
    m_countsMinor = counts;
    m_currentBlock = -1;
    keepCaretInPlace([this] { layOutRows(); });
    Q_EMIT currentBlockChanged();
}

void PaneScene::openBand(qsizetype index)
{
    if (index < 0 || index >= m_layout.count() || !m_layout.isBand(index))
        return;
    const RowPlace top = m_top;
    m_layout.openBand(index);
    m_top = std::min(top, maximumTop());
    Q_EMIT documentChanged();
}

void PaneScene::openBandOf(qsizetype row)
{
    if (!m_layout.isShown(row))
        keepCaretInPlace([this, row] { m_layout.openBand(m_layout.indexOf(row)); });
}

void PaneScene::keepCaretInPlace(const std::function<void()> &change)
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
            m_caret = {m_caret.pane, position, position};
        const auto linesAbove = qsizetype(caretWasInSight ? y / m_layout.rowHeight() : 0);
        m_top = std::min(m_layout.moved({index, 0}, -linesAbove), maximumTop());
    }
    Q_EMIT documentChanged();
    Q_EMIT caretMoved();
}

void PaneScene::setFont(const QFont &font)
{
    m_font = font;
    for (const auto &lane : m_lanes)
        lane->renderer.setFont(font);
    m_layout.setRowHeight(m_lanes.front()->renderer.rowHeight());
    setWrapColumns();
    scrollTo(m_top, m_column);
    Q_EMIT metricsChanged();
}

void PaneScene::setShowsSyntax(bool shows)
{
    m_showsSyntax = shows;
    Q_EMIT repaintWanted();
}

void PaneScene::setShowsBlanks(bool shows)
{
    for (const auto &lane : m_lanes)
        lane->renderer.setShowsBlanks(shows);
    Q_EMIT repaintWanted();
}

void PaneScene::setWraps(bool wraps)
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

void PaneScene::setWrapColumns()
{
    const qint64 columns = m_wraps ? columnsPerPage() : 0;
    for (const auto &lane : m_lanes)
        lane->renderer.setWrap(columns);
}

qsizetype PaneScene::linesOf(qsizetype row)
{
    qsizetype lines = 1;
    for (int pane = 0; pane < paneCount(); ++pane) {
        const PaneDocument::Cell cell = m_document->cell(row, pane);
        if (cell.source)
            lines = std::max(lines, rendererOf(cell).partCount(cell.line));
    }
    return lines;
}

qreal PaneScene::scrolledX(const PaneDocument::Cell &cell)
{
    return cell.source && rendererOf(cell).isWrapped(cell.line) ? 0 : scrolledX();
}

void PaneScene::setViewport(int height, int textWidth)
{
    if (height == m_height && textWidth == m_textWidth)
        return;
    m_height = height;
    m_textWidth = textWidth;
    setWrapColumns();
    scrollTo(m_top, m_column);
    Q_EMIT metricsChanged();
}

qint64 PaneScene::columnsPerPage() const
{
    return std::max<qint64>(qint64(m_textWidth / cellWidth()), 1);
}

qint64 PaneScene::maximumColumn() const
{
    qint64 widest = m_document ? m_document->widestLine() : 0;
    if (m_wraps && widest <= LineRenderer::longestWrapped)
        return 0;
    widest += m_document ? m_document->columnsBehindLines() : 0;
    return widest > columnsPerPage() ? widest + columnsToSpare - columnsPerPage() : 0;
}

void PaneScene::scrollTo(RowPlace top, qint64 column)
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

void PaneScene::setCaret(const TextCaret &caret)
{
    if (!m_document || caret == m_caret)
        return;
    m_caret = caret;
    const qsizetype block = m_layout.blockOf(caret.position.row);
    if (block >= 0)
        setCurrentBlock(block);
    Q_EMIT caretMoved();
}

RowPlace PaneScene::caretPlace()
{
    RowPlace place{m_layout.indexOf(m_caret.position.row), 0};
    const PaneDocument::Cell cell = m_document->cell(m_caret.position.row, m_caret.pane);
    if (m_wraps && cell.source && m_layout.isShown(m_caret.position.row))
        place.line = rendererOf(cell).placeOf(cell.line, m_caret.position.unit).part;
    return place;
}

void PaneScene::showCaret()
{
    if (m_layout.count() == 0)
        return;
    qint64 column = m_column;
    const PaneDocument::Cell cell = m_document->cell(m_caret.position.row, m_caret.pane);
    if (cell.source && !rendererOf(cell).isWrapped(cell.line)) {
        LineRenderer &drawn = rendererOf(cell);
        const auto at = qint64(drawn.xOf(cell.line, m_caret.position.unit) / drawn.cellWidth());
        if (at < column)
            column = std::max<qint64>(at - columnsToSpare, 0);
        else if (at > column + columnsPerPage() - 1)
            column = at + columnsToSpare - columnsPerPage();
    }
    scrollTo(m_layout.topToShow(caretPlace(), m_top, m_height), column);
}

void PaneScene::showCaretInContext()
{
    openBandOf(m_caret.position.row);
    const qsizetype index = m_layout.indexOf(m_caret.position.row);
    if (index >= 0)
        scrollTo(m_layout.topToReveal({index, 1}, m_top, m_height), m_column);
    showCaret();
}

void PaneScene::goToLine(PaneIndex pane, qint32 number)
{
    if (m_layout.count() == 0)
        return;
    const qsizetype row = std::max<qsizetype>(m_document->rowOfLine(pane, number), 0);
    openBandOf(row);
    const TextPosition start{m_layout.rowAt(m_layout.indexOf(row)), 0};
    setCaret({pane, start, start});
    showCaretInContext();
}

} // namespace velmora
