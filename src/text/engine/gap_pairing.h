#pragma once

#include "text/engine/cancel_poll.h"
#include "text/engine/candidate_window.h"
#include "text/engine/diff_line.h"
#include "text/engine/line_diff_engine.h"
#include "text/engine/normalized_side.h"

#include <QList>

#include <string>

namespace velmora {

/// Makes the rows between two anchors: pairs each left line with the first right line near it that is similar enough.
///
/// Rows carry the numbers of keys, not yet of lines. Between two anchors no key of one side equals one of the other, or
/// the matching would have an anchor there.
template <typename Source>
class GapPairing {
public:
    using Side = NormalizedSide<Source>;

    GapPairing(const Side &left, const Side &right, const AlignParams &params, QList<AlignedRow> &rows,
               CancelPoll &poll);

    /// Appends the rows of left keys [i, leftEnd) against right keys [j, rightEnd). `offset` is how much further the
    /// last anchor's right key stood than its left key, 0 before the first anchor.
    void fill(qint32 i, qint32 leftEnd, qint32 j, qint32 rightEnd, qint64 offset);

private:
    using Unit = typename Source::Unit;
    using View = std::basic_string_view<Unit>;

    [[nodiscard]] qint32 findPartner(qint32 i, qint32 j, qint32 rightEnd, qint64 offset);
    [[nodiscard]] qint32 findByMarks(View left, qint32 from, qint32 to);
    [[nodiscard]] bool isSimilar(View left, View right);
    [[nodiscard]] LineMarks marksOf(View line);
    /// Calls `use` with the line in the units that similarity counts.
    template <typename Use>
    auto inUnits(View line, std::u16string &buffer, Use use) const;
    [[nodiscard]] qint64 unitsToShare(qint64 length) const noexcept;

    const Side &m_left;
    const Side &m_right;
    double m_threshold;
    qint64 m_skew;
    qint64 m_width; ///< how many further right lines are tried
    QList<AlignedRow> &m_rows;
    bool m_ascii; ///< all keys are, so that their bytes count as UTF-16 units do
    CancelPoll &m_poll;

    CandidateWindow m_window; ///< the right keys last looked at; before the first of them it ends at 0
    std::u16string m_leftUnits;
    std::u16string m_rightUnits;
};

extern template class GapPairing<Utf8Lines>;
extern template class GapPairing<Utf16Lines>;

} // namespace velmora
