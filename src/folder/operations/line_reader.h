#pragma once

#include "platform/file_layer.h"

#include <QByteArray>

#include <optional>

namespace velmora {

/// Reads a file of lines of any number, of which it holds one block at a time. The source must outlive it.
class LineReader {
public:
    explicit LineReader(FileSource &source) : m_source(source) {}

    /// Longer lines end the reading.
    static constexpr qsizetype longest = 1 << 20;

    /// The next line without its end; nothing after the last. What follows the last line end is no line: a crash may
    /// have left it.
    [[nodiscard]] std::optional<QByteArray> next();

    /// True when the reading ended because the file could not be read.
    [[nodiscard]] bool hasFailed() const noexcept { return m_failed; }
    /// True when the reading ended before a line that is too long.
    [[nodiscard]] bool isTooLong() const noexcept { return m_isTooLong; }

private:
    [[nodiscard]] bool readMore();

    FileSource &m_source;
    QByteArray m_buffer;
    qsizetype m_begin = 0; ///< of the next line in `m_buffer`
    bool m_isAtEnd = false;
    bool m_failed = false;
    bool m_isTooLong = false;
};

} // namespace velmora
