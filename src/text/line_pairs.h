#pragma once

#include "core/cancel_flag.h"
#include "core/progress.h"
#include "core/side.h"
#include "core/text_lines.h"
#include "session/pane/edit_buffer.h"
#include "text/engine/line_diff_engine.h"

#include <QJsonArray>
#include <QList>

namespace velmora {

/// Two lines that a person has aligned with each other; numbers from 1.
struct LinePair {
    qint32 left = 0;
    qint32 right = 0;

    [[nodiscard]] qint32 of(Side side) const { return side == Side::Left ? left : right; }
    friend bool operator==(const LinePair &, const LinePair &) = default;
};

/// The lines that a person has aligned by hand. A value: pairs in the order of both sides, none of which cross or share
/// a line.
class LinePairs {
public:
    [[nodiscard]] const QList<LinePair> &list() const noexcept { return m_pairs; }
    [[nodiscard]] bool isEmpty() const noexcept { return m_pairs.isEmpty(); }

    /// Adds a pair, in the place of those that it crosses or shares a line with.
    void add(const LinePair &pair);
    /// Removes the pair of `line` of `side`; false when there is none.
    bool remove(Side side, qint32 line);
    void clear() { m_pairs.clear(); }
    void swapSides();

    /// Follows an edit of the lines of `side`; a pair whose line the edit may have removed goes.
    void takeEdit(Side side, const LineChange &change);

    /// As session files hold them: a list of pairs of numbers. What is no pair of lines is passed over.
    [[nodiscard]] QJsonArray toJson() const;
    [[nodiscard]] static LinePairs fromJson(const QJsonArray &array);

    friend bool operator==(const LinePairs &, const LinePairs &) = default;

private:
    QList<LinePair> m_pairs;
};

/// The rows of a comparison, and what is to be said about how it went.
struct AlignedTexts {
    QList<AlignedRow> rows;
    CompareRemarks remarks = {};
};

/// `compareTexts` with the pairs of `pairs` each in one row: what lies between two of them is compared for itself.
/// Pairs of lines that a text does not have are passed over.
[[nodiscard]] AlignedTexts compareAligned(const TextLines &left, const TextLines &right,
                                          const TextSessionOptions &options, const LinePairs &pairs,
                                          const CancelFlag &cancel, Progress &progress);

} // namespace velmora
