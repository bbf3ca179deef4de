#pragma once

#include <QByteArrayView>

#include <algorithm>

namespace velmora {

/// The bytes of a file whose numbers may say anything: what is read outside of them is 0 or empty, so that a reader
/// asks `holds` where that matters. Places are offsets from the first byte; the bytes stay the caller's.
class ProgramBytes {
public:
    explicit ProgramBytes(QByteArrayView bytes, bool isBigEndian = false) : m_bytes(bytes), m_isBigEndian(isBigEndian)
    {}

    [[nodiscard]] QByteArrayView all() const { return m_bytes; }
    [[nodiscard]] qint64 size() const { return m_bytes.size(); }
    [[nodiscard]] bool holds(qint64 at, qint64 length) const
    {
        return at >= 0 && length >= 0 && at <= size() && length <= size() - at;
    }

    [[nodiscard]] quint8 u8(qint64 at) const { return quint8(number(at, 1)); }
    [[nodiscard]] quint16 u16(qint64 at) const { return quint16(number(at, 2)); }
    [[nodiscard]] quint32 u32(qint64 at) const { return quint32(number(at, 4)); }
    [[nodiscard]] quint64 u64(qint64 at) const { return number(at, 8); }

    /// Empty unless all of it is there.
    [[nodiscard]] QByteArrayView slice(qint64 at, qint64 length) const
    {
        return holds(at, length) ? m_bytes.sliced(at, length) : QByteArrayView();
    }

    /// The bytes before the next zero byte, at most `longest`; empty when neither a zero byte nor the end of the file
    /// stops them within that.
    [[nodiscard]] QByteArrayView text(qint64 at, qint64 longest = 4096) const
    {
        if (!holds(at, 0))
            return {};
        const QByteArrayView rest = m_bytes.sliced(at, std::min(longest, size() - at));
        const qsizetype end = rest.indexOf('\0');
        return end < 0 ? QByteArrayView() : rest.first(end);
    }

private:
    [[nodiscard]] quint64 number(qint64 at, int length) const
    {
        if (!holds(at, length))
            return 0;
        quint64 value = 0;
        for (int k = 0; k < length; ++k)
            value = value << 8 | quint8(m_bytes[at + (m_isBigEndian ? k : length - 1 - k)]);
        return value;
    }

    QByteArrayView m_bytes;
    bool m_isBigEndian;
};

} // namespace velmora
