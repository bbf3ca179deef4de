#include "text/view/row_marks.h"

#include <algorithm>

namespace velmora {

namespace {

/// True when no row between the two pairs lines.
bool areNeighbours(const QList<AlignedRow> &rows, const LineEndRow &first, const LineEndRow &second)
{
    const auto isPair = [](const AlignedRow &row) { return row.leftLine >= 1 && row.rightLine >= 1; };
    return std::none_of(rows.begin() + first.row + 1, rows.begin() + second.row, isPair);
}

void markLineEnds(const DiffDocument &document, std::vector<RowMark> &marks)
{
    const LineEndRow *before = nullptr;
    bool isMarked = false; // the ends that lines have now have been marked
    bool isOpen = false;   // the row before is
    for (const LineEndRow &at : document.lineEndRows()) {
        const bool goesOn = before && before->hasSameEndsAs(at) && areNeighbours(document.rows(), *before, at);
        isMarked = isMarked && goesOn;
        isOpen = isOpen && before->row + 1 == at.row;
        before = &at;
        RowMark &mark = marks[std::size_t(at.row)];
        const bool marksThis = document.kind(at.row) == Equal && mark == RowMark::None && (!isMarked || isOpen);
        if (marksThis)
            mark = at.isMissingLeft() || at.isMissingRight() ? RowMark::LastLineFeed : RowMark::LineEnds;
        isMarked = isMarked || marksThis;
        isOpen = marksThis;
    }
}

} // namespace

std::vector<RowMark> rowMarks(const DiffDocument &document, bool countsMinor)
{
    if (!countsMinor && document.lineEndRows().empty())
        return {};
    std::vector<RowMark> marks(std::size_t(document.rowCount()), RowMark::None);
    if (countsMinor) {
        for (const qint32 row : document.unimportantRows())
            marks[std::size_t(row)] = RowMark::Minor;
    }
    markLineEnds(document, marks);
    return marks;
}

} // namespace velmora
