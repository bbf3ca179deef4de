#include "filetypes/binary/engine/sliding_reader.h"

#include <algorithm>

namespace velmora {

QByteArrayView SlidingReader::from(qint64 offset, qint64 wanted)
{
    const qint64 needed = std::clamp<qint64>(m_end - offset, 0, wanted);
    if (offset < m_begin || offset + needed > m_begin + m_length) {
        const qint64 length = std::clamp<qint64>(m_end - offset, 0, capacity);
        m_begin = offset;
        m_length = m_part.source.readSome(m_part.start + offset, m_buffer.data(), length).length;
        if (m_length < length)
            m_end = offset + m_length;
    }
    const qint64 rest = std::clamp<qint64>(m_begin + m_length - offset, 0, m_end - std::min(offset, m_end));
    return {m_buffer.data() + (offset - m_begin), rest};
}

} // namespace velmora
