#include "session/translate.h"
#include "text/view/diff_document.h"

namespace velmora {

namespace {

struct LineRange {
    qint32 first = -1;
    qint32 last = -1;
};

LineRange linesOf(const DiffDocument &document, RowRange rows, Side side)
{
    LineRange range;
    for (qsizetype row = rows.first; row < rows.end() && range.first < 1; ++row)
        range.first = document.lineNumber(row, side);
    for (qsizetype row = rows.end() - 1; row >= rows.first && range.last < 1; --row)
        range.last = document.lineNumber(row, side);
    return range;
}

QString describeLines(LineRange range, Side side)
{
    const bool left = side == Side::Left;
    if (range.first < 1)
        return left ? Velmora::tr("no line on the left") : Velmora::tr("no line on the right");
    if (range.first == range.last)
        return (left ? Velmora::tr("left line %1") : Velmora::tr("right line %1")).arg(range.first);
    return (left ? Velmora::tr("left lines %1 to %2") : Velmora::tr("right lines %1 to %2"))
        .arg(range.first)
        .arg(range.last);
}

QString describeKindOf(TextRowState state, const LineRange &left, const LineRange &right)
{
    if (state == TextRowState::LineEnds)
        return Velmora::tr("line ends differ");
    if (state == TextRowState::LastLineFeed)
        return Velmora::tr("last line feed missing");
    if (left.first < 1)
        return Velmora::tr("added");
    return right.first < 1 ? Velmora::tr("removed") : Velmora::tr("modified");
}

} // namespace

QString DiffDocument::describeBlock(const ShownRows &shown, qsizetype block) const
{
    const RowRange rows = shown.block(block);
    const LineRange left = linesOf(*this, rows, Side::Left);
    const LineRange right = linesOf(*this, rows, Side::Right);
    return Velmora::tr("Difference block %1 of %2, %3: %4, %5")
        .arg(QString::number(block + 1), QString::number(shown.blockCount()),
             describeKindOf(shown.stateOf(rows.first), left, right), describeLines(left, Side::Left),
             describeLines(right, Side::Right));
}

} // namespace velmora
