#include "vfs/archive/resuming_stream.h"

namespace velmora {

ResumingStream::ResumingStream(std::shared_ptr<OpenFile> file, const QByteArray &password, const CancelFlag &cancel)
    : m_file(std::move(file)),
      m_password(password),
      m_cancel(cancel),
      m_stream(std::make_unique<ArchiveStream>(m_file, m_password, m_cancel))
{}

ArchiveStream::Step ResumingStream::next()
{
    if (m_seen > 0 && m_stream->isBroken() && !resume())
        return ArchiveStream::Step::Broken;
    const ArchiveStream::Step step = m_stream->next();
    if (step == ArchiveStream::Step::Entry)
        ++m_seen;
    else
        m_seen = 0; // no content has ended it
    return step;
}

bool ResumingStream::resume()
{
    constexpr int mostRestarts = 32;
    if (m_cancel.isCancelled() || m_restarts == mostRestarts)
        return false;
    ++m_restarts;
    auto stream = std::make_unique<ArchiveStream>(m_file, m_password, m_cancel);
    for (qint64 i = 0; i < m_seen; ++i) {
        if (stream->next() != ArchiveStream::Step::Entry)
            return false; // the words about the content say more
    }
    m_stream = std::move(stream);
    return true;
}

} // namespace velmora
