#include "text/engine/line_ends.h"

#include "settings/options/text_session_options.h"

namespace velmora {

namespace {

constexpr qsizetype rowsAtOnce = 1 << 16;

bool isPair(const AlignedRow &row)
{
    return row.leftLine >= 1 && row.rightLine >= 1;
}

class EndCollector {
public:
    EndCollector(const QList<AlignedRow> &rows, const TextLines &left, const TextLines &right)
        : m_rows(rows), m_left(left), m_right(right)
    {}

    void look(qsizetype index)
    {
        const AlignedRow &row = m_rows[index];
        if (!isPair(row))
            return;
        const LineEnd left = m_left.lineEnd(row.leftLine - 1);
        const LineEnd right = m_right.lineEnd(row.rightLine - 1);
        if (left != right)
            found.push_back({qint32(index), left, right});
    }

    /// For two texts of one style, where nothing but the last line of either can end differently.
    void lookAtLastLines()
    {
        const auto holdsLast = [this](const AlignedRow &row) {
            return row.leftLine == m_left.count() || row.rightLine == m_right.count();
        };
        qsizetype first = m_rows.size();
        for (int sides = 2; first > 0 && sides > 0; --first) {
            const AlignedRow &row = m_rows[first - 1];
            sides -= int(row.leftLine == m_left.count()) + int(row.rightLine == m_right.count());
        }
        for (; first < m_rows.size(); ++first) {
            if (holdsLast(m_rows[first]))
                look(first);
        }
    }

    std::vector<LineEndRow> found;

private:
    const QList<AlignedRow> &m_rows;
    const TextLines &m_left;
    const TextLines &m_right;
};

} // namespace

std::vector<LineEndRow> differingLineEnds(const QList<AlignedRow> &rows, const EndedLines &left,
                                          const EndedLines &right, const TextSessionOptions &options,
                                          const CancelFlag &cancel)
{
    if (!options.compareLineEndings || left.lines.isEmpty() || right.lines.isEmpty())
        return {};
    EndCollector ends(rows, left.lines, right.lines);
    const bool isUniform = left.style == LineEndStyle::Lf || left.style == LineEndStyle::CrLf;
    if (left.style == right.style && isUniform) {
        ends.lookAtLastLines();
    } else {
        for (qsizetype row = 0; row < rows.size(); ++row) {
            if (row % rowsAtOnce == 0 && cancel.isCancelled())
                return {};
            ends.look(row);
        }
    }
    return std::move(ends.found);
}

LineEndCounts countLineEnds(const std::vector<LineEndRow> &rows) noexcept
{
    LineEndCounts counts;
    for (const LineEndRow &row : rows) {
        counts.lastFeedMissesLeft |= row.isMissingLeft();
        counts.lastFeedMissesRight |= row.isMissingRight();
        counts.rows += !row.isMissingLeft() && !row.isMissingRight();
    }
    return counts;
}

} // namespace velmora
