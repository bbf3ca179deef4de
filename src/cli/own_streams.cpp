#include "cli/own_streams.h"

#include "platform/standard_streams.h"
#include "platform/thread_end.h"

namespace velmora::cli {

OwnStreams::OwnStreams()
{
    orderEndOfThreads();
    makeStandardStreamsBinary();
    const QIODevice::OpenMode writing = QIODevice::WriteOnly | QIODevice::Unbuffered;
    if (m_input.open(0, QIODevice::ReadOnly | QIODevice::Unbuffered) && m_output.open(1, writing))
        m_errors.open(2, writing);
}

bool OwnStreams::areOpen() const
{
    return m_errors.isOpen(); // the last to be opened
}

} // namespace velmora::cli
