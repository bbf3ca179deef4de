#pragma once

#include "core/cancel_flag.h"
#include "core/child_desk.h"
#include "vfs/remote/ssh_call.h"

#include <QByteArray>

#include <optional>

namespace velmora {

/// The files of a folder on a host, over one ssh that answers one question after the other. Usable from any thread at
/// once; one answer comes at a time. For a worker.
class RemoteFiles {
public:
    explicit RemoteFiles(const SshTarget &target);

    using Sink = ChildDesk::Sink;

    /// A file as a listing told of it.
    struct File {
        QByteArray name; ///< relative to the folder, any bytes but NUL
        qint64 size = 0;
    };
    /// What is asked for at a time.
    static constexpr qint64 pieceSize = qint64(4) * 1024 * 1024;

    /// The piece that begins at `offset`, a multiple of `pieceSize`. True when the file still has its size and the sink
    /// took all of it.
    [[nodiscard]] bool readPiece(const File &file, qint64 offset, const Sink &sink, const CancelFlag &cancel) const;
    /// The name that Git has for the content by SHA-1, computed on the host; nothing where that is not possible, or the
    /// file has changed.
    [[nodiscard]] std::optional<QByteArray> blobName(const File &file, const CancelFlag &cancel) const;

private:
    mutable ChildDesk m_desk; ///< guards itself
};

} // namespace velmora
