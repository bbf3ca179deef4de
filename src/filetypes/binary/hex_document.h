#pragma once

#include "filetypes/binary/engine/binary_compare.h"
#include "filetypes/binary/engine/row_map.h"

#include <memory>

namespace velmora {

/// Two files and how they compare, as the views show them. It does not change once it is shown.
struct HexDocument {
    Sides<std::shared_ptr<const BinarySource>> sources;
    Sides<qint64> starts; ///< what is before them is not compared and not shown
    bool isAligned = false;
    RowMap rows;
    std::vector<qint64> stops;             ///< the rows that steps through the differences go to, ascending
    bool isCapped = false;                 ///< there are more, behind the last
    std::vector<AlignedRange> differences; ///< the first ones

    /// The differences that are listed are no more than this.
    static constexpr std::size_t differenceLimit = 200'000;

    /// Whether a row differs, as far as differences are listed.
    [[nodiscard]] bool differs(qint64 row) const { return differsWithin(row, row + 1); }
    /// Whether any of the rows from `first` on, before `end`, does.
    [[nodiscard]] bool differsWithin(qint64 first, qint64 end) const;

    /// Whether differences from `row` on are not listed, so that nothing is known of it.
    [[nodiscard]] bool isBeyondList(qint64 row) const { return isCapped && !isAligned && row > stops.back(); }

    [[nodiscard]] const BinarySource &source(Side side) const { return *sources[side]; }
};

} // namespace velmora
