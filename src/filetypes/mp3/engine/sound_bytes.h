#pragma once

#include <QByteArray>
#include <QByteArrayView>

class QIODevice;

namespace velmora {

/// A run of bytes in a file.
struct SoundRange {
    qint64 at = 0;
    qint64 length = 0;
};

/// The bytes of a file, read piece by piece as they are asked for. The device must be open, seekable, and outlive it.
class SoundBytes {
public:
    /// The most that is given at once.
    static constexpr qint64 most = qint64(1) << 20;

    explicit SoundBytes(QIODevice &device);

    [[nodiscard]] qint64 size() const { return m_size; }

    /// The bytes from `at` on, `length` of them, at most `most`; fewer where the file ends or cannot be read. They stay
    /// until the next call.
    [[nodiscard]] QByteArrayView at(qint64 at, qint64 length);

    /// The same without the bound: a copy.
    [[nodiscard]] QByteArray allAt(qint64 at, qint64 length);

private:
    QIODevice &m_device;
    qint64 m_size;
    QByteArray m_block;
    qint64 m_blockAt = 0;
};

/// The number in `length` bytes, at most 8, the first one highest; 0 unless all of them are there.
[[nodiscard]] quint64 bigEndian(QByteArrayView bytes, qsizetype at, int length);

/// The same, the first one lowest.
[[nodiscard]] quint64 littleEndian(QByteArrayView bytes, qsizetype at, int length);

} // namespace velmora
