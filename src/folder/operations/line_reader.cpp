#include "folder/operations/line_reader.h"

namespace velmora {

std::optional<QByteArray> LineReader::next()
{
    qsizetype end = m_buffer.indexOf('\n', m_begin);
    while (end < 0) {
        const qsizetype searched = m_buffer.size() - m_begin;
        m_isTooLong = searched > longest;
        if (m_isTooLong || !readMore())
            return std::nullopt;
        end = m_buffer.indexOf('\n', searched);
    }
    const QByteArray line = m_buffer.mid(m_begin, end - m_begin);
    m_begin = end + 1;
    return line;
}

/// Drops the lines that have been given out.
bool LineReader::readMore()
{
    if (m_isAtEnd)
        return false;
    m_buffer.remove(0, m_begin);
    m_begin = 0;
    constexpr qsizetype block = 256 << 10;
    const qsizetype held = m_buffer.size();
    m_buffer.resize(held + block);
    const FilePiece piece = m_source.read(m_buffer.data() + held, block);
    m_buffer.resize(held + qsizetype(piece.length));
    m_isAtEnd = piece.failed || piece.length < block;
    m_failed = piece.failed;
    return piece.length > 0;
}

} // namespace velmora
