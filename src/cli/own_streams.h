#pragma once

#include "cli/command_line.h"

#include <QFile>

namespace velmora::cli {

/// Standard input, output and errors of this process: the descriptors themselves, since the C library's buffers would
/// keep a full disk secret until the program has ended. One lives for the whole of `main`.
class OwnStreams {
public:
    /// Also prepares the process for work on several threads, so it is made first.
    OwnStreams();
    Q_DISABLE_COPY_MOVE(OwnStreams)

    /// False when one of the three is closed.
    [[nodiscard]] bool areOpen() const;
    [[nodiscard]] Streams streams() { return {m_input, m_output, m_errors}; }

private:
    QFile m_input;
    QFile m_output;
    QFile m_errors;
};

} // namespace velmora::cli
