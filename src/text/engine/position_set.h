#pragma once

#include <QtGlobal>

#include <vector>

namespace velmora {

/// A set of positions 0 … size-1 that only grows and finds neighbours in a few steps: bits, and above each 64 words of
/// bits one word that says which of these are not empty. Costs a little more than one bit a position.
class PositionSet {
public:
    explicit PositionSet(qint32 size);

    void insert(qint32 position);
    /// The largest member that is at most `position`, -1 when there is none.
    [[nodiscard]] qint32 atOrBefore(qint32 position) const noexcept;
    /// The smallest member that is at least `position`, -1 when there is none. `position` may be the set's size.
    [[nodiscard]] qint32 atOrAfter(qint32 position) const noexcept;

private:
    /// From the bits of the positions up to one single word.
    std::vector<std::vector<quint64>> m_levels;
};

} // namespace velmora
