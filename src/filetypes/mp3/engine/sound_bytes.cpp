#include "filetypes/mp3/engine/sound_bytes.h"

#include <QIODevice>

#include <algorithm>

namespace velmora {

namespace {

bool holds(QByteArrayView bytes, qsizetype at, int length)
{
    return at >= 0 && at <= bytes.size() && length <= bytes.size() - at;
}

} // namespace

SoundBytes::SoundBytes(QIODevice &device) : m_device(device), m_size(device.size()) {}

QByteArrayView SoundBytes::at(qint64 at, qint64 length)
{
    if (at < 0 || at >= m_size || length <= 0)
        return {};
    length = std::min({length, most, m_size - at});
    if (at < m_blockAt || at + length > m_blockAt + m_block.size()) {
        // Who looks ahead and comes back a little finds the same block.
        constexpr qint64 wayBack = 64 * 1024;
        m_blockAt = std::max<qint64>(0, at - wayBack);
        m_block = m_device.seek(m_blockAt) ? m_device.read(most + wayBack) : QByteArray();
    }
    const qint64 from = std::min<qint64>(at - m_blockAt, m_block.size());
    return QByteArrayView(m_block).sliced(from, std::min<qint64>(length, m_block.size() - from));
}

QByteArray SoundBytes::allAt(qint64 at, qint64 length)
{
    QByteArray all;
    while (all.size() < length) {
        const QByteArrayView piece = this->at(at + all.size(), length - all.size());
        if (piece.isEmpty())
            break;
        all += piece;
    }
    return all;
}

quint64 bigEndian(QByteArrayView bytes, qsizetype at, int length)
{
    quint64 value = 0;
    for (int k = 0; holds(bytes, at, length) && k < length; ++k)
        value = value << 8 | quint8(bytes[at + k]);
    return value;
}

quint64 littleEndian(QByteArrayView bytes, qsizetype at, int length)
{
    quint64 value = 0;
    for (int k = length - 1; holds(bytes, at, length) && k >= 0; --k)
        value = value << 8 | quint8(bytes[at + k]);
    return value;
}

} // namespace velmora
