#pragma once

#include "core/aligned_buffer.h"
#include "filetypes/binary/engine/binary_source.h"

#include <QByteArrayView>

namespace velmora {

/// Reads one side piece by piece, mostly forwards.
class SlidingReader {
public:
    static constexpr qint64 capacity = 256 * 1024;

    explicit SlidingReader(const BinaryPart &part) : m_part(part), m_end(part.size()) {}

    /// The bytes from `offset` on: `wanted`, which is no more than `capacity`, or more, or fewer when the side ends
    /// before. Good until the next call.
    [[nodiscard]] QByteArrayView from(qint64 offset, qint64 wanted);

    /// Where the side ends, or the first byte that could not be read.
    [[nodiscard]] qint64 end() const noexcept { return m_end; }

private:
    const BinaryPart &m_part;
    qint64 m_end;
    AlignedBuffer m_buffer{std::size_t(capacity)};
    qint64 m_begin = 0; ///< of what is in the buffer
    qint64 m_length = 0;
};

} // namespace velmora
