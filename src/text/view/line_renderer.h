#pragma once

#include "text/engine/line_diff_engine.h"
#include "text/view/diff_document.h"
#include "text/view/line_segments.h"

#include <QCache>
#include <QFont>
#include <QRectF>
#include <QTextLayout>

#include <map>
#include <memory>

class QPainter;

namespace velmora {

/// Draws the lines of one source and knows where their characters stand.
///
/// Text stands on a grid of cells as wide as a digit of the font. A line is laid out in segments (`LineSegments`):
/// inside one, characters stand where the font puts them; each further one begins at its column of the grid. So a frame
/// costs what is in sight, however long a line is. Positions are UTF-16 code units from the start of the line; x is in
/// device independent pixels from there. Layouts are kept for the lines used last. Lives on the interface thread.
class LineRenderer {
public:
    LineRenderer();

    /// Forgets all layouts. `source` must outlive its use here; null for nothing to draw.
    void setSource(const LineSource *source, int tabWidth);
    void setFont(const QFont &font);
    [[nodiscard]] const QFont &font() const noexcept { return m_font; }
    /// Whether blanks and tabs are drawn as faint signs; they are not at first.
    void setShowsBlanks(bool shows);

    /// The height of a row, a whole number of pixels.
    [[nodiscard]] int rowHeight() const noexcept { return m_rowHeight; }
    [[nodiscard]] qreal cellWidth() const noexcept { return m_cellWidth; }

    /// A part of a line in a colour of its own.
    struct Tint {
        qsizetype first = 0; ///< in units
        qsizetype end = 0;
        QColor colour;
    };

    /// Draws the part of `line` that falls into `area`, whose left edge shows x = `scrolled`. Tints that overlap are
    /// undefined.
    void draw(QPainter &painter, qsizetype line, const QRectF &area, qreal scrolled, const QColor &colour,
              const QList<Tint> &tints = {});

    /// Draws `text` on the grid with the same baseline, as line numbers and signs are.
    void drawLabel(QPainter &painter, const QRectF &area, Qt::Alignment alignment, const QString &text) const;

    [[nodiscard]] qreal xOf(qsizetype line, qsizetype unit);
    /// The position nearest to x.
    [[nodiscard]] qsizetype unitAt(qsizetype line, qreal x);
    /// Units of the line; reads all of it.
    [[nodiscard]] qsizetype length(qsizetype line);

    /// The positions before and behind the character, or the word, next to `unit`; they stay in the line.
    [[nodiscard]] qsizetype previous(qsizetype line, qsizetype unit, QTextLayout::CursorMode mode);
    [[nodiscard]] qsizetype next(qsizetype line, qsizetype unit, QTextLayout::CursorMode mode);
    /// The word around `unit`, for a double click; never longer than a segment.
    [[nodiscard]] CharRange wordAt(qsizetype line, qsizetype unit);

private:
    struct Entry {
        explicit Entry(LineSegments cut) : segments(std::move(cut)) {}
        LineSegments segments;
        std::map<qsizetype, std::unique_ptr<QTextLayout>> layouts; ///< by segment
    };

    [[nodiscard]] Entry &entry(qsizetype line);
    [[nodiscard]] QTextLayout &layout(Entry &entry, qsizetype segment);
    [[nodiscard]] std::unique_ptr<QTextLayout> makeLayout(const QString &text, qint64 column) const;

    const LineSource *m_source = nullptr;
    int m_tabWidth = 4;
    bool m_showsBlanks = false;
    QFont m_font;
    qreal m_cellWidth = 8;
    int m_rowHeight = 16;
    qreal m_baseline = 12; ///< from the top of a row
    QCache<qsizetype, Entry> m_entries;
};

/// Text as it is drawn: what has no glyph of its own or would upset the order of the others gets a visible one, unit
/// for unit.
[[nodiscard]] QString visibleText(QString text);

} // namespace velmora
