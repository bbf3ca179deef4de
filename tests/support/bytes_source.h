#pragma once

#include "platform/file_layer.h"

#include <algorithm>

namespace velmora::test {

/// A file of which only the bytes are known.
class BytesSource final : public FileSource {
public:
    explicit BytesSource(QByteArray bytes) : m_bytes(std::move(bytes)) {}

    NodeResult state() override { return {}; }
    FilePiece read(char *buffer, qint64 length) override
    {
        const qint64 count = std::min<qint64>(length, m_bytes.size() - m_read);
        std::copy_n(m_bytes.constData() + m_read, count, buffer);
        m_read += count;
        return {count, false};
    }

private:
    QByteArray m_bytes;
    qint64 m_read = 0;
};

} // namespace velmora::test
