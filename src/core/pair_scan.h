#pragma once

#include "core/aligned_buffer.h"
#include "core/cancel_flag.h"
#include "platform/file_access.h"

#include <functional>
#include <limits>
#include <optional>

namespace velmora {

/// When a piece of one file equals the piece at the same place of the other.
enum class PieceRule : quint8 {
    Bytes,         ///< every byte is the same
    ZeroEndBlocks, ///< as strings in blocks of 1 MiB: what comes after the first zero that both hold is not compared
};

/// The bytes that are read and compared at once, at offsets that are multiples of it. Two such buffers stay in the
/// second-level cache of one core, where the copy that reading makes is compared.
inline constexpr qint64 pieceSize = 256 * 1024;

/// Where two files are read to: the same place of both.
struct PieceBuffers {
    AlignedBuffer left{std::size_t(pieceSize)};
    AlignedBuffer right{std::size_t(pieceSize)};
};

/// Where walking through two files ended.
struct PairEnd {
    qint64 offset = 0; ///< of the piece at which it ended
    bool same =
        false; ///< both files end in this piece, at the same place and in the same way, and are equal up to there
    bool leftFailed = false;
    bool rightFailed = false;
};

/// Compares two open files piece by piece. The files must outlive it.
class PairScan {
public:
    /// Takes how many bytes more have been found equal. Called on the thread that started the scan.
    using Listener = std::function<void(qint64)>;

    PairScan(OpenFile &left, OpenFile &right, PieceRule rule, const CancelFlag &cancel)
        : m_left(left), m_right(right), m_rule(rule), m_cancel(cancel)
    {}

    static constexpr qint64 toTheEnd = std::numeric_limits<qint64>::max();

    /// Walks from `from`, a multiple of 1 MiB, to the first piece that ends or differs; nothing when that is not before
    /// `to` or the run is cancelled. `before` is called with the offset of each piece before that is read; false ends
    /// the walk, too.
    [[nodiscard]] std::optional<PairEnd> walk(qint64 from, qint64 to, PieceBuffers &buffers,
                                              const std::function<bool(qint64)> &before,
                                              const Listener &listener) const;

    /// What `walk` to the end of the files gives, from as many threads as `runCrew` has; `buffers` are those of the
    /// calling one.
    [[nodiscard]] std::optional<PairEnd> walkWithCrew(qint64 from, PieceBuffers &buffers,
                                                      const Listener &listener) const;

private:
    OpenFile &m_left;
    OpenFile &m_right;
    PieceRule m_rule;
    CancelFlag m_cancel;
};

} // namespace velmora
