#pragma once

#include "session/pane/shown_rows.h"

#include <compare>
#include <functional>

namespace velmora {

/// A line of the screen: an index and the lines before it in what stands there, which has several when long texts are
/// wrapped.
struct RowPlace {
    qsizetype index = 0;
    qsizetype line = 0;

    friend auto operator<=>(const RowPlace &, const RowPlace &) = default;
};

/// Where the rows of a comparison stand in a view that scrolls by whole lines. Pure arithmetic, no widget.
///
/// `top` is the uppermost line of the view. Heights are in device independent pixels. All lines are equally high; how
/// many of them a row takes is asked for when it is needed, and never for more rows than about a view has room for, so
/// that no function costs more for more rows.
class RowLayout final : public ShownRows {
public:
    /// The lines that `row` takes, at least one.
    using Measure = std::function<qsizetype(qsizetype row)>;
    /// Without a measure every row takes one line.
    void setMeasure(Measure measure);

    void setRowHeight(int height);
    [[nodiscard]] int rowHeight() const noexcept { return m_rowHeight; }
    /// The lines of what stands at `index`.
    [[nodiscard]] qsizetype linesAt(qsizetype index) const;
    /// Lines that fit whole into `height`, at least one.
    [[nodiscard]] qsizetype rowsPerPage(int height) const;
    /// The place `lines` below `from`, or above it; clamped to the shown rows.
    [[nodiscard]] RowPlace moved(RowPlace from, qsizetype lines) const;
    /// The nearest place that exists.
    [[nodiscard]] RowPlace clamped(RowPlace place) const;
    /// The greatest top that still fills a view of `height`.
    [[nodiscard]] RowPlace maximumTop(int height) const;
    /// The indices in sight, those cut off too.
    [[nodiscard]] RowRange inSight(RowPlace top, int height) const;
    /// The y of the upper edge of `index`; an estimate for one that is a thousand rows away.
    [[nodiscard]] qint64 yOf(qsizetype index, RowPlace top) const;
    /// The place at `y`, which may lie outside the view; clamped to the shown rows. Precondition: count() > 0.
    [[nodiscard]] RowPlace placeAtY(int y, RowPlace top) const;
    /// Its index; -1 when nothing is shown.
    [[nodiscard]] qsizetype indexAtY(int y, RowPlace top) const;
    /// The top nearest to `top` that brings `place` whole into sight.
    [[nodiscard]] RowPlace topToShow(RowPlace place, RowPlace top, int height) const;
    /// `top` when the indices `range` are in sight with a line to spare on each side, else a top that shows their
    /// beginning in the upper third of the view.
    [[nodiscard]] RowPlace topToReveal(RowRange range, RowPlace top, int height) const;

private:
    Measure m_measure;
    int m_rowHeight = 1;
};

} // namespace velmora
