#include "filetypes/mp3/engine/tag_stream.h"

#include "filetypes/mp3/engine/chapter_guard.h"
#include "filetypes/mp3/engine/sound_layout.h"

#include <QByteArray>
#include <QFileDevice>

#include <algorithm>

namespace velmora {

namespace {

constexpr qint64 mostReadBytes = qint64(1) << 30; // many times what tags take, for one that is read over and over
constexpr qint64 moveLength = qint64(1) << 20;

} // namespace

TagStream::TagStream(QIODevice &device) : m_device(device) {}

TagLib::ByteVector TagStream::readBlock(unsigned long length)
{
    const qint64 there = std::max<qint64>(0, m_device.size() - m_at);
    const qint64 wanted = std::min<qint64>(there, qint64(std::min<unsigned long>(length, 0x7fffffff)));
    m_readBytes += wanted;
    if (wanted > mostTagBytes || m_readBytes > mostReadBytes)
        throw TagRefusal();
    TagLib::ByteVector block(static_cast<unsigned int>(wanted));
    const qint64 taken =
        wanted > 0 && m_device.seek(m_at) ? std::max<qint64>(0, m_device.read(block.data(), wanted)) : 0;
    block.resize(static_cast<unsigned int>(taken));
    m_at += taken;
    if (!chaptersAreModest({block.data(), qsizetype(block.size())}))
        throw TagRefusal();
    return block;
}

void TagStream::writeBlock(const TagLib::ByteVector & /*data*/) {}

void TagStream::insert(const TagLib::ByteVector & /*data*/, unsigned long /*start*/, unsigned long /*replace*/) {}

void TagStream::removeBlock(unsigned long /*start*/, unsigned long /*length*/) {}

void TagStream::seek(long offset, Position from)
{
    const qint64 base = from == Beginning ? 0 : from == Current ? m_at : m_device.size();
    m_at = std::max<qint64>(0, base + offset);
}

long TagStream::tell() const
{
    return long(m_at);
}

long TagStream::length()
{
    return long(m_device.size());
}

void TagStream::truncate(long /*length*/) {}

TagEditStream::TagEditStream(QFileDevice &file) : TagStream(file), m_file(file) {}

void TagEditStream::write(qint64 at, const char *data, qint64 length)
{
    m_hasFailed = m_hasFailed || !m_file.seek(at) || m_file.write(data, length) != length;
}

void TagEditStream::writeBlock(const TagLib::ByteVector &data)
{
    write(place(), data.data(), data.size());
    moveTo(place() + data.size());
}

/// Moves all from `from` on so that it begins at `to`, beginning with the end that is not written over.
void TagEditStream::moveTail(qint64 from, qint64 to)
{
    const qint64 length = std::max<qint64>(0, m_file.size() - from);
    for (qint64 done = 0; done < length && !m_hasFailed;) {
        const qint64 piece = std::min(moveLength, length - done);
        const qint64 at = to > from ? length - done - piece : done;
        const QByteArray bytes = m_file.seek(from + at) ? m_file.read(piece) : QByteArray();
        m_hasFailed = bytes.size() != piece;
        write(to + at, bytes.constData(), bytes.size());
        done += piece;
    }
    if (to < from)
        m_hasFailed = m_hasFailed || !m_file.resize(to + length);
}

void TagEditStream::insert(const TagLib::ByteVector &data, unsigned long start, unsigned long replace)
{
    const qint64 tail = std::min<qint64>(qint64(start) + qint64(replace), m_file.size());
    moveTail(tail, qint64(start) + data.size());
    write(qint64(start), data.data(), data.size());
    moveTo(qint64(start) + data.size());
}

void TagEditStream::removeBlock(unsigned long start, unsigned long length)
{
    moveTail(std::min<qint64>(qint64(start) + qint64(length), m_file.size()), qint64(start));
}

void TagEditStream::truncate(long length)
{
    m_hasFailed = m_hasFailed || !m_file.resize(length);
}

} // namespace velmora
