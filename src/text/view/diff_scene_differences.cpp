#include "text/view/diff_scene.h"

#include <algorithm>
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
    m_revealedRow = m_document->kind(shownRow) == Modified && !m_wraps ? shownRow : -1;
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
        if (!cell.source || changes->of(side).isEmpty())
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
