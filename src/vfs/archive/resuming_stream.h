#pragma once

#include "core/cancel_flag.h"
#include "platform/file_access.h"
#include "vfs/archive/archive_stream.h"

#include <QByteArray>

#include <memory>

namespace velmora {

/// An `ArchiveStream` that begins anew behind a content that ended it: where entries stand by themselves, one that is
/// damaged says nothing about those after it. So often that a person sees what is wrong, and no archive can make it
/// endless.
class ResumingStream {
public:
    ResumingStream(std::shared_ptr<OpenFile> file, const QByteArray &password, const CancelFlag &cancel);

    /// As that of the stream; what the stream says holds until the next call.
    [[nodiscard]] ArchiveStream::Step next();
    [[nodiscard]] ArchiveStream &stream() { return *m_stream; }
    /// Whether a content has ended the stream once.
    [[nodiscard]] bool hasResumed() const noexcept { return m_restarts > 0; }

private:
    [[nodiscard]] bool resume();

    std::shared_ptr<OpenFile> m_file;
    QByteArray m_password;
    CancelFlag m_cancel;
    std::unique_ptr<ArchiveStream> m_stream;
    qint64 m_seen = 0; ///< entries
    int m_restarts = 0;
};

} // namespace velmora
