#pragma once

#include "filetypes/binary/hex_scene.h"

#include <QFont>
#include <QRect>

class QPainter;

namespace velmora {

/// Where the parts of a row stand, in pixels from its left edge: offset, 16 pairs of digits, a separator, 16
/// characters. Widths are multiples of that of a digit.
class HexGeometry {
public:
    HexGeometry() = default;
    /// `size`: of the largest file, whose offsets take 8 digits or as many more as they need.
    HexGeometry(const QFont &font, qint64 size);

    [[nodiscard]] int rowHeight() const { return m_rowHeight; }
    [[nodiscard]] int width() const { return m_hex + 69 * m_digit + 2 * margin; }
    [[nodiscard]] QRect offsetCell() const { return {margin, 0, m_hex - margin, m_rowHeight}; }
    [[nodiscard]] QRect hexCell(int column) const
    {
        return {m_hex + 3 * column * m_digit, 0, 2 * m_digit, m_rowHeight};
    }
    [[nodiscard]] QRect separatorCell() const { return {m_hex + 48 * m_digit, 0, 5 * m_digit, m_rowHeight}; }
    [[nodiscard]] QRect characterCell(int column) const
    {
        return {m_hex + (53 + column) * m_digit, 0, m_digit, m_rowHeight};
    }
    [[nodiscard]] int offsetDigits() const { return m_offsetDigits; }
    /// The column that is at `x`, the nearest one beside the bytes.
    [[nodiscard]] int columnAt(int x) const;

private:
    static constexpr int margin = 4;

    int m_rowHeight = 16;
    int m_digit = 7;
    int m_offsetDigits = 8;
    int m_hex = 67; ///< the first pair of digits
};

/// Paints the rows of one side.
class HexPainter {
public:
    HexPainter(QPainter &painter, const HexScene &scene, Side side, const HexGeometry &geometry, bool isFocused);

    /// Paints `row` at the height `y`, `x` pixels to the right, over a viewport of the width `viewport`.
    void paintRow(qint64 row, int x, int y, int viewport);

private:
    /// One byte of the row and how it stands to the other side.
    struct Cell {
        bool isThere = false;  ///< and can be read
        bool hasOther = false; ///< the other side has one beside it
        bool differs = false;
        uchar byte = 0;
    };

    struct Row {
        qint64 number = 0;
        HexRow place;
        QPoint origin;
    };

    void paintBytes(const Row &row);
    void paintCell(const Row &row, int column, const Cell &cell);
    void paintCaret(const Row &row);
    [[nodiscard]] QColor ground(const Cell &cell) const;
    [[nodiscard]] bool isSelected(qint64 offset) const;
    void text(const QRect &cell, const QString &text, const QColor &colour);

    QPainter &m_painter;
    const HexScene &m_scene;
    const HexDocument &m_document;
    Side m_side;
    HexGeometry m_geometry;
    bool m_isFocused;
    bool m_dark;
    ByteSelection m_selection;
};

} // namespace velmora
