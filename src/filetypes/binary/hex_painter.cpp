#include "filetypes/binary/hex_painter.h"

#include "filetypes/binary/hex_colours.h"
#include "session/diff_colours.h"
#include "session/theme.h"

#include <QFontMetrics>
#include <QPainter>

namespace velmora {

namespace {

constexpr int tickWidth = 3;
constexpr int currentRowAlpha = 40;

} // namespace

HexGeometry::HexGeometry(const QFont &font, qint64 size)
{
    const QFontMetrics metrics(font);
    m_rowHeight = metrics.height() + 2;
    m_digit = metrics.horizontalAdvance(u'0');
    m_offsetDigits = std::max(8, int(QString::number(size, 16).size()));
    m_hex = margin + (m_offsetDigits + 1) * m_digit;
}

int HexGeometry::columnAt(int x) const
{
    const int characters = characterCell(0).left();
    const int column =
        x >= characters - m_digit ? (x - characters) / m_digit : (x - m_hex + m_digit / 2) / (3 * m_digit);
    return std::clamp(column, 0, int(rowSize) - 1);
}

HexPainter::HexPainter(QPainter &painter, const HexScene &scene, Side side, const HexGeometry &geometry, bool isFocused)
    : m_painter(painter),
      m_scene(scene),
      m_document(*scene.document()),
      m_side(side),
      m_geometry(geometry),
      m_isFocused(isFocused),
      m_dark(isDarkTheme()),
      m_selection(scene.selection())
{}

void HexPainter::text(const QRect &cell, const QString &text, const QColor &colour)
{
    m_painter.setPen(colour);
    m_painter.drawText(cell, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextDontClip, text);
}

void HexPainter::paintRow(qint64 number, int x, int y, int viewport)
{
    const Row row{number, m_document.rows.at(number), QPoint(x, y)};
    if (m_document.differs(number))
        m_painter.fillRect(QRect(0, y, tickWidth, m_geometry.rowHeight()), differingRowColour(m_dark));
    if (number == m_scene.currentRow()) {
        QColor band = diffColour(DiffColour::Accent, m_dark);
        band.setAlpha(currentRowAlpha);
        m_painter.fillRect(QRect(std::max(x, 0), y, viewport, m_geometry.rowHeight()), band);
    }
    const QColor muted = diffColour(DiffColour::MutedText, m_dark);
    if (row.place.count[m_side] > 0) {
        const QString offset = QString::number(row.place.offset[m_side], 16).toUpper();
        text(m_geometry.offsetCell().translated(row.origin), offset.rightJustified(m_geometry.offsetDigits(), u'0'),
             muted);
        text(m_geometry.separatorCell().translated(row.origin), QStringLiteral("  |  "), muted);
    }
    paintBytes(row);
    paintCaret(row);
}

void HexPainter::paintBytes(const Row &row)
{
    const Side other = otherSide(m_side);
    const auto read = [&](Side side) {
        return readRow(m_document.source(side), row.place.offset[side], row.place.count[side]);
    };
    const RowBytes own = read(m_side);
    const RowBytes others = read(other);
    for (int column = 0; column < int(rowSize); ++column) {
        const auto at = std::size_t(column);
        const bool isSame = others.readable[at] && own.bytes[at] == others.bytes[at];
        paintCell(row, column, {own.readable[at], column < row.place.count[other], !isSame, uchar(own.bytes[at])});
    }
}

QColor HexPainter::ground(const Cell &cell) const
{
    if (!cell.isThere)
        return diffColour(DiffColour::Filler, m_dark);
    if (cell.hasOther)
        return diffColour(DiffColour::Modified, m_dark);
    return diffColour(m_side == Side::Left ? DiffColour::Removed : DiffColour::Added, m_dark);
}

bool HexPainter::isSelected(qint64 offset) const
{
    return m_selection.side == m_side && m_selection.length() > 1 && offset >= m_selection.begin &&
           offset < m_selection.end;
}

void HexPainter::paintCell(const Row &row, int column, const Cell &cell)
{
    if (!cell.isThere && !cell.hasOther)
        return;
    const QRect hex = m_geometry.hexCell(column).translated(row.origin);
    const QRect character = m_geometry.characterCell(column).translated(row.origin);
    const bool selected = cell.isThere && isSelected(row.place.offset[m_side] + column);
    if (selected || cell.differs || !cell.isThere) {
        // Neighbours touch, so that a run of bytes is one patch.
        const int gap = hex.width() / 4;
        const QColor colour = selected ? diffColour(DiffColour::Selection, m_dark) : ground(cell);
        m_painter.fillRect(hex.adjusted(-gap, 0, hex.width() / 2 - gap, 0), colour);
        m_painter.fillRect(character, colour);
    }
    if (!cell.isThere)
        return;
    const QColor ink = selected       ? diffColour(DiffColour::SelectedText, m_dark)
                       : cell.differs ? differingByteColour(m_dark)
                                      : diffColour(DiffColour::Text, m_dark);
    static constexpr char digits[] = "0123456789ABCDEF";
    text(hex, QString(QLatin1Char(digits[cell.byte >> 4])) + QLatin1Char(digits[cell.byte & 15]), ink);
    const bool isPrintable = cell.byte >= 0x20 && cell.byte <= 0x7E;
    text(character, QString(isPrintable ? QLatin1Char(char(cell.byte)) : QLatin1Char('.')), ink);
}

void HexPainter::paintCaret(const Row &row)
{
    if (m_scene.caret().offset < 0 || row.number != m_scene.caretRow())
        return;
    const bool isOwn = m_scene.caret().side == m_side;
    const int column = m_scene.caretColumn();
    m_painter.setPen(
        QPen(diffColour(isOwn ? DiffColour::Accent : DiffColour::Gap, m_dark), isOwn && m_isFocused ? 2 : 1));
    m_painter.setBrush(Qt::NoBrush);
    for (const QRect &cell : {m_geometry.hexCell(column), m_geometry.characterCell(column)})
        m_painter.drawRect(cell.translated(row.origin).adjusted(-1, 0, 0, -1));
}

} // namespace velmora
