#include "session/pane/pane_scene.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <utility>

namespace velmora {

// Differences ---------------------------------------------------------------------------------------------------------

void PaneScene::setCurrentBlock(qsizetype block)
{
    if (block == m_currentBlock)
        return;
    m_currentBlock = block;
    Q_EMIT currentBlockChanged();
}

bool PaneScene::isCurrentHidden() const
{
    return m_currentBlock >= 0 && !m_layout.isShown(m_layout.block(m_currentBlock).first);
}

qsizetype PaneScene::nextBlock() const
{
    const qsizetype row = m_caret.position.row;
    const bool leavesCurrent =
        m_currentBlock >= 0 && (isCurrentHidden() || m_layout.block(m_currentBlock).contains(row));
    const qsizetype next = leavesCurrent ? m_currentBlock + 1 : m_layout.blockFrom(row);
    return next < m_layout.blockCount() ? next : -1;
}

qsizetype PaneScene::previousBlock() const
{
    return (isCurrentHidden() ? m_currentBlock : m_layout.blockFrom(m_caret.position.row)) - 1;
}

bool PaneScene::canStep(bool forward)
{
    return (forward ? nextBlock() : previousBlock()) >= 0 || furtherPlace(forward);
}

void PaneScene::step(bool forward)
{
    const std::optional<TextPosition> place = furtherPlace(forward);
    if (!place)
        goToBlock(forward ? nextBlock() : previousBlock());
    else if (place->row == m_caret.position.row)
        goToUnit(place->unit);
    else
        goToRow(place->row);
}

bool PaneScene::isLongRow(qsizetype row)
{
    // A line that is a little longer than the view shows its changes well enough.
    constexpr qint64 longPages = 2;
    if (m_layout.stateOf(row) != TextRowState::Modified || !m_layout.isShown(row))
        return false;
    std::size_t bytes = 0;
    bool isWrapped = false;
    for (int pane = 0; pane < paneCount(); ++pane) {
        const PaneDocument::Cell cell = m_document->cell(row, pane);
        bytes = cell.source ? std::max(bytes, cell.source->bytes(cell.line).size()) : bytes;
        isWrapped = isWrapped || (cell.source && rendererOf(cell).isWrapped(cell.line));
    }
    if (qint64(bytes) <= longPages * columnsPerPage())
        return false;
    return !isWrapped || linesOf(row) > m_layout.rowsPerPage(m_height);
}

CharRange PaneScene::unitsInSight(const PaneDocument::Cell &cell)
{
    LineRenderer &drawn = rendererOf(cell);
    qsizetype first = 0;
    qsizetype end = 0;
    if (drawn.isWrapped(cell.line)) {
        const qint64 y = m_layout.yOf(m_layout.indexOf(m_caret.position.row), m_top);
        const qsizetype last = drawn.partCount(cell.line) - 1;
        const auto partAt = [&](qint64 at) { return std::clamp<qsizetype>(at / m_layout.rowHeight(), 0, last); };
        first = drawn.unitAt(cell.line, 0, partAt(-y));
        end = drawn.unitAt(cell.line, m_textWidth, partAt(m_height - y - m_layout.rowHeight()));
    } else {
        first = drawn.unitAt(cell.line, scrolledX());
        end = drawn.unitAt(cell.line, scrolledX() + m_textWidth);
    }
    return {qint32(first), qint32(end - first)};
}

QList<qint32> PaneScene::changeStartsAtCaret()
{
    const qsizetype row = m_caret.position.row;
    QList<qint32> starts;
    for (const auto &changes : m_changes) {
        changes->beginFrame(row, row);
        const RowChanges *found = changes->concerns(m_caret.pane) ? changes->changesOf(row) : nullptr;
        const bool isLeft = m_caret.pane == changes->panes().left;
        if (found)
            starts += isLeft ? changeStarts(found->left, found->right) : changeStarts(found->right, found->left);
        changes->endFrame();
    }
    std::sort(starts.begin(), starts.end());
    return starts;
}

std::optional<TextPosition> PaneScene::furtherPlace(bool forward)
{
    // A difference may have any number of rows.
    constexpr qsizetype rowsLookedAt = 1000;
    const TextPosition here = m_caret.position;
    if (m_currentBlock < 0 || m_layout.blockOf(here.row) != m_currentBlock)
        return std::nullopt;
    const PaneDocument::Cell cell = m_document->cell(here.row, m_caret.pane);
    if (cell.source && isLongRow(here.row)) {
        const QList<qint32> starts = changeStartsAtCaret();
        const CharRange sight = unitsInSight(cell);
        const auto isOutOfSight = [sight](qint32 unit) {
            return unit < sight.start || unit >= sight.start + sight.length;
        };
        const auto behind = std::upper_bound(starts.begin(), starts.end(), qint32(here.unit));
        const auto before = std::lower_bound(starts.begin(), starts.end(), qint32(here.unit));
        const auto next = std::find_if(behind, starts.end(), isOutOfSight);
        const auto previous = std::find_if(std::make_reverse_iterator(before), starts.rend(), isOutOfSight);
        if (forward && next != starts.end())
            return TextPosition{here.row, *next};
        if (!forward && previous != starts.rend())
            return TextPosition{here.row, *previous};
    }
    const RowRange block = m_layout.block(m_currentBlock);
    const qsizetype by = forward ? 1 : -1;
    for (qsizetype row = here.row + by, looked = 0; block.contains(row) && looked < rowsLookedAt; row += by, ++looked) {
        if (isLongRow(row))
            return TextPosition{row, 0};
    }
    return std::nullopt;
}

void PaneScene::goToUnit(qsizetype unit)
{
    const TextPosition place{m_caret.position.row, unit};
    setCaret({m_caret.pane, place, place});
    showCaret();
    const PaneDocument::Cell cell = m_document->cell(place.row, m_caret.pane);
    LineRenderer &drawn = rendererOf(cell);
    if (!drawn.isWrapped(cell.line))
        scrollTo(m_top, qint64(drawn.xOf(cell.line, unit) / drawn.cellWidth()) - columnsPerPage() / 3);
    Q_EMIT repaintWanted();
}

void PaneScene::goToRow(qsizetype row)
{
    const TextPosition start{row, 0};
    setCaret({m_caret.pane, start, start});
    scrollTo(m_layout.topToReveal({m_layout.indexOf(row), 1}, m_top, m_height), 0);
    m_revealedRow = row;
    revealChange();
    Q_EMIT repaintWanted();
}

QString PaneScene::describeCurrentBlock() const
{
    return m_document && m_currentBlock >= 0 ? m_document->describeBlock(m_layout, m_currentBlock) : QString();
}

void PaneScene::setAlignedLines(std::vector<qint32> lines)
{
    m_alignedLines = std::move(lines);
    Q_EMIT repaintWanted();
}

bool PaneScene::isAligned(qsizetype row) const
{
    for (int pane = 1; pane < paneCount(); ++pane) {
        if (m_document->lineNumber(row, pane) < 1)
            return false;
    }
    return std::binary_search(m_alignedLines.begin(), m_alignedLines.end(), m_document->lineNumber(row, 0));
}

void PaneScene::goToBlock(qsizetype block)
{
    if (block < 0 || block >= m_layout.blockCount())
        return;
    const RowRange rows = m_layout.block(block);
    setCurrentBlock(block);
    const qsizetype first = m_layout.indexOf(rows.first);
    if (first < 0)
        return;
    if (m_layout.isShown(rows.first)) {
        const TextPosition start{rows.first, 0};
        setCaret({m_caret.pane, start, start});
    }
    const qsizetype count = m_layout.isShown(rows.first) ? rows.count : 1;
    scrollTo(m_layout.topToReveal({first, count}, m_top, m_height), 0);
    const qsizetype shownRow = m_layout.rowAt(first);
    m_revealedRow = m_layout.stateOf(shownRow) == TextRowState::Modified ? shownRow : -1;
    revealChange();
    Q_EMIT repaintWanted();
}

void PaneScene::revealChange()
{
    if (m_revealedRow < 0)
        return;
    std::optional<qint64> first;
    bool isKnown = m_changes.empty();
    for (const auto &changes : m_changes) {
        changes->beginFrame(m_revealedRow, m_revealedRow);
        const RowChanges *found = changes->changesOf(m_revealedRow);
        changes->endFrame();
        if (!found)
            continue;
        isKnown = true;
        for (const PaneIndex pane : {changes->panes().left, changes->panes().right}) {
            const PaneDocument::Cell cell = m_document->cell(m_revealedRow, pane);
            const QList<CharRange> &changed = changes->changesIn(*found, pane);
            if (!cell.source || changed.isEmpty() || rendererOf(cell).isWrapped(cell.line))
                continue;
            LineRenderer &drawn = rendererOf(cell);
            const auto column = qint64(drawn.xOf(cell.line, changed.first().start) / drawn.cellWidth());
            first = std::min(first.value_or(column), column);
        }
    }
    if (!isKnown)
        return;
    m_revealedRow = -1;
    if (first && (*first < m_column || *first >= m_column + columnsPerPage() - columnsToSpare))
        scrollTo(m_top, *first - columnsPerPage() / 3);
}

// What is selected ----------------------------------------------------------------------------------------------------

QString PaneScene::shortSelection(qsizetype longest) const
{
    const TextPosition start = m_caret.selectionStart();
    const TextPosition end = m_caret.selectionEnd();
    return start.row == end.row && end.unit - start.unit <= longest ? selectedText() : QString();
}

QString PaneScene::selectedText() const
{
    if (!m_document || !m_caret.hasSelection())
        return {};
    const TextPosition start = m_caret.selectionStart();
    const TextPosition end = m_caret.selectionEnd();
    QStringList lines;
    for (qsizetype row = start.row; row <= std::min(end.row, m_document->rowCount() - 1); ++row) {
        // A band stands for its rows; what is hidden without one is not selected.
        if (m_layout.filter() == RowFilter::Identical && !m_layout.isShown(row))
            continue;
        const PaneDocument::Cell cell = m_document->cell(row, m_caret.pane);
        if (!cell.source || !cell.own)
            continue;
        QString text = cell.source->text(cell.line);
        if (row == end.row)
            text.truncate(end.unit);
        if (row == start.row)
            text.remove(0, start.unit);
        lines.append(std::move(text));
    }
    return lines.size() == 1 ? lines.first() : lines.join(u'\n');
}

} // namespace velmora
