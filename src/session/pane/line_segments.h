#pragma once

#include <QString>

#include <string_view>
#include <vector>

namespace velmora {

/// Columns of a grid of equal cells that valid UTF-8 takes from column 0 on: wide East Asian characters and emoji take
/// two, combining characters none, a tab reaches to the next multiple of `tabWidth`, and what is shown as a box takes
/// what the box does (`hiddenCharacterCells`). No byte takes more columns than the greater of `tabWidth` and 3.
[[nodiscard]] qint64 columnCount(std::string_view utf8, int tabWidth);

/// A line cut into segments of a bounded length, so that showing a part of it costs no more than that part.
///
/// A segment has about `unitsPerSegment` UTF-16 code units, or as many as fit into a wrapped line, and never parts a
/// character from its combining marks. Segments are found from the start of the line as far as they are asked for: the
/// first question about a far place reads the bytes up to there once. Refers to the bytes given, which must outlive it.
class LineSegments {
public:
    static constexpr qsizetype unitsPerSegment = 512;

    struct Segment {
        qsizetype byte = 0; ///< where it starts, in bytes
        qsizetype unit = 0; ///< in UTF-16 code units
        qint64 column = 0;  ///< in columns (`columnCount`)
    };

    /// With `wrapColumns` each segment has at most so many columns (a wider character stands alone) and ends, where
    /// that is possible, behind a blank or a sign that parts words.
    LineSegments(std::string_view utf8, int tabWidth, qint64 wrapColumns = 0);

    /// The segment that holds `unit`; the last one for anything behind it.
    [[nodiscard]] qsizetype indexAtUnit(qsizetype unit);
    /// The segment that holds `column`; the last one for anything behind it.
    [[nodiscard]] qsizetype indexAtColumn(qint64 column);

    /// False when `index` is behind the last segment. The line has at least one, which may be empty.
    [[nodiscard]] bool contains(qsizetype index);
    /// Precondition: contains(index).
    [[nodiscard]] Segment at(qsizetype index);
    [[nodiscard]] std::string_view bytes(qsizetype index);

    /// How many segments there are, at least one; reads the whole line.
    [[nodiscard]] qsizetype count();
    /// The whole line's length; reads all of it.
    [[nodiscard]] qsizetype unitCount();
    [[nodiscard]] qint64 columns();

private:
    [[nodiscard]] bool isComplete() const { return m_next.byte >= qsizetype(m_utf8.size()); }
    void findNext();
    void findByLength();
    void findByColumns();

    std::string_view m_utf8;
    int m_tabWidth;
    qint64 m_wrapColumns;
    std::vector<Segment> m_starts;
    Segment m_next; ///< behind the last segment found
};

} // namespace velmora
