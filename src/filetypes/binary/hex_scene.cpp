#include "filetypes/binary/hex_scene.h"

#include <algorithm>

namespace velmora {

void HexScene::setDocument(std::shared_ptr<const HexDocument> document)
{
    m_document = std::move(document);
    m_top = 0;
    m_currentRow = -1;
    m_caret = {m_caret.side};
    Q_EMIT documentChanged();
    Q_EMIT scrolled();
    Q_EMIT changed();
}

void HexScene::setVisibleRows(qint64 rows)
{
    m_visibleRows = std::max<qint64>(rows, 1);
    m_top = std::clamp<qint64>(m_top, 0, lastTop());
    Q_EMIT scrolled();
}

void HexScene::setTop(qint64 row)
{
    const qint64 top = std::clamp<qint64>(row, 0, lastTop());
    if (top == m_top)
        return;
    m_top = top;
    Q_EMIT scrolled();
}

void HexScene::showRow(qint64 row)
{
    const HexRow place = m_document->rows.at(row);
    const Side side = place.count[m_caret.side] > 0 ? m_caret.side : otherSide(m_caret.side);
    m_caret = {side, place.offset[side], place.offset[side]};
    m_currentRow = row;
    setTop(row - m_visibleRows / 2);
    Q_EMIT changed();
}

qint64 HexScene::caretRow() const
{
    return m_document->rows.rowOf(m_caret.side, m_caret.offset);
}

int HexScene::caretColumn() const
{
    return int(m_caret.offset - m_document->rows.at(caretRow()).offset[m_caret.side]);
}

void HexScene::moveCaret(Side side, qint64 offset, bool selects)
{
    if (!m_document)
        return;
    const qint64 first = m_document->starts[side];
    const qint64 last = m_document->source(side).size() - 1;
    if (last < first)
        return;
    const qint64 place = std::clamp(offset, first, last);
    const bool keepsAnchor = selects && m_caret.side == side && m_caret.anchor >= 0;
    m_caret = {side, place, keepsAnchor ? m_caret.anchor : place};
    m_currentRow = caretRow();
    bringIntoSight(m_currentRow);
    Q_EMIT changed();
}

void HexScene::select(const ByteSelection &range)
{
    m_caret = {range.side, range.begin, range.end - 1};
    m_currentRow = caretRow();
    if (m_currentRow < m_top || m_currentRow >= m_top + m_visibleRows)
        setTop(m_currentRow - m_visibleRows / 2);
    Q_EMIT changed();
}

ByteSelection HexScene::selection() const
{
    if (m_caret.offset < 0)
        return {m_caret.side, 0, 0};
    const auto [begin, last] = std::minmax(m_caret.offset, m_caret.anchor);
    return {m_caret.side, begin, last + 1};
}

void HexScene::bringIntoSight(qint64 row)
{
    if (row < m_top)
        setTop(row);
    else if (row >= m_top + m_visibleRows)
        setTop(row - m_visibleRows + 1);
}

} // namespace velmora
