#pragma once

#include <QByteArray>

#include <string_view>

class QIODevice;

namespace velmora {

/// Collects a long output and passes it on to a device in large pieces. Used by one thread; the device outlives the
/// buffer.
class OutputBuffer {
public:
    explicit OutputBuffer(QIODevice &device);
    OutputBuffer(const OutputBuffer &) = delete;
    OutputBuffer &operator=(const OutputBuffer &) = delete;

    OutputBuffer &operator<<(std::string_view text);
    OutputBuffer &operator<<(char character);
    OutputBuffer &operator<<(qint64 number);

    /// For writers that append by themselves; `passOn` or the next `<<` keeps the buffer from growing.
    [[nodiscard]] QByteArray &bytes() noexcept { return m_bytes; }

    /// Writes what was collected if it is much.
    void passOn();

    /// Writes the rest. False when any part could not be written.
    [[nodiscard]] bool finish();

private:
    void write();

    QIODevice &m_device;
    QByteArray m_bytes;
    bool m_ok = true;
};

} // namespace velmora
