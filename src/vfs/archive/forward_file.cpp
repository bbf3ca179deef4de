#include "vfs/archive/forward_file.h"

#include <algorithm>

namespace velmora {

namespace {

constexpr qint64 blockSize = 256 * 1024;
constexpr qint64 mostKept = 16 * 1024 * 1024;

} // namespace

ForwardFile::ForwardFile(std::unique_ptr<ArchiveStream> stream, qint64 size, OpenAnywhere openAnywhere)
    : m_stream(std::move(stream)), m_size(size), m_openAnywhere(std::move(openAnywhere))
{}

FilePiece ForwardFile::readAt(qint64 offset, char *buffer, qint64 length)
{
    const qint64 wanted = std::clamp<qint64>(m_size - offset, 0, length);
    if (wanted == 0)
        return {};
    const std::lock_guard lock(m_mutex);
    if (!m_anywhere && (offset < m_begin || wanted > mostKept)) {
        m_anywhere = m_openAnywhere();
        if (!m_anywhere)
            return {0, true};
    }
    if (m_anywhere)
        return m_anywhere->readAt(offset, buffer, length);
    unpackTo(offset + wanted);
    const qint64 there = std::clamp<qint64>(end() - offset, 0, wanted);
    // Of a content that is not what it should be the last piece is not handed out.
    if (m_failed && (there < wanted || offset + wanted == m_size))
        return {0, true};
    std::copy_n(m_kept.constData() + (offset - m_begin), there, buffer);
    return {there, false};
}

void ForwardFile::unpackTo(qint64 offset)
{
    while (end() < offset && !m_failed)
        unpackBlock();
    if (offset != m_size || m_failed || !m_stream)
        return;
    // What lies behind the last byte tells whether the checksum holds.
    char more = 0;
    m_failed = m_stream->readSome(&more, 1) != 0;
    m_stream.reset();
}

void ForwardFile::unpackBlock()
{
    m_block.resize(blockSize);
    const qint64 count = m_stream->readSome(m_block.data(), std::min(blockSize, m_size - end()));
    if (count <= 0) {
        m_failed = true;
        return;
    }
    if (m_kept.size() + count > 2 * mostKept) {
        m_begin += m_kept.size() - mostKept;
        m_kept = m_kept.last(mostKept);
    }
    m_kept.append(m_block.constData(), count);
}

} // namespace velmora
