#include "text/view/diff_scene.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <utility>

namespace velmora {

// Differences ---------------------------------------------------------------------------------------------------------

void DiffScene::setCurrentBlock(qsizetype block)
{
    if (block == m_currentBlock)
        return;
    m_currentBlock = block;
    Q_EMIT currentBlockChanged();
}

bool DiffScene::isCurrentHidden() const
{
    return m_currentBlock >= 0 && !m_layout.isShown(m_layout.block(m_currentBlock).first);
}

qsizetype DiffScene::nextBlock() const
{
    const qsizetype row = m_caret.position.row;
    const bool leavesCurrent =
        m_currentBlock >= 0 && (isCurrentHidden() || m_layout.block(m_currentBlock).contains(row));
    const qsizetype next = leavesCurrent ? m_currentBlock + 1 : m_layout.blockFrom(row);
    return next < m_layout.blockCount() ? next : -1;
}

qsizetype DiffScene::previousBlock() const
{
    return (isCurrentHidden() ? m_currentBlock : m_layout.blockFrom(m_caret.position.row)) - 1;
}

bool DiffScene::canStep(bool forward)
{
    return (forward ? nextBlock() : previousBlock()) >= 0 || furtherPlace(forward);
}

void DiffScene::step(bool forward)
{
    const std::optional<TextPosition> place = furtherPlace(forward);
    if (!place)
        goToBlock(forward ? nextBlock() : previousBlock());
    else if (place->row == m_caret.position.row)
        goToUnit(place->unit);
    else
        goToRow(place->row);
}

bool DiffScene::isLongRow(qsizetype row)
{
    // A line that is a little longer than the view shows its changes well enough.
    constexpr qint64 longPages = 2;
    if (m_document->kind(row) != Modified || !m_layout.isShown(row))
        return false;
    std::size_t bytes = 0;
    bool isWrapped = false;
    for (const Side side : {Side::Left, Side::Right}) {
        const DiffDocument::Cell cell = m_document->cell(row, side);
        bytes = cell.source ? std::max(bytes, cell.source->bytes(cell.line).size()) : bytes;
        isWrapped = isWrapped || (cell.source && rendererOf(cell, side).isWrapped(cell.line));
    }
    if (qint64(bytes) <= longPages * columnsPerPage())
        return false;
    return !isWrapped || linesOf(row) > m_layout.rowsPerPage(m_height);
}

CharRange DiffScene::unitsInSight(const DiffDocument::Cell &cell)
{
    LineRenderer &drawn = rendererOf(cell, m_caret.side);
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

std::optional<TextPosition> DiffScene::furtherPlace(bool forward)
{
    // A difference may have any number of rows.
    constexpr qsizetype rowsLookedAt = 1000;
    const TextPosition here = m_caret.position;
    if (m_currentBlock < 0 || m_layout.blockOf(here.row) != m_currentBlock)
        return std::nullopt;
    const DiffDocument::Cell cell = m_document->cell(here.row, m_caret.side);
    if (cell.source && isLongRow(here.row)) {
        m_changes.beginFrame(here.row, here.row);
        const RowChanges *changes = m_changes.changesOf(here.row);
        const QList<qint32> starts = changes ? changeStarts(*changes, m_caret.side) : QList<qint32>();
        m_changes.endFrame();
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

void DiffScene::goToUnit(qsizetype unit)
{
    const TextPosition place{m_caret.position.row, unit};
    setCaret({m_caret.side, place, place});
    showCaret();
    const DiffDocument::Cell cell = m_document->cell(place.row, m_caret.side);
    LineRenderer &drawn = rendererOf(cell, m_caret.side);
    if (!drawn.isWrapped(cell.line))
        scrollTo(m_top, qint64(drawn.xOf(cell.line, unit) / drawn.cellWidth()) - columnsPerPage() / 3);
    Q_EMIT repaintWanted();
}

void DiffScene::goToRow(qsizetype row)
{
    const TextPosition start{row, 0};
    setCaret({m_caret.side, start, start});
    scrollTo(m_layout.topToReveal({m_layout.indexOf(row), 1}, m_top, m_height), 0);
    m_revealedRow = row;
    revealChange();
    Q_EMIT repaintWanted();
}

void DiffScene::setAlignedLines(std::vector<qint32> leftLines)
{
    m_alignedLines = std::move(leftLines);
    Q_EMIT repaintWanted();
}

bool DiffScene::isAligned(qsizetype row) const
{
    return m_document->lineNumber(row, Side::Right) >= 1 &&
           std::binary_search(m_alignedLines.begin(), m_alignedLines.end(), m_document->lineNumber(row, Side::Left));
}

void DiffScene::goToBlock(qsizetype block)
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
        setCaret({m_caret.side, start, start});
    }
    const qsizetype count = m_layout.isShown(rows.first) ? rows.count : 1;
    scrollTo(m_layout.topToReveal({first, count}, m_top, m_height), 0);
    const qsizetype shownRow = m_layout.rowAt(first);
    m_revealedRow = m_document->kind(shownRow) == Modified ? shownRow : -1;
    revealChange();
    Q_EMIT repaintWanted();
}

void DiffScene::revealChange()
{
    if (m_revealedRow < 0)
        return;
    m_changes.beginFrame(m_revealedRow, m_revealedRow);
    const RowChanges *changes = m_changes.changesOf(m_revealedRow);
    m_changes.endFrame();
    if (!changes)
        return;
    const qsizetype row = std::exchange(m_revealedRow, -1);
    std::optional<qint64> first;
    for (const Side side : {Side::Left, Side::Right}) {
        const DiffDocument::Cell cell = m_document->cell(row, side);
        if (!cell.source || changes->of(side).isEmpty() || rendererOf(cell, side).isWrapped(cell.line))
            continue;
        LineRenderer &drawn = rendererOf(cell, side);
        const auto column = qint64(drawn.xOf(cell.line, changes->of(side).first().start) / drawn.cellWidth());
        first = std::min(first.value_or(column), column);
    }
    if (first && (*first < m_column || *first >= m_column + columnsPerPage() - columnsToSpare))
        scrollTo(m_top, *first - columnsPerPage() / 3);
}

// What is selected ----------------------------------------------------------------------------------------------------

QString DiffScene::shortSelection(qsizetype longest) const
{
    const TextPosition start = m_caret.selectionStart();
    const TextPosition end = m_caret.selectionEnd();
    return start.row == end.row && end.unit - start.unit <= longest ? selectedText() : QString();
}

QString DiffScene::selectedText() const
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
        const DiffDocument::Cell cell = m_document->cell(row, m_caret.side);
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
