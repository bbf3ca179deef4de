#pragma once

#include <QList>
#include <QString>

namespace velmora {

/// What an aligned row is. The numbers are stored in reports and compared across engines.
enum DiffLineKind : qint32 {
    Equal = 0,    ///< both lines, the same under the rules of the comparison
    Added = 1,    ///< a right line only
    Removed = 2,  ///< a left line only
    Modified = 3, ///< both lines, one changed into the other
};

/// One aligned row with its texts.
struct DiffLine {
    DiffLineKind kind = Equal;
    QString leftText;      ///< empty without a left line
    QString rightText;     ///< empty without a right line
    qint32 leftLine = -1;  ///< 1-based, -1 without a left line
    qint32 rightLine = -1; ///< 1-based, -1 without a right line

    friend bool operator==(const DiffLine &, const DiffLine &) = default;
};

/// One aligned row without its texts, for callers that hold the lines themselves.
///
/// Line numbers are as in `DiffLine`. An `Equal` row with only one line number is a one-sided line that does not
/// matter: it shows that line's text on both sides.
struct AlignedRow {
    DiffLineKind kind = Equal;
    qint32 leftLine = -1;
    qint32 rightLine = -1;

    friend bool operator==(const AlignedRow &, const AlignedRow &) = default;
};

/// How many rows there are of each kind that counts. One-sided rows that are `Equal` count for no side.
struct DiffCounts {
    qint64 added = 0;
    qint64 removed = 0;
    qint64 modified = 0;
    qint64 leftLines = 0;  ///< rows with a left line
    qint64 rightLines = 0; ///< rows with a right line

    [[nodiscard]] qint64 differences() const noexcept { return added + removed + modified; }
    friend bool operator==(const DiffCounts &, const DiffCounts &) = default;
};

/// Counts any list of `DiffLine` or `AlignedRow`.
template <typename Rows>
[[nodiscard]] DiffCounts countRows(const Rows &rows)
{
    DiffCounts counts;
    for (const auto &row : rows) {
        counts.added += row.kind == Added;
        counts.removed += row.kind == Removed;
        counts.modified += row.kind == Modified;
        counts.leftLines += row.leftLine >= 1;
        counts.rightLines += row.rightLine >= 1;
    }
    return counts;
}

} // namespace velmora

Q_DECLARE_TYPEINFO(velmora::DiffLine, Q_RELOCATABLE_TYPE);
Q_DECLARE_TYPEINFO(velmora::AlignedRow, Q_PRIMITIVE_TYPE);
