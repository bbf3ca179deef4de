#pragma once

#include "core/cancel_flag.h"
#include "core/child_desk.h"
#include "vfs/remote/remote_digests.h"
#include "vfs/remote/ssh_call.h"

#include <QByteArray>

#include <atomic>
#include <optional>
#include <span>
#include <vector>

namespace velmora {

/// The files of a folder on a host, over one ssh that answers one question after the other. Usable from any thread at
/// once; one answer comes at a time. For a worker.
class RemoteFiles {
public:
    explicit RemoteFiles(const SshTarget &target);

    using Sink = ChildDesk::Sink;

    using File = RemoteFileName;

    /// What is asked for at a time.
    static constexpr qint64 pieceSize = qint64(4) * 1024 * 1024;

    /// The piece that begins at `offset`, a multiple of `pieceSize`. True when the file still has its size and the sink
    /// took all of it.
    [[nodiscard]] bool readPiece(const File &file, qint64 offset, const Sink &sink, const CancelFlag &cancel) const;
    /// The name that Git has for the content by SHA-1, computed on the host; nothing where that is not possible, or the
    /// file has changed.
    [[nodiscard]] std::optional<QByteArray> blobName(const File &file, const CancelFlag &cancel) const;

    /// Digests of many files, computed on the host by one question; empty for a file that has changed, or cannot be
    /// read, or has a name that cannot be asked for so.
    [[nodiscard]] std::vector<QByteArray> digests(std::span<const File> files, RemoteDigest digest,
                                                  const CancelFlag &cancel) const;
    /// False once the host has shown that it has no answers to such questions.
    [[nodiscard]] bool asksForMany() const { return m_asksForMany; }

private:
    mutable std::atomic<bool> m_asksForMany{true};
    mutable ChildDesk m_desk; ///< guards itself
};

} // namespace velmora
