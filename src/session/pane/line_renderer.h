#pragma once

#include "core/hidden_characters.h"
#include "session/pane/line_inks.h"
#include "session/pane/line_segments.h"
#include "session/pane/line_source.h"
#include "text/engine/line_diff_engine.h"

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
/// costs what is in sight, however long a line is. Where lines are wrapped, the segments stand one below the other.
/// Characters without a picture of their own are drawn as small boxes with a code.
///
/// Positions are UTF-16 code units from the start of the line; x is in device independent pixels from the start of the
/// line, or of the wrapped part of it. Layouts are kept for the lines used last. Lives on the interface thread.
class LineRenderer {
public:
    /// A longer line is never wrapped: it is scrolled sideways, so that only the part in sight is laid out.
    static constexpr qsizetype longestWrapped = 16'384; // bytes

    LineRenderer();

    /// Forgets all layouts, unless it is the source that it has. `source` must outlive its use here; null for nothing
    /// to draw.
    void setSource(const LineSource *source, int tabWidth);
    void setFont(const QFont &font);
    [[nodiscard]] const QFont &font() const noexcept { return m_font; }
    /// Whether blanks and tabs are drawn as faint signs; they are not at first.
    void setShowsBlanks(bool shows);
    /// Wraps lines at `columns` of the grid; 0 for not at all.
    void setWrap(qint64 columns);

    /// The height of a row, a whole number of pixels.
    [[nodiscard]] int rowHeight() const noexcept { return m_rowHeight; }
    [[nodiscard]] qreal cellWidth() const noexcept { return m_cellWidth; }

    /// Whether the line stays in place when the text is scrolled sideways.
    [[nodiscard]] bool isWrapped(qsizetype line) const;
    /// The parts that the line is wrapped into, at least one.
    [[nodiscard]] qsizetype partCount(qsizetype line);

    /// Draws what of `line` falls into `area`, whose left edge shows x = `scrolled`; each wrapped part stands a row
    /// below the one before. Drawing again in the same inks costs the least.
    void draw(QPainter &painter, qsizetype line, const QRectF &area, qreal scrolled, const LineInks &inks);

    /// Draws `text` on the grid with the same baseline, as line numbers and signs are.
    void drawLabel(QPainter &painter, const QRectF &area, Qt::Alignment alignment, const QString &text) const;

    /// A place in a line as it is drawn.
    struct Place {
        qsizetype part = 0;
        qreal x = 0;
    };
    [[nodiscard]] Place placeOf(qsizetype line, qsizetype unit);
    [[nodiscard]] qreal xOf(qsizetype line, qsizetype unit) { return placeOf(line, unit).x; }
    /// The position nearest to x in `part`.
    [[nodiscard]] qsizetype unitAt(qsizetype line, qreal x, qsizetype part = 0);
    /// A stretch of a line as it is drawn.
    struct Span {
        qsizetype part = 0;
        qreal left = 0;
        qreal right = 0;
    };
    /// What the units [first, end) cover, one span for each wrapped part.
    [[nodiscard]] QList<Span> spansOf(qsizetype line, qsizetype first, qsizetype end);
    /// Units of the line; reads all of it.
    [[nodiscard]] qsizetype length(qsizetype line);

    /// The positions before and behind the character, or the word, next to `unit`; they stay in the line.
    [[nodiscard]] qsizetype previous(qsizetype line, qsizetype unit, QTextLayout::CursorMode mode);
    [[nodiscard]] qsizetype next(qsizetype line, qsizetype unit, QTextLayout::CursorMode mode);
    /// The word around `unit`, for a double click; never longer than a segment.
    [[nodiscard]] CharRange wordAt(qsizetype line, qsizetype unit);

private:
    /// A segment ready to be drawn.
    struct Laid {
        std::unique_ptr<QTextLayout> layout;
        QList<HiddenCharacter> hidden;
        std::vector<Tint> tints; ///< the colours that are part of the layout
    };
    struct Entry {
        explicit Entry(LineSegments cut) : segments(std::move(cut)) {}
        LineSegments segments;
        std::map<qsizetype, Laid> laid; ///< by segment
    };

    [[nodiscard]] Entry &entry(qsizetype line);
    [[nodiscard]] Laid &laid(Entry &entry, qsizetype segment);
    [[nodiscard]] const Laid &inked(Entry &entry, qsizetype segment, const LineInks &inks);
    [[nodiscard]] const QTextLayout &layout(Entry &entry, qsizetype segment) { return *laid(entry, segment).layout; }
    [[nodiscard]] std::unique_ptr<QTextLayout> makeLayout(const QString &text, qint64 column,
                                                          const QList<HiddenCharacter> &hidden,
                                                          const std::vector<Tint> &tints) const;
    void drawSegment(QPainter &painter, Entry &entry, qsizetype index, QPointF corner, const LineInks &inks);
    void drawBoxes(QPainter &painter, const Laid &drawn, QPointF corner) const;
    [[nodiscard]] qreal xIn(Entry &entry, qsizetype segment, qsizetype unit);

    const LineSource *m_source = nullptr;
    int m_tabWidth = 4;
    bool m_showsBlanks = false;
    qint64 m_wrapColumns = 0;
    QFont m_font;
    QFont m_boxFont;
    qreal m_cellWidth = 8;
    int m_rowHeight = 16;
    qreal m_baseline = 12; ///< from the top of a row
    QCache<qsizetype, Entry> m_entries;
};

} // namespace velmora
