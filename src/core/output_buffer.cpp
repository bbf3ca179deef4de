#include "core/output_buffer.h"

#include <QIODevice>

#include <charconv>

namespace velmora {

namespace {

constexpr qsizetype pieceSize = 256 * 1024;

} // namespace

OutputBuffer::OutputBuffer(QIODevice &device) : m_device(device) {}

OutputBuffer &OutputBuffer::operator<<(std::string_view text)
{
    // Not beyond its size: growing would copy it.
    if (m_bytes.size() + qsizetype(text.size()) > pieceSize)
        write();
    m_bytes.append(text.data(), qsizetype(text.size()));
    passOn();
    return *this;
}

OutputBuffer &OutputBuffer::operator<<(char character)
{
    m_bytes.append(character);
    return *this;
}

OutputBuffer &OutputBuffer::operator<<(qint64 number)
{
    char digits[24];
    const auto end = std::to_chars(digits, digits + sizeof digits, number).ptr;
    m_bytes.append(digits, end - digits);
    return *this;
}

void OutputBuffer::passOn()
{
    if (m_bytes.size() >= pieceSize)
        write();
}

bool OutputBuffer::finish()
{
    write();
    return m_ok;
}

void OutputBuffer::write()
{
    m_ok = m_ok && m_device.write(m_bytes) == m_bytes.size();
    m_bytes.resize(0);
}

} // namespace velmora
