#pragma once

#include "core/cancel_flag.h"
#include "core/text_file.h"
#include "text/engine/diff_line.h"

#include <QList>

#include <vector>

namespace velmora {

struct TextSessionOptions;

// Rows compare lines without their ends. What the ends add to a comparison that counts them (`compareLineEndings`) is
// told here, beside the rows.

/// A row whose two lines, the same or not, end differently.
struct LineEndRow {
    qint32 row = 0; ///< 0-based
    LineEnd left = LineEnd::None;
    LineEnd right = LineEnd::None;

    [[nodiscard]] bool hasSameEndsAs(const LineEndRow &other) const noexcept
    {
        return left == other.left && right == other.right;
    }
    /// True when the last line of `end`'s side lacks the line feed that the other side's line has.
    [[nodiscard]] static bool isMissing(LineEnd end, LineEnd other) noexcept
    {
        return end == LineEnd::None && (other == LineEnd::Lf || other == LineEnd::CrLf);
    }
    [[nodiscard]] bool isMissingLeft() const noexcept { return isMissing(left, right); }
    [[nodiscard]] bool isMissingRight() const noexcept { return isMissing(right, left); }

    friend bool operator==(const LineEndRow &, const LineEndRow &) = default;
};

/// What of a comparison's line ends differs.
struct LineEndCounts {
    qint64 rows = 0;                 ///< rows whose ends differ, but for a last line feed that is missing
    bool lastFeedMissesLeft = false; ///< only the right line has a line feed where the left text ends
    bool lastFeedMissesRight = false;

    [[nodiscard]] bool any() const noexcept { return rows > 0 || lastFeedMissesLeft || lastFeedMissesRight; }
    friend bool operator==(const LineEndCounts &, const LineEndCounts &) = default;
};

/// The lines of one side with what is known of their ends.
struct EndedLines {
    const TextLines &lines;
    LineEndStyle style; ///< `Mixed` when it is not known
};

/// The rows among `rows` whose lines end differently, in order; none unless `options` count line ends. Looks at no text
/// where both sides have one style in common, and where they have not, at the ends of the lines that rows pair.
[[nodiscard]] std::vector<LineEndRow> differingLineEnds(const QList<AlignedRow> &rows, const EndedLines &left,
                                                        const EndedLines &right, const TextSessionOptions &options,
                                                        const CancelFlag &cancel = {});

[[nodiscard]] LineEndCounts countLineEnds(const std::vector<LineEndRow> &rows) noexcept;

} // namespace velmora
