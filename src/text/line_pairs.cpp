#include "text/line_pairs.h"

#include <algorithm>

namespace velmora {

namespace {

TextLines cut(const TextLines &text, qsizetype first, qsizetype end)
{
    if (first == 0 && end == text.count())
        return text;
    TextLinesBuilder builder;
    for (qsizetype line = first; line < end; ++line)
        builder.append(text.line(line), text.lineEnd(line));
    return builder.take();
}

/// The rows of two lines that belong together: one row, unless a line takes no part.
QList<AlignedRow> joined(const QList<AlignedRow> &rows)
{
    if (rows.size() != 2)
        return rows;
    const bool equal = rows.first().kind == Equal && rows.last().kind == Equal;
    return {{equal ? Equal : Modified, 1, 1}};
}

} // namespace

void LinePairs::add(const LinePair &pair)
{
    const auto isInTheWay = [&pair](const LinePair &other) {
        return (other.left <= pair.left && other.right >= pair.right) ||
               (other.left >= pair.left && other.right <= pair.right);
    };
    m_pairs.removeIf(isInTheWay);
    const auto behind =
        std::find_if(m_pairs.begin(), m_pairs.end(), [&pair](const LinePair &other) { return other.left > pair.left; });
    m_pairs.insert(behind, pair);
}

bool LinePairs::remove(Side side, qint32 line)
{
    return m_pairs.removeIf([side, line](const LinePair &pair) { return pair.of(side) == line; }) > 0;
}

void LinePairs::swapSides()
{
    for (LinePair &pair : m_pairs)
        std::swap(pair.left, pair.right);
}

void LinePairs::takeEdit(Side side, const LineChange &change)
{
    const qsizetype shift = change.inserted - change.removed;
    if (shift == 0)
        return;
    m_pairs.removeIf([&](const LinePair &pair) {
        const qsizetype line = pair.of(side) - 1;
        return line >= change.first + std::min(change.removed, change.inserted) && line < change.first + change.removed;
    });
    for (LinePair &pair : m_pairs) {
        qint32 &line = side == Side::Left ? pair.left : pair.right;
        if (line - 1 >= change.first + change.removed)
            line += qint32(shift);
    }
}

QJsonArray LinePairs::toJson() const
{
    QJsonArray array;
    for (const LinePair &pair : m_pairs)
        array.append(QJsonArray{pair.left, pair.right});
    return array;
}

LinePairs LinePairs::fromJson(const QJsonArray &array)
{
    LinePairs pairs;
    for (const QJsonValue &value : array) {
        const QJsonArray numbers = value.toArray();
        const LinePair pair{numbers.at(0).toInt(), numbers.at(1).toInt()};
        if (numbers.size() == 2 && pair.left >= 1 && pair.right >= 1)
            pairs.add(pair);
    }
    return pairs;
}

AlignedTexts compareAligned(const TextLines &left, const TextLines &right, const TextSessionOptions &options,
                            const LinePairs &pairs, const CancelFlag &cancel, Progress &progress)
{
    AlignedTexts result;
    if (pairs.isEmpty()) {
        result.rows = compareTexts(left, right, options, cancel, progress, &result.remarks);
        return result;
    }
    LinePair at; // lines before it are done
    const auto compareUntil = [&](const LinePair &end, bool isPair) {
        CompareRemarks part;
        QList<AlignedRow> found = compareTexts(cut(left, at.left, end.left), cut(right, at.right, end.right), options,
                                               cancel, progress, &part);
        result.remarks.expressionsGivenUp += part.expressionsGivenUp;
        if (isPair)
            found = joined(found);
        for (AlignedRow &row : found) {
            row.leftLine += row.leftLine >= 1 ? at.left : 0;
            row.rightLine += row.rightLine >= 1 ? at.right : 0;
        }
        result.rows += found;
        at = end;
    };
    for (const LinePair &pair : pairs.list()) {
        if (pair.left > left.count() || pair.right > right.count())
            continue;
        compareUntil({pair.left - 1, pair.right - 1}, false);
        compareUntil(pair, true);
    }
    compareUntil({qint32(left.count()), qint32(right.count())}, false);
    if (cancel.isCancelled())
        result.rows.clear();
    return result;
}

} // namespace velmora
