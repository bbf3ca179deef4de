#pragma once

#include "core/pair_scan.h"
#include "filetypes/binary/engine/binary_source.h"

namespace velmora {

/// The parts of two files that are compared with each other, and how they are read.
struct BinaryPair {
    BinaryPart left;
    BinaryPart right;

    /// The bytes that both have.
    [[nodiscard]] qint64 common() const noexcept { return std::min(left.size(), right.size()); }

    /// The first place from `offset` on where they may differ: before it neither has anything but zeros.
    [[nodiscard]] qint64 nextData(qint64 offset) const
    {
        return std::min(left.nextData(offset), right.nextData(offset));
    }

    /// Reads `length` bytes of both, no more than a piece, which both have. A byte that cannot be read becomes one that
    /// differs from the other side's.
    void read(qint64 offset, qint64 length, const PieceBuffers &buffers) const;
};

} // namespace velmora
